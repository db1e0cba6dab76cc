#include "host/UDApplicationManager.hpp"

#include <algorithm>
#include <cstring>

#include "host/UDApplication.hpp"

namespace {

// Deliberately never freed, nor are the applications: a host object still referenced
// at exit must find its class alive whenever its last release comes.
std::vector<UDApplication*>& applications() {
  static auto* const list = new std::vector<UDApplication*>;
  return *list;
}

}  // namespace

void UDApplicationManager::addApplication(UDApplication* application) {
  auto& list = applications();
  if (application != nullptr && std::find(list.begin(), list.end(), application) == list.end())
    list.push_back(application);
}

UDApplication* UDApplicationManager::findApplication(const char* name) {
  if (name == nullptr) return nullptr;
  for (UDApplication* application : applications()) {
    if (std::strcmp(application->getName(), name) == 0) return application;
  }
  return nullptr;
}

UDClass* UDApplicationManager::findClass(const char* name) {
  for (UDApplication* application : applications()) {
    if (UDClass* cls = application->findClass(name)) return cls;
  }
  return nullptr;
}

const std::vector<UDApplication*>& UDApplicationManager::getApplications() {
  return applications();
}
