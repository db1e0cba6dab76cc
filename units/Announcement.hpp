#pragma once

// File: Announcement.hpp
// How a registry tells its listeners of a change. Every registry keeps the same rules:
//  - Listeners are called in the order they were added. A listener added while a change
//    is announced is first called for the next change.
//  - An addition is announced once it is complete (a new unit or prefix is already
//    guarded against changes), a removal before anything is removed: whenever a listener
//    runs, the registries are consistent.
//  - A listener can neither refuse the change nor cut its announcement short. When one
//    raises, the others are still told and the change is carried out; the first error
//    then reaches the caller of the change. Refusing is for the registries' own checks,
//    made before anyone hears of the change.
//  - A listener may read the registries, but a registration or removal that it asks for
//    while it runs is refused with std::logic_error.
//  - A change that a registry makes as part of another (the anonymous quantity of a new
//    unit, the units of a removed quantity) belongs to it: its listeners' errors reach
//    the caller once the whole change is done.
//
// Example, inside a registry's change:
//   Announcement::refuseInsideListener();
//   Announcement announcement;
//   ... checks, then the change ...
//   announcement.tell(registeredListeners, definition);
//   announcement.finish();  // raises the first error a listener raised, if any

#include <exception>

namespace TwUnits {

class Announcement {
 public:
  Announcement();
  // Frees an error that finish() did not raise (the change itself failed).
  ~Announcement();
  Announcement(const Announcement&) = delete;
  Announcement& operator=(const Announcement&) = delete;

  // Calls every listener of the list as it is now with the arguments.
  template <typename Listeners, typename... Args>
  void tell(const Listeners& listeners, const Args&... args) {
    const Listeners called = listeners;
    for (const auto& listener : called) call([&] { listener(args...); });
  }
  // Calls one callback as a listener: an error it raises is kept, not raised.
  template <typename Callback>
  void call(const Callback& callback) {
    InsideListener inside;
    try {
      callback();
    } catch (...) {
      keep(std::current_exception());
    }
  }
  // Raises the first error kept; within a change that this one is part of, hands it to
  // that change instead.
  void finish();

  // Raises std::logic_error when called while a listener runs on this thread.
  static void refuseInsideListener();

 private:
  // While a listener runs: changes are refused, and one it starts is a change of its own.
  class InsideListener {
   public:
    InsideListener();
    ~InsideListener();
    InsideListener(const InsideListener&) = delete;
    InsideListener& operator=(const InsideListener&) = delete;

   private:
    Announcement* enclosing_;
  };

  void keep(std::exception_ptr error);

  Announcement* outer_;
  std::exception_ptr first_;
};

}  // namespace TwUnits
