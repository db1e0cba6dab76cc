#pragma once

// File: UnitConverterManager.hpp
// The process-wide conversion calculator. For each base quantity (0 to 6) it keeps
// an n-by-n table of converters between every ordered pair of that quantity's n
// units, filled by the unit registry as base units are registered: every chain is
// composed once, at registration, so look-ups are table reads.
//
// Example:
//   UnitConverterManager* converters = UnitConverterManager::Instance();
//   std::unique_ptr<UnitConverter> c(converters->getQuantityUnitConverter("mile", "meter"));
//   c->doConversion(1.0);   // 1609.344

#include <memory>
#include <string>
#include <vector>

#include "units/UnitConverter.hpp"
#include "units/UnitConverterManagerApi.hpp"
#include "units/UnitMultiset.hpp"

namespace TwUnits {

class UnitBase;
class UnitComposition;

class UnitConverterManager : public UnitConverterManagerApi {
 public:
  static inline constexpr int kTemperatureIndex = 4;
  static inline constexpr int kLastBaseQuantity = 6;

  // Converters in no particular order (as a new unit's batch is built).
  using ConverterList = std::vector<std::unique_ptr<UnitConverter>>;
  // A quantity's n-by-n table, one row per source unit: rows[from][to] converts from
  // unit `from` into unit `to`. Null entries stand for the shared identity converter
  // (the diagonal). Rows let a new unit join in O(n).
  using ConverterTable = std::vector<ConverterList>;

  // The singleton, created on the first call.
  static UnitConverterManager* Instance();

  UnitConverterApi* getQuantityUnitConverterApi(int quantity, int fromUnit,
                                                int toUnit) const override;
  UnitConverterApi* getQuantityUnitConverterApi(const std::string& from,
                                                const std::string& to) const override;
  UnitConverterApi* getQuantityUnitConverterApi(const std::string& composition,
                                                const UnitSystemApi* system) const override;
  UnitConverterApi* createUnitConverterApi(double multiplier, double offset) const override;
  UnitConverterApi* getReverseUnitConverterApi(UnitConverterApi* converter) const override;
  ~UnitConverterManager() override;

  // The same operations with their concrete results; each returns a new converter
  // that the caller owns.
  UnitConverter* getQuantityUnitConverter(int quantity, int fromUnit, int toUnit) const;
  UnitConverter* getQuantityUnitConverter(const std::string& from, const std::string& to) const;
  UnitConverter* getQuantityUnitConverter(const std::string& composition,
                                          const UnitSystemApi* system) const;
  // Between two compositions of the same dimensions, in base units. Cancels repeated
  // quantities in both compositions in place first. The quantity is not used.
  UnitConverter* getQuantityUnitConverter(int quantity, UnitComposition* from,
                                          UnitComposition* to) const;
  UnitConverter* getReverseUnitConverter(const UnitConverterApi* converter) const;

  // Attaches a new unit of base quantity q: `converter` turns values in the new unit
  // into the reference unit, and the calculator takes it over. Raises the unit
  // registry's count of q (twice for the first pair of units).
  void addBaseUnitConverter(int quantity, int newUnit, int referenceUnit, UnitConverter* converter);
  // Drops the unit's row and column; later units move down one index. The unit
  // registry calls it after lowering its count of q.
  void removeConversionFunctionsForUnit(int quantity, int unit);
  // Lays the quantity's converters out as an n-by-n table, n the registry's count.
  void sortConversions(int quantity);
  // True when a converter of the list (not the identity) converts into the unit.
  bool checkForConnectivity(const ConverterList* list, int unit) const;
  // Number of entries in the quantity's table.
  std::size_t getTableSize(int quantity) const;
  // The table's converter between two units of a base quantity, the shared identity on
  // the diagonal; the calculator keeps it. Raises std::out_of_range outside the table.
  const UnitConverter& tableEntry(int quantity, int fromUnit, int toUnit) const;

 private:
  UnitConverterManager();

  UnitConverter* temperatureConverter(const std::string& from, const std::string& to,
                                      const UnitComposition* fromComposition,
                                      const UnitComposition* toComposition) const;

  // Places each converter of the list at its (from, to) entry of the quantity's table.
  void placeConverters(int quantity, ConverterList& converters);

  std::vector<ConverterTable> tables_;
  std::unique_ptr<UnitConverter> identity_;
};

namespace UCMNamespace {

inline void mult(double& value, double factor) { value *= factor; }
inline void div(double& value, double divisor) { value /= divisor; }

// Pairs the units of two unit sets position by position (same base quantity by
// construction) and folds each pair's table converter and prefixes into multiplier
// and offset; `numerator` tells which side of the compositions they are.
void iterateBaseForMultOffset(const UnitMultiset& from, const UnitMultiset& to, double& multiplier,
                              double& offset, int count, bool numerator);

}  // namespace UCMNamespace

}  // namespace TwUnits
