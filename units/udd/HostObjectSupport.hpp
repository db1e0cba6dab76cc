#pragma once

// File: HostObjectSupport.hpp
// Helpers that the units module's host classes share: reading the library object
// and the arguments a method receives, declaring methods and properties, allocating
// results, comparing two host objects property by property, laying out the display
// columns, and the protected call into host-language code. Not for other libraries.

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "host/HostArray.hpp"
#include "host/UDInterface.hpp"
#include "units/HandOver.hpp"

class UDClass;
class UDDataType;
class UDMethodSignature;
class UDPropInfo;

// Internal to the module, like all of the binding: nothing here is exported.
namespace TwUnits {
namespace udd {

// The host object of a "handle" argument or property call.
inline UDInterface* hostObject(void* argument) { return static_cast<UDInterface*>(argument); }

// The library object that a host object wraps.
template <typename T>
inline T* wrapped(UDInterface* object) {
  return static_cast<T*>(object->getObject());
}

// A "string" argument or property value; the host may pass null, read as "".
inline std::string text(const void* argument) {
  return argument ? static_cast<const char*>(argument) : "";
}
inline double number(const void* argument) { return *static_cast<const double*>(argument); }

// Raises "CALVEX:badArgumentClass" unless the host object is of the class.
void requireClass(UDInterface* object, UDClass* cls);

// A signature whose first argument is the object the method is called on.
UDMethodSignature* signature(std::initializer_list<const char*> arguments,
                             std::initializer_list<const char*> results = {});

// Names and types a property and sets its access: writable ones may be set from
// outside and inside the class, read-only ones from nowhere.
void declareProperty(UDPropInfo* property, const char* name, UDDataType* type,
                     const char* description, bool writable, bool visible = true);

// Result values that the host frees with utFree.
unsigned char* newResultBool(bool value);
double* newResultDouble(double value);

// True when both host objects are of one class and every property of that class has
// equal values on both; a property that cannot be read or compared is skipped.
bool compareHostObjects(UDInterface* first, UDInterface* second);

// The display's column layout: the text padded with blanks to `width`, or, when it
// is `width` long or longer, its first `keep` characters and "... ". Widths count UTF-8
// characters.
std::string column(const std::string& value, std::size_t width, std::size_t keep);
// The index column, 8 wide; an index of 8 or more digits shows as "xxx".
std::string indexColumn(int index);
// The host objects a display method is called on: the one handle, or each handle of
// the vector, in order.
std::vector<UDInterface*> displayTargets(UDMethodSignature* matched, UDMethodSignature* single,
                                         void* target);

// Rounds half away from zero into an int, saturating far outside the int range so
// that range checks further on still see an out-of-range value.
int roundedToInt(double value);

// Calls a host-language function with the arguments (which it frees on every path)
// and no results. Host failures become library errors: a host Exception passes
// unchanged; a host-language error keeps its identifier and text; leaving the
// debugger becomes "CALVEX:dbquit" and an interrupt "CALVEX:interupt", both with an
// empty message.
void callHostFunction(const char* functionName, const std::vector<HostArrayPtr>& arguments);

}  // namespace udd
}  // namespace TwUnits
