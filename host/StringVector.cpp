#include "host/StringVector.hpp"

#include <stdexcept>

const char* StringVector::elementAt(int index) const {
  if (index < 0 || index >= size()) throw std::out_of_range("StringVector: index out of range");
  return texts_[static_cast<std::size_t>(index)].c_str();
}
