#pragma once

// File: UnitPrefixManager.hpp
// The process-wide registry of unit prefixes. A prefix's position in the registry is
// its prefix index, by which compositions refer to it.
//
// Listeners follow the rules of Announcement.hpp: an addition is announced once it is
// complete, a removal before anything is removed; a listener cannot refuse either (its
// error reaches the caller after the change); a listener added during an announcement is
// first called for the next change; and a listener may read the registries but not change
// them.
//
// Threads: registering and removing a prefix hold the registries' lock, so they may run
// while other threads convert, verify and parse; the queries read without it
// (units/RegistryLock.hpp).
//
// Example:
//   UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
//   prefixes->getPrefixIndex("kilo");            // 3
//   prefixes->registerPrefix(new UnitPrefix("kilo", 3, "k"));
//   // raises "Unit:PrefixCannotUnregisterBuiltin"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "units/UnitPrefix.hpp"
#include "units/UnitPrefixManagerApi.hpp"

class StringVector;

namespace TwUnits {

class UnitPrefixManager : public UnitPrefixManagerApi {
 public:
  static inline constexpr int kBuiltinPrefixCount = 13;

  // The singleton; whoever needs it first creates it.
  static UnitPrefixManager* _instance;
  static UnitPrefixManager* Instance();

  void addUnitPrefixRegisteredListener(const Listener& listener) override;
  void addUnitPrefixUnregisteredListener(const Listener& listener) override;
  void registerPrefix(UnitPrefixApi* prefix) override;
  void unregisterPrefix(const std::string& name) override;
  bool isPrefixBuiltin(const std::string& name) const override;
  bool isPrefixRegistered(const std::string& name) const override;
  std::string getPrefixStringFromMultiplier(double multiplier) const override;
  double stripPrefixAndGetMultiplier(std::string& unitName, std::string& prefixName) const override;
  UnitPrefixApi* createUnitPrefixApi() const override;
  const std::vector<std::string>& getPrefixNames() const override { return names_; }
  UnitPrefixApi* getUnitPrefixApi(const std::string& name) const override;
  ~UnitPrefixManager() override;

  // Creates the 13 built-in prefixes; the unit registry's set-up calls it once.
  void setupPrefixes();
  void registerInternalListeners();

  // True when a prefix with the same name and exponent is registered, false when the
  // prefix may be registered; raises otherwise (checks in order: unset name, invalid
  // name, built-in name, duplicate name, a registered unit that begins with the name).
  bool verifyUnitPrefix(const UnitPrefix* prefix) const;
  // The unit registry's cache follows each addition and removal as part of it: `added`
  // once a prefix is stored, before the listeners hear of it; `removing` after the
  // listeners heard of a removal, while the prefix still has its index.
  void setUnitRegistryFollower(const Listener& added, const Listener& removing);
  // The change listener of every registered prefix: refuses every change.
  void prefixChangedEvent(const UnitPrefixApi* prefix,
                          UnitPrefixApi::UNIT_PREFIX_PROPERTY property);

  // Index of the first prefix of that exact name, or -1.
  int getPrefixIndex(const std::string& name) const;
  int getNumPrefixes() const { return static_cast<int>(prefixes_.size()); }
  // The index operations check nothing: pass indexes from getPrefixIndex or compositions.
  int getPrefixExponent(int index) const {
    return prefixes_[static_cast<std::size_t>(index)]->getExponent();
  }
  double getPrefixMultiplier(int index) const {
    return prefixes_[static_cast<std::size_t>(index)]->getMult();
  }
  const std::string& getUnitPrefixAsString(int index) const {
    return prefixes_[static_cast<std::size_t>(index)]->getName();
  }
  UnitPrefix* getPrefix(int index) const {
    return prefixes_[static_cast<std::size_t>(index)].get();
  }
  // Multiplier of the named prefix; NaN for an empty or unknown name.
  double getPrefixMultiplier2(std::string name) const;
  // Returns a new list of every prefix name in index order; the caller owns it.
  StringVector* getPrefixUnitStrings() const;
  // The unit name without a leading registered prefix, or unchanged.
  std::string stripPrefixFromSingleUnit(const std::string& unitName) const;
  // The first prefix, in name order, whose name begins the text and leaves a registered
  // unit; when none does, the longest that begins it (so that an error names the shortest
  // rest); or null.
  const UnitPrefix* findLeadingPrefix(std::string_view text) const;

 private:
  UnitPrefixManager();

  struct Listeners {
    std::vector<Listener> registered;
    std::vector<Listener> unregistered;
    Listener removal;
    Listener added;
    Listener removing;
  };

  void attachChangeGuard(UnitPrefix* prefix);

  std::vector<std::unique_ptr<UnitPrefix>> prefixes_;
  std::vector<std::string> names_;
  std::map<std::string, UnitPrefix*> byName_;
  int builtinCount_ = 0;
  std::unique_ptr<Listeners> listeners_;
};

}  // namespace TwUnits
