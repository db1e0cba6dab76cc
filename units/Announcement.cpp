#include "units/Announcement.hpp"

#include <stdexcept>

#include "host/Exception.hpp"

namespace TwUnits {

namespace {

// Per thread: a listener runs on the thread whose change it hears of.
thread_local Announcement* current = nullptr;
thread_local int listenersRunning = 0;

// Library errors are thrown as heap pointers; one that is dropped is deleted.
void discard(std::exception_ptr error) {
  try {
    std::rethrow_exception(error);
  } catch (Exception* raised) {
    delete raised;
  } catch (...) {
  }
}

}  // namespace

Announcement::Announcement() : outer_(current) { current = this; }

Announcement::~Announcement() {
  current = outer_;
  if (first_) discard(first_);
}

void Announcement::keep(std::exception_ptr error) {
  if (first_) {
    discard(error);
  } else {
    first_ = error;
  }
}

bool Announcement::underWay() const {
  for (const Announcement* change = this; change != nullptr; change = change->outer_) {
    if (change->committed_) return true;
  }
  return false;
}

void Announcement::finish() {
  if (!first_) return;
  std::exception_ptr error = first_;
  first_ = nullptr;
  if (outer_ != nullptr) {
    outer_->keep(error);
  } else {
    std::rethrow_exception(error);
  }
}

void Announcement::refuseInsideListener() {
  if (listenersRunning > 0) {
    throw std::logic_error(
        "A listener cannot change the unit registries while they announce a change.");
  }
}

Announcement::InsideListener::InsideListener() : enclosing_(current) {
  current = nullptr;
  ++listenersRunning;
}

Announcement::InsideListener::~InsideListener() {
  --listenersRunning;
  current = enclosing_;
}

}  // namespace TwUnits
