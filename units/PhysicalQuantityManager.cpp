#include "units/PhysicalQuantityManager.hpp"

#include <algorithm>
#include <boost/bind/bind.hpp>
#include <string>

#include "host/StringUtils.hpp"
#include "host/StringVector.hpp"
#include "units/Announcement.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/RegistryLock.hpp"
#include "units/UnitChangeEvent.hpp"
#include "units/UnitComposition.hpp"
#include "units/UnitManager.hpp"
#include "units/messages/UnitErrors.hpp"

namespace TwUnits {

namespace {

struct BuiltinQuantity {
  const char* name;
  int exponents[kBaseDimensionCount];  // amount, mass, length, time, temperature, current, luminous
};

// The order is the quantity index, which units and compositions refer to.
constexpr BuiltinQuantity kBuiltinQuantities[] = {
    {"amount", {1, 0, 0, 0, 0, 0, 0}},
    {"mass", {0, 1, 0, 0, 0, 0, 0}},
    {"length", {0, 0, 1, 0, 0, 0, 0}},
    {"time", {0, 0, 0, 1, 0, 0, 0}},
    {"temperature", {0, 0, 0, 0, 1, 0, 0}},
    {"current", {0, 0, 0, 0, 0, 1, 0}},
    {"luminous_intensity", {0, 0, 0, 0, 0, 0, 1}},
    {"area", {0, 0, 2, 0, 0, 0, 0}},
    {"volume", {0, 0, 3, 0, 0, 0, 0}},
    {"energy", {0, 1, 2, -2, 0, 0, 0}},
    {"velocity", {0, 0, 1, -1, 0, 0, 0}},
    {"acceleration", {0, 0, 1, -2, 0, 0, 0}},
    {"pressure", {0, 1, -1, -2, 0, 0, 0}},
    {"power", {0, 1, 2, -3, 0, 0, 0}},
    {"concentration", {1, 0, -3, 0, 0, 0, 0}},
    {"density", {0, 1, -3, 0, 0, 0, 0}},
    {"frequency", {0, 0, 0, -1, 0, 0, 0}},
    {"force", {0, 1, 1, -2, 0, 0, 0}},
    {"charge", {0, 0, 0, 1, 0, 1, 0}},
    {"potential", {0, 1, 2, -3, 0, -1, 0}},
    {"capacitance", {0, -1, -2, 4, 0, 2, 0}},
    {"resistance", {0, 1, 2, -3, 0, -2, 0}},
    {"conductance", {0, -1, -2, 3, 0, 2, 0}},
    {"magnetic_flux", {0, 1, 2, -2, 0, -1, 0}},
    {"magnetic_flux_density", {0, 1, 0, -2, 0, -1, 0}},
    {"inductance", {0, 1, 2, -2, 0, -2, 0}},
    {"absorbed_dose", {0, 0, 2, -2, 0, 0, 0}},
    {"catalytic_activity", {1, 0, 0, -1, 0, 0, 0}},
    {"one_over_amount_time", {-1, 0, 0, -1, 0, 0, 0}},
    {"one_over_amount_amount_time", {-2, 0, 0, -1, 0, 0, 0}},
    {"mass_over_time", {0, 1, 0, -1, 0, 0, 0}},
    {"concentration_over_time", {1, 0, -3, -1, 0, 0, 0}},
    {"amount_over_length", {1, 0, -1, 0, 0, 0, 0}},
    {"amount_over_length2", {1, 0, -2, 0, 0, 0, 0}},
    {"mass_over_length", {0, 1, -1, 0, 0, 0, 0}},
    {"mass_over_length2", {0, 1, -2, 0, 0, 0, 0}},
    {"dimensionless", {0, 0, 0, 0, 0, 0, 0}},
};
static_assert(std::size(kBuiltinQuantities) == PhysicalQuantityManager::kBuiltinQuantityCount);

// Never reset: anonymous names stay unique for the life of the process.
int anonymousCounter = 0;

}  // namespace

PhysicalQuantityManager* PhysicalQuantityManager::Instance() {
  static PhysicalQuantityManager* instance = new PhysicalQuantityManager();
  return instance;
}

PhysicalQuantityManager::PhysicalQuantityManager() : listeners_(std::make_unique<Listeners>()) {
  setup();
}

PhysicalQuantityManager::~PhysicalQuantityManager() = default;

std::size_t PhysicalQuantityManager::ExponentsHash::operator()(const Exponents& exponents) const {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (int exponent : exponents) {
    hash = (hash ^ static_cast<std::uint32_t>(exponent)) * 0x100000001b3ULL;
    hash ^= hash >> 29;
  }
  return static_cast<std::size_t>(hash);
}

void PhysicalQuantityManager::indexLast() {
  const int index = getNumQuantities() - 1;
  const QuantityDimension& quantity = *quantities_.back();
  Exponents exponents;
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents[b] = quantity.at(b);
  // The first quantity of a name or of dimensions is the one found.
  indexByName_.emplace(std::string_view(quantity.getName()), index);
  indexByExponents_.emplace(exponents, index);
}

void PhysicalQuantityManager::reindex() {
  std::vector<std::unique_ptr<QuantityDimension>> all = std::move(quantities_);
  quantities_.clear();
  indexByName_.clear();
  indexByExponents_.clear();
  for (auto& quantity : all) {
    quantities_.push_back(std::move(quantity));
    indexLast();
  }
}

int PhysicalQuantityManager::indexOf(const Exponents& exponents) const {
  auto found = indexByExponents_.find(exponents);
  return found == indexByExponents_.end() ? -1 : found->second;
}

void PhysicalQuantityManager::setup() {
  quantities_.reserve(kBuiltinQuantityCount);
  for (const BuiltinQuantity& builtin : kBuiltinQuantities) {
    quantities_.push_back(std::make_unique<QuantityDimension>(builtin.exponents, builtin.name));
    indexLast();
  }
  registerInternalListeners();
  builtinCount_ = static_cast<int>(quantities_.size());
}

void PhysicalQuantityManager::setupQuantities() {
  // In front, so that quantities registered before the unit registry existed keep
  // their names aligned with their indexes.
  std::vector<std::string> names;
  names.reserve(kBuiltinQuantityCount + names_.size());
  for (const BuiltinQuantity& builtin : kBuiltinQuantities) names.emplace_back(builtin.name);
  names.insert(names.end(), names_.begin(), names_.end());
  names_ = std::move(names);
}

void PhysicalQuantityManager::registerInternalListeners() {
  using namespace boost::placeholders;
  UnitChangeEvent* sender = UnitChangeEvent::Instance();
  addPhysicalQuantityRegisteredListener(
      boost::bind(&UnitChangeEvent::postQuantityCreated, sender, _1));
  addPhysicalQuantityUnregisteredListener(
      boost::bind(&UnitChangeEvent::postQuantityRemoved, sender, _1, _2));
}

void PhysicalQuantityManager::addPhysicalQuantityRegisteredListener(
    const RegisteredListener& listener) {
  listeners_->registered.push_back(listener);
}

void PhysicalQuantityManager::addPhysicalQuantityUnregisteredListener(
    const UnregisteredListener& listener) {
  listeners_->unregistered.push_back(listener);
}

void PhysicalQuantityManager::setUnitRegistryFollower(const RegisteredListener& added,
                                                      const UnregisteredListener& removed) {
  listeners_->added = added;
  listeners_->removed = removed;
  listeners_->removedAt = listeners_->unregistered.size();
}

void PhysicalQuantityManager::registerPhysicalQuantity(const QuantityDimension* quantity) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  checkNewQuantity(*quantity);
  storeQuantity(const_cast<QuantityDimension*>(quantity));
}

void PhysicalQuantityManager::checkNewQuantity(const QuantityDimension& quantity) const {
  // "Inf" and "NaN" are identifiers, but in a quantity composition they are numbers.
  if (!isValidCALVEXIdentifier(quantity.getName()) ||
      QuantityStringParser::getTokenEnum(quantity.getName()) != QuantityStringParserApi::NAME) {
    raiseError(errors::QuantityNameInvalid);
  }
  // The first conflicting entry in index order decides; its name is tested first.
  const std::string name = quantity.getName();
  const int sameName = getQuantityIdx(name);
  const int sameDimensions = getQuantityIdx(&quantity);
  if (sameName != -1 && (sameDimensions == -1 || sameName <= sameDimensions))
    raiseError(errors::QuantityDuplicateName, name);
  if (sameDimensions != -1) {
    raiseError(errors::QuantityDuplicateDimensions, name,
               quantities_[static_cast<std::size_t>(sameDimensions)]->getName());
  }
}

void PhysicalQuantityManager::storeQuantity(QuantityDimension* quantity) {
  RegistryLock::Change change;
  Announcement announcement;
  names_.push_back(quantity->getName());
  quantities_.emplace_back(quantity);
  indexLast();
  if (listeners_->added) listeners_->added(quantity);
  announcement.tell(listeners_->registered, quantity);
  announcement.finish();
}

void PhysicalQuantityManager::unregisterPhysicalQuantity(const std::string& name) {
  Announcement::refuseInsideListener();
  RegistryLock::Change change;
  int index = -1;
  for (std::size_t i = 0; i < names_.size(); ++i) {
    if (names_[i] == name) {
      index = static_cast<int>(i);
      break;
    }
  }
  if (index < 0) raiseError(errors::QuantityNotFound, name);
  if (index < builtinCount_) raiseError(errors::CannotUnregisterBuiltinQuantity);
  // A unit that uses one of the quantity's units refuses before any listener hears of it.
  UnitManager::Instance()->verifyQuantityRemoval(index);

  // The unit registry removes the quantity's units, each announced, in the place of the
  // listener list where it came in; the listeners before it may refuse the removal.
  Announcement announcement;
  const QuantityDimension* removed = quantities_.at(static_cast<std::size_t>(index)).get();
  const unsigned long position = static_cast<unsigned long>(index);
  const std::vector<UnregisteredListener>& listeners = listeners_->unregistered;
  auto followerAt = listeners.begin() +
                    static_cast<std::ptrdiff_t>(std::min(listeners_->removedAt, listeners.size()));
  const std::vector<UnregisteredListener> before(listeners.begin(), followerAt);
  const std::vector<UnregisteredListener> after(followerAt, listeners.end());
  announcement.offer(before, removed, position);
  announcement.commit();
  if (listeners_->removed) listeners_->removed(removed, position);
  announcement.tell(after, removed, position);

  std::vector<std::unique_ptr<QuantityDimension>> kept;
  kept.reserve(quantities_.size());
  for (auto& quantity : quantities_) {
    if (name != quantity->getName()) kept.push_back(std::move(quantity));
  }
  quantities_ = std::move(kept);
  reindex();  // later quantities moved down one index
  names_.erase(names_.begin() + index);
  announcement.finish();
}

void PhysicalQuantityManager::registerAnonymousPQ(const UnitComposition* composition) {
  // A user quantity may have taken the next name: the one after it is free.
  std::string name;
  do {
    name = "Unnamed_Quant_" + std::to_string(++anonymousCounter);
  } while (getQuantityIdx(name) != -1);
  std::vector<int> numerator, denominator;
  composition->getQuantityIdxVector(numerator, true);
  composition->getQuantityIdxVector(denominator, false);
  QuantityDimension dimensions(&numerator);
  dimensions /= QuantityDimension(&denominator);
  dimensions.setName(name.c_str());
  checkNewQuantity(dimensions);
  storeQuantity(new QuantityDimension(dimensions));
}

const QuantityDimension* PhysicalQuantityManager::getQuantityDimension(int index) const {
  if (index < 0 || index >= getNumQuantities()) return nullptr;
  return quantities_[static_cast<std::size_t>(index)].get();
}

const QuantityDimensionApi* PhysicalQuantityManager::getQuantityDimensionApi(int index) const {
  return getQuantityDimension(index);
}

int PhysicalQuantityManager::getQuantityIdx(const std::string& name) const {
  auto found = indexByName_.find(std::string_view(name));
  return found == indexByName_.end() ? -1 : found->second;
}

int PhysicalQuantityManager::getQuantityIdx(const QuantityDimensionApi* dimensions) const {
  Exponents exponents;
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents[b] = (*dimensions)[b];
  return indexOf(exponents);
}

int PhysicalQuantityManager::getQuantityIdx(const QuantityDimension* dimensions) const {
  // Without a virtual call per exponent.
  Exponents exponents;
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents[b] = dimensions->at(b);
  return indexOf(exponents);
}

int PhysicalQuantityManager::getQuantityIdx(const int* exponents) const {
  Exponents copied;
  std::copy(exponents, exponents + kBaseDimensionCount, copied.begin());
  return indexOf(copied);
}

StringVector* PhysicalQuantityManager::getAllQuantityTypeStrings() const {
  auto list = std::make_unique<StringVector>();
  for (const std::string& name : names_) list->addElement(name.c_str());
  return list.release();
}

QuantityDimension* PhysicalQuantityManager::getCancelingDimensions(
    const QuantityDimension* quantity) const {
  auto canceling = std::make_unique<QuantityDimension>();
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) (*canceling)[b] = -quantity->at(b);
  return canceling.release();
}

QuantityDimensionApi* PhysicalQuantityManager::createQuantityDimensionApi() const {
  return new QuantityDimension();
}

QuantityDimensionApi* PhysicalQuantityManager::createQuantityDimensionApi(
    const QuantityDimensionApi* quantity) const {
  return quantity->clone();
}

}  // namespace TwUnits
