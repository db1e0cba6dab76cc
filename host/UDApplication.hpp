#pragma once

// File: UDApplication.hpp
// A module's set of host-object classes, registered with UDApplicationManager under
// the module's name.
//
// Example:
//   auto* application = new UDApplication("zo_units", false);
//   application->addClass(new UnitClass);
//   UDApplicationManager::addApplication(application);

#include <string>
#include <vector>

class UDClass;

class UDApplication {
 public:
  // The name is copied; the flag is unused by this host.
  UDApplication(const char* name, bool flag);
  UDApplication(const UDApplication&) = delete;
  UDApplication& operator=(const UDApplication&) = delete;
  ~UDApplication();

  const char* getName() const { return name_.c_str(); }

  // Takes ownership of the class; the application keeps it as long as it lives.
  void addClass(UDClass* cls);
  // Borrowed; null when no class has that name.
  UDClass* findClass(const char* name) const;
  const std::vector<UDClass*>& getClasses() const { return classes_; }

 private:
  std::string name_;
  std::vector<UDClass*> classes_;  // owned
};
