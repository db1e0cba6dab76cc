#pragma once

// File: UnitManager.hpp
// The unit registry: a process-wide singleton that owns every unit definition, knows
// each unit's physical quantity and its index among that quantity's units, keeps
// the resolved composition of every unit and of every composition text it has
// verified (the composition cache), decides whether a unit may be registered,
// redefined or removed, and refuses every change to a registered unit. Its first
// use sets up every registry and the built-in library.
//
// A unit is addressed by (quantity index, unit index); unit indexes count from 0 in
// order of registration within a quantity and move down when a unit is removed.
// Compositions, cached or stored, hold built-in units only: a user unit's name resolves
// to its expansion. So removing a user unit re-indexes no composition, and the registry
// finds what names a user unit through an index instead of a scan: registering, and
// removing, a unit costs O(1) but for the removal's shift of the later indexes, O(n).
//
// Listeners follow the rules of Announcement.hpp: an addition is announced once it is
// complete, a removal before anything is removed; a listener cannot refuse either (its
// error reaches the caller after the change); a listener added during an announcement is
// first called for the next change; and a listener may read the registries but not change
// them.
//
// Threads: any number of threads may convert, verify and parse (convert,
// verifyUnitCompositionString and the calls built on it) while others register or
// remove units; each such call sees the registries before or after a change, never
// during one. The queries, and what the registry hands out of itself, are read without
// the lock (units/RegistryLock.hpp has the whole contract).
//
// Example:
//   UnitManager* units = UnitManager::Instance();
//   units->convert(1.0, "mile", "meter");                  // 1609.344
//   auto* furlong = new UnitRepresentation("furlong", "meter", 201.168, 0.0, true);
//   units->registerUnit(furlong);                          // the registry owns it
//   units->unregisterUnit("meter");                        // raises "Unit:CannotUnregisterBuiltin"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "units/CompositionCache.hpp"
#include "units/UnitBase.hpp"
#include "units/UnitManagerData.hpp"
#include "units/UnitRepresentation.hpp"

class StringVector;

namespace TwUnits {

class DimensionalAnalysisManager;
class DimensionalAnalysisManagerApi;
class PhysicalQuantityManager;
class PhysicalQuantityManagerApi;
class QuantityDimensionApi;
class QuantityStringParserApi;
class UnitBase;
class UnitComposition;
class UnitConverterManager;
class UnitConverterManagerApi;
class UnitPrefixApi;
class UnitPrefixManager;
class UnitPrefixManagerApi;
class UnitSystem;
class UnitSystemApi;
class UnitSystemManager;
class UnitSystemManagerApi;

class UnitManager {
 public:
  using Listener = UnitManagerData::Listener;
  // (quantity index, unit index); (-1, -1) for none.
  using UnitAddress = std::pair<int, int>;

  // Registration codes of the checks.
  enum RegistrationCode {
    NEW_UNIT_NEW_QUANTITY = 0,  // a new unit whose dimensions no quantity has yet
    NOTHING_TO_REGISTER = 1,    // the same definition, or a prefix on a registered unit
    REDEFINITION = 2,           // a registered user unit of the same quantity, redefined
    NEW_UNIT = 3,               // a new unit of a registered quantity
  };

  // The singleton. The first call creates it, publishes it and only then sets it up,
  // so calls made during set-up get the registry being set up.
  static UnitManager* Instance();

  virtual ~UnitManager();
  UnitManager(const UnitManager&) = delete;
  UnitManager& operator=(const UnitManager&) = delete;

  PhysicalQuantityManagerApi* getPhysicalQuantityManagerApi() const;
  UnitPrefixManagerApi* getUnitPrefixManagerApi() const;
  UnitSystemManagerApi* getUnitSystemManagerApi() const;
  UnitConverterManagerApi* getUnitConverterManagerApi() const;
  DimensionalAnalysisManagerApi* getDimensionalAnalysisManagerApi() const;
  QuantityStringParserApi* getQuantityStringParserApi() const;
  // Returns a new default definition; the caller owns it until it registers it.
  UnitRepresentationApi* createUnitRepresentationApi() const;

  // ---- Queries. Names match exactly; "kilogram" is a composition, not a unit.
  bool isUnitRegistered(int quantity, const std::string& name) const;
  bool isUnitRegistered(const std::string& name) const;
  // The name's index within the quantity, or -1.
  int getUnitIndex(int quantity, const std::string& name) const;
  UnitAddress getUnitIndexAndPhysQuantIndex(const std::string& name) const;
  // The quantity index of a registered unit name, or -1.
  int getUnitPhysicalQuantityType(const std::string& name) const;
  // The registry keeps the definitions it hands out. Index queries raise
  // std::out_of_range beyond the lists; the name queries answer null.
  UnitRepresentation* getUnitRepresentation(int quantity, int index) const;
  UnitRepresentation* getUnitRepresentation(const std::string& name) const;
  UnitRepresentationApi* getUnitRepresentationApi(const std::string& name) const;
  const UnitComposition* getUnitComposition(int quantity, int index) const;
  const UnitComposition* getUnitComposition(int quantity, const std::string& name) const;
  // A derived unit's composition string; a built-in base unit's own name; otherwise
  // the canonical text of its stored composition.
  std::string getUnitCompositionAsString(int quantity, const std::string& name) const;
  // 0 for a quantity index beyond the lists.
  unsigned getNumUnits(int quantity) const;
  // Returns a new list of the quantity's unit names in index order; the caller owns it.
  StringVector* getQuantityUnitStrings(int quantity) const;
  // The quantity's own name list, not copied; read it again after a change.
  const std::vector<std::string>& getQuantityUnitStrings2(int quantity) const;
  bool isUnitBuiltin(int quantity, int index) const;
  bool isUnitBuiltin(int quantity, const std::string& name) const;
  bool isUnitBuiltin(const std::string& name) const;
  // Whether the name is a unit of one of the seven base quantities.
  bool isBaseUnit(const std::string& name) const;
  // Whether a registered prefix begins the text.
  bool isPrefixStringOnUnit(const std::string& text) const;
  // The prefix's name (if any) followed by the unit's name: "kilo" and "gram" give
  // "kilogram". Raises std::out_of_range for indexes outside the registry.
  void createUnitStringFromUnitBase(const UnitBase& unit, std::string& name) const;
  // The unit that a unit system names for a base quantity: a registered unit of that
  // quantity, maybe after a prefix. Raises "Unit:NotFound" with the name when it is no
  // unit, and "CALVEX:badArgument" when it is a unit of another quantity.
  UnitBase getSystemUnit(const std::string& name, int baseQuantity) const;
  // The first registered unit system that names the unit (with or without a prefix), or a
  // unit with the prefix; null if none.
  const UnitSystem* getSystemIfUnitUsed(int quantity, int index) const;
  const UnitSystem* getSystemIfPrefixUsed(int prefixIndex) const;
  // The first unit, quantities and units in index order, whose stored composition or
  // composition string uses the unit; (-1, -1) if none.
  UnitAddress getUnitIfUsedInComposition(int quantity, int index) const;
  UnitAddress getUnitIfPrefixUsedInComposition(int prefixIndex) const;

  // ---- Composition texts.
  // The resolved composition of the text, from the cache or parsed and cached; the
  // cache keeps it. Registers an anonymous quantity for new dimensions, and warns
  // "Unit:Deprecation" on every use of a deprecated unit's name. Parse errors pass.
  UnitComposition* verifyUnitCompositionString(const std::string& text);
  bool errForInvalidUnitComposition(const std::string& text);
  int getQuantityIdxFromCompositionString(const std::string& text);
  // The registered quantity of the text (the registry keeps it), or null when the
  // text does not resolve.
  const QuantityDimensionApi* getQuantityDimensionFromComposition(const std::string& text);
  // Returns when the text is a time unit or a composition of time; raises
  // "Unit:EmptyTimeUnits" or "Unit:InvalidTimeUnits".
  virtual void validateTimeUnits(const std::string& text);
  // The cache's composition for the text, or null; the parser resolves names here.
  const UnitComposition* getCachedComposition(const std::string& text) const;
  // Whether the text is the name of a deprecated unit, which warns on every use.
  bool warnsOnUse(const std::string& text) const {
    const UnitRepresentationApi* unit = cache_.lookup(text).unit;
    return unit != nullptr && !unit->getLibraryVisible();
  }
  // The cache's entry for the text; its mark says that the text is a user unit's name
  // or names one.
  CompositionCache::Found findCached(std::string_view text) const { return cache_.lookup(text); }

  // ---- Changes.
  // Registers, redefines or ignores the definition. Every check runs before anything
  // changes: a refused registration leaves the registries as they were and the definition
  // with the caller. The registry owns the definition when it is registered
  // (getUnitRepresentation(name) == definition), also when the call then raises a
  // listener's error; with NOTHING_TO_REGISTER it stays with the caller.
  void registerUnit(UnitRepresentationApi* definition);
  // Removes a user unit; later units of its quantity move down one index. Raises
  // "Unit:NotFound", "Unit:CannotUnregisterBuiltin" or "Unit:BeingUsed" before anything
  // changes.
  void unregisterUnit(const std::string& name);
  // The unit's address when unregisterUnit would remove it; raises its refusal otherwise.
  UnitAddress requireRemovable(const std::string& name) const;
  // The checks of registration, without changes; returns the registration code.
  int verifyUnitForRegistration(const UnitRepresentationApi* definition) const;
  int checkForPrefixInRegisteringUnitName(const std::string& name,
                                          const UnitRepresentationApi* definition) const;
  int checkForAlreadyRegisteredUnit(const UnitComposition* composition,
                                    const UnitRepresentationApi* definition, int quantity) const;
  // Removes the old definition of a unit being redefined and, when `own` is given,
  // caches it as the name's composition.
  void unregisterUnitForUnitRegistration(const UnitRepresentationApi* definition,
                                         std::unique_ptr<UnitComposition> own);
  void addUnitRegisteredListener(const Listener& listener);
  void addUnitUnregisteredListener(const Listener& listener);
  // The change veto of every registered definition: always raises.
  void unitChangedEvent(const UnitRepresentationApi* definition,
                        UnitRepresentationApi::UNIT_REP_PROPERTY property);
  void notifyPhysicalQuantityAdded(const QuantityDimensionApi* quantity);
  void notifyPhysicalQuantityRemoved(const QuantityDimensionApi* quantity, unsigned long index);
  // Raises "Unit:BeingUsed", naming the user, when a unit of another quantity uses a unit
  // of the quantity, so that removing the quantity would fail part way. Changes nothing.
  void verifyQuantityRemoval(int quantity) const;
  // Refuses the removal of a prefix that a unit's definition uses ("Unit:PrefixBeingUsed").
  void notifyPrefixBeingRemoved(const UnitPrefixApi* prefix);
  // Forgets the cached texts whose names the new prefix now begins.
  void notifyPrefixAdded(const UnitPrefixApi* prefix);
  // Returns the value in `from` converted to `to`, prefixes and multipliers applied,
  // with no heap allocation once this thread has converted between the same two texts
  // and no registry has changed since. Raises as
  // UnitConverterManager::getConverter(from, to) does.
  double convert(double value, const std::string& from, const std::string& to) const;
  // Returns a new composition of the same quantity in the system's units (the caller
  // owns it), and sets multiplierAndOffset to the conversion from the text into it.
  UnitComposition* createUnitCompApiForUnitSystem(
      const std::string& composition, const UnitSystemApi* system,
      std::pair<double, double>& multiplierAndOffset) const;
  void incrementNumUnits(int quantity);

  int getNumQuantityLists() const { return static_cast<int>(units_.size()); }

 private:
  UnitManager();

  void setup();
  void setupBuiltinUnits();
  void setupBuiltinBaseUnits();
  void setupBuiltinDerivedUnits();
  void registerInternalListeners();
  void attachChangeVeto(UnitRepresentation* definition);
  void appendQuantityLists();
  void addBaseUnit(int quantity, const char* name, bool libraryVisible);
  // Gives the registry the unit as the quantity's last; returns its index.
  int appendUnit(int quantity, const std::string& name,
                 std::unique_ptr<UnitRepresentation> definition,
                 const UnitComposition& composition);
  void markCompositionsStale();
  // Calls visit on every composition the registry keeps: the units' and the cached texts'.
  void forEachComposition(const std::function<void(UnitComposition&)>& visit);
  // Whether a cached text that is no unit's name writes the prefix.
  bool namesPrefix(std::string_view text, const std::string& prefixName) const;
  std::string unitName(int quantity, int index) const;
  // The unit and prefix that a system's unit name stands for, if it names a unit at all.
  std::optional<UnitBase> findSystemUnit(const std::string& name) const;
  // The first registered system that names a unit for which `uses` is true.
  template <typename Uses>
  const UnitSystem* findSystemUsing(Uses uses) const;
  bool isUserUnit(const std::string& name) const;
  // The user units whose names the text writes, prefixes stripped.
  std::vector<std::string> userUnitsNamedBy(const std::string& text) const;
  // Records that the text, cached, names these user units.
  void noteTextNames(const std::string& text, const std::vector<std::string>& userUnits);
  // Removes the unit's entries from the index of what names what.
  void forgetNames(const std::string& name, const std::string& compositionText);

  std::unique_ptr<UnitManagerData> data_;
  UnitSystemManager* unitSystems_ = nullptr;
  PhysicalQuantityManager* quantities_ = nullptr;
  UnitPrefixManager* prefixes_ = nullptr;
  UnitConverterManager* converters_ = nullptr;
  DimensionalAnalysisManager* dimensions_ = nullptr;

  // A quantity's units. Each unit keeps its definition and stored composition in a place
  // of its own, which no removal moves (a removal frees a place for the next unit). The
  // units in index order are one compact list of their serial numbers (increasing) and
  // places: a unit's index is its position there, so a removal renumbers the later units
  // by moving 8 bytes each, and touches nothing else of theirs.
  struct UnitList {
    static constexpr int kPlaceBits = 24;
    std::size_t place(std::size_t index) const {
      return static_cast<std::size_t>(order.at(index) & ((1U << kPlaceBits) - 1));
    }
    std::vector<std::uint64_t> order;  // serial << kPlaceBits | place, in index order
    std::vector<std::unique_ptr<UnitRepresentation>> definitions;  // by place
    std::vector<std::unique_ptr<UnitComposition>> compositions;    // by place
    std::vector<std::uint32_t> freePlaces;
    // The names in index order, as getQuantityUnitStrings2 hands them out: a registration
    // appends to them, a removal only marks them stale, and the next read writes them anew.
    mutable std::vector<std::string> names;
    mutable bool namesStale = false;
  };
  // Per quantity index, aligned with the quantity registry.
  std::vector<UnitList> units_;
  std::vector<unsigned> unitCounts_;
  // Per built-in quantity: units below this index are built-in.
  std::vector<int> builtinCounts_;

  // Unit names are short: the cache's hash reads them a word at a time, where the
  // standard one costs more than the rest of a cached conversion's look-up.
  struct NameHash {
    std::size_t operator()(const std::string& name) const {
      return static_cast<std::size_t>(CompositionCache::hashOf(name));
    }
  };
  struct Place {
    int quantity;
    std::uint64_t serial;
  };
  // Where each registered name lives; names are unique across quantities.
  std::unordered_map<std::string, Place, NameHash> places_;
  std::uint64_t nextSerial_ = 0;
  // Per user unit, the user definitions whose composition strings name it and the
  // cached texts that do ("kilofurlong", "furlong/hour"); texts that left the cache
  // since may remain.
  struct Namers {
    std::vector<std::string> definitions;
    std::vector<std::string> texts;
  };
  std::unordered_map<std::string, Namers, NameHash> namers_;
  // The cache owns these compositions: one per unit name and per verified text.
  CompositionCache cache_;
};

}  // namespace TwUnits
