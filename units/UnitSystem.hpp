#pragma once

// File: UnitSystem.hpp
// The unit-system value: eight names, all empty unless set.
//
// Example:
//   UnitSystem mks("MKS");
//   mks.setMassType("kilogram");

#include <string>

#include "units/UnitSystemApi.hpp"

namespace TwUnits {

class UnitSystem : public UnitSystemApi {
 public:
  UnitSystem() = default;
  // The name is set (null gives the empty name); the seven units stay empty.
  explicit UnitSystem(const char* name);
  UnitSystem(const UnitSystem& other) = default;
  UnitSystem& operator=(const UnitSystem& other) = default;
  ~UnitSystem() override = default;

  UnitSystem* clone() const override { return new UnitSystem(*this); }
  const std::string& getUnitSystemName() const override { return name_; }
  const std::string& getMassType() const override { return mass_; }
  const std::string& getAmountType() const override { return amount_; }
  const std::string& getLengthType() const override { return length_; }
  const std::string& getTimeType() const override { return time_; }
  const std::string& getTempType() const override { return temperature_; }
  const std::string& getCurrentType() const override { return current_; }
  const std::string& getLuminousIntensityType() const override { return luminousIntensity_; }
  void setUnitSystemName(const std::string& name) override { name_ = name; }
  void setMassType(const std::string& unit) override { mass_ = unit; }
  void setAmountType(const std::string& unit) override { amount_ = unit; }
  void setLengthType(const std::string& unit) override { length_ = unit; }
  void setTimeType(const std::string& unit) override { time_ = unit; }
  void setTempType(const std::string& unit) override { temperature_ = unit; }
  void setCurrentType(const std::string& unit) override { current_ = unit; }
  void setLuminousIntensityType(const std::string& unit) override { luminousIntensity_ = unit; }

  // Leaves the system as constructed.
  void init() {}

 private:
  std::string name_;
  std::string mass_;
  std::string amount_;
  std::string length_;
  std::string time_;
  std::string temperature_;
  std::string current_;
  std::string luminousIntensity_;
};

}  // namespace TwUnits
