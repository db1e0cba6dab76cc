#include "units/UnitPrefixManager.hpp"

#include <boost/bind/bind.hpp>
#include <limits>
#include <stdexcept>

#include "host/ArgumentError.hpp"
#include "host/Numeric.hpp"
#include "host/StringUtils.hpp"
#include "host/StringVector.hpp"
#include "units/Announcement.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/RegistryHooks.hpp"
#include "units/RegistryLock.hpp"
#include "units/UnitBase.hpp"
#include "units/UnitChangeEvent.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitSystem.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

namespace {

struct BuiltinPrefix {
  const char* name;
  const char* alias;
  int exponent;
};

// The order is the prefix index, which compositions refer to.
constexpr BuiltinPrefix kBuiltinPrefixes[] = {
    {"tera", "T", 12},   {"giga", "G", 9},   {"mega", "M", 6},  {"kilo", "k", 3},
    {"hecto", "h", 2},   {"deka", "D", 1},   {"deci", "d", -1}, {"centi", "c", -2},
    {"milli", "m", -3},  {"micro", "u", -6}, {"nano", "n", -9}, {"pico", "p", -12},
    {"femto", "f", -15},
};
static_assert(std::size(kBuiltinPrefixes) == UnitPrefixManager::kBuiltinPrefixCount);

bool beginsWith(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && text.compare(0, start.size(), start) == 0;
}

}  // namespace

UnitPrefixManager* UnitPrefixManager::_instance = nullptr;

UnitPrefixManager* UnitPrefixManager::Instance() {
  if (_instance == nullptr) _instance = new UnitPrefixManager();
  return _instance;
}

UnitPrefixManager::UnitPrefixManager() : listeners_(std::make_unique<Listeners>()) {
  registerInternalListeners();
}

UnitPrefixManager::~UnitPrefixManager() = default;

void UnitPrefixManager::registerInternalListeners() {
  using namespace boost::placeholders;
  const RegistryHooks& hooks = registryHooks();
  if (hooks.prefixRegistered) listeners_->registered.emplace_back(hooks.prefixRegistered);
  listeners_->removal = hooks.prefixRemoved;
  UnitChangeEvent* sender = UnitChangeEvent::Instance();
  addUnitPrefixRegisteredListener(boost::bind(&UnitChangeEvent::postPrefixCreated, sender, _1));
  addUnitPrefixUnregisteredListener(boost::bind(&UnitChangeEvent::postPrefixRemoved, sender, _1));
}

void UnitPrefixManager::setupPrefixes() {
  for (const BuiltinPrefix& builtin : kBuiltinPrefixes) {
    prefixes_.push_back(
        std::make_unique<UnitPrefix>(builtin.name, builtin.exponent, builtin.alias));
  }
  for (const auto& prefix : prefixes_) {
    byName_.emplace(prefix->getName(), prefix.get());
    names_.push_back(prefix->getName());
    for (const Listener& listener : listeners_->registered) listener(prefix.get());
    attachChangeGuard(prefix.get());
  }
  builtinCount_ = static_cast<int>(prefixes_.size());
}

void UnitPrefixManager::attachChangeGuard(UnitPrefix* prefix) {
  using namespace boost::placeholders;
  prefix->addChangeListener(boost::bind(&UnitPrefixManager::prefixChangedEvent, this, _1, _2));
}

void UnitPrefixManager::addUnitPrefixRegisteredListener(const Listener& listener) {
  listeners_->registered.push_back(listener);
}

void UnitPrefixManager::addUnitPrefixUnregisteredListener(const Listener& listener) {
  listeners_->unregistered.push_back(listener);
}

bool UnitPrefixManager::verifyUnitPrefix(const UnitPrefix* prefix) const {
  const std::string& name = prefix->getName();
  if (name.empty()) raiseError(errors::PrefixUnsetName);
  if (!isValidCALVEXIdentifier(name)) raiseError(errors::PrefixNameInvalid);
  auto registered = byName_.find(name);
  if (registered != byName_.end()) {
    if (getPrefixIndex(name) < builtinCount_) raiseError(errors::PrefixCannotUnregisterBuiltin);
    if (registered->second->getExponent() == prefix->getExponent()) return true;
    raiseError(errors::PrefixDuplicateName, name);
  }
  // A text that reads as another prefix and a unit keeps its meaning: the new prefix may
  // not come first, in name order, where what it leaves is a unit too.
  bool overlaps = false;
  for (const auto& [other, unused] : byName_)
    overlaps = overlaps || beginsWith(other, name) || beginsWith(name, other);
  UnitManager* units = UnitManager::Instance();
  std::string changed;
  int quantityCount = PhysicalQuantityManager::Instance()->getNumQuantities();
  for (int q = 0; q < quantityCount; ++q) {
    std::unique_ptr<StringVector> unitNames(units->getQuantityUnitStrings(q));
    for (int u = 0; u < unitNames->size(); ++u) {
      std::string unitName = unitNames->elementAt(u);
      if (beginsWith(unitName, name)) raiseError(errors::PrefixUnitNameCollision, name, unitName);
      if (!overlaps || !changed.empty()) continue;
      const std::string text = name + unitName;
      const UnitPrefix* current = findLeadingPrefix(text);
      if (current != nullptr && name < current->getName() &&
          units->isUnitRegistered(text.substr(current->getName().size()))) {
        changed = text;
      }
    }
  }
  if (!changed.empty())
    raiseArgumentError("prefix '" + name + "'", "must not change what '" + changed + "' means");
  return false;
}

void UnitPrefixManager::registerPrefix(UnitPrefixApi* prefixApi) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  auto* prefix = dynamic_cast<UnitPrefix*>(prefixApi);
  if (prefix == nullptr) throw std::invalid_argument("registerPrefix needs a TwUnits::UnitPrefix");
  if (verifyUnitPrefix(prefix)) return;  // the same prefix is registered; the caller keeps this one
  // A composition's unit holds its prefix's index in 16 bits.
  if (prefixes_.size() >= static_cast<std::size_t>(UnitBase::kPrefixLimit))
    raiseArgumentError("prefix", "cannot be registered: 65535 prefixes are, the most there can be");
  Announcement announcement;
  attachChangeGuard(prefix);
  prefixes_.emplace_back(prefix);
  byName_.emplace(prefix->getName(), prefix);
  names_.push_back(prefix->getName());
  if (listeners_->added) listeners_->added(prefix);
  announcement.tell(listeners_->registered, prefix);
  announcement.finish();
}

void UnitPrefixManager::setUnitRegistryFollower(const Listener& added, const Listener& removing) {
  listeners_->added = added;
  listeners_->removing = removing;
}

void UnitPrefixManager::prefixChangedEvent(const UnitPrefixApi* prefix,
                                           UnitPrefixApi::UNIT_PREFIX_PROPERTY) {
  if (isPrefixBuiltin(prefix->getName())) raiseError(errors::PrefixCannotUnregisterBuiltin);
  raiseError(errors::RegisteredPrefixCannotChange);
}

void UnitPrefixManager::unregisterPrefix(const std::string& name) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  int index = getPrefixIndex(name);
  if (index == -1) raiseError(errors::PrefixNotFound, name);
  if (index < builtinCount_) raiseError(errors::PrefixCannotUnregisterBuiltin);
  UnitPrefix* prefix = byName_.at(name);
  // A unit that uses the prefix refuses before any listener hears of it.
  UnitManager* units = UnitManager::Instance();
  UnitManager::UnitAddress user = units->getUnitIfPrefixUsedInComposition(index);
  if (user.first != -1) {
    raiseError(
        errors::PrefixBeingUsed,
        units->getQuantityUnitStrings2(user.first).at(static_cast<std::size_t>(user.second)));
  }
  if (const UnitSystem* system = units->getSystemIfPrefixUsed(index))
    raiseError(errors::PrefixBeingUsed, system->getUnitSystemName());
  Announcement announcement;
  announcement.offer(listeners_->unregistered, prefix);
  announcement.commit();
  if (listeners_->removal) announcement.call([&] { listeners_->removal(prefix); });
  UnitComposition::prefixRemoved(index);
  if (listeners_->removing) listeners_->removing(prefix);
  byName_.erase(name);
  names_.erase(names_.begin() + index);
  prefixes_.erase(prefixes_.begin() + index);
  announcement.finish();
}

bool UnitPrefixManager::isPrefixBuiltin(const std::string& name) const {
  int index = getPrefixIndex(name);
  return index >= 0 && index < kBuiltinPrefixCount;
}

bool UnitPrefixManager::isPrefixRegistered(const std::string& name) const {
  return byName_.count(name) > 0;
}

UnitPrefixApi* UnitPrefixManager::getUnitPrefixApi(const std::string& name) const {
  auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

UnitPrefixApi* UnitPrefixManager::createUnitPrefixApi() const { return new UnitPrefix(); }

int UnitPrefixManager::getPrefixIndex(const std::string& name) const {
  for (std::size_t i = 0; i < prefixes_.size(); ++i) {
    if (prefixes_[i]->getName() == name) return static_cast<int>(i);
  }
  return -1;
}

double UnitPrefixManager::getPrefixMultiplier2(const std::string& name) const {
  const UnitPrefixApi* prefix = name.empty() ? nullptr : getUnitPrefixApi(name);
  if (prefix == nullptr) return std::numeric_limits<double>::quiet_NaN();
  return static_cast<const UnitPrefix*>(prefix)->getMult();
}

std::string UnitPrefixManager::getPrefixStringFromMultiplier(double multiplier) const {
  for (const auto& prefix : prefixes_) {
    if (utEqualWithinEps(prefix->getMult(), multiplier)) return prefix->getName();
  }
  return {};
}

StringVector* UnitPrefixManager::getPrefixUnitStrings() const {
  auto list = std::make_unique<StringVector>();
  for (const std::string& name : names_) list->addElement(name.c_str());
  return list.release();
}

// The walk is in byte-wise name order. A prefix that begins another's name ("ki" and
// "kilo") sorts first, but takes the text only when what it leaves is a unit: a new prefix
// never changes what a text of a registered prefix and unit means.
const UnitPrefix* UnitPrefixManager::findLeadingPrefix(std::string_view text) const {
  if (text.empty()) return nullptr;
  const UnitPrefix* longest = nullptr;
  const UnitManager* units = nullptr;
  for (const auto& [name, prefix] : byName_) {
    // Names are in byte order: past the text's first byte, no name can begin it.
    if (static_cast<unsigned char>(name[0]) > static_cast<unsigned char>(text[0])) break;
    if (!beginsWith(text, name)) continue;
    if (units == nullptr) units = UnitManager::Instance();
    if (units->isUnitRegistered(std::string(text.substr(name.size())))) return prefix;
    if (longest == nullptr || name.size() > longest->getName().size()) longest = prefix;
  }
  return longest;
}

std::string UnitPrefixManager::stripPrefixFromSingleUnit(const std::string& unitName) const {
  const UnitPrefix* prefix = findLeadingPrefix(unitName);
  return prefix ? unitName.substr(prefix->getName().size()) : unitName;
}

double UnitPrefixManager::stripPrefixAndGetMultiplier(std::string& unitName,
                                                      std::string& prefixName) const {
  const UnitPrefix* prefix = findLeadingPrefix(unitName);
  if (prefix == nullptr) return std::numeric_limits<double>::quiet_NaN();
  prefixName = prefix->getName();
  unitName.erase(0, prefixName.size());
  return prefix->getMult();
}

}  // namespace TwUnits
