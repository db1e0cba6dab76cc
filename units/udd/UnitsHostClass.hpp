#pragma once

// File: UnitsHostClass.hpp
// What the units module's five host classes have in common: a name, no superclass,
// one constructor signature without arguments, and objects that no other object may
// contain. Each class makes its own library object and frees it again.

#include "host/UDClass.hpp"

namespace TwUnits {

class UnitsHostClass : public UDClass {
 public:
  // Names the class and declares its constructor signature; the class adds its own
  // methods and properties after this.
  explicit UnitsHostClass(const char* name);

  // Forwards to the constructor with arguments, without arguments.
  UDInterface* createClassSpecificObject(UDInterface* parent) override;
  // Returns a new host object (one reference, the caller's) wrapping a new library object.
  UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs) override = 0;
  ~UnitsHostClass() override;
  bool canOtherClassContainThisClass(UDClass* other) override;
  bool canThisClassContainOtherClass(UDClass* other) override;
};

}  // namespace TwUnits
