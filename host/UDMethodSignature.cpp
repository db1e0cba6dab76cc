#include "host/UDMethodSignature.hpp"

#include <stdexcept>

#include "host/UDTypeRepository.hpp"

namespace {

UDDataType* requireType(const char* typeName) {
  UDDataType* type = UDTypeRepository::getType(typeName, false);
  if (type == nullptr) {
    throw std::logic_error(std::string("UDMethodSignature: unknown data type '") +
                           (typeName != nullptr ? typeName : "<null>") + "'");
  }
  return type;
}

}  // namespace

void UDMethodSignature::addArgument(const char* typeName, const char* name) {
  arguments_.push_back({requireType(typeName), name != nullptr ? name : ""});
}

void UDMethodSignature::addResult(const char* typeName) {
  results_.push_back(requireType(typeName));
}

void UDMethodSignature::setLastArgumentRepeats(bool repeats) {
  if (arguments_.empty())
    throw std::logic_error("UDMethodSignature: no argument to repeat is declared yet");
  lastArgumentRepeats_ = repeats;
}

UDDataType* UDMethodSignature::getArgumentType(int index) const {
  return arguments_.at(static_cast<std::size_t>(index)).type;
}

const char* UDMethodSignature::getArgumentName(int index) const {
  return arguments_.at(static_cast<std::size_t>(index)).name.c_str();
}

UDDataType* UDMethodSignature::getTypeAtPosition(int position) const {
  if (position < 0 || arguments_.empty()) return nullptr;
  if (position < getArgumentCount()) return arguments_[static_cast<std::size_t>(position)].type;
  return lastArgumentRepeats_ ? arguments_.back().type : nullptr;
}

bool UDMethodSignature::acceptsArgumentCount(int count) const {
  return count == getArgumentCount() || (lastArgumentRepeats_ && count > getArgumentCount());
}

UDDataType* UDMethodSignature::getResultType(int index) const {
  return results_.at(static_cast<std::size_t>(index));
}
