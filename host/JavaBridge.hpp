#pragma once

// File: JavaBridge.hpp
// Our stand-in for the host's Java bridge: an in-process event queue. The host's
// user interface follows the registries through objects of the Java class
// "com.tarnwick.zophix.eventqueue.UnitChangeEvent"; creating one delivers its two
// strings (object name, event type) to the queue, in order.
//
// The bridge is off unless the host switched it on (the shell's --events, or a test)
// before the library first created its change-event sender.
//
// Example:
//   hostSetUsingJava(true);
//   jclass eventClass = hostFindJavaClass("com.tarnwick.zophix.eventqueue.UnitChangeEvent");
//   jmethodID ctor = hostGetJavaConstructor(eventClass, "(Ljava/lang/String;Ljava/lang/String;)V");
//   jobject name = hostNewJavaString("furlong"), type = hostNewJavaString("UNIT_CREATED");
//   hostReleaseJavaObject(hostNewJavaObject(ctor, name, type));  // queue: (furlong, UNIT_CREATED)

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

struct JavaObject;
struct JavaConstructor;
using jobject = JavaObject*;
using jclass = JavaObject*;
using jmethodID = JavaConstructor*;

inline constexpr const char* kUnitChangeEventClass =
    "com.tarnwick.zophix.eventqueue.UnitChangeEvent";

bool isZophixUsingJava();
void hostSetUsingJava(bool on);

// The class of that dotted name, or null when the bridge is off or knows no such
// class. Release it with hostReleaseJavaObject.
jclass hostFindJavaClass(const char* dottedName);

// The constructor of the class with that JNI signature, or null. Constructor handles
// belong to their class.
jmethodID hostGetJavaConstructor(jclass javaClass, const char* signature);

// A new Java string, or null when the bridge is off or the text is null.
jobject hostNewJavaString(const char* text);

// Creates an object with a two-string constructor. For the change-event class this
// appends (first, second) to the event queue. Null on failure.
jobject hostNewJavaObject(jmethodID constructor, jobject first, jobject second);

void hostReleaseJavaObject(jobject object);

struct JavaEvent {
  std::string name;
  std::string type;
};

const std::vector<JavaEvent>& hostJavaEventQueue();
void hostClearJavaEventQueue();

// Called with every event as it reaches the queue (the shell prints them).
void hostSetJavaEventListener(std::function<void(const JavaEvent&)> listener);

// Java objects created and not yet released (class handles included).
std::size_t hostLiveJavaObjectCount();
