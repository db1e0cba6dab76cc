// One line of the shell's language against the units module, as zo_units runs it: the
// module initialised and its host functions registered, the toolbox's functions too. A
// line may do anything the language allows (construct objects, register and remove
// units, prefixes, quantities and systems, convert); whatever it does, the interpreter
// must report an outcome without throwing, and the objects the line made must be freed
// with its workspace. Output and warnings are discarded.

#include <cstdint>
#include <string>

#include "host/CVFcnTable.hpp"
#include "host/Console.hpp"
#include "host/HostFunctions.hpp"
#include "host/ToolboxFunctions.hpp"
#include "host/interpreter/Interpreter.hpp"
#include "tests/fuzz/FuzzSupport.hpp"
#include "units/udd/UnitsModule.hpp"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  utSetConsoleSink([](const std::string&) {});
  CVInitialize_zo_units();
  const CVFcnTable* table = QueryCVFcnTable_zo_units();
  for (int i = 0; i < table->count; ++i)
    hostRegisterFunction(table->entries[i].name, table->entries[i].function);
  hostRegisterToolboxFunctions();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string line = fuzzText(data, size);
  try {
    Interpreter interpreter;  // installs its own warning printer, which prints to the sink
    interpreter.execute(line);
  } catch (...) {
    fuzzFault("the interpreter let an exception out", line);
  }
  return 0;
}
