#pragma once

// File: UDHostCalls.hpp
// What the host language does with host objects: construct one by class name, get and
// set its properties, call its methods, and describe a class for `help`. Values cross
// as host arrays; every failure is an ErrorIdException* with a "CALVEX:" identifier,
// and whatever a library method throws passes through unchanged. Nothing leaks on any
// path.
//
// Example:
//   UDInterfacePtr unit(hostConstruct("Unit"));
//   HostArrayPtr handle(HostArray::createHandleArray({unit.get()}));
//   HostArrayPtr value(HostArray::createDoubleScalar(3));
//   std::vector<HostArray*> results = hostInvokeMethod("convert", 1, {handle.get(), value.get()});
//   HostArrayPtr name(hostGetProperty(unit.get(), "name"));

#include <string>
#include <vector>

class HostArray;
class UDClass;
class UDInterface;

// Returns a new object of the class (made visible to the host language) holding one
// reference, the caller's. Raises "CALVEX:UndefinedFunction" for an unknown class and
// "CALVEX:CannotConstruct" when the class makes no object.
UDInterface* hostConstruct(const std::string& className);

// Returns a new host value of the property; the caller owns it. Raises
// "CALVEX:InvalidObject" for a destroyed or empty object and "CALVEX:noSuchProperty"
// for a property the class does not have.
HostArray* hostGetProperty(UDInterface* object, const std::string& name);

// Converts the value to the property's type and stores it; the value stays the
// caller's. Raises as hostGetProperty, and "CALVEX:badPropertyValue" when the type does
// not take the value. Access flags are not checked: a read-only property ignores it.
void hostSetProperty(UDInterface* object, const std::string& name, const HostArray* value);

// Calls the method on the object(s) in args[0], a handle array, with the first declared
// signature that fits the arguments and has at least nargout results. Returns one entry
// per result of that signature: a new host value the caller owns, or null where the
// method left its slot empty beyond the results it gives (at least nargout, or as many
// as the method says); an empty slot among those is the type's empty value. Raises
// "CALVEX:UndefinedFunction" when args[0] is not a non-empty handle array or its class has no such
// method, "CALVEX:InvalidObject" when any handle among the arguments is not valid, and
// "CALVEX:NoMatchingSignature" when no signature fits. No argument may be null.
std::vector<HostArray*> hostInvokeMethod(const std::string& method, int nargout,
                                         const std::vector<const HostArray*>& args);

// A method that returns a host object it has just made hands its own reference over
// here: the host releases it once the method's results are converted (calls may nest).
void hostReleaseAfterCall(UDInterface* object);

// The class's methods with their signatures and its visible properties with type,
// access and description, superclasses' members included, one per line.
std::string hostDescribeClass(const UDClass* cls);
