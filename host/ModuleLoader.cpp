#include "host/ModuleLoader.hpp"

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <stdexcept>

#include "host/CVFcnTable.hpp"
#include "host/HostFunctions.hpp"

namespace {

constexpr const char* kModuleFile = "libtwzo_units.so";

std::string directoryPart(const std::string& path) {
  std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash);
}

}  // namespace

std::string ModuleLoader::executableDirectory() {
  std::string path(4096, '\0');
  ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
  if (length <= 0) return "";
  path.resize(static_cast<std::size_t>(length));
  return directoryPart(path);
}

std::string ModuleLoader::directoryOf(const void* address) {
  Dl_info info;
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "";
  return directoryPart(info.dli_fname);
}

std::vector<std::string> ModuleLoader::candidates(const std::string& builtModule,
                                                  const std::string& origin) {
  const char* chosen = std::getenv("ZO_UNITS_MODULE");
  if (chosen != nullptr && *chosen != '\0') return {chosen};
  std::vector<std::string> places;
  if (!builtModule.empty()) places.push_back(builtModule);
  if (!origin.empty()) {
    places.push_back(origin + "/" + kModuleFile);
    places.push_back(origin + "/../" + kModuleFile);
    places.push_back(origin + "/../lib/" + kModuleFile);
  }
  places.emplace_back(kModuleFile);
  return places;
}

std::string ModuleLoader::load(const std::vector<std::string>& places) {
  std::string failures;
  for (const std::string& place : places) {
    void* module = dlopen(place.c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (module == nullptr) {
      const char* why = dlerror();
      failures += "\n  " + (why != nullptr ? std::string(why) : place);
      continue;
    }
    auto initialise = reinterpret_cast<void (*)()>(dlsym(module, "CVInitialize_zo_units"));
    auto query =
        reinterpret_cast<const CVFcnTable* (*)()>(dlsym(module, "QueryCVFcnTable_zo_units"));
    if (initialise == nullptr || query == nullptr) {
      failures += "\n  " + place + ": not the units module (no CVInitialize_zo_units)";
      dlclose(module);
      continue;
    }
    initialise();
    const CVFcnTable* table = query();
    for (int i = 0; table != nullptr && i < table->count; ++i)
      hostRegisterFunction(table->entries[i].name, table->entries[i].function);
    return place;
  }
  throw std::runtime_error("cannot load the units module " + std::string(kModuleFile) + ":" +
                           failures);
}
