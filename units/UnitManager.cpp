#include "units/UnitManager.hpp"

#include <algorithm>
#include <atomic>
#include <boost/bind/bind.hpp>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include "host/ArgumentError.hpp"
#include "host/ErrorIdException.hpp"
#include "host/Numeric.hpp"
#include "host/StringUtils.hpp"
#include "host/StringVector.hpp"
#include "units/Announcement.hpp"
#include "units/BuiltinUnits.hpp"
#include "units/DimensionalAnalysisManager.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/RegistryHooks.hpp"
#include "units/RegistryLock.hpp"
#include "units/UnitBase.hpp"
#include "units/UnitChangeEvent.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitConverter.hpp"
#include "units/UnitConverterManager.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystemManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

namespace {

constexpr int kLastBaseQuantity = 6;
constexpr int kTimeIndex = 3;
constexpr int kTemperatureIndex = 4;
constexpr int kDimensionlessIndex = PhysicalQuantityManager::kDimensionlessIndex;
const UnitManager::UnitAddress kNoUnit{-1, -1};

template <typename List>
auto& at(List& lists, int index) {
  return lists.at(static_cast<std::size_t>(index));
}

// Whether the unit at `user` uses the unit `name` at `used`: its composition holds it, or
// its text names it (a prefix registered since can change how a text splits).
bool uses(const UnitManager& units, UnitManager::UnitAddress user, UnitManager::UnitAddress used,
          const std::string& name) {
  return units.getUnitComposition(user.first, user.second)->containsUnit(used.first, used.second) ||
         QuantityStringParser::Instance()->doesStringContainUnit(
             units.getUnitRepresentation(user.first, user.second)->getCompositionString(), name);
}

}  // namespace

UnitManager* UnitManager::Instance() {
  static std::atomic<UnitManager*> ready{nullptr};
  if (UnitManager* done = ready.load(std::memory_order_acquire)) return done;
  // The set-up runs under the lock: other threads wait for its end, while calls that it
  // makes itself get the registry being set up.
  RegistryLock::Hold hold;
  static UnitManager* instance = nullptr;
  if (instance == nullptr) {
    instance = new UnitManager();
    instance->setup();
    ready.store(instance, std::memory_order_release);
  }
  return instance;
}

UnitManager::UnitManager() = default;

UnitManager::~UnitManager() = default;

// ---------------------------------------------------------------- set-up

void UnitManager::setup() {
  data_ = std::make_unique<UnitManagerData>();
  registerUnitsMessageCatalog();
  prefixes_ = UnitPrefixManager::Instance();
  quantities_ = PhysicalQuantityManager::Instance();
  unitSystems_ = UnitSystemManager::Instance();
  converters_ = UnitConverterManager::Instance();
  dimensions_ = DimensionalAnalysisManager::Instance();
  // The only listener while the built-in units are set up, the attached hook (the binding's
  // host objects): built-in units post no change events.
  if (registryHooks().unitRegistered)
    data_->registered.emplace_back(registryHooks().unitRegistered);
  prefixes_->setupPrefixes();
  quantities_->setupQuantities();
  setupBuiltinUnits();
  registerInternalListeners();
}

void UnitManager::appendQuantityLists() {
  units_.emplace_back();
  unitCounts_.push_back(0);
}

void UnitManager::setupBuiltinUnits() {
  // Quantities registered before the unit registry existed get their lists too.
  while (getNumQuantityLists() < quantities_->getNumQuantities()) appendQuantityLists();
  setupBuiltinBaseUnits();
  setupBuiltinDerivedUnits();
  for (int q = 0; q < PhysicalQuantityManager::kBuiltinQuantityCount; ++q)
    builtinCounts_.push_back(static_cast<int>(at(unitCounts_, q)));
}

void UnitManager::addBaseUnit(int quantity, const char* name, bool libraryVisible) {
  const auto index = static_cast<std::uint32_t>(at(units_, quantity).order.size());
  // "dimensionless" is the empty composition; every other base unit is itself.
  UnitComposition composition;
  if (quantity != kDimensionlessIndex)
    composition = UnitComposition(UnitBase(static_cast<std::uint32_t>(quantity), index, -1));
  auto owned = std::make_unique<UnitRepresentation>(name, name, 1.0, 0.0, libraryVisible);
  UnitRepresentation* definition = owned.get();
  appendUnit(quantity, name, std::move(owned), composition);
  cache_.assign(name, std::make_unique<UnitComposition>(composition));
  cache_.setUnit(name, definition, false);
}

int UnitManager::appendUnit(int quantity, const std::string& name,
                            std::unique_ptr<UnitRepresentation> definition,
                            const UnitComposition& composition) {
  UnitList& list = at(units_, quantity);
  const std::size_t place =
      list.freePlaces.empty() ? list.definitions.size() : list.freePlaces.back();
  if (place >= (std::size_t{1} << UnitList::kPlaceBits) ||
      nextSerial_ >= (std::uint64_t{1} << (64 - UnitList::kPlaceBits)))
    throw std::length_error("the unit registry cannot hold so many units");
  auto stored = std::make_unique<UnitComposition>(composition);
  if (place == list.definitions.size()) {
    list.definitions.emplace_back();
    list.compositions.emplace_back();
  } else {
    list.freePlaces.pop_back();
  }
  list.definitions[place] = std::move(definition);
  list.compositions[place] = std::move(stored);
  const int index = static_cast<int>(list.order.size());
  list.order.push_back(nextSerial_ << UnitList::kPlaceBits | place);
  places_[name] = {quantity, nextSerial_++};
  if (!list.namesStale) list.names.push_back(name);
  return index;
}

void UnitManager::setupBuiltinBaseUnits() {
  for (const BuiltinBaseUnit& unit : kBuiltinBaseUnits)
    addBaseUnit(unit.quantity, unit.name, unit.visible);
  for (const BuiltinBaseConverter& c : kBuiltinBaseConverters) {
    converters_->addBuiltinBaseUnitConverter(c.quantity, c.unit, c.reference, c.multiplier,
                                             c.offset);
  }
  incrementNumUnits(kDimensionlessIndex);

  // "dimensionless" is neither announced nor guarded.
  for (int q = 0; q <= kLastBaseQuantity; ++q) {
    const int count = static_cast<int>(at(units_, q).order.size());
    for (int u = 0; u < count; ++u) data_->runreg(getUnitRepresentation(q, u));
    for (int u = 0; u < count; ++u) attachChangeVeto(getUnitRepresentation(q, u));
  }
}

void UnitManager::setupBuiltinDerivedUnits() {
  for (const BuiltinDerivedUnit& unit : kBuiltinDerivedUnits) {
    auto definition = std::make_unique<UnitRepresentation>();
    definition->setName(unit.name);
    definition->setCompositionString(unit.composition);
    definition->setMultiplier(unit.multiplier);
    registerUnit(definition.get());
    definition.release();  // every built-in unit registers: the registry owns it
  }
}

void UnitManager::registerInternalListeners() {
  using namespace boost::placeholders;
  UnitChangeEvent* sender = UnitChangeEvent::Instance();
  addUnitRegisteredListener(boost::bind(&UnitChangeEvent::postUnitCreated, sender, _1));
  addUnitUnregisteredListener(boost::bind(&UnitChangeEvent::postUnitRemoved, sender, _1));
  data_->removalHook = registryHooks().unitRemoved;
  // The registry's own lists follow every quantity and prefix as part of the change, not
  // as listeners: listeners may not change the registries.
  quantities_->setUnitRegistryFollower(
      boost::bind(&UnitManager::notifyPhysicalQuantityAdded, this, _1),
      boost::bind(&UnitManager::notifyPhysicalQuantityRemoved, this, _1, _2));
  prefixes_->setUnitRegistryFollower(boost::bind(&UnitManager::notifyPrefixAdded, this, _1),
                                     boost::bind(&UnitManager::notifyPrefixBeingRemoved, this, _1));
}

void UnitManager::attachChangeVeto(UnitRepresentation* definition) {
  using namespace boost::placeholders;
  definition->addChangeListener(boost::bind(&UnitManager::unitChangedEvent, this, _1, _2));
}

// ---------------------------------------------------------------- services

PhysicalQuantityManagerApi* UnitManager::getPhysicalQuantityManagerApi() const {
  return quantities_;
}
UnitPrefixManagerApi* UnitManager::getUnitPrefixManagerApi() const { return prefixes_; }
UnitSystemManagerApi* UnitManager::getUnitSystemManagerApi() const { return unitSystems_; }
UnitConverterManagerApi* UnitManager::getUnitConverterManagerApi() const { return converters_; }
DimensionalAnalysisManagerApi* UnitManager::getDimensionalAnalysisManagerApi() const {
  return dimensions_;
}
QuantityStringParserApi* UnitManager::getQuantityStringParserApi() const {
  return QuantityStringParser::Instance();
}
UnitRepresentationApi* UnitManager::createUnitRepresentationApi() const {
  return new UnitRepresentation();
}

// ---------------------------------------------------------------- queries

bool UnitManager::isUnitRegistered(int quantity, const std::string& name) const {
  return getUnitIndex(quantity, name) != -1;
}

bool UnitManager::isUnitRegistered(const std::string& name) const {
  return places_.count(name) > 0;
}

int UnitManager::getUnitIndex(int quantity, const std::string& name) const {
  UnitAddress address = getUnitIndexAndPhysQuantIndex(name);
  return address.first == quantity ? address.second : -1;
}

UnitManager::UnitAddress UnitManager::getUnitIndexAndPhysQuantIndex(const std::string& name) const {
  auto found = places_.find(name);
  if (found == places_.end()) return kNoUnit;
  const auto& order = at(units_, found->second.quantity).order;
  const std::uint64_t serial = found->second.serial;
  auto position = std::lower_bound(order.begin(), order.end(), serial,
                                   [](std::uint64_t unit, std::uint64_t wanted) {
                                     return unit >> UnitList::kPlaceBits < wanted;
                                   });
  return {found->second.quantity, static_cast<int>(position - order.begin())};
}

int UnitManager::getUnitPhysicalQuantityType(const std::string& name) const {
  auto found = places_.find(name);
  return found == places_.end() ? -1 : found->second.quantity;
}

UnitRepresentation* UnitManager::getUnitRepresentation(int quantity, int index) const {
  const UnitList& list = at(units_, quantity);
  return list.definitions[list.place(static_cast<std::size_t>(index))].get();
}

UnitRepresentation* UnitManager::getUnitRepresentation(const std::string& name) const {
  UnitAddress address = getUnitIndexAndPhysQuantIndex(name);
  return address == kNoUnit ? nullptr : getUnitRepresentation(address.first, address.second);
}

UnitRepresentationApi* UnitManager::getUnitRepresentationApi(const std::string& name) const {
  return getUnitRepresentation(name);
}

const UnitComposition* UnitManager::getUnitComposition(int quantity, int index) const {
  const UnitList& list = at(units_, quantity);
  return list.compositions[list.place(static_cast<std::size_t>(index))].get();
}

const UnitComposition* UnitManager::getUnitComposition(int quantity,
                                                       const std::string& name) const {
  return getUnitComposition(quantity, getUnitIndex(quantity, name));
}

std::string UnitManager::getUnitCompositionAsString(int quantity, const std::string& name) const {
  int index = getUnitIndex(quantity, name);
  if (quantity > kLastBaseQuantity)
    return getUnitRepresentation(quantity, index)->getCompositionString();
  if (isUnitBuiltin(quantity, index)) return name;
  return getUnitComposition(quantity, index)->getCompositionString();
}

unsigned UnitManager::getNumUnits(int quantity) const {
  if (quantity < 0 || quantity >= static_cast<int>(unitCounts_.size())) return 0;
  return unitCounts_[static_cast<std::size_t>(quantity)];
}

StringVector* UnitManager::getQuantityUnitStrings(int quantity) const {
  auto names = std::make_unique<StringVector>();
  for (const std::string& name : getQuantityUnitStrings2(quantity)) names->addElement(name.c_str());
  return names.release();
}

const std::vector<std::string>& UnitManager::getQuantityUnitStrings2(int quantity) const {
  // Readers that hold no lock may ask at once; stale names are written anew under it.
  RegistryLock::Hold hold;
  const UnitList& list = at(units_, quantity);
  if (list.namesStale) {
    list.names.resize(list.order.size());
    for (std::size_t u = 0; u < list.order.size(); ++u)
      list.names[u] = list.definitions[list.place(u)]->getName();
    list.namesStale = false;
  }
  return list.names;
}

std::string UnitManager::unitName(int quantity, int index) const {
  return getUnitRepresentation(quantity, index)->getName();
}

bool UnitManager::isUnitBuiltin(int quantity, int index) const {
  if (quantity < 0 || quantity >= static_cast<int>(builtinCounts_.size())) return false;
  return index >= 0 && index < builtinCounts_[static_cast<std::size_t>(quantity)];
}

bool UnitManager::isUnitBuiltin(int quantity, const std::string& name) const {
  return isUnitBuiltin(quantity, getUnitIndex(quantity, name));
}

bool UnitManager::isUnitBuiltin(const std::string& name) const {
  int quantity = getUnitPhysicalQuantityType(name);
  return quantity != -1 && isUnitBuiltin(quantity, name);
}

bool UnitManager::isBaseUnit(const std::string& name) const {
  UnitAddress address = getUnitIndexAndPhysQuantIndex(name);
  return address.first >= 0 && address.first <= kLastBaseQuantity;
}

bool UnitManager::isPrefixStringOnUnit(const std::string& text) const {
  std::string rest = text, prefixName;
  return !std::isnan(prefixes_->stripPrefixAndGetMultiplier(rest, prefixName));
}

void UnitManager::createUnitStringFromUnitBase(const UnitBase& unit, std::string& name) const {
  std::string unitPart =
      unitName(static_cast<int>(unit.getPQIdx()), static_cast<int>(unit.getUnitIdx()));
  int prefix = unit.getPrefixIdx();
  if (prefix != -1 && (prefix < 0 || prefix >= prefixes_->getNumPrefixes())) {
    throw std::out_of_range("prefix index out of range");
  }
  name = prefix == -1 ? unitPart : prefixes_->getUnitPrefixAsString(prefix) + unitPart;
}

bool UnitManager::isUserUnit(const std::string& name) const {
  UnitAddress address = getUnitIndexAndPhysQuantIndex(name);
  // Every unit registered during set-up is built-in; builtinCounts_ fills at its end.
  return address != kNoUnit && !builtinCounts_.empty() &&
         !isUnitBuiltin(address.first, address.second);
}

UnitManager::UnitAddress UnitManager::getUnitIfUsedInComposition(int quantity, int index) const {
  const std::string name = unitName(quantity, index);
  const QuantityStringParser* parser = QuantityStringParser::Instance();
  if (!isUnitBuiltin(quantity, index)) {
    // No composition holds a user unit, and the definitions that named it when they
    // were registered are indexed; whether they still do is asked again, since a new
    // prefix can change how a name splits.
    UnitAddress first = kNoUnit;
    auto namers = namers_.find(name);
    if (namers == namers_.end()) return first;
    for (const std::string& user : namers->second.definitions) {
      UnitAddress address = getUnitIndexAndPhysQuantIndex(user);
      if (address == kNoUnit) continue;  // named it under a split that a prefix since changed
      if ((first == kNoUnit || address < first) &&
          parser->doesStringContainUnit(getUnitRepresentation(user)->getCompositionString(), name))
        first = address;
    }
    return first;
  }
  for (int q = 0; q < getNumQuantityLists(); ++q) {
    for (int u = 0; u < static_cast<int>(at(units_, q).order.size()); ++u) {
      if (uses(*this, {q, u}, {quantity, index}, name)) return {q, u};
    }
  }
  return kNoUnit;
}

std::optional<UnitBase> UnitManager::findSystemUnit(const std::string& name) const {
  std::string unit = name;
  int prefix = -1;
  if (!isUnitRegistered(name)) {
    std::string prefixName;
    if (!std::isnan(prefixes_->stripPrefixAndGetMultiplier(unit, prefixName)))
      prefix = prefixes_->getPrefixIndex(prefixName);
  }
  UnitAddress address = getUnitIndexAndPhysQuantIndex(unit);
  if (address == kNoUnit) return std::nullopt;
  return UnitBase(static_cast<std::uint32_t>(address.first),
                  static_cast<std::uint32_t>(address.second), prefix);
}

UnitBase UnitManager::getSystemUnit(const std::string& name, int baseQuantity) const {
  static const char* const kBaseNames[] = {
      "amount", "mass", "length", "time", "temperature", "current", "luminous intensity"};
  std::optional<UnitBase> unit = findSystemUnit(name);
  if (!unit) raiseError(errors::NotFound, name);
  if (static_cast<int>(unit->getPQIdx()) != baseQuantity) {
    const std::string base = kBaseNames[baseQuantity];
    raiseArgumentError(base + " unit", "must be a unit of " + base + ", not '" + name + "'");
  }
  return *unit;
}

template <typename Uses>
const UnitSystem* UnitManager::findSystemUsing(Uses uses) const {
  for (const auto& system : unitSystems_->getUnitSystems()) {
    for (unsigned b = 0; b <= kLastBaseQuantity; ++b) {
      std::optional<UnitBase> unit = findSystemUnit(getBaseUnitOf(*system, b));
      if (unit && uses(*unit)) return system.get();
    }
  }
  return nullptr;
}

const UnitSystem* UnitManager::getSystemIfUnitUsed(int quantity, int index) const {
  return findSystemUsing([&](const UnitBase& unit) {
    return static_cast<int>(unit.getPQIdx()) == quantity &&
           static_cast<int>(unit.getUnitIdx()) == index;
  });
}

const UnitSystem* UnitManager::getSystemIfPrefixUsed(int prefixIndex) const {
  return findSystemUsing([&](const UnitBase& unit) { return unit.getPrefixIdx() == prefixIndex; });
}

UnitManager::UnitAddress UnitManager::getUnitIfPrefixUsedInComposition(int prefixIndex) const {
  for (int q = 0; q < getNumQuantityLists(); ++q) {
    for (int u = 0; u < static_cast<int>(at(units_, q).order.size()); ++u) {
      if (getUnitComposition(q, u)->containsPrefix(prefixIndex)) return {q, u};
    }
  }
  return kNoUnit;
}

// ---------------------------------------------------------------- composition texts

const UnitComposition* UnitManager::getCachedComposition(const std::string& text) const {
  return cache_.find(text);
}

UnitComposition* UnitManager::verifyUnitCompositionString(const std::string& text) {
  RegistryLock::Hold hold;
  std::vector<std::string> named;
  CompositionCache::Found found = cache_.findOrInsert(
      text, [&] { return QuantityStringParser::Instance()->parseUnitComposition(text, &named); });
  UnitComposition* composition = found.composition;
  if (!named.empty()) noteTextNames(text, named);
  // A registered unit's name has an entry that knows the unit.
  if (found.unit != nullptr && !found.unit->getLibraryVisible()) warnOfDeprecatedUnit(text);
  if (composition->getCombinedUnitsQuantityType() != -1) return composition;
  quantities_->registerAnonymousPQ(composition);
  composition->markQuantityStale();
  return composition;
}

bool UnitManager::errForInvalidUnitComposition(const std::string& text) {
  return verifyUnitCompositionString(text) != nullptr;
}

int UnitManager::getQuantityIdxFromCompositionString(const std::string& text) {
  RegistryLock::Hold hold;
  return verifyUnitCompositionString(text)->getCombinedUnitsQuantityType();
}

const QuantityDimensionApi* UnitManager::getQuantityDimensionFromComposition(
    const std::string& text) {
  RegistryLock::Hold hold;
  try {
    return quantities_->getQuantityDimensionApi(getQuantityIdxFromCompositionString(text));
  } catch (Exception* raised) {
    adoptError(raised);
  } catch (const std::exception&) {
  }
  return nullptr;
}

void UnitManager::validateTimeUnits(const std::string& text) {
  RegistryLock::Hold hold;
  if (text.empty()) raiseError(errors::EmptyTimeUnits);
  int quantity = -1;
  try {
    quantity = getQuantityIdxFromCompositionString(text);
  } catch (ErrorIdException* raised) {
    if (std::strcmp(raised->getIdentifier(), errors::NotFound.identifier) != 0) throw;
    adoptError(raised);
  }
  if (quantity != kTimeIndex) raiseError(errors::InvalidTimeUnits, text);
}

// ---------------------------------------------------------------- registration checks

int UnitManager::verifyUnitForRegistration(const UnitRepresentationApi* definition) const {
  const std::string& name = definition->getName();
  // "Inf" and "NaN" are identifiers, but in a composition they are numbers.
  if (!isValidCALVEXIdentifier(name) ||
      QuantityStringParser::getTokenEnum(name) != QuantityStringParserApi::NAME) {
    raiseError(errors::NameInvalid);
  }
  if (checkForPrefixInRegisteringUnitName(name, definition) == NOTHING_TO_REGISTER)
    return NOTHING_TO_REGISTER;

  // A cached text's composition is the parse's result; a text that is not cached is
  // parsed without caching it, so that a refused registration leaves no trace.
  const QuantityStringParser* parser = QuantityStringParser::Instance();
  const UnitComposition* cached = cache_.find(definition->getCompositionString());
  UnitComposition composition =
      cached != nullptr ? UnitComposition(*cached)
                        : parser->parseUnitComposition(definition->getCompositionString());
  composition.setMultiplier(composition.getMultiplier() * definition->getMultiplier());
  int quantity = composition.getCombinedUnitsQuantityType();
  if (parser->doesStringContainUnit(definition->getCompositionString(), name)) {
    raiseError(errors::SelfReferenceInComposition);
  }
  if (!utEqualWithinEps(definition->getOffset(), 0.0) && quantity != kTemperatureIndex) {
    raiseError(errors::OffsetUnitsTemperatureOnly);
  }
  if (utEqualWithinEps(definition->getMultiplier(), 0.0))
    raiseError(errors::ConversionFunctionZero);
  requireFinite(definition->getMultiplier(), "multiplier");
  requireFinite(definition->getOffset(), "offset");
  return checkForAlreadyRegisteredUnit(&composition, definition, quantity);
}

int UnitManager::checkForPrefixInRegisteringUnitName(
    const std::string& name, const UnitRepresentationApi* definition) const {
  std::string rest = name, prefixName;
  double prefixMultiplier = prefixes_->stripPrefixAndGetMultiplier(rest, prefixName);
  if (std::isnan(prefixMultiplier)) return NEW_UNIT;
  if (!utEqualWithinEps(definition->getMultiplier(), prefixMultiplier)) {
    raiseError(errors::NameClashesWithPrefix2, name, prefixName);
  }
  if (isUnitRegistered(rest)) return NOTHING_TO_REGISTER;
  raiseError(errors::NameClashesWithPrefix, name, prefixName);
}

int UnitManager::checkForAlreadyRegisteredUnit(const UnitComposition* composition,
                                               const UnitRepresentationApi* definition,
                                               int quantity) const {
  const std::string& name = definition->getName();
  UnitAddress registered = getUnitIndexAndPhysQuantIndex(name);
  if (registered == kNoUnit) {
    return composition->getCombinedUnitsQuantityType() != -1 ? NEW_UNIT : NEW_UNIT_NEW_QUANTITY;
  }
  if (isUnitBuiltin(registered.first, registered.second))
    raiseError(errors::CannotUnregisterBuiltin);
  if (registered.first != quantity) raiseError(errors::DuplicateName, name);
  const UnitRepresentation* old = getUnitRepresentation(registered.first, registered.second);
  if (utEqualWithinEps(old->getMultiplier(), definition->getMultiplier()) &&
      utEqualWithinEps(old->getOffset(), definition->getOffset()) &&
      old->getCompositionString() == definition->getCompositionString()) {
    return NOTHING_TO_REGISTER;
  }
  issueWarning(errors::Redefining, name);
  return REDEFINITION;
}

// ---------------------------------------------------------------- registration

namespace {

UnitComposition scaled(const UnitComposition& composition, double multiplier) {
  UnitComposition copy(composition);
  copy.setMultiplier(copy.getMultiplier() * multiplier);
  return copy;
}

}  // namespace

void UnitManager::registerUnit(UnitRepresentationApi* definitionApi) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  auto* definition = dynamic_cast<UnitRepresentation*>(definitionApi);
  if (definition == nullptr)
    throw std::invalid_argument("registerUnit needs a TwUnits::UnitRepresentation");
  Announcement announcement;
  const int code = verifyUnitForRegistration(definition);
  const std::string name = definition->getName();
  const std::string compositionText = definition->getCompositionString();
  const double multiplier = definition->getMultiplier();
  // Registers the anonymous quantity of a new unit's dimensions; nothing that can refuse
  // follows it.
  UnitComposition* composition = verifyUnitCompositionString(compositionText);
  if (code == NOTHING_TO_REGISTER) {
    // The name resolves through the cache from now on: a prefixed name such as
    // "kilofurlong" is a text that names its unit.
    if (!cache_.contains(name)) {
      cache_.insert(name, std::make_unique<UnitComposition>(scaled(*composition, multiplier)));
      noteTextNames(name, userUnitsNamedBy(name));
    }
    announcement.finish();
    return;
  }
  const int quantity = composition->getCombinedUnitsQuantityType();
  if (code == REDEFINITION) requireRemovable(name);

  // Everything that can fail is worked out before the registries change. A unit of a base
  // quantity is stored in base units: its composition string becomes the expansion's text
  // and its multiplier takes in the expansion's, so that the stored definition and its
  // table converter give one unit's true value.
  std::string expansionText;
  if (quantity <= kLastBaseQuantity) {
    UnitComposition expansion(*composition);
    bool reduced = expansion.getNumerator().size() + expansion.getDenominator().size() >= 2;
    if (reduced) {
      expansion.cancelRepeats();
      expansionText = expansion.getCompositionString();
      verifyUnitCompositionString(expansionText);
    }
    double offset = definition->getOffset();
    // An offset is written against the unit named as the composition; stored against the
    // reference unit, it takes in that unit's multiplier and offset as well.
    if (const UnitRepresentation* written = getUnitRepresentation(compositionText))
      offset = expansion.getMultiplier() * offset + written->getOffset();
    definition->setCompositionString(expansion.getCompositionString());
    definition->setMultiplier(multiplier * expansion.getMultiplier());
    definition->setOffset(offset);
  }

  if (code == REDEFINITION) {
    unregisterUnitForUnitRegistration(definition, nullptr);  // its listeners may refuse
    composition = verifyUnitCompositionString(compositionText);
  }
  announcement.commit();
  cache_.assign(name, std::make_unique<UnitComposition>(scaled(*composition, multiplier)));
  // The expansion's own text is stored where one was worked out.
  if (!expansionText.empty()) composition = verifyUnitCompositionString(expansionText);

  while (getNumQuantityLists() <= quantity) appendQuantityLists();
  const int index = static_cast<int>(getNumUnits(quantity));
  // The registry owns the definition now.
  appendUnit(quantity, name, std::unique_ptr<UnitRepresentation>(definition), *composition);
  cache_.setUnit(name, definition, isUserUnit(name));
  if (quantity <= kLastBaseQuantity) {
    const UnitBase& reference = *composition->getNumerator().begin();
    double toReference = definition->getMultiplier();
    if (reference.getPrefixIdx() != -1)
      toReference *= prefixes_->getPrefixMultiplier(reference.getPrefixIdx());
    converters_->addBaseUnitConverter(quantity, index, static_cast<int>(reference.getUnitIdx()),
                                      new UnitConverter(toReference, definition->getOffset()));
  } else {
    incrementNumUnits(quantity);
  }
  // Only a composition string that names a user unit has a marked entry.
  if (cache_.lookup(compositionText).marked) {
    for (const std::string& named : userUnitsNamedBy(definition->getCompositionString()))
      namers_[named].definitions.push_back(name);
  }
  attachChangeVeto(definition);
  announcement.tell(data_->registered, definition);
  announcement.finish();
}

void UnitManager::unregisterUnitForUnitRegistration(const UnitRepresentationApi* definition,
                                                    std::unique_ptr<UnitComposition> own) {
  unregisterUnit(definition->getName());
  if (own) cache_.assign(definition->getName(), std::move(own));
}

void UnitManager::unitChangedEvent(const UnitRepresentationApi* definition,
                                   UnitRepresentationApi::UNIT_REP_PROPERTY) {
  RegistryLock::Hold hold;
  int quantity = getUnitPhysicalQuantityType(definition->getName());
  int index = getUnitIndex(quantity, definition->getName());
  if (isUnitBuiltin(quantity, index)) raiseError(errors::CannotUnregisterBuiltin);
  UnitAddress user = getUnitIfUsedInComposition(quantity, index);
  if (user != kNoUnit) raiseError(errors::BeingUsed, unitName(user.first, user.second));
  raiseError(errors::RegisteredUnitCannotChange);
}

// ---------------------------------------------------------------- removal

UnitManager::UnitAddress UnitManager::requireRemovable(const std::string& name) const {
  UnitAddress address = getUnitIndexAndPhysQuantIndex(name);
  if (address == kNoUnit) raiseError(errors::NotFound, name);
  if (isUnitBuiltin(address.first, address.second)) raiseError(errors::CannotUnregisterBuiltin);
  UnitAddress user = getUnitIfUsedInComposition(address.first, address.second);
  if (user != kNoUnit) raiseError(errors::BeingUsed, unitName(user.first, user.second));
  if (const UnitSystem* system = getSystemIfUnitUsed(address.first, address.second))
    raiseError(errors::BeingUsed, system->getUnitSystemName());
  return address;
}

void UnitManager::unregisterUnit(const std::string& name) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  const UnitAddress address = requireRemovable(name);
  const int quantity = address.first;
  const int index = address.second;
  Announcement announcement;
  UnitRepresentation* definition = getUnitRepresentation(quantity, index);
  announcement.offer(data_->unregistered, definition);
  announcement.commit();
  if (data_->removalHook) announcement.call([&] { data_->removalHook(definition); });

  forgetNames(name, definition->getCompositionString());
  cache_.erase(name);
  --at(unitCounts_, quantity);
  places_.erase(name);
  UnitList& list = at(units_, quantity);
  const std::size_t place = list.place(static_cast<std::size_t>(index));
  list.freePlaces.push_back(static_cast<std::uint32_t>(place));
  list.compositions[place].reset();
  list.definitions[place].reset();
  // Only the compact list moves; the names are written anew when next read, unless the
  // last unit went.
  list.order.erase(list.order.begin() + index);
  if (!list.namesStale) {
    if (static_cast<std::size_t>(index) + 1 == list.names.size()) {
      list.names.pop_back();
    } else {
      list.namesStale = true;
    }
  }
  if (quantity <= kLastBaseQuantity) converters_->removeConversionFunctionsForUnit(quantity, index);
  announcement.finish();
}

std::vector<std::string> UnitManager::userUnitsNamedBy(const std::string& text) const {
  std::vector<std::string> named;
  for (std::string& unit : QuantityStringParser::Instance()->getUnitNamesInString(text)) {
    if (isUserUnit(unit) && std::find(named.begin(), named.end(), unit) == named.end())
      named.push_back(std::move(unit));
  }
  return named;
}

void UnitManager::noteTextNames(const std::string& text,
                                const std::vector<std::string>& userUnits) {
  if (userUnits.empty()) return;
  cache_.mark(text);
  for (const std::string& unit : userUnits) {
    std::vector<std::string>& texts = namers_[unit].texts;
    if (texts.empty() || texts.back() != text) texts.push_back(text);
  }
}

void UnitManager::forgetNames(const std::string& name, const std::string& compositionText) {
  // A cached text that names the unit ("kilofurlong", "furlong/hour") was resolved with
  // this definition; kept, it would outlive the unit and survive its redefinition.
  if (auto namers = namers_.find(name); namers != namers_.end()) {
    for (const std::string& text : namers->second.texts) {
      if (!isUnitRegistered(text)) cache_.erase(text);
    }
    namers_.erase(namers);
  }
  for (const std::string& named : userUnitsNamedBy(compositionText)) {
    std::vector<std::string>& users = namers_[named].definitions;
    users.erase(std::remove(users.begin(), users.end(), name), users.end());
  }
}

bool UnitManager::namesPrefix(std::string_view text, const std::string& prefixName) const {
  // A unit's name is no text that carries a prefix; most texts do not write the name.
  if (text.find(prefixName) == std::string_view::npos) return false;
  std::string written(text);
  return places_.count(written) == 0 &&
         QuantityStringParser::Instance()->doesStringContainPrefix(written, prefixName);
}

void UnitManager::notifyPrefixBeingRemoved(const UnitPrefixApi* prefix) {
  int prefixIndex = prefixes_->getPrefixIndex(prefix->getName());
  UnitAddress user = getUnitIfPrefixUsedInComposition(prefixIndex);
  if (user != kNoUnit) raiseError(errors::PrefixBeingUsed, unitName(user.first, user.second));
  // A cached text that wrote the prefix is stale even where the prefix went into its
  // multiplier ("myriahertz": hertz has no unit to carry it).
  cache_.eraseIf([&](std::string_view text, const UnitComposition& composition) {
    return composition.containsPrefix(prefixIndex) || namesPrefix(text, prefix->getName());
  });
  // Later prefixes are about to move down one index; compositions follow them.
  forEachComposition([prefixIndex](UnitComposition& composition) {
    composition.shiftPrefixIndexesAfterRemoval(prefixIndex);
  });
}

void UnitManager::notifyPrefixAdded(const UnitPrefixApi* prefix) {
  // The first prefix in name order is the one stripped: a new prefix that begins a longer
  // one's name ("my" before "myria") reads "myriameter" anew, as "my" and "riameter".
  cache_.eraseIf([&](std::string_view text, const UnitComposition&) {
    return namesPrefix(text, prefix->getName());
  });
}

void UnitManager::forEachComposition(const std::function<void(UnitComposition&)>& visit) {
  for (UnitList& list : units_) {
    for (auto& composition : list.compositions) {
      if (composition) visit(*composition);
    }
  }
  cache_.forEach(visit);
}

// ---------------------------------------------------------------- quantities

void UnitManager::notifyPhysicalQuantityAdded(const QuantityDimensionApi*) {
  appendQuantityLists();
}

void UnitManager::verifyQuantityRemoval(int quantity) const {
  // The quantity's units go from the last to the first, and a unit of the quantity only
  // ever uses earlier ones: only a unit of another quantity can refuse. The first one the
  // removal would meet is named.
  for (int u = static_cast<int>(getNumUnits(quantity)) - 1; u >= 0; --u) {
    const std::string name = unitName(quantity, u);
    for (int q = 0; q < getNumQuantityLists(); ++q) {
      if (q == quantity) continue;
      for (int other = 0; other < static_cast<int>(at(units_, q).order.size()); ++other) {
        if (uses(*this, {q, other}, {quantity, u}, name))
          raiseError(errors::BeingUsed, unitName(q, other));
      }
    }
  }
}

void UnitManager::notifyPhysicalQuantityRemoved(const QuantityDimensionApi*, unsigned long index) {
  int quantity = static_cast<int>(index);
  for (int u = static_cast<int>(getNumUnits(quantity)) - 1; u >= 0; --u)
    unregisterUnit(unitName(quantity, u));
  std::size_t position = static_cast<std::size_t>(quantity);
  if (position >= units_.size()) return;
  units_.erase(units_.begin() + quantity);
  unitCounts_.erase(unitCounts_.begin() + quantity);
  // Later quantities move down one index.
  for (auto& [name, place] : places_) {
    if (place.quantity > quantity) --place.quantity;
  }
  markCompositionsStale();
}

void UnitManager::markCompositionsStale() {
  forEachComposition([](UnitComposition& composition) { composition.markQuantityStale(); });
}

void UnitManager::incrementNumUnits(int quantity) {
  if (quantity == static_cast<int>(unitCounts_.size())) unitCounts_.push_back(0);
  ++at(unitCounts_, quantity);
}

void UnitManager::addUnitRegisteredListener(const Listener& listener) {
  data_->registered.push_back(listener);
}

void UnitManager::addUnitUnregisteredListener(const Listener& listener) {
  data_->unregistered.push_back(listener);
}

// ---------------------------------------------------------------- conversion

double UnitManager::convert(double value, const std::string& from, const std::string& to) const {
  return converters_->getConverter(from, to).doConversion(value);
}

UnitComposition* UnitManager::createUnitCompApiForUnitSystem(
    const std::string& composition, const UnitSystemApi* system,
    std::pair<double, double>& multiplierAndOffset) const {
  RegistryLock::Hold hold;
  std::unique_ptr<UnitComposition> parsed(
      QuantityStringParser::Instance()->createUnitCompFromString(composition));
  int quantity = parsed->getCombinedUnitsQuantityType();
  if (quantity == -1) quantity = Instance()->getQuantityIdxFromCompositionString(composition);
  auto inSystem = std::make_unique<UnitComposition>(quantity, system);
  std::unique_ptr<UnitConverter> converter(
      converters_->getQuantityUnitConverter(composition, inSystem->getCompositionString()));
  multiplierAndOffset = {converter->getMultiplier(), converter->getOffset()};
  return inSystem.release();
}

}  // namespace TwUnits
