#include "host/HostFunctions.hpp"

#include <map>
#include <utility>

#include "host/UserException.hpp"

namespace {

std::map<std::string, HostFunction>& functionTable() {
  static std::map<std::string, HostFunction> table;
  return table;
}

}  // namespace

void hostRegisterFunction(const std::string& name, HostFunction function) {
  functionTable()[name] = std::move(function);
}

bool hostHasFunction(const std::string& name) { return functionTable().count(name) != 0; }

int inCallFcn(int nResults, HostArray** results, int nArgs, HostArray** args,
              const char* functionName) {
  std::string name = functionName != nullptr ? functionName : "";
  auto found = functionTable().find(name);
  if (found == functionTable().end()) {
    throw fl::except::UserException("CALVEX:UndefinedFunction",
                                    "Undefined function or variable '" + name + "'.");
  }
  // A copy, so that the function may re-register itself while it runs.
  HostFunction function = found->second;
  function(nResults, results, nArgs, args);
  return 0;
}
