#pragma once

// File: UnitPrefixApi.hpp
// A unit prefix as other libraries see it: a named power of ten ("kilo" = 10^3)
// that may stand in front of a unit name. Once a prefix is registered, its name and
// exponent are guarded: the registry's change listener refuses every change.
//
// Example:
//   UnitPrefixApi* prefix = prefixes->createUnitPrefixApi();   // caller owns
//   prefix->setName("myria");
//   prefix->setExponent(4);
//   prefixes->registerPrefix(prefix);                          // the registry owns it now

#include <boost/function.hpp>
#include <string>

class UDInterface;

namespace TwUnits {

class UnitPrefixApi {
 public:
  enum UNIT_PREFIX_PROPERTY { UNIT_PREFIX_NAME = 0, UNIT_PREFIX_EXPONENT = 1 };
  // Called before a guarded property changes; raising refuses the change.
  using ChangeListener = boost::function2<void, const UnitPrefixApi*, UNIT_PREFIX_PROPERTY>;

  virtual ~UnitPrefixApi() = default;
  // Returns a new prefix with this one's name, alias, exponent and multiplier, and no
  // listeners; the caller owns it.
  virtual UnitPrefixApi* clone() const = 0;
  virtual void addChangeListener(const ChangeListener& listener) = 0;
  virtual const std::string& getName() const = 0;
  // Announces the change, then stores the name without surrounding white space.
  virtual void setName(const std::string& name) = 0;
  virtual int getExponent() const = 0;
  // Raises "Units:PrefixExponentTooLarge" above 51 and "Units:PrefixExponentTooSmall"
  // below -51; announces the change; sets the multiplier to pow(10.0, exponent).
  virtual void setExponent(int exponent) = 0;
  // As setExponent(int) for an integral value; raises "Unit:UnitPrefixMustBeMultTen"
  // for any other.
  virtual void setExponent(double exponent) = 0;
  // The prefix's host object, or null.
  virtual UDInterface* getUDI() const = 0;
};

}  // namespace TwUnits
