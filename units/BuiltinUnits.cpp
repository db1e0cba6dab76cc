#include "units/BuiltinUnits.hpp"

#include <iterator>

namespace TwUnits {

namespace {

const BuiltinBaseUnit kBaseUnits[] = {
    {0, "item", true},        {0, "molecule", true}, {0, "mole", true},
    {1, "gram", true},        {1, "ounce", true},    {1, "pound", true},
    {1, "ton", true},         {2, "meter", true},    {2, "inch", true},
    {2, "foot", true},        {2, "yard", true},     {2, "mile", true},
    {2, "metre", true},       {3, "second", true},   {3, "minute", true},
    {3, "hour", true},        {3, "day", true},      {3, "year", true},
    {4, "fahrenheit", false}, {4, "celsius", false}, {4, "kelvin", true},
    {4, "Celsius", false},    {5, "ampere", true},   {5, "biot", true},
    {6, "candela", true},     {6, "candle", true},   {36, "dimensionless", true},
};

const BuiltinBaseConverter kBaseConverters[] = {
    {0, 1, 0, "1", "0"},           {0, 2, 1, "6.02214199e+23", "0"},
    {1, 1, 0, "28.34952312", "0"}, {1, 2, 1, "16", "0"},
    {1, 3, 2, "2000", "0"},        {2, 1, 0, "0.0254", "0"},
    {2, 2, 1, "12", "0"},          {2, 3, 1, "36", "0"},
    {2, 4, 2, "5280", "0"},        {2, 5, 0, "1", "0"},
    {3, 1, 0, "60", "0"},          {3, 2, 0, "3600", "0"},
    {3, 3, 0, "86400", "0"},       {3, 4, 3, "365.25", "0"},
    {4, 1, 0, "1.8", "32"},        {4, 2, 1, "1", "-273.15"},
    {4, 3, 1, "1", "0"},           {5, 0, 1, "0.1", "0"},
    {6, 1, 0, "1.01937", "0"},
};

const BuiltinDerivedUnit kDerivedUnits[] = {
    {"acre", "foot^2", 43560.0},
    {"ares", "meter^2", 100.0},
    {"liter", "decimeter^3", 1.0},
    {"litre", "decimeter^3", 1.0},
    {"gallon", "inch^3", 231.0},
    {"pint", "inch^3", 28.875},
    {"quart", "inch^3", 57.75},
    {"pascal", "kilogram/(meter*second^2)", 1.0},
    {"watt", "(kilogram*meter^2)/second^3", 1.0},
    {"molarity", "mole/liter", 1.0},
    {"becquerel", "1/second", 1.0},
    {"hertz", "1/second", 1.0},
    {"newton", "(kilogram*meter)/second^2", 1.0},
    {"dyne", "(gram*centimeter)/second^2", 1.0},
    {"pound_force", "(pound*foot)/second^2", 32.17404855643045},
    {"coulomb", "ampere*second", 1.0},
    {"volt", "(kilogram*meter^2)/(ampere*second^3)", 1.0},
    {"farad", "(ampere^2*second^4)/(kilogram*meter^2)", 1.0},
    {"ohm", "(kilogram*meter^2)/(ampere^2*second^3)", 1.0},
    {"siemens", "(ampere^2*second^3)/(kilogram*meter^2)", 1.0},
    {"joule", "(meter^2*kilogram)/second^2", 1.0},
    {"calorie", "(meter^2*kilogram)/second^2", 4.1868},
    {"weber", "(kilogram*meter^2)/(ampere*second^2)", 1.0},
    {"tesla", "kilogram/(second^2*ampere)", 1.0},
    {"henry", "(kilogram*meter^2)/(ampere^2*second^2)", 1.0},
    {"gray", "meter^2/second^2", 1.0},
    {"sievert", "meter^2/second^2", 1.0},
    {"katal", "mole/second", 1.0},
};

}  // namespace

const BuiltinRows<BuiltinBaseUnit> kBuiltinBaseUnits{std::begin(kBaseUnits), std::end(kBaseUnits)};
const BuiltinRows<BuiltinBaseConverter> kBuiltinBaseConverters{std::begin(kBaseConverters),
                                                               std::end(kBaseConverters)};
const BuiltinRows<BuiltinDerivedUnit> kBuiltinDerivedUnits{std::begin(kDerivedUnits),
                                                           std::end(kDerivedUnits)};

}  // namespace TwUnits
