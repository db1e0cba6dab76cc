#pragma once

// File: StringVector.hpp
// The host's list of strings, in which registries hand out name lists.
//
// Example:
//   StringVector* names = registry->getAllQuantityTypeStrings();  // caller owns
//   names->elementAt(0);                                            // "amount"
//   delete names;

#include <string>
#include <vector>

class StringVector {
 public:
  // Copies the text; null is stored as the empty string.
  void addElement(const char* text) { elements_.emplace_back(text ? text : ""); }
  int size() const { return static_cast<int>(elements_.size()); }
  const char* elementAt(int index) const { return elements_.at(static_cast<std::size_t>(index)).c_str(); }

 private:
  std::vector<std::string> elements_;
};
