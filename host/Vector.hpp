#pragma once

// File: Vector.hpp
// The host's list of untyped pointers, as "handle vector" values travel between the
// host and a library. It never owns or frees its elements.
//
// Example:
//   Vector objects;
//   objects.addElement(unitObject);
//   auto* first = static_cast<UDInterface*>(objects.elementAt(0));

#include <vector>

class Vector {
 public:
  Vector() = default;

  void addElement(void* element) { elements_.push_back(element); }
  // Throws std::out_of_range for a bad index, as elementAt does.
  void removeElementAt(int index);
  int size() const { return static_cast<int>(elements_.size()); }
  void* elementAt(int index) const;

 private:
  std::vector<void*> elements_;
};
