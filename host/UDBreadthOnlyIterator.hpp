#pragma once

// File: UDBreadthOnlyIterator.hpp
// Visits the direct children of a host object in the order they were added, and the
// object itself first when asked to.
//
// Example (the properties of a class):
//   UDBreadthOnlyIterator it(unitClass->getPropertyHolder(), false);
//   while (it.hasMoreElements())
//     list(static_cast<UDPropInfo*>(it.nextElement()->getObject()));

#include <cstddef>

class UDInterface;

class UDBreadthOnlyIterator {
 public:
  // The object must outlive the iterator.
  UDBreadthOnlyIterator(UDInterface* object, bool includeSelf);

  bool hasMoreElements() const;
  // The next object, borrowed; null when there is none.
  UDInterface* nextElement();

 private:
  UDInterface* object_;
  bool selfPending_;
  std::size_t nextChild_ = 0;
};
