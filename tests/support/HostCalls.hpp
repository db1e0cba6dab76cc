#pragma once

// Test helpers that use the units module as the host language does: host values in,
// method dispatch by signature, host values out.
//
//   ModuleFixture initialises the module as the host does (again: harmless).
//   Results r = call(manager(), "calculateconversion", 1, {text("mile"), text("meter"), num(1)});
//   EXPECT_EQ(r.at(0)->getPr()[0], 1609.344);

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/UDInterface.hpp"

HostArrayPtr text(const char* value);
HostArrayPtr num(double value);
HostArrayPtr handles(const std::vector<UDInterface*>& objects);
HostArrayPtr row(const std::vector<double>& values, std::size_t rows = 1);

// The results of one method call, owned.
struct Results {
  std::vector<HostArrayPtr> values;

  const HostArray* at(std::size_t i) const { return values.at(i).get(); }
  UDInterface* handle(std::size_t i) const {
    return at(i)->isEmpty() ? nullptr : at(i)->getHandle(0);
  }
  std::vector<std::string> texts(
      std::size_t i) const;  // a cell of texts or the rows of a char matrix
};

// Calls the method on the objects of args[0] through the host's dispatch.
Results call(const std::string& method, int nargout, std::vector<HostArrayPtr> args);
Results call(UDInterface* object, const std::string& method, int nargout,
             std::vector<HostArrayPtr> args = {});

HostArrayPtr get(UDInterface* object, const std::string& property);
void set(UDInterface* object, const std::string& property, HostArrayPtr value);
std::string getText(UDInterface* object, const std::string& property);
double getNumber(UDInterface* object, const std::string& property);

// What the host console printed while the capture lived.
class ConsoleCapture {
 public:
  ConsoleCapture();
  ~ConsoleCapture();
  ConsoleCapture(const ConsoleCapture&) = delete;
  ConsoleCapture& operator=(const ConsoleCapture&) = delete;
  const std::string& text() const { return *printed_; }

 private:
  std::shared_ptr<std::string> printed_;
  std::function<void(const std::string&)> previous_;
};

// Initialises the module as the host does (again: harmless); gives the tests the manager
// host object.
class ModuleFixture : public testing::Test {
 protected:
  void SetUp() override;
  UDInterface* manager() const { return manager_.get(); }
  // A new host object of the class, held by the fixture.
  UDInterface* construct(const char* className);

 private:
  UDInterfacePtr manager_;
  std::vector<UDInterfacePtr> constructed_;
};
