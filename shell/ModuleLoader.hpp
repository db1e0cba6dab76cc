#pragma once

// File: ModuleLoader.hpp
// Loads the units module as the host does: dlopen of libtwzo_units.so, then its
// CVInitialize_zo_units and the registration of its table of host functions
// (QueryCVFcnTable_zo_units). The module stays loaded for the rest of the process.
//
// Where the module is looked for, in order: $ZO_UNITS_MODULE alone when it is set;
// otherwise the module's build location compiled into the shell, then next to the
// executable, one directory up, ../lib, and the dynamic loader's own search.
//
// Example:
//   std::string path = ModuleLoader::load();   // throws std::runtime_error on failure

#include <string>
#include <vector>

class ModuleLoader {
 public:
  // Loads and initialises the module; returns the path it came from. Throws
  // std::runtime_error naming every place tried and why each failed.
  static std::string load();

  // The places load() tries, in order.
  static std::vector<std::string> candidates();
};
