#include "host/Vector.hpp"

#include <cstddef>
#include <stdexcept>

namespace {

std::size_t checkedIndex(int index, std::size_t size) {
  if (index < 0 || static_cast<std::size_t>(index) >= size)
    throw std::out_of_range("Vector: index out of range");
  return static_cast<std::size_t>(index);
}

}  // namespace

void Vector::removeElementAt(int index) {
  elements_.erase(elements_.begin() +
                  static_cast<std::ptrdiff_t>(checkedIndex(index, elements_.size())));
}

void* Vector::elementAt(int index) const {
  return elements_[checkedIndex(index, elements_.size())];
}
