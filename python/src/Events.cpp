// Change events for Python subscribers. The library's listener lists only grow, so the
// module adds one listener to each list, once, and that listener calls the subscribers
// of the moment; a subscription ends without touching the library.

#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "python/src/Bindings.hpp"
#include "python/src/Border.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityDimensionApi.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefixApi.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitRepresentationApi.hpp"

namespace twzo_python {

namespace {

const std::set<std::string> kEventKinds = {"UNIT_CREATED",     "UNIT_REMOVED",
                                           "PREFIX_CREATED",   "PREFIX_REMOVED",
                                           "QUANTITY_CREATED", "QUANTITY_REMOVED"};

class Subscription {
 public:
  Subscription(py::object callback, std::optional<std::set<std::string>> kinds)
      : callback_(std::move(callback)), kinds_(std::move(kinds)) {}

  bool wants(const std::string& kind) const {
    return active_ && (!kinds_ || kinds_->count(kind) > 0);
  }
  const py::object& callback() const { return callback_; }
  bool active() const { return active_; }
  void cancel();

 private:
  py::object callback_;
  std::optional<std::set<std::string>> kinds_;
  bool active_ = true;
};

// Emptied at interpreter exit, so that no Python object outlives the interpreter.
std::vector<std::shared_ptr<Subscription>> subscribers;

void Subscription::cancel() {
  active_ = false;
  for (auto s = subscribers.begin(); s != subscribers.end(); ++s) {
    if (s->get() == this) {
      subscribers.erase(s);
      break;
    }
  }
}

// Calls the subscribers of the moment, each once, as one of the library's listeners: the
// library decides what an error means (raised while a removal is offered, it refuses the
// removal; otherwise it reaches the caller once the change is done). Every subscriber is
// told, and the first error goes to the library.
void notify(const char* kind, const std::string& name) {
  if (subscribers.empty()) return;
  py::gil_scoped_acquire locked;  // the library may be called from a thread without it
  // A subscriber may subscribe or cancel while it is called: the call goes to those of now.
  const std::vector<std::shared_ptr<Subscription>> now = subscribers;
  std::optional<py::error_already_set> first;
  for (const auto& subscription : now) {
    if (!subscription->wants(kind)) continue;
    try {
      subscription->callback()(kind, name);
    } catch (py::error_already_set& raised) {
      if (!first) first.emplace(std::move(raised));
    }
  }
  if (first) throw *first;
}

void addLibraryListeners() {
  TwUnits::UnitManager* units = TwUnits::UnitManager::Instance();
  units->addUnitRegisteredListener(
      [](const TwUnits::UnitRepresentationApi* unit) { notify("UNIT_CREATED", unit->getName()); });
  units->addUnitUnregisteredListener(
      [](const TwUnits::UnitRepresentationApi* unit) { notify("UNIT_REMOVED", unit->getName()); });
  TwUnits::UnitPrefixManager* prefixes = TwUnits::UnitPrefixManager::Instance();
  prefixes->addUnitPrefixRegisteredListener(
      [](const TwUnits::UnitPrefixApi* prefix) { notify("PREFIX_CREATED", prefix->getName()); });
  prefixes->addUnitPrefixUnregisteredListener(
      [](const TwUnits::UnitPrefixApi* prefix) { notify("PREFIX_REMOVED", prefix->getName()); });
  TwUnits::PhysicalQuantityManager* quantities = TwUnits::PhysicalQuantityManager::Instance();
  quantities->addPhysicalQuantityRegisteredListener(
      [](const TwUnits::QuantityDimensionApi* quantity) {
        notify("QUANTITY_CREATED", quantity->getName());
      });
  quantities->addPhysicalQuantityUnregisteredListener(
      [](const TwUnits::QuantityDimensionApi* quantity, unsigned long) {
        notify("QUANTITY_REMOVED", quantity->getName());
      });
}

}  // namespace

void bindEvents(py::module_& module) {
  static bool listening = false;
  if (!listening) {
    addLibraryListeners();
    listening = true;
  }
  py::module_::import("atexit").attr("register")(py::cpp_function([] { subscribers.clear(); }));

  py::class_<Subscription, std::shared_ptr<Subscription>>(
      module, "Subscription", "A callable subscribed to change events; cancel() ends it.")
      .def("cancel", &Subscription::cancel, "Stops the calls; cancelling twice is harmless.")
      .def_property_readonly("active", &Subscription::active)
      .def("__enter__", [](py::object self) { return self; })
      .def("__exit__", [](Subscription& self, py::args) { self.cancel(); });

  module.def(
      "subscribe",
      [](py::object callback, py::object kinds) {
        if (!PyCallable_Check(callback.ptr()))
          throw py::type_error("a subscriber must be callable");
        std::optional<std::set<std::string>> wanted;
        if (!kinds.is_none()) {
          // One kind, or any iterable of kinds.
          if (py::isinstance<py::str>(kinds)) kinds = py::make_tuple(kinds);
          wanted.emplace();
          for (py::handle kind : kinds) {
            std::string name = py::cast<std::string>(kind);
            if (kEventKinds.count(name) == 0)
              throw py::value_error("no change event is called " + std::string(py::repr(kind)));
            wanted->insert(name);
          }
        }
        auto subscription = std::make_shared<Subscription>(std::move(callback), std::move(wanted));
        subscribers.push_back(subscription);
        return subscription;
      },
      py::arg("callback"), py::arg("kinds") = py::none(),
      R"(Calls callback(kind, name) after each change of the registries, or of the kinds given.

kind is 'UNIT_CREATED', 'UNIT_REMOVED', 'PREFIX_CREATED', 'PREFIX_REMOVED',
'QUANTITY_CREATED' or 'QUANTITY_REMOVED'; name names what changed. A callback is one of the
library's listeners and keeps their rules: it may look the registries up, but a change it
asks for raises RuntimeError. Raising while a removal is still offered (before anything is
removed) refuses it: nothing is removed and the error reaches the caller. Any other error
reaches the caller once the change is done, every subscriber having been told.

>>> with subscribe(print, kinds='UNIT_CREATED'): register_unit('furlong', 'meter', 201.168)
UNIT_CREATED furlong)");
}

}  // namespace twzo_python
