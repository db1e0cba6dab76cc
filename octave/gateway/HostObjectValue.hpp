#pragma once

// File: HostObjectValue.hpp
// An Octave value that holds one reference to a host object. Octave shares a value
// among all its copies and frees it with the last one, so the host object's reference
// goes back exactly when Octave no longer refers to it: on `clear`, on reassignment, or
// when the classdef object that keeps the value in its hidden property "Host_" goes.
//
// Example:
//   octave_value handle(new HostObjectValue(hostConstruct("Unit")));  // takes the reference
//   UDInterface* unit = HostObjectValue::objectOf(handle);            // borrowed

#include <octave/oct.h>

class UDInterface;

class HostObjectValue : public octave_base_value {
 public:
  // Takes over one reference to the object (null for no object).
  explicit HostObjectValue(UDInterface* object = nullptr);
  ~HostObjectValue() override;
  HostObjectValue& operator=(const HostObjectValue&) = delete;

  // The object that the value holds (borrowed), or null when the value is not a
  // HostObjectValue.
  static UDInterface* objectOf(const octave_value& value);

  octave_base_value* clone() const override;
  octave_base_value* empty_clone() const override { return new HostObjectValue(); }
  bool is_defined() const override { return true; }
  bool is_constant() const override { return true; }
  bool print_as_scalar() const override { return true; }
  void print(std::ostream& os, bool pr_as_read_syntax) override;
  void print_raw(std::ostream& os, bool pr_as_read_syntax) const override;

 private:
  HostObjectValue(const HostObjectValue& other);

  UDInterface* object_;

  DECLARE_OV_TYPEID_FUNCTIONS_AND_DATA
};
