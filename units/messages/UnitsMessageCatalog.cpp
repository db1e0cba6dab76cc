#include "units/messages/UnitsMessageCatalog.hpp"

#include <cstddef>
#include <cstdint>
#include <string>

namespace TwUnits {

namespace {

// The text takes exactly the fill-ins its row declares: %s a std::string, %d an int.
template <typename FillIn>
constexpr char kConversionOf = 0;
template <>
constexpr char kConversionOf<std::string> = 's';
template <>
constexpr char kConversionOf<int> = 'd';

template <typename... FillIns>
constexpr bool takesFillIns(const char* text) {
  constexpr char expected[] = {kConversionOf<FillIns>..., '\0'};
  std::size_t next = 0;
  for (; *text; ++text) {
    if (*text != '%') continue;
    ++text;
    if (*text == '%') continue;
    if (*text == '\0' || expected[next] == '\0' || *text != expected[next]) return false;
    ++next;
  }
  return expected[next] == '\0';
}

#define TW_EXPAND(...) __VA_ARGS__
#define TW_MESSAGE(key, fillIns, text)                 \
  static_assert(takesFillIns<TW_EXPAND fillIns>(text), \
                #key ": the text's conversions differ from the declared fill-ins");
#include "units/messages/UnitsMessages.def"
#undef TW_EXPAND

// Row n of each array is message id 0x470000 + n.
constexpr std::uint32_t kIds[kUnitsMessageCount] = {
#define TW_MESSAGE(key, fillIns, text) key,
#include "units/messages/UnitsMessages.def"
};

constexpr const char* kKeys[kUnitsMessageCount] = {
#define TW_MESSAGE(key, fillIns, text) #key,
#include "units/messages/UnitsMessages.def"
};

constexpr const char* kTexts[kUnitsMessageCount] = {
#define TW_MESSAGE(key, fillIns, text) text,
#include "units/messages/UnitsMessages.def"
};

const ut_message_table kCatalog = {
    kUnitsMessageCount, kUnitsFacility, kIds, kKeys, kTexts, "", {nullptr, nullptr, nullptr}};

bool catalogRegistered = false;

}  // namespace

const ut_message_table& unitsMessageCatalog() { return kCatalog; }

void registerUnitsMessageCatalog() {
  if (catalogRegistered) return;
  ut_mem_add_primary_message_table(utGetMemoryContext(), &kCatalog);
  catalogRegistered = true;
}

bool isUnitsMessageCatalogRegistered() { return catalogRegistered; }

}  // namespace TwUnits
