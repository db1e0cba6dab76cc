#pragma once

// File: UnitRepresentation.hpp
// The unit definition record that users fill in and the unit registry stores.
//
// Example:
//   UnitRepresentation acre("acre", "foot^2", 43560.0, 0.0, true);

#include <string>
#include <vector>

#include "units/UnitRepresentationApi.hpp"

namespace TwUnits {

class UnitRepresentation : public UnitRepresentationApi {
 public:
  // Empty strings, multiplier 1.0, offset 0.0, library visible.
  UnitRepresentation();
  // Sets the five fields as given, untrimmed, telling nobody; the alias stays empty.
  UnitRepresentation(const std::string& name, const std::string& compositionString,
                     double multiplier, double offset, bool libraryVisible);
  UnitRepresentation(const UnitRepresentation&) = delete;
  UnitRepresentation& operator=(const UnitRepresentation&) = delete;
  ~UnitRepresentation() override;

  UnitRepresentation* clone() const override;
  void addChangeListener(const ChangeListener& listener) override;
  const std::string& getName() const override { return name_; }
  void setName(const std::string& name) override;
  const std::string& getAlias() const override { return alias_; }
  void setAlias(const std::string& alias) override;
  const std::string& getCompositionString() const override { return compositionString_; }
  void setCompositionString(const std::string& composition) override;
  double getMultiplier() const override { return multiplier_; }
  void setMultiplier(double multiplier) override;
  double getOffset() const override { return offset_; }
  void setOffset(double offset) override;
  bool getLibraryVisible() const override { return libraryVisible_; }
  UDInterface* getUDI() const override { return hostObject_; }

  // The binding records the host object that shows this unit.
  void setUDI(UDInterface* hostObject) { hostObject_ = hostObject; }

 private:
  void announce(UNIT_REP_PROPERTY property) const;

  std::string name_;
  std::string alias_;
  std::string compositionString_;
  double multiplier_ = 1.0;
  double offset_ = 0.0;
  bool libraryVisible_ = true;
  UDInterface* hostObject_ = nullptr;
  std::vector<ChangeListener> listeners_;
};

}  // namespace TwUnits
