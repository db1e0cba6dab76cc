#pragma once

// File: PhysicalQuantityManager.hpp
// The process-wide registry of physical quantities: 37 built-in quantities, then the
// quantities that users and the unit registry register at run time.
//
// Listeners follow the rules of Announcement.hpp: an addition is announced once it is
// complete, a removal before anything is removed; a listener cannot refuse either (its
// error reaches the caller after the change); a listener added during an announcement is
// first called for the next change; and a listener may read the registries but not change
// them.
//
// Threads: registering and removing a quantity hold the registries' lock, so they may
// run while other threads convert, verify and parse; the queries read without it
// (units/RegistryLock.hpp).
//
// Example:
//   PhysicalQuantityManager* registry = PhysicalQuantityManager::Instance();
//   int exps[7] = {0, 0, 1, -1, 0, 0, 0};
//   registry->registerPhysicalQuantity(new QuantityDimension(exps, "speed"));
//   // raises "Unit:QuantityDuplicateDimensions": 'velocity' has those dimensions

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "units/PhysicalQuantityManagerApi.hpp"
#include "units/QuantityDimension.hpp"

class StringVector;

namespace TwUnits {

class UnitComposition;

class PhysicalQuantityManager : public PhysicalQuantityManagerApi {
 public:
  static inline constexpr int kBuiltinQuantityCount = 37;
  static inline constexpr int kDimensionlessIndex = 36;

  // The singleton, created with the built-in quantities on the first call.
  static PhysicalQuantityManager* Instance();

  void addPhysicalQuantityRegisteredListener(const RegisteredListener& listener) override;
  void addPhysicalQuantityUnregisteredListener(const UnregisteredListener& listener) override;
  int getQuantityIdx(const std::string& name) const override;
  int getQuantityIdx(const QuantityDimensionApi* dimensions) const override;
  const QuantityDimensionApi* getQuantityDimensionApi(int index) const override;
  QuantityDimensionApi* createQuantityDimensionApi() const override;
  QuantityDimensionApi* createQuantityDimensionApi(
      const QuantityDimensionApi* quantity) const override;
  ~PhysicalQuantityManager() override;

  // Fills the 37 built-in quantities and adds the change-event listeners.
  void setup();
  // Puts the 37 built-in names in front of the quantity-type name list; the unit
  // registry's set-up calls it once.
  void setupQuantities();
  void registerInternalListeners();

  // Checks the quantity and appends it. Raises "Unit:QuantityNameInvalid", then, for the
  // first conflicting entry in index order, "Unit:QuantityDuplicateName" or
  // "Unit:QuantityDuplicateDimensions"; a refused quantity stays with the caller. The
  // registry owns it once it is registered, also when a listener's error is raised after.
  void registerPhysicalQuantity(const QuantityDimension* quantity);
  // Removes a user quantity; later quantities move down one index. Raises
  // "Unit:QuantityNotFound" or "Unit:CannotUnregisterBuiltinQuantity".
  void unregisterPhysicalQuantity(const std::string& name);
  // Registers the dimensions of the composition as "Unnamed_Quant_<n>".
  void registerAnonymousPQ(const UnitComposition* composition);
  // The unit registry's per-quantity lists follow each addition and removal as part of it:
  // `added` once a quantity is stored, before the listeners hear of it; `removed` (which
  // removes the quantity's units) among the unregistered listeners, in the place of the
  // ones added so far, before the quantity goes.
  void setUnitRegistryFollower(const RegisteredListener& added,
                               const UnregisteredListener& removed);

  // The quantity at the index, or null outside the registry; the registry keeps it.
  const QuantityDimension* getQuantityDimension(int index) const;
  int getQuantityIdx(const QuantityDimension* dimensions) const;
  int getQuantityIdx(const int* exponents) const;
  int getNumQuantities() const { return static_cast<int>(quantities_.size()); }
  int getBuiltinCount() const { return builtinCount_; }
  const std::vector<std::string>& getQuantityTypeNames() const { return names_; }
  // Returns a new list of every quantity name in index order; the caller owns it.
  StringVector* getAllQuantityTypeStrings() const;
  // Returns a new quantity with every exponent negated and no name; the caller owns it.
  QuantityDimension* getCancelingDimensions(const QuantityDimension* quantity) const;

 private:
  PhysicalQuantityManager();

  struct Listeners {
    std::vector<RegisteredListener> registered;
    std::vector<UnregisteredListener> unregistered;
    RegisteredListener added;
    UnregisteredListener removed;
    std::size_t removedAt = 0;  // the unregistered listeners that come before `removed`
  };

  void checkNewQuantity(const QuantityDimension& quantity) const;
  // Appends a checked quantity, which the registry owns from then on, and announces it.
  void storeQuantity(QuantityDimension* quantity);

  using Exponents = std::array<int, kBaseDimensionCount>;
  struct ExponentsHash {
    std::size_t operator()(const Exponents& exponents) const;
  };
  int indexOf(const Exponents& exponents) const;
  // Index entries for the quantity at the index, which is the last one.
  void indexLast();
  void reindex();

  std::unique_ptr<Listeners> listeners_;
  std::vector<std::unique_ptr<QuantityDimension>> quantities_;
  std::vector<std::string> names_;
  int builtinCount_ = 0;
  // Every look-up by name or by dimensions is one probe: conversions register a quantity
  // for each new dimension they meet, and there may be thousands.
  // The names are the registered quantities' own, which neither move nor change.
  std::unordered_map<std::string_view, int> indexByName_;
  std::unordered_map<Exponents, int, ExponentsHash> indexByExponents_;
};

}  // namespace TwUnits
