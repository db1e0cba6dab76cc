#include "units/udd/HostObjectSupport.hpp"

#include <climits>
#include <cmath>
#include <memory>

#include "host/DebugQuitException.hpp"
#include "host/ErrorIdException.hpp"
#include "host/HostFunctions.hpp"
#include "host/IUserException.hpp"
#include "host/InterruptException.hpp"
#include "host/Memory.hpp"
#include "host/Numeric.hpp"
#include "host/UDBreadthOnlyIterator.hpp"
#include "host/UDClass.hpp"
#include "host/UDDataType.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfo.hpp"
#include "host/Vector.hpp"

namespace TwUnits::udd {

void requireClass(UDInterface* object, UDClass* cls) {
  if (object == nullptr || object->getClass() != cls) {
    throw new ErrorIdException(
        "CALVEX:badArgumentClass",
        std::string("Expected an object of class '") + cls->getName() + "'.");
  }
}

UDMethodSignature* signature(std::initializer_list<const char*> arguments,
                             std::initializer_list<const char*> results) {
  auto* declared = new UDMethodSignature();
  for (const char* type : arguments) declared->addArgument(type, nullptr);
  for (const char* type : results) declared->addResult(type);
  return declared;
}

void declareProperty(UDPropInfo* property, const char* name, UDDataType* type,
                     const char* description, bool writable, bool visible) {
  property->setName(name, true);
  property->setDataType(type);
  property->setDescription(description);
  property->setExternalSetAccess(writable);
  property->setInternalSetAccess(writable);
  property->setInitAccess(false);
  property->setVisible(visible);
}

unsigned char* newResultBool(bool value) {
  auto* result = static_cast<unsigned char*>(utMallocWithCheck(sizeof(unsigned char)));
  *result = value ? 1 : 0;
  return result;
}

double* newResultDouble(double value) {
  auto* result = static_cast<double*>(utMallocWithCheck(sizeof(double)));
  *result = value;
  return result;
}

namespace {

// The property's value on the object, or null when reading it raised a host error.
void* readOrSkip(UDInterface* object, UDDatabaseClient* client, UDPropInfo* property) {
  try {
    return object->get(client, property);
  } catch (Exception* raised) {
    delete raised;
    return nullptr;
  }
}

}  // namespace

bool compareHostObjects(UDInterface* first, UDInterface* second) {
  if (first->getClass() != second->getClass()) return false;
  UDDatabaseClient* client = UDDatabaseClient::getInternalClient();
  UDBreadthOnlyIterator properties(first->getClass()->getPropertyHolder(), false);
  while (properties.hasMoreElements()) {
    auto* property = static_cast<UDPropInfo*>(properties.nextElement()->getObject());
    void* a = readOrSkip(first, client, property);
    if (a == nullptr) continue;
    void* b = readOrSkip(second, client, property);
    if (b == nullptr) {
      first->release(client, property, a);
      continue;
    }
    bool equal = true;
    try {
      equal = property->getDataType()->isEqual(a, b);
    } catch (Exception* raised) {
      delete raised;
    }
    first->release(client, property, a);
    second->release(client, property, b);
    if (!equal) return false;
  }
  return true;
}

std::string column(const std::string& value, std::size_t width, std::size_t keep) {
  // Characters, not bytes: a UTF-8 character is never cut in two.
  std::size_t characters = 0, cut = value.size();
  for (std::size_t i = 0; i < value.size(); ++i) {
    if ((static_cast<unsigned char>(value[i]) & 0xC0) == 0x80) continue;  // continuation byte
    if (characters++ == keep) cut = i;
  }
  if (characters >= width) return value.substr(0, cut) + "... ";
  return value + std::string(width - characters, ' ');
}

std::string indexColumn(int index) {
  std::string digits = std::to_string(index);
  return digits.size() >= 8 ? "xxx     " : digits + std::string(8 - digits.size(), ' ');
}

std::vector<UDInterface*> displayTargets(UDMethodSignature* matched, UDMethodSignature* single,
                                         void* target) {
  if (matched == single) return {hostObject(target)};
  const auto* objects = static_cast<const Vector*>(target);
  std::vector<UDInterface*> targets;
  for (int i = 0; i < objects->size(); ++i)
    targets.push_back(static_cast<UDInterface*>(objects->elementAt(i)));
  return targets;
}

int roundedToInt(double value) {
  double rounded = utRound(value);
  if (std::isnan(rounded)) return 0;
  if (rounded > INT_MAX) return INT_MAX;
  if (rounded < INT_MIN) return INT_MIN;
  return static_cast<int>(rounded);
}

void callHostFunction(const char* functionName, std::vector<HostArrayPtr> arguments) {
  std::vector<HostArray*> raw;
  for (const HostArrayPtr& argument : arguments) raw.push_back(argument.get());
  try {
    inCallFcn(0, nullptr, static_cast<int>(raw.size()), raw.data(), functionName);
  } catch (const fl::except::IUserException& failure) {
    throw new ErrorIdException(failure.GetIdentifier(), failure.GetMessageTxt());
  } catch (const Tarnwick::System::DebugQuitException&) {
    throw new ErrorIdException("CALVEX:dbquit", "");
  } catch (const Tarnwick::System::InterruptException&) {
    throw new ErrorIdException("CALVEX:interupt", "");
  }
  // A host Exception* and anything else pass unchanged; the arguments are freed with
  // `arguments` on every path.
}

}  // namespace TwUnits::udd
