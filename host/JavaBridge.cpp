#include "host/JavaBridge.hpp"

#include <cstring>
#include <memory>
#include <utility>

struct JavaConstructor {
  JavaObject* owner;
  std::string signature;
};

struct JavaObject {
  enum class Kind { Class, String, Event } kind;
  std::string text;
  std::vector<std::unique_ptr<JavaConstructor>> constructors;  // classes only
};

namespace {

constexpr const char* kTwoStringSignature = "(Ljava/lang/String;Ljava/lang/String;)V";

struct Bridge {
  bool on = false;
  std::vector<JavaEvent> queue;
  std::function<void(const JavaEvent&)> listener;
  std::size_t live = 0;
};

Bridge& bridge() {
  static Bridge instance;
  return instance;
}

jobject newObject(JavaObject::Kind kind, std::string text) {
  ++bridge().live;
  return new JavaObject{kind, std::move(text), {}};
}

}  // namespace

bool isZophixUsingJava() { return bridge().on; }

void hostSetUsingJava(bool on) { bridge().on = on; }

jclass hostFindJavaClass(const char* dottedName) {
  if (!bridge().on || dottedName == nullptr || std::strcmp(dottedName, kUnitChangeEventClass) != 0)
    return nullptr;
  return newObject(JavaObject::Kind::Class, dottedName);
}

jmethodID hostGetJavaConstructor(jclass javaClass, const char* signature) {
  if (javaClass == nullptr || javaClass->kind != JavaObject::Kind::Class || signature == nullptr ||
      std::strcmp(signature, kTwoStringSignature) != 0)
    return nullptr;
  javaClass->constructors.push_back(
      std::make_unique<JavaConstructor>(JavaConstructor{javaClass, signature}));
  return javaClass->constructors.back().get();
}

jobject hostNewJavaString(const char* text) {
  if (!bridge().on || text == nullptr) return nullptr;
  return newObject(JavaObject::Kind::String, text);
}

jobject hostNewJavaObject(jmethodID constructor, jobject first, jobject second) {
  if (constructor == nullptr || first == nullptr || second == nullptr) return nullptr;
  JavaEvent event{first->text, second->text};
  bridge().queue.push_back(event);
  if (bridge().listener) bridge().listener(event);
  return newObject(JavaObject::Kind::Event, first->text);
}

void hostReleaseJavaObject(jobject object) {
  if (object == nullptr) return;
  --bridge().live;
  delete object;
}

const std::vector<JavaEvent>& hostJavaEventQueue() { return bridge().queue; }

void hostClearJavaEventQueue() { bridge().queue.clear(); }

void hostSetJavaEventListener(std::function<void(const JavaEvent&)> listener) {
  bridge().listener = std::move(listener);
}

std::size_t hostLiveJavaObjectCount() { return bridge().live; }
