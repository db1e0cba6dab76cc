#pragma once

// File: StringVector.hpp
// The host's list of texts. It keeps copies of what it is given.
//
// Example:
//   StringVector names;
//   names.addElement("meter");
//   names.elementAt(0)  // "meter"

#include <string>
#include <vector>

class StringVector {
 public:
  StringVector() = default;

  // Copies the text; null is stored as "".
  void addElement(const char* text) { texts_.emplace_back(text != nullptr ? text : ""); }
  int size() const { return static_cast<int>(texts_.size()); }
  // Valid while the vector lives; throws std::out_of_range for a bad index.
  const char* elementAt(int index) const;

 private:
  std::vector<std::string> texts_;
};
