#pragma once

// File: UnitPrefix.hpp
// One unit prefix: name, exponent (-51 to 51), multiplier and alias ("k" for
// "kilo"). The multiplier follows the exponent, but can also be set directly.
//
// Example:
//   UnitPrefix kilo("kilo", 3, "k");
//   kilo.getMult();    // 1000.0
//   kilo.setMult(5.0);
//   UnitPrefix copy(kilo);          // multiplier 1000.0: copies recompute it
//   delete kilo.clone();            // a clone keeps 5.0

#include <string>
#include <vector>

#include "units/UnitPrefixApi.hpp"

namespace TwUnits {

class UnitPrefix : public UnitPrefixApi {
 public:
  static inline constexpr int kMaxExponent = 51;
  static inline constexpr int kMinExponent = -51;

  // Empty name and alias, exponent 0, multiplier 1.0.
  UnitPrefix();
  UnitPrefix(const std::string& name, int exponent, const std::string& alias);
  UnitPrefix(const UnitPrefix& other);
  UnitPrefix& operator=(const UnitPrefix&) = delete;
  ~UnitPrefix() override;

  UnitPrefix* clone() const override;
  void addChangeListener(const ChangeListener& listener) override;
  const std::string& getName() const override { return name_; }
  void setName(const std::string& name) override;
  int getExponent() const override { return exponent_; }
  void setExponent(int exponent) override;
  void setExponent(double exponent) override;
  UDInterface* getUDI() const override { return hostObject_; }

  double getMult() const { return multiplier_; }
  // Raises "Unit:PrefixZeroMultNotAllowed" for 0; no listener is told.
  void setMult(double multiplier);
  const std::string& getAlias() const { return alias_; }
  void setAlias(const std::string& alias) { alias_ = alias; }
  // Back to the defaults, without listeners.
  void setup();
  // Calls every change listener, in order, with this prefix and the property.
  void notifySetEvent(UNIT_PREFIX_PROPERTY property);
  // The binding records the host object that shows this prefix.
  void setUDI(UDInterface* hostObject) { hostObject_ = hostObject; }

 private:
  std::string name_;
  double multiplier_ = 1.0;
  int exponent_ = 0;
  std::string alias_;
  UDInterface* hostObject_ = nullptr;
  std::vector<ChangeListener> listeners_;
};

}  // namespace TwUnits
