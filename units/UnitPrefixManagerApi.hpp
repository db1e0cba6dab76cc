#pragma once

// File: UnitPrefixManagerApi.hpp
// The registry of unit prefixes as other libraries see it: 13 built-in prefixes
// ("tera" ... "femto", prefix indexes 0 to 12) and user prefixes after them.
//
// Example:
//   UnitPrefixManagerApi* prefixes = UnitPrefixManager::Instance();
//   std::string unit = "millimole", prefix;
//   prefixes->stripPrefixAndGetMultiplier(unit, prefix);   // 1e-3; unit "mole", prefix "milli"

#include <boost/function.hpp>
#include <string>
#include <vector>

namespace TwUnits {

class UnitPrefixApi;

class UnitPrefixManagerApi {
 public:
  using Listener = boost::function1<void, const UnitPrefixApi*>;

  // Called, in the order added, with each prefix after it is registered.
  virtual void addUnitPrefixRegisteredListener(const Listener& listener) = 0;
  // Called, in the order added, with each prefix before it is removed; a listener may
  // refuse the removal by raising.
  virtual void addUnitPrefixUnregisteredListener(const Listener& listener) = 0;
  // Verifies and registers the prefix; the registry owns it unless the same name and
  // exponent are already registered, in which case nothing is stored.
  virtual void registerPrefix(UnitPrefixApi* prefix) = 0;
  // Removes a user prefix. Raises "Unit:PrefixNotFound", "Unit:PrefixCannotUnregisterBuiltin",
  // or a listener's refusal ("Unit:PrefixBeingUsed").
  virtual void unregisterPrefix(const std::string& name) = 0;
  virtual bool isPrefixBuiltin(const std::string& name) const = 0;
  virtual bool isPrefixRegistered(const std::string& name) const = 0;
  // Name of the first prefix whose multiplier equals the value within the host
  // tolerance, or "".
  virtual std::string getPrefixStringFromMultiplier(double multiplier) const = 0;
  // Removes a registered prefix from the front of unitName and reports its name;
  // returns its multiplier, or NaN (and changes nothing) when no prefix begins it.
  virtual double stripPrefixAndGetMultiplier(std::string& unitName,
                                             std::string& prefixName) const = 0;
  // Returns a new prefix with the defaults; the caller owns it.
  virtual UnitPrefixApi* createUnitPrefixApi() const = 0;
  virtual const std::vector<std::string>& getPrefixNames() const = 0;
  // The registered prefix of that name, or null; the registry keeps it.
  virtual UnitPrefixApi* getUnitPrefixApi(const std::string& name) const = 0;
  virtual ~UnitPrefixManagerApi() = default;
};

}  // namespace TwUnits
