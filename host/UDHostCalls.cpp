#include "host/UDHostCalls.hpp"

#include <stdexcept>
#include <utility>

#include "host/ErrorIdException.hpp"
#include "host/Format.hpp"
#include "host/HostArray.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDDataType.hpp"
#include "host/UDDatabaseClient.hpp"
#include "host/UDInterface.hpp"
#include "host/UDMethodInfo.hpp"
#include "host/UDMethodSignature.hpp"
#include "host/UDPropInfo.hpp"

namespace {

// Objects that methods handed over with hostReleaseAfterCall, in order; each call
// releases those added while it ran, after its results hold their own references.
std::vector<UDInterface*>& objectsToRelease() {
  static std::vector<UDInterface*> objects;
  return objects;
}

class ReleasedAfterCall {
 public:
  ReleasedAfterCall() : mark_(objectsToRelease().size()) {}
  ReleasedAfterCall(const ReleasedAfterCall&) = delete;
  ReleasedAfterCall& operator=(const ReleasedAfterCall&) = delete;
  ~ReleasedAfterCall() {
    std::vector<UDInterface*>& objects = objectsToRelease();
    while (objects.size() > mark_) {
      UDInterface* object = objects.back();
      objects.pop_back();
      object->release();
    }
  }

 private:
  std::size_t mark_;
};

[[noreturn]] void raise(const char* identifier, std::string message) {
  throw new ErrorIdException(identifier, std::move(message));
}

void requireValid(const UDInterface* object) {
  if (object == nullptr || !object->isValid())
    raise("CALVEX:InvalidObject", "Invalid or deleted object.");
}

UDPropInfo* findPropertyOf(const UDInterface* object, const std::string& name) {
  requireValid(object);
  const UDClass* cls = object->getClass();
  UDPropInfo* property = cls->findProperty(name.c_str());
  if (property == nullptr) {
    raise("CALVEX:noSuchProperty",
          utFormat("There is no '%s' property in the '%s' class.", name.c_str(), cls->getName()));
  }
  if (property->getDataType() == nullptr)
    throw std::logic_error("property '" + name + "' has no data type");
  return property;
}

UDMethodInfo* findMethodFor(const std::string& name, const std::vector<const HostArray*>& args) {
  for (const HostArray* arg : args) {
    if (arg == nullptr) throw std::invalid_argument("hostInvokeMethod: null argument");
  }
  if (args.empty())
    raise("CALVEX:UndefinedFunction", "Undefined function or variable '" + name + "'.");
  const HostArray& target = *args[0];
  if (target.getClassId() != HostArray::ClassId::Handle) {
    raise("CALVEX:UndefinedFunction",
          utFormat("Undefined function '%s' for input arguments of type '%s'.", name.c_str(),
                   target.getClassName()));
  }
  if (target.isEmpty()) {
    raise("CALVEX:UndefinedFunction",
          utFormat("Undefined function '%s' for an empty handle array.", name.c_str()));
  }
  for (const HostArray* arg : args) {
    if (arg->getClassId() != HostArray::ClassId::Handle) continue;
    for (std::size_t i = 0; i < arg->getNumberOfElements(); ++i) requireValid(arg->getHandle(i));
  }
  const UDClass* cls = target.getHandle(0)->getClass();
  UDMethodInfo* method = cls->findMethod(name.c_str());
  if (method == nullptr) {
    raise("CALVEX:UndefinedFunction",
          utFormat("Undefined function '%s' for input arguments of type '%s'.", name.c_str(),
                   cls->getName()));
  }
  return method;
}

bool fits(const UDMethodSignature& signature, int nargout,
          const std::vector<const HostArray*>& args) {
  int count = static_cast<int>(args.size());
  if (!signature.acceptsArgumentCount(count) || signature.getResultCount() < nargout) return false;
  for (int i = 0; i < count; ++i) {
    if (!signature.getTypeAtPosition(i)->acceptsHostValue(args[static_cast<std::size_t>(i)]))
      return false;
  }
  return true;
}

// The arguments of one call in native form, released when the call is over.
class NativeArguments {
 public:
  NativeArguments() = default;
  NativeArguments(const NativeArguments&) = delete;
  NativeArguments& operator=(const NativeArguments&) = delete;
  ~NativeArguments() {
    for (std::size_t i = 0; i < natives_.size(); ++i) types_[i]->releaseArgument(natives_[i]);
  }

  // Converted one by one, so that a failing conversion leaves the earlier ones to the
  // destructor.
  void convert(const UDMethodSignature& signature, const std::vector<const HostArray*>& args) {
    natives_.reserve(args.size());
    types_.reserve(args.size());
    for (std::size_t i = 0; i < args.size(); ++i) {
      UDDataType* type = signature.getTypeAtPosition(static_cast<int>(i));
      natives_.push_back(type->fromHostValue(args[i]));
      types_.push_back(type);
    }
  }

  int count() const { return static_cast<int>(natives_.size()); }
  void** data() { return natives_.data(); }

 private:
  std::vector<void*> natives_;
  std::vector<UDDataType*> types_;
};

// One slot per result type of the signature. What the method leaves in them is taken
// over by take(), or freed by the destructor when the call fails.
class ResultSlots {
 public:
  explicit ResultSlots(const UDMethodSignature& signature)
      : signature_(signature), slots_(static_cast<std::size_t>(signature.getResultCount())) {}
  ResultSlots(const ResultSlots&) = delete;
  ResultSlots& operator=(const ResultSlots&) = delete;
  ~ResultSlots() {
    for (std::size_t k = 0; k < slots_.size(); ++k) {
      if (slots_[k] == nullptr) continue;
      // takeResult frees the slot even when it fails; a second failure while another
      // error unwinds has nowhere to go.
      try {
        HostArray::destroy(typeOf(k)->takeResult(slots_[k]));
      } catch (...) {
      }
    }
  }

  void** data() { return slots_.data(); }

  // Results the method gave become host values; a slot among the first `given` that it
  // left empty is the type's empty value (a method answering "no object" gives an
  // empty handle).
  std::vector<HostArray*> take(int given) {
    std::vector<HostArrayPtr> values(slots_.size());
    for (std::size_t k = 0; k < slots_.size(); ++k) {
      if (slots_[k] != nullptr) {
        values[k].reset(typeOf(k)->takeResult(std::exchange(slots_[k], nullptr)));
      } else if (static_cast<int>(k) < given) {
        values[k].reset(typeOf(k)->toHostValue(nullptr));
      }
    }
    std::vector<HostArray*> results;
    results.reserve(values.size());
    for (HostArrayPtr& value : values) results.push_back(value.release());
    return results;
  }

 private:
  UDDataType* typeOf(std::size_t k) const { return signature_.getResultType(static_cast<int>(k)); }

  const UDMethodSignature& signature_;
  std::vector<void*> slots_;
};

std::string describeSignature(const char* name, const UDMethodSignature& signature) {
  std::string text = std::string(name) + "(";
  for (int i = 0; i < signature.getArgumentCount(); ++i) {
    if (i > 0) text += ", ";
    text += signature.getArgumentType(i)->getName();
    if (*signature.getArgumentName(i) != '\0')
      text += std::string(" ") + signature.getArgumentName(i);
  }
  if (signature.getLastArgumentRepeats()) text += ", ...";
  text += ")";
  for (int k = 0; k < signature.getResultCount(); ++k) {
    text += (k == 0 ? " -> " : ", ");
    text += signature.getResultType(k)->getName();
  }
  return text;
}

}  // namespace

UDInterface* hostConstruct(const std::string& className) {
  UDClass* cls = UDApplicationManager::findClass(className.c_str());
  if (cls == nullptr)
    raise("CALVEX:UndefinedFunction", "Undefined function or variable '" + className + "'.");
  UDInterface* object = cls->createObject(nullptr, nullptr);
  if (object == nullptr) {
    raise("CALVEX:CannotConstruct", "Cannot construct an object of the '" + className + "' class.");
  }
  object->internalToExternal();
  return object;
}

HostArray* hostGetProperty(UDInterface* object, const std::string& name) {
  UDPropInfo* property = findPropertyOf(object, name);
  UDDatabaseClient* client = UDDatabaseClient::getInternalClient();
  void* value = object->get(client, property);
  HostArrayPtr result;
  try {
    result.reset(property->getDataType()->toHostValue(value));
  } catch (...) {
    object->release(client, property, value);
    throw;
  }
  object->release(client, property, value);
  return result.release();
}

void hostSetProperty(UDInterface* object, const std::string& name, const HostArray* value) {
  if (value == nullptr) throw std::invalid_argument("hostSetProperty: null value");
  UDPropInfo* property = findPropertyOf(object, name);
  UDDataType* type = property->getDataType();
  if (!type->acceptsHostValue(value)) {
    raise("CALVEX:badPropertyValue",
          utFormat(
              "The '%s' property of the '%s' class takes a value of type '%s', not a %s array.",
              name.c_str(), object->getClass()->getName(), type->getName(), value->getClassName()));
  }
  void* native = type->fromHostValue(value);
  try {
    object->set(UDDatabaseClient::getInternalClient(), property, native);
  } catch (...) {
    type->releaseArgument(native);
    throw;
  }
  type->releaseArgument(native);
}

std::vector<HostArray*> hostInvokeMethod(const std::string& method, int nargout,
                                         const std::vector<const HostArray*>& args) {
  UDMethodInfo* info = findMethodFor(method, args);
  UDMethodSignature* matched = nullptr;
  for (UDMethodSignature* signature : info->getSignatures()) {
    if (fits(*signature, nargout, args)) {
      matched = signature;
      break;
    }
  }
  if (matched == nullptr) {
    raise("CALVEX:NoMatchingSignature",
          utFormat("No method '%s' with matching signature found for class '%s'.", method.c_str(),
                   args[0]->getHandle(0)->getClass()->getName()));
  }
  NativeArguments natives;
  natives.convert(*matched, args);
  ReleasedAfterCall handedOver;
  ResultSlots results(*matched);
  int nResults = nargout;
  info->invokeMethod(matched, &nResults, results.data(), natives.count(), natives.data());
  return results.take(nResults);
}

void hostReleaseAfterCall(UDInterface* object) { objectsToRelease().push_back(object); }

std::string hostDescribeClass(const UDClass* cls) {
  std::string text = std::string("Class ") + cls->getName() + "\n";
  text += "Methods:\n";
  for (const UDClass* c = cls; c != nullptr; c = c->getSuperClass()) {
    for (const UDMethodInfo* method : c->getMethods()) {
      if (cls->findMethod(method->getName()) != method) continue;  // shadowed in a subclass
      for (const UDMethodSignature* signature : method->getSignatures())
        text += "  " + describeSignature(method->getName(), *signature) + "\n";
    }
  }
  text += "Properties:\n";
  for (const UDClass* c = cls; c != nullptr; c = c->getSuperClass()) {
    for (const UDPropInfo* property : c->getProperties()) {
      if (!property->getVisible() || cls->findProperty(property->getName()) != property) continue;
      text += utFormat("  %s (%s, %s)", property->getName(),
                       property->getDataType() ? property->getDataType()->getName() : "?",
                       property->getExternalSetAccess() ? "read/write" : "read-only");
      if (*property->getDescription() != '\0')
        text += std::string(": ") + property->getDescription();
      text += "\n";
    }
  }
  return text;
}
