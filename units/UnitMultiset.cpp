#include "units/UnitMultiset.hpp"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

namespace TwUnits {

namespace {

constexpr std::size_t kHeader = sizeof(std::uint32_t);
constexpr std::size_t kMostUnits = 0x3fffffffU;

}  // namespace

UnitMultiset::UnitMultiset(const std::multiset<UnitBase>& units) {
  reserve(units.size(), true);
  std::copy(units.begin(), units.end(), this->units());
  setSize(units.size());
}

UnitMultiset::UnitMultiset(const UnitMultiset& other) {
  reserve(other.size(), true);
  std::memcpy(static_cast<void*>(units()), other.units(), other.size() * sizeof(UnitBase));
  setSize(other.size());
}

UnitMultiset& UnitMultiset::operator=(const UnitMultiset& other) {
  if (this == &other) return *this;
  clear();
  reserve(other.size(), true);
  std::memcpy(static_cast<void*>(units()), other.units(), other.size() * sizeof(UnitBase));
  setSize(other.size());
  return *this;
}

UnitMultiset& UnitMultiset::operator=(UnitMultiset&& other) noexcept {
  if (this == &other) return *this;
  releaseBlock();
  take(other);
  return *this;
}

void UnitMultiset::take(UnitMultiset& other) noexcept {
  if (other.lent()) {
    // The storage stays with its owner: the units are copied (a failure to allocate the
    // block for them ends the program, as in any noexcept move).
    count_ = 0;
    reserve(other.size(), true);
    std::memcpy(static_cast<void*>(units()), other.units(), other.size() * sizeof(UnitBase));
    setSize(other.size());
    other.count_ = 0;
    return;
  }
  count_ = other.count_;
  if (other.inBlock()) {
    setBlock(other.block());
  } else {
    std::memcpy(room_, other.room_, other.size() * sizeof(UnitBase));
  }
  other.count_ = 0;
}

unsigned char* UnitMultiset::blockSlot() const {
  const auto misalignment = reinterpret_cast<std::uintptr_t>(room_) % alignof(void*);
  return const_cast<unsigned char*>(room_) + (alignof(void*) - misalignment) % alignof(void*);
}

unsigned char* UnitMultiset::block() const {
  unsigned char* address = nullptr;
  std::memcpy(&address, blockSlot(), sizeof address);
  return address;
}

void UnitMultiset::setBlock(unsigned char* address) {
  std::memcpy(blockSlot(), &address, sizeof address);
}

// Lent storage is kept as the address a block's header would have, so that finding the
// units takes one test, as it did before sets could borrow.
UnitBase* UnitMultiset::units() {
  return reinterpret_cast<UnitBase*>((count_ & (kInBlock | kLent)) != 0 ? block() + kHeader
                                                                        : room_);
}

const UnitBase* UnitMultiset::units() const {
  return reinterpret_cast<const UnitBase*>((count_ & (kInBlock | kLent)) != 0 ? block() + kHeader
                                                                              : room_);
}

namespace {

constexpr std::size_t kLentCapacityAt = UnitMultiset::kInside * sizeof(UnitBase) - 4;
static_assert(alignof(void*) - alignof(UnitBase) + sizeof(void*) <= kLentCapacityAt,
              "the lent capacity lies after the address");

}  // namespace

void UnitMultiset::lendStorage(UnitBase* storage, std::size_t capacity) {
  if (capacity < size() || capacity > kMostUnits)
    throw std::length_error("lent storage must hold the units");
  const std::size_t count = size();
  std::memcpy(static_cast<void*>(storage), units(), count * sizeof(UnitBase));
  releaseBlock();
  // Kept as a block's address would be: four bytes before the storage, in its allocation.
  setBlock(reinterpret_cast<unsigned char*>(storage) - kHeader);
  const auto capacity32 = static_cast<std::uint32_t>(capacity);
  std::memcpy(room_ + kLentCapacityAt, &capacity32, sizeof capacity32);
  count_ = static_cast<std::uint32_t>(count) | kLent;
}

std::size_t UnitMultiset::capacity() const {
  if (lent()) {
    std::uint32_t capacity = 0;
    std::memcpy(&capacity, room_ + kLentCapacityAt, sizeof capacity);
    return capacity;
  }
  if (!inBlock()) return kInside;
  std::uint32_t capacity = 0;
  std::memcpy(&capacity, block(), sizeof capacity);
  return capacity;
}

void UnitMultiset::reserve(std::size_t wanted, bool exact) {
  const std::size_t now = capacity();
  if (wanted <= now) return;
  if (wanted > kMostUnits) throw std::length_error("a composition cannot hold so many units");
  const std::size_t chosen = exact ? wanted : std::min(std::max(wanted, 2 * now), kMostUnits);
  auto* grown = static_cast<unsigned char*>(::operator new(kHeader + chosen * sizeof(UnitBase)));
  const auto capacity32 = static_cast<std::uint32_t>(chosen);
  std::memcpy(grown, &capacity32, sizeof capacity32);
  const std::size_t count = size();
  std::memcpy(grown + kHeader, units(), count * sizeof(UnitBase));
  if (inBlock()) ::operator delete(block());
  setBlock(grown);
  count_ = static_cast<std::uint32_t>(count) | kInBlock;
}

void UnitMultiset::releaseBlock() {
  if (inBlock()) ::operator delete(block());
  count_ = 0;
}

UnitMultiset::const_iterator UnitMultiset::insert(const UnitBase& unit) {
  const UnitBase added = unit;  // the unit may be one of ours, which growing moves
  const std::size_t count = size();
  // Usually the unit belongs at the end; otherwise after its equivalents.
  std::size_t at = count;
  if (count > 0 && added < units()[count - 1])
    at = static_cast<std::size_t>(std::upper_bound(begin(), end(), added) - begin());
  reserve(count + 1);
  UnitBase* first = units();
  std::memmove(static_cast<void*>(first + at + 1), first + at, (count - at) * sizeof(UnitBase));
  first[at] = added;
  setSize(count + 1);
  return first + at;
}

UnitMultiset::const_iterator UnitMultiset::erase(const_iterator position) {
  UnitBase* first = units();
  const auto at = static_cast<std::size_t>(position - first);
  const std::size_t count = size();
  std::memmove(static_cast<void*>(first + at), first + at + 1, (count - at - 1) * sizeof(UnitBase));
  setSize(count - 1);
  return first + at;
}

void UnitMultiset::merge(UnitMultiset& other) {
  if (&other == this) return;
  insert(other.begin(), other.end());
  other.clear();
}

void UnitMultiset::repeat(long long times) {
  const std::size_t count = size();
  const std::size_t total = count * static_cast<std::size_t>(times);
  UnitMultiset repeated;
  repeated.reserve(total, true);
  UnitBase* out = repeated.units();
  for (const UnitBase& unit : *this) out = std::fill_n(out, times, unit);
  repeated.setSize(total);
  *this = std::move(repeated);
}

}  // namespace TwUnits
