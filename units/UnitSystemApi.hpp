#pragma once

// File: UnitSystemApi.hpp
// A unit system as other libraries see it: a name and one unit name for each base
// dimension, so that any quantity can be written in the system's units ("MKS"
// writes a force as kilogram*meter/second^2). Unit names may carry a prefix.
//
// Example:
//   UnitSystemApi* cgs = UnitSystemManager::Instance()->createUnitSystemApi();   // caller owns
//   cgs->setUnitSystemName("cgs"); cgs->setMassType("gram"); cgs->setLengthType("centimeter");

#include <string>

namespace TwUnits {

class UnitSystemApi {
 public:
  virtual ~UnitSystemApi() = default;
  // Returns a new copy of the eight names; the caller owns it.
  virtual UnitSystemApi* clone() const = 0;
  virtual const std::string& getUnitSystemName() const = 0;
  virtual const std::string& getMassType() const = 0;
  virtual const std::string& getAmountType() const = 0;
  virtual const std::string& getLengthType() const = 0;
  virtual const std::string& getTimeType() const = 0;
  virtual const std::string& getTempType() const = 0;
  virtual const std::string& getCurrentType() const = 0;
  virtual const std::string& getLuminousIntensityType() const = 0;
  // The setters store the text as given: no trimming, no check.
  virtual void setUnitSystemName(const std::string& name) = 0;
  virtual void setMassType(const std::string& unit) = 0;
  virtual void setAmountType(const std::string& unit) = 0;
  virtual void setLengthType(const std::string& unit) = 0;
  virtual void setTimeType(const std::string& unit) = 0;
  virtual void setTempType(const std::string& unit) = 0;
  virtual void setCurrentType(const std::string& unit) = 0;
  virtual void setLuminousIntensityType(const std::string& unit) = 0;
};

// The system's unit for a base dimension, by base index: amount, mass, length, time,
// temperature, current, luminous intensity.
inline const std::string& getBaseUnitOf(const UnitSystemApi& system, unsigned base) {
  switch (base) {
    case 0:
      return system.getAmountType();
    case 1:
      return system.getMassType();
    case 2:
      return system.getLengthType();
    case 3:
      return system.getTimeType();
    case 4:
      return system.getTempType();
    case 5:
      return system.getCurrentType();
    default:
      return system.getLuminousIntensityType();
  }
}

}  // namespace TwUnits
