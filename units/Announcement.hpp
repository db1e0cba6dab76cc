#pragma once

// File: Announcement.hpp
// How a registry tells its listeners of a change. Every registry keeps the same rules:
//  - Listeners are called in the order they were added. A listener added while a change
//    is announced is first called for the next change.
//  - A removal is announced before anything is removed: a listener may refuse it by
//    raising, and then nothing is removed and its error reaches the caller (the listeners
//    told before it are not told otherwise). A removal that is part of a change already
//    under way (the units of a removed quantity) can no longer be refused.
//  - An addition is announced once it is complete (a new unit or prefix is already
//    guarded against changes) and cannot be refused. When a listener raises then, or
//    where a removal can no longer be refused, the others are still told and the change
//    is carried out; the first error then reaches the caller of the change.
//  - A listener may read the registries, but a registration or removal that it asks for
//    while it runs is refused with std::logic_error.
//  - A change that a registry makes as part of another (the anonymous quantity of a new
//    unit, the units of a removed quantity) belongs to it: its listeners' errors reach
//    the caller once the whole change is done.
//
// Example, inside a registry's removal:
//   Announcement::refuseInsideListener();
//   Announcement announcement;
//   ... checks ...
//   announcement.offer(unregisteredListeners, definition);  // a listener may refuse
//   announcement.commit();                                   // the removal is under way
//   ... the removal ...
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

  // Calls every listener of the list as it is now with the arguments; their errors are
  // kept for finish().
  template <typename Listeners, typename... Args>
  void tell(const Listeners& listeners, const Args&... args) {
    const Listeners called = listeners;
    for (const auto& listener : called) call([&] { listener(args...); });
  }
  // As tell, but while no change is under way a listener's error refuses the change: it
  // is raised at once and the later listeners are not called.
  template <typename Listeners, typename... Args>
  void offer(const Listeners& listeners, const Args&... args) {
    if (underWay()) return tell(listeners, args...);
    const Listeners called = listeners;
    for (const auto& listener : called) {
      InsideListener inside;
      listener(args...);
    }
  }
  // The change has begun: from now on nothing that belongs to it can be refused.
  void commit() { committed_ = true; }
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
  // Whether this change, or one that it is part of, has begun.
  bool underWay() const;

  Announcement* outer_;
  std::exception_ptr first_;
  bool committed_ = false;
};

}  // namespace TwUnits
