#include "host/interpreter/Workspace.hpp"

#include <stdexcept>
#include <utility>

const HostArray* Workspace::find(const std::string& name) const {
  auto found = variables_.find(name);
  return found != variables_.end() ? found->second.get() : nullptr;
}

HostArrayPtr Workspace::copy(const std::string& name) const {
  const HostArray* value = find(name);
  return HostArrayPtr(value != nullptr ? value->duplicate() : nullptr);
}

void Workspace::assign(const std::string& name, HostArrayPtr value) {
  if (value == nullptr) throw std::invalid_argument("Workspace::assign: null value for " + name);
  variables_[name] = std::move(value);
}

bool Workspace::remove(const std::string& name) { return variables_.erase(name) != 0; }

std::vector<std::string> Workspace::names() const {
  std::vector<std::string> result;
  result.reserve(variables_.size());
  for (const auto& entry : variables_) result.push_back(entry.first);
  return result;
}
