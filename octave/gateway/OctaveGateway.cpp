// The gateway between Octave and the units module: one function, __twzo_units__, that
// the package's classdef classes call for everything they do. It loads the module as
// every host front-end does (ModuleLoader) and goes through the host's own calls
// (construct, get, set, invoke, describe), converting values at the border
// (OctaveValues) and nothing else. The host's channels are turned into Octave's: the
// console into Octave's output, warnings into Octave warnings with their identifiers,
// errors into Octave errors with theirs, and change events into calls of the function
// handles that addunitlistener subscribed.

#include <octave/error.h>
#include <octave/interpreter.h>
#include <octave/oct.h>
#include <octave/parse.h>
#include <octave/pt-eval.h>

#include <list>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/Console.hpp"
#include "host/ErrorIdException.hpp"
#include "host/FailureReport.hpp"
#include "host/HostArray.hpp"
#include "host/JavaBridge.hpp"
#include "host/ModuleLoader.hpp"
#include "host/ToolboxFunctions.hpp"
#include "host/UDApplicationManager.hpp"
#include "host/UDClass.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/Warning.hpp"
#include "octave/gateway/HostObjectValue.hpp"
#include "octave/gateway/OctaveValues.hpp"

namespace {

// What the gateway keeps between calls. Never destroyed: Octave values must not be
// freed after the interpreter has gone, at the end of the process.
struct GatewayState {
  bool started = false;
  octave::interpreter* interpreter = nullptr;
  std::map<int, octave_value> listeners;  // by subscription number, in order
  int lastListener = 0;
  std::vector<JavaEvent> events;  // posted during the current host call
  // A warning that Octave turned into an error (warning('error', id)) while the
  // module was working; raised once the module is done.
  std::optional<FailureReport::Failure> warningAsError;
};

// An address inside this oct-file, to find the directory it was loaded from.
const char kHere = 0;

GatewayState& state() {
  static GatewayState* kept = new GatewayState();
  return *kept;
}

[[noreturn]] void raise(const char* identifier, const std::string& message) {
  throw new ErrorIdException(identifier, message);
}

// The package's m-files, which only forward to the gateway, are left out of an error's
// stack, so that the error reads as a built-in function's would: it was raised where
// the user's code called the package.
std::list<octave::frame_info> callerFrames() {
  static const std::string package = [] {
    std::string file = octave::feval("which", ovl("UnitManager"), 1)(0).string_value();
    return file.substr(0, file.rfind('/') + 1);
  }();
  std::list<octave::frame_info> frames = state().interpreter->get_evaluator().backtrace_info();
  while (!package.empty() && !frames.empty() &&
         frames.front().file_name().compare(0, package.size(), package) == 0) {
    frames.pop_front();
  }
  return frames;
}

void issueWarning(const std::string& identifier, const std::string& text) {
  // The place in the package's own code that called the gateway says nothing to the user.
  octave::error_system& errors = state().interpreter->get_error_system();
  bool backtrace = errors.backtrace_on_warning(false);
  try {
    warning_with_id(identifier.c_str(), "%s", text.c_str());
  } catch (const octave::execution_exception&) {
    // The module goes on with a warning; the error comes when it is done.
    if (!state().warningAsError) state().warningAsError = FailureReport::Failure{identifier, text};
  }
  errors.backtrace_on_warning(backtrace);
}

// Loads the module and ties the host's channels to Octave's, once per process.
void start(octave::interpreter& interpreter) {
  if (state().started) return;
  if (state().interpreter == nullptr) HostObjectValue::register_type(interpreter.get_type_info());
  state().interpreter = &interpreter;
  // The module decides when it starts whether the Java layer is there to post events.
  hostSetUsingJava(true);
  std::optional<FailureReport::Failure> failure = FailureReport::catchAll(
      [] { ModuleLoader::load(ModuleLoader::candidates("", ModuleLoader::directoryOf(&kHere))); });
  if (failure) error("%s", failure->message.c_str());
  hostRegisterToolboxFunctions();
  hostClearJavaEventQueue();  // what the built-in library posted while loading
  hostSetJavaEventListener([](const JavaEvent& event) {
    if (!state().listeners.empty()) state().events.push_back(event);
    hostClearJavaEventQueue();  // nothing else reads the queue
  });
  utSetConsoleSink([](const std::string& text) { octave_stdout << text; });
  utSetWarningHandler(issueWarning);
  state().started = true;
}

// Calls every listener with every event of the host call just made, in order.
void deliverEvents() {
  std::vector<JavaEvent> events = std::exchange(state().events, {});
  for (const JavaEvent& event : events) {
    std::map<int, octave_value> listeners = state().listeners;  // a listener may unsubscribe
    for (const auto& [number, listener] : listeners)
      octave::feval(listener, ovl(event.name, event.type));
  }
}

// Runs one host call. Its failure, or a warning that Octave made an error, becomes an
// Octave error with the same identifier and message, after the listeners heard the
// events that the call posted.
template <typename Action>
void hostCall(Action action) {
  std::optional<FailureReport::Failure> failure = FailureReport::catchAll(action);
  if (!failure) failure = std::exchange(state().warningAsError, std::nullopt);
  state().warningAsError.reset();
  deliverEvents();
  if (!failure) return;
  octave::execution_exception raised("error", failure->identifier, failure->message,
                                     callerFrames());
  state().interpreter->get_error_system().throw_error(raised);
}

// The one host object of a scalar object of the classes.
UDInterface* oneObject(const octave_value& value) {
  HostArrayPtr handles = OctaveValues::toHost(value);
  if (handles->getClassId() != HostArray::ClassId::Handle)
    raise("CALVEX:invalidArgument", "Expected an object of the units module.");
  if (handles->getNumberOfElements() != 1) {
    raise("CALVEX:nonScalarObject", "A property belongs to one object, not to " +
                                        std::to_string(handles->getNumberOfElements()) + ".");
  }
  return handles->getHandle(0);
}

octave_value construct(const octave_value_list& args) {
  std::string className = args(1).string_value();
  octave_value made;
  hostCall([&] {
    if (args.length() == 2) {
      made = octave_value(new HostObjectValue(hostConstruct(className)));
      return;
    }
    // The classes wrap the host objects that the module hands out through here.
    UDInterface* given = args.length() == 3 ? HostObjectValue::objectOf(args(2)) : nullptr;
    if (given == nullptr || className != given->getClass()->getName())
      raise("CALVEX:TooManyInputs", "Too many input arguments.");
    made = args(2);
  });
  return made;
}

octave_value invoke(const octave_value_list& args) {
  std::string method = args(1).string_value();
  int nargout = args(2).int_value();
  std::vector<HostArrayPtr> results;
  hostCall([&] {
    std::vector<HostArrayPtr> owned;
    std::vector<const HostArray*> arguments;
    for (octave_idx_type i = 3; i < args.length(); ++i) {
      owned.push_back(OctaveValues::toHost(args(i)));
      arguments.push_back(owned.back().get());
    }
    for (HostArray* result : hostInvokeMethod(method, nargout, arguments))
      results.emplace_back(result);
  });
  std::size_t given = 0;
  while (given < results.size() && results[given] != nullptr) ++given;
  Cell values(1, static_cast<octave_idx_type>(given));
  for (std::size_t k = 0; k < given; ++k)
    values(static_cast<octave_idx_type>(k)) = OctaveValues::toOctave(*results[k]);
  return values;
}

octave_value getProperty(const octave_value_list& args) {
  HostArrayPtr value;
  hostCall([&] { value.reset(hostGetProperty(oneObject(args(1)), args(2).string_value())); });
  return OctaveValues::toOctave(*value);
}

void setProperty(const octave_value_list& args) {
  hostCall([&] {
    UDInterface* object = oneObject(args(1));
    hostSetProperty(object, args(2).string_value(), OctaveValues::toHost(args(3)).get());
  });
}

octave_value describe(const octave_value_list& args) {
  std::string text;
  hostCall([&] {
    std::string className = args(1).string_value();
    const UDClass* cls = UDApplicationManager::findClass(className.c_str());
    if (cls == nullptr) raise("CALVEX:undefinedClass", "No class '" + className + "'.");
    text = hostDescribeClass(cls);
  });
  return text;
}

octave_value isValid(const octave_value_list& args) {
  bool valid = false;
  hostCall([&] { valid = oneObject(args(1))->isValid(); });
  return valid;
}

octave_value subscribe(const octave_value& listener) {
  if (!listener.is_function_handle())
    error("addunitlistener: the listener must be a function handle");
  int number = ++state().lastListener;
  state().listeners.emplace(number, listener);
  return number;
}

octave_value unsubscribe(const octave_value& number) {
  if (!number.isnumeric() || number.numel() != 1)
    error("delunitlistener: expected a listener number");
  return state().listeners.erase(number.int_value()) == 1;
}

}  // namespace

DEFMETHOD_DLD(__twzo_units__, interpreter, args, ,
              "-*- texinfo -*-\n"
              "@deftypefn {} {@var{result} =} __twzo_units__ (@var{operation}, @dots{})\n"
              "The package's gateway to the units module; its classes call it.\n"
              "@end deftypefn") {
  start(interpreter);
  interpreter.mlock();  // values of the gateway's type live in variables
  if (args.length() < 1 || !args(0).is_string()) print_usage();
  std::string operation = args(0).string_value();
  octave_idx_type count = args.length();
  if (operation == "construct" && count >= 2) return ovl(construct(args));
  if (operation == "invoke" && count >= 4) return ovl(invoke(args));
  if (operation == "get" && count == 3) return ovl(getProperty(args));
  if (operation == "set" && count == 4) {
    setProperty(args);
    return ovl();
  }
  if (operation == "describe" && count == 2) return ovl(describe(args));
  if (operation == "valid" && count == 2) return ovl(isValid(args));
  if (operation == "live" && count == 1) return ovl(static_cast<double>(UDInterface::liveCount()));
  if (operation == "subscribe" && count == 2) return ovl(subscribe(args(1)));
  if (operation == "unsubscribe" && count == 2) return ovl(unsubscribe(args(1)));
  print_usage();
  return ovl();
}
