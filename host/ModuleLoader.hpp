#pragma once

// File: ModuleLoader.hpp
// Loads the units module as the host does: dlopen of libtwzo_units.so, then its
// CVInitialize_zo_units and the registration of its table of host functions
// (QueryCVFcnTable_zo_units). The module stays loaded for the rest of the process.
// Every front-end that hosts the module (the shell, the Octave gateway) loads it here.
//
// Where the module is looked for, in order: $ZO_UNITS_MODULE alone when it is set;
// otherwise the module's build location that the front-end knows, then the front-end's
// own directory, one directory up, ../lib, and the dynamic loader's own search.
//
// Example:
//   std::string path = ModuleLoader::load(
//       ModuleLoader::candidates(ZO_UNITS_BUILD_MODULE, ModuleLoader::executableDirectory()));
//   // throws std::runtime_error on failure

#include <string>
#include <vector>

class ModuleLoader {
 public:
  // Loads and initialises the module from the first place that works; returns that
  // place. Throws std::runtime_error naming every place tried and why each failed.
  static std::string load(const std::vector<std::string>& places);

  // The places to try, in order (see above); an empty builtModule or origin is left out.
  static std::vector<std::string> candidates(const std::string& builtModule,
                                             const std::string& origin);

  // The directory of the running executable, or "" when it cannot be read.
  static std::string executableDirectory();
  // The directory of the shared object (or executable) that holds the address, or "".
  static std::string directoryOf(const void* address);
};
