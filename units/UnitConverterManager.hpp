#pragma once

// File: UnitConverterManager.hpp
// The process-wide conversion calculator. For each base quantity (0 to 6) it answers
// as an n-by-n table of converters between every ordered pair of that quantity's n
// units, filled by the unit registry as base units are registered. It keeps one
// converter per unit, into the quantity's first unit, and composes an entry when it
// is read, so a unit costs O(1) time and memory to add and O(n) to remove. Entries
// between two built-in units are chained exactly from the library's decimal factors
// and rounded once: mile to meter is 1609.344, not 1609.3439999999998.
//
// Threads: the conversions may run on any number of threads while others change the
// registries. Each thread remembers the converters it resolved between two texts and
// reuses one, without a lock, while no registry has changed since; the rest hold the
// registries' lock (units/RegistryLock.hpp). tableEntry and getTableSize read without it.
//
// Example:
//   UnitConverterManager* converters = UnitConverterManager::Instance();
//   std::unique_ptr<UnitConverter> c(converters->getQuantityUnitConverter("mile", "meter"));
//   c->doConversion(1.0);   // 1609.344

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "units/UnitConverter.hpp"
#include "units/UnitConverterManagerApi.hpp"
#include "units/UnitMultiset.hpp"

namespace TwUnits {

class UnitBase;
class UnitComposition;

namespace detail {

// value in another unit = multiplier * value + offset.
template <typename T>
struct Affine {
  T multiplier;
  T offset;
};

struct RememberedPair;  // a converter between two texts that a thread remembers

}  // namespace detail

class UnitConverterManager : public UnitConverterManagerApi {
 public:
  static inline constexpr int kTemperatureIndex = 4;
  static inline constexpr int kLastBaseQuantity = 6;

  // Converters in no particular order.
  using ConverterList = std::vector<std::unique_ptr<UnitConverter>>;

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

  // Returns the converter between two composition strings by value, as
  // getQuantityUnitConverterApi does: no heap allocation once this thread has converted
  // between the same two texts and no registry has changed since. Issues
  // "Unit:Deprecation" for a deprecated unit's name on every call. Raises the parser's
  // errors, "Unit:ConversionDifferentQuants", "Unit:ConversionMixedOffset" or
  // "Unit:OffsetConversionWithPrefixNotAllowed". For many values, take the converter
  // once and apply doConversion to each.
  UnitConverter getConverter(const std::string& from, const std::string& to) const;
  // Returns the converter between two resolved compositions of the same dimensions (as
  // verifyUnitCompositionString gives them, or copies) by value, without changing them
  // and, for compositions with no quantity on both sides, without heap allocation.
  // Raises "Unit:ConversionMixedOffset" or "Unit:OffsetConversionWithPrefixNotAllowed".
  UnitConverter getConverter(const UnitComposition& from, const UnitComposition& to) const;

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
  // registry's count of q (twice for the first pair of units). The new unit's index is
  // the quantity's unit count; raises std::out_of_range for another.
  void addBaseUnitConverter(int quantity, int newUnit, int referenceUnit, UnitConverter* converter);
  // The same for a built-in unit, whose converter into the reference unit is written
  // in decimal ("0.0254", "-273.15"): entries between built-in units are exact
  // products of these factors, rounded once.
  void addBuiltinBaseUnitConverter(int quantity, int newUnit, int referenceUnit,
                                   const char* multiplier, const char* offset);
  // Drops the unit's row and column; later units move down one index. The unit
  // registry calls it after lowering its count of q. Raises std::out_of_range outside
  // the table and std::invalid_argument for a built-in unit.
  void removeConversionFunctionsForUnit(int quantity, int unit);
  // True when a converter of the list (not the identity) converts into the unit.
  bool checkForConnectivity(const ConverterList* list, int unit) const;
  // Number of entries in the quantity's table.
  std::size_t getTableSize(int quantity) const;
  // The table's converter between two units of a base quantity, with its quantity and
  // unit indexes; a copy of the identity on the diagonal. Raises std::out_of_range
  // outside the table.
  UnitConverter tableEntry(int quantity, int fromUnit, int toUnit) const;

 private:
  template <typename T>
  using Affine = detail::Affine<T>;

  struct QuantityUnits {
    // Each unit's converter into the quantity's first unit, carried with more precision
    // than a double so that an entry composed from two of them is rounded to a double
    // once. A unit's converter keeps its place in `toFirst`; the units in index order
    // are the list of their places, so a removal moves 4 bytes of each later unit.
    std::size_t size() const { return places.size(); }
    const Affine<long double>& operator[](std::size_t unit) const { return toFirst[places[unit]]; }
    void push_back(const Affine<long double>& converter);
    void erase(std::size_t unit);
    std::vector<Affine<long double>> toFirst;  // by place
    std::vector<std::uint32_t> places;         // by unit index
    std::vector<std::uint32_t> freePlaces;
    // Between the built-in units, which come first and never move: builtinCount
    // squared entries, row by source unit.
    std::vector<UnitConverter> builtinPairs;
    int builtinCount = 0;
  };
  struct ExactFactors;  // the built-in units' converters as exact fractions

  UnitConverterManager();

  QuantityUnits& baseQuantity(int quantity);
  void raiseUnitCount(int quantity, int joined) const;
  using RememberedPair = detail::RememberedPair;

  // The converter between two texts, resolved afresh.
  UnitConverter resolve(const std::string& from, const std::string& to) const;
  // Resolves the converter and remembers it in the pair, for this thread.
  [[gnu::noinline]] UnitConverter resolveAndRemember(RememberedPair& pair, std::uint64_t hash,
                                                     const std::string& from,
                                                     const std::string& to) const;
  UnitConverter temperatureConverter(const std::string& from, const std::string& to,
                                     const UnitComposition& fromComposition,
                                     const UnitComposition& toComposition) const;

  std::vector<QuantityUnits> quantities_;
  std::unique_ptr<ExactFactors> exact_;
  std::unique_ptr<UnitConverter> identity_;
};

namespace UCMNamespace {

inline void mult(double& value, double factor) { value *= factor; }
inline void div(double& value, double divisor) { value /= divisor; }

// Pairs the units of two unit sets position by position (same base quantity by
// construction) and folds each pair's table converter and prefixes into multiplier
// and offset; `numerator` tells which side of the compositions they are. `count` is the
// number of units of the composition converted from, or kOffsetsDoNotApply: then every
// pair converts by its factor alone.
inline constexpr int kOffsetsDoNotApply = -1;
void iterateBaseForMultOffset(const UnitMultiset& from, const UnitMultiset& to, double& multiplier,
                              double& offset, int count, bool numerator);

// Whether the composition, as written, holds one temperature unit, in its numerator. Any
// other temperature (a power, a denominator) is a temperature difference: it converts by
// its factor only, without the offset.
bool isLoneTemperature(const UnitComposition& composition);

}  // namespace UCMNamespace

}  // namespace TwUnits
