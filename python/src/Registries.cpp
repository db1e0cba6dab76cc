// The registries from Python: registering, redefining and removing units, prefixes,
// physical quantities and unit systems; listing them; verifying, parsing and comparing
// compositions. Each function is one call of the library; its errors pass unchanged.

#include <pybind11/stl.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "python/src/Bindings.hpp"
#include "python/src/Border.hpp"
#include "units/DimensionalAnalysisManagerApi.hpp"
#include "units/HandOver.hpp"
#include "units/PhysicalQuantityManager.hpp"
#include "units/QuantityStringParser.hpp"
#include "units/UnitManager.hpp"
#include "units/UnitPrefix.hpp"
#include "units/UnitPrefixManager.hpp"
#include "units/UnitSystemManager.hpp"

namespace twzo_python {

namespace {

using TwUnits::handOver;
using TwUnits::PhysicalQuantityManager;
using TwUnits::QuantityDimension;
using TwUnits::UnitManager;
using TwUnits::UnitPrefix;
using TwUnits::UnitPrefixManager;
using TwUnits::UnitRepresentation;
using TwUnits::UnitSystem;
using TwUnits::UnitSystemManager;

constexpr unsigned kBaseDimensionCount = 7;

// A registered unit as Python sees it: a copy, taken when it is listed.
struct Unit {
  std::string name;
  std::string composition;
  double multiplier;
  double offset;
  std::string quantity;
  bool builtin;
  bool deprecated;
};

// The seven units of a system under the keyword names of register_system, in the order
// of the base dimensions.
struct SystemField {
  const char* keyword;
  const std::string& (UnitSystem::*get)() const;
  void (UnitSystem::*set)(const std::string&);
};
constexpr SystemField kSystemFields[kBaseDimensionCount] = {
    {"amount", &UnitSystem::getAmountType, &UnitSystem::setAmountType},
    {"mass", &UnitSystem::getMassType, &UnitSystem::setMassType},
    {"length", &UnitSystem::getLengthType, &UnitSystem::setLengthType},
    {"time", &UnitSystem::getTimeType, &UnitSystem::setTimeType},
    {"temperature", &UnitSystem::getTempType, &UnitSystem::setTempType},
    {"current", &UnitSystem::getCurrentType, &UnitSystem::setCurrentType},
    {"luminous_intensity", &UnitSystem::getLuminousIntensityType,
     &UnitSystem::setLuminousIntensityType},
};

const char* quantityName(int index) {
  return PhysicalQuantityManager::Instance()->getQuantityDimension(index)->getName();
}

std::unique_ptr<UnitRepresentation> definitionOf(const std::string& name,
                                                 const std::string& composition, double multiplier,
                                                 double offset) {
  auto definition = std::make_unique<UnitRepresentation>();
  definition->setName(name);
  definition->setCompositionString(composition);
  definition->setMultiplier(multiplier);
  definition->setOffset(offset);
  return definition;
}

void registerUnit(const std::string& name, const std::string& composition, double multiplier,
                  double offset) {
  callLibrary([&] {
    UnitManager* units = UnitManager::Instance();
    std::unique_ptr<UnitRepresentation> definition =
        definitionOf(name, composition, multiplier, offset);
    UnitRepresentation* registered = definition.get();
    // Nothing to register (the same definition, or a prefix on a unit) leaves it with us.
    handOver(
        definition, [&] { units->registerUnit(registered); },
        [&] { return units->getUnitRepresentation(registered->getName()) == registered; });
  });
}

void registerPrefix(const std::string& name, int exponent) {
  callLibrary([&] {
    auto prefix = std::make_unique<UnitPrefix>(name, exponent, "");
    UnitPrefix* registered = prefix.get();
    UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
    // The same prefix registered already leaves this one with us.
    handOver(
        prefix, [&] { prefixes->registerPrefix(registered); },
        [&] { return prefixes->getUnitPrefixApi(registered->getName()) == registered; });
  });
}

void registerQuantity(std::unique_ptr<QuantityDimension> quantity) {
  PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
  const QuantityDimension* registered = quantity.get();
  handOver(
      quantity, [&] { quantities->registerPhysicalQuantity(registered); },
      [&] {
        return quantities->getQuantityDimension(
                   quantities->getQuantityIdx(std::string(registered->getName()))) == registered;
      });
}

void registerSystem(const std::string& name,
                    const std::array<std::string, kBaseDimensionCount>& unitNames) {
  callLibrary([&] {
    auto system = std::make_unique<UnitSystem>(name.c_str());
    auto unitName = unitNames.begin();
    for (const SystemField& field : kSystemFields) (system.get()->*field.set)(*unitName++);
    UnitSystemManager::Instance()->registerUnitSystem(system.get());
    system.release();  // the registry owns it now
  });
}

py::dict listUnits(bool builtin) {
  return callLibrary([&] {
    py::dict listed;
    const UnitManager* units = UnitManager::Instance();
    for (int q = 0; q < units->getNumQuantityLists(); ++q) {
      const std::vector<std::string>& names = units->getQuantityUnitStrings2(q);
      for (int u = 0; u < static_cast<int>(names.size()); ++u) {
        bool isBuiltin = units->isUnitBuiltin(q, u);
        if (isBuiltin && !builtin) continue;
        const UnitRepresentation* definition = units->getUnitRepresentation(q, u);
        const std::string& name = names[static_cast<std::size_t>(u)];
        listed[py::str(name)] = Unit{name,
                                     definition->getCompositionString(),
                                     definition->getMultiplier(),
                                     definition->getOffset(),
                                     quantityName(q),
                                     isBuiltin,
                                     !definition->getLibraryVisible()};
      }
    }
    return listed;
  });
}

py::dict listPrefixes() {
  return callLibrary([] {
    py::dict listed;
    const UnitPrefixManager* prefixes = UnitPrefixManager::Instance();
    const std::vector<std::string>& names = prefixes->getPrefixNames();
    for (int p = 0; p < static_cast<int>(names.size()); ++p)
      listed[py::str(names[static_cast<std::size_t>(p)])] = prefixes->getPrefixExponent(p);
    return listed;
  });
}

py::tuple exponentsOf(const QuantityDimension& quantity) {
  py::tuple exponents(kBaseDimensionCount);
  for (unsigned b = 0; b < kBaseDimensionCount; ++b) exponents[b] = quantity.at(b);
  return exponents;
}

py::dict listQuantities() {
  return callLibrary([] {
    py::dict listed;
    const PhysicalQuantityManager* quantities = PhysicalQuantityManager::Instance();
    for (int q = 0; q < quantities->getNumQuantities(); ++q) {
      const QuantityDimension* quantity = quantities->getQuantityDimension(q);
      listed[py::str(quantity->getName())] = exponentsOf(*quantity);
    }
    return listed;
  });
}

py::dict listSystems() {
  return callLibrary([] {
    py::dict listed;
    for (const auto& system : UnitSystemManager::Instance()->getUnitSystems()) {
      py::dict unitNames;
      for (const SystemField& field : kSystemFields)
        unitNames[field.keyword] = (system.get()->*field.get)();
      listed[py::str(system->getUnitSystemName())] = unitNames;
    }
    return listed;
  });
}

// The registered quantity of a text, verified (and cached) by the unit registry.
const QuantityDimension* quantityOf(const std::string& text) {
  int index = UnitManager::Instance()->getQuantityIdxFromCompositionString(text);
  return PhysicalQuantityManager::Instance()->getQuantityDimension(index);
}

}  // namespace

void bindRegistries(py::module_& module) {
  py::class_<Unit>(module, "Unit", "A registered unit, as listed by units().")
      .def_readonly("name", &Unit::name)
      .def_readonly("composition", &Unit::composition,
                    "Its definition; a unit of a base quantity is stored in base units.")
      .def_readonly("multiplier", &Unit::multiplier)
      .def_readonly("offset", &Unit::offset)
      .def_readonly("quantity", &Unit::quantity, "The name of its physical quantity.")
      .def_readonly("builtin", &Unit::builtin)
      .def_readonly("deprecated", &Unit::deprecated, "Whether every use warns.")
      .def("__repr__", [](const Unit& unit) {
        return py::str(
                   "Unit(name={!r}, composition={!r}, multiplier={!r}, offset={!r}, "
                   "quantity={!r}, builtin={!r}, deprecated={!r})")
            .format(unit.name, unit.composition, unit.multiplier, unit.offset, unit.quantity,
                    unit.builtin, unit.deprecated);
      });

  module.def("register_unit", &registerUnit, py::arg("name"), py::arg("composition"),
             py::arg("multiplier") = 1.0, py::arg("offset") = 0.0,
             R"(Registers a unit: one of it is multiplier * composition + offset.

Registering a user unit again with another definition redefines it (warning
UnitRedefiningWarning); the same definition again changes nothing. Only temperatures take
an offset.

>>> register_unit('furlong', 'meter', 201.168); convert(1, 'mile', 'furlong')
8.0)");
  module.def(
      "unregister_unit",
      [](const std::string& name) {
        callLibrary([&] { UnitManager::Instance()->unregisterUnit(name); });
      },
      py::arg("name"),
      "Removes a user unit. Raises UnitNotFoundError, UnitCannotUnregisterBuiltinError or "
      "UnitBeingUsedError; a subscriber to 'UNIT_REMOVED' may refuse it by raising.");
  module.def("register_prefix", &registerPrefix, py::arg("name"), py::arg("exponent"),
             R"(Registers a prefix worth 10**exponent (-51 to 51).

>>> register_prefix('myria', 4); convert(1, 'myriameter', 'kilometer')
10.0)");
  module.def(
      "unregister_prefix",
      [](const std::string& name) {
        callLibrary([&] { UnitPrefixManager::Instance()->unregisterPrefix(name); });
      },
      py::arg("name"), "Removes a user prefix that no unit's definition uses.");
  module.def(
      "register_quantity",
      [](const std::string& name, const std::string& dimensions) {
        callLibrary([&] {
          std::unique_ptr<QuantityDimension> quantity(
              TwUnits::QuantityStringParser::Instance()->createQuantityDimensionFromString(
                  dimensions));
          quantity->setName(name.c_str());
          registerQuantity(std::move(quantity));
        });
      },
      py::arg("name"), py::arg("dimensions"),
      R"(Registers a physical quantity from its base dimensions.

dimensions is a composition of base quantities ('length/time^3') or seven integer exponents
in the order amount, mass, length, time, temperature, current, luminous_intensity.)");
  module.def(
      "register_quantity",
      [](const std::string& name, const std::array<int, kBaseDimensionCount>& exponents) {
        callLibrary([&] {
          registerQuantity(std::make_unique<QuantityDimension>(exponents.data(), name.c_str()));
        });
      },
      py::arg("name"), py::arg("dimensions"));
  module.def(
      "unregister_quantity",
      [](const std::string& name) {
        callLibrary([&] { PhysicalQuantityManager::Instance()->unregisterPhysicalQuantity(name); });
      },
      py::arg("name"), "Removes a user quantity and its units.");
  module.def(
      "register_system",
      [](const std::string& name, const std::string& amount, const std::string& mass,
         const std::string& length, const std::string& time, const std::string& temperature,
         const std::string& current, const std::string& luminousIntensity) {
        registerSystem(name, {amount, mass, length, time, temperature, current, luminousIntensity});
      },
      py::arg("name"), py::kw_only(), py::arg("amount"), py::arg("mass"), py::arg("length"),
      py::arg("time"), py::arg("temperature"), py::arg("current"), py::arg("luminous_intensity"),
      R"(Registers a unit system: one unit (a prefix allowed) for each base dimension.

>>> register_system('cgs', **{**systems()['MKS'], 'mass': 'gram', 'length': 'centimeter'}))");
  module.def(
      "unregister_system",
      [](const std::string& name) {
        callLibrary([&] { UnitSystemManager::Instance()->unregisterUnitSystem(name); });
      },
      py::arg("name"), "Removes a unit system (the built-in 'MKS' too).");

  module.def("units", &listUnits, py::arg("builtin") = true,
             "The registered units by name, in registry order; user units only with "
             "builtin=False.");
  module.def("prefixes", &listPrefixes, "The registered prefixes' exponents by name.");
  module.def("quantities", &listQuantities,
             "The registered physical quantities' seven exponents by name, in index order.");
  module.def("systems", &listSystems,
             "The registered unit systems by name, each as its seven units by the keywords of "
             "register_system.");

  module.def(
      "verify",
      [](const std::string& text) {
        callLibrary([&] { UnitManager::Instance()->verifyUnitCompositionString(text); });
      },
      py::arg("text"),
      "Checks that a composition is well formed and names registered units; raises its error "
      "otherwise.");
  module.def(
      "verify_unit",
      [](const std::string& name, const std::string& composition, double multiplier,
         double offset) {
        return callLibrary([&] {
          std::unique_ptr<UnitRepresentation> definition =
              definitionOf(name, composition, multiplier, offset);
          return UnitManager::Instance()->verifyUnitForRegistration(definition.get()) ==
                 UnitManager::NOTHING_TO_REGISTER;
        });
      },
      py::arg("name"), py::arg("composition"), py::arg("multiplier") = 1.0, py::arg("offset") = 0.0,
      "Runs the checks of register_unit without registering: True when registering would "
      "change nothing, False when it would register or redefine; raises what it would raise.");
  module.def(
      "parse",
      [](const std::string& text) {
        return callLibrary([&] {
          UnitManager::Instance()->verifyUnitCompositionString(text);
          auto [names, exponents] =
              TwUnits::QuantityStringParser::Instance()->getUnitMakeupAndExponentsFromString(text);
          std::vector<std::pair<std::string, int>> parts;
          for (std::size_t i = 0; i < names.size(); ++i) parts.emplace_back(names[i], exponents[i]);
          return parts;
        });
      },
      py::arg("text"),
      R"(The units of a composition as written, with their net exponents.

>>> parse('mole/liter')
[('mole', 1), ('liter', -1)])");
  module.def(
      "dimensions",
      [](const std::string& text) {
        return callLibrary([&] { return exponentsOf(*quantityOf(text)); });
      },
      py::arg("text"),
      "The seven base exponents of a composition (amount, mass, length, time, temperature, "
      "current, luminous_intensity).");
  module.def(
      "quantity",
      [](const std::string& text) {
        return callLibrary([&] { return std::string(quantityOf(text)->getName()); });
      },
      py::arg("text"),
      "The name of a composition's physical quantity ('Unnamed_Quant_<n>' for dimensions "
      "that no quantity had).");
  module.def(
      "_check_dimensions",
      [](const std::string& first, const std::string& second) {
        return callLibrary([&] {
          return UnitManager::Instance()->getDimensionalAnalysisManagerApi()->checkDimensionsMatch(
              first, second);
        });
      },
      py::arg("first"), py::arg("second"));
}

}  // namespace twzo_python
