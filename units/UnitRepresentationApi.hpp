#pragma once

// File: UnitRepresentationApi.hpp
// A unit definition as other libraries see it: name, alias, composition string
// (in terms of other units), multiplier and offset. Every setter announces the
// change to the change listeners before storing it, so that the unit registry can
// refuse any change to a registered unit.
//
// Example:
//   UnitRepresentationApi* furlong = UnitManager::Instance()->createUnitRepresentationApi();
//   furlong->setName("furlong");
//   furlong->setCompositionString("meter");
//   furlong->setMultiplier(201.168);
//   UnitManager::Instance()->registerUnit(furlong);   // the registry owns it now
//   furlong->setMultiplier(200.0);                    // raises "Unit:RegisteredUnitCannotChange"

#include <boost/function.hpp>
#include <string>

class UDInterface;

namespace TwUnits {

class UnitRepresentationApi {
 public:
  enum UNIT_REP_PROPERTY {
    UNIT_REP_NAME = 0,
    UNIT_REP_COMPOSITION = 1,
    UNIT_REP_ALIAS = 2,
    UNIT_REP_MULTIPLIER = 3,
    UNIT_REP_OFFSET = 4,
  };
  // Called before a property changes, with the old value still in place; raising
  // refuses the change.
  using ChangeListener = boost::function2<void, const UnitRepresentationApi*, UNIT_REP_PROPERTY>;

  virtual ~UnitRepresentationApi() = default;
  // Returns a new definition with this one's name (trimmed), composition string,
  // multiplier, offset and visibility; no alias, host object or listeners. The caller
  // owns it.
  virtual UnitRepresentationApi* clone() const = 0;
  virtual void addChangeListener(const ChangeListener& listener) = 0;
  virtual const std::string& getName() const = 0;
  // Stores the name without surrounding white space.
  virtual void setName(const std::string& name) = 0;
  virtual const std::string& getAlias() const = 0;
  virtual void setAlias(const std::string& alias) = 0;
  virtual const std::string& getCompositionString() const = 0;
  virtual void setCompositionString(const std::string& composition) = 0;
  virtual double getMultiplier() const = 0;
  virtual void setMultiplier(double multiplier) = 0;
  virtual double getOffset() const = 0;
  virtual void setOffset(double offset) = 0;
  // False for units kept only for compatibility; using them warns "Unit:Deprecation".
  virtual bool getLibraryVisible() const = 0;
  // The unit's host object, or null.
  virtual UDInterface* getUDI() const = 0;
};

}  // namespace TwUnits
