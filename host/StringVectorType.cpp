#include "host/StringVectorType.hpp"

#include <cstring>
#include <stdexcept>

#include "host/HostArray.hpp"
#include "host/StringVector.hpp"

StringVectorType* StringVectorType::getType() {
  static StringVectorType instance;
  return &instance;
}

bool StringVectorType::isEqual(const void* a, const void* b) const {
  if (a == nullptr || b == nullptr) return a == b;
  const auto& x = *static_cast<const StringVector*>(a);
  const auto& y = *static_cast<const StringVector*>(b);
  if (x.size() != y.size()) return false;
  for (int i = 0; i < x.size(); ++i) {
    if (std::strcmp(x.elementAt(i), y.elementAt(i)) != 0) return false;
  }
  return true;
}

HostArray* StringVectorType::toHostValue(const void* native) const {
  if (native == nullptr) return HostArray::createCellMatrix(0, 0);
  const auto& texts = *static_cast<const StringVector*>(native);
  HostArrayPtr cell(HostArray::createCellMatrix(1, static_cast<std::size_t>(texts.size())));
  for (int i = 0; i < texts.size(); ++i) {
    cell->setCell(static_cast<std::size_t>(i), HostArray::createString(texts.elementAt(i)));
  }
  return cell.release();
}

bool StringVectorType::acceptsHostValue(const HostArray*) const { return false; }

void* StringVectorType::fromHostValue(const HostArray*) const {
  throw std::logic_error("a string vector is never an argument");
}

void StringVectorType::releaseArgument(void*) const {}

HostArray* StringVectorType::takeResult(void* result) const {
  return static_cast<HostArray*>(result);
}
