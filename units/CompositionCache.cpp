#include "units/CompositionCache.hpp"

#include <cassert>
#include <cstring>

namespace TwUnits {

namespace {

constexpr std::size_t kInitialSlots = 256;  // a power of two
constexpr std::uint64_t kIndexBits = 0xffffffffULL;

std::uint64_t slotValue(std::size_t index, std::uint64_t hash) {
  return (hash & ~kIndexBits) | (static_cast<std::uint64_t>(index) + 1);
}

std::size_t entryIndex(std::uint64_t slot) {
  return static_cast<std::size_t>(slot & kIndexBits) - 1;
}

std::uint64_t mix(std::uint64_t value) {
  value *= 0xff51afd7ed558ccdULL;
  return value ^ (value >> 32);
}

}  // namespace

CompositionCache::CompositionCache() : slots_(kInitialSlots, kEmpty), mask_(kInitialSlots - 1) {}

CompositionCache::~CompositionCache() = default;

// Eight bytes at a time; a short tail is read as two overlapping four-byte words or as
// its first, middle and last bytes, which together cover every byte. The length is
// mixed in first, since the tail reads alone do not tell "ab" from "abb".
std::uint64_t CompositionCache::hashOf(const std::string& text) {
  const char* bytes = text.data();
  std::size_t length = text.size();
  std::uint64_t hash = 0x9e3779b97f4a7c15ULL ^ mix(length);
  for (; length >= 8; bytes += 8, length -= 8) {
    std::uint64_t word;
    std::memcpy(&word, bytes, 8);
    hash = mix(hash ^ word);
  }
  if (length >= 4) {
    std::uint32_t head, tail;
    std::memcpy(&head, bytes, 4);
    std::memcpy(&tail, bytes + length - 4, 4);
    hash = mix(hash ^ (static_cast<std::uint64_t>(head) << 32 | tail));
  } else if (length > 0) {
    auto byte = [bytes](std::size_t i) {
      return static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i]));
    };
    hash = mix(hash ^ (byte(0) << 16 | byte(length / 2) << 8 | byte(length - 1)));
  }
  // A final avalanche, so that the low bits, which pick the slot, depend on every byte.
  hash ^= hash >> 33;
  hash *= 0xc4ceb9fe1a85ec53ULL;
  return hash ^ (hash >> 33);
}

std::size_t CompositionCache::slotOf(const std::string& text, std::uint64_t hash) const {
  for (std::size_t slot = hash & mask_;; slot = (slot + 1) & mask_) {
    std::uint64_t held = slots_[slot];
    if (held == kEmpty) return slot;
    if (((held ^ hash) & ~kIndexBits) != 0) continue;
    const Entry& entry = entries_[entryIndex(held)];
    if (entry.hash == hash && entry.text == text) return slot;
  }
}

std::size_t CompositionCache::slotOfEntry(std::size_t index) const {
  for (std::size_t slot = entries_[index].hash & mask_;; slot = (slot + 1) & mask_) {
    if (slots_[slot] != kEmpty && entryIndex(slots_[slot]) == index) return slot;
    assert(slots_[slot] != kEmpty && "every entry has a slot");
  }
}

UnitComposition* CompositionCache::find(const std::string& text) const {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  return held == kEmpty ? nullptr : entries_[entryIndex(held)].composition.get();
}

CompositionCache::Found CompositionCache::lookup(const std::string& text) const {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  if (held == kEmpty) return {};
  const Entry& entry = entries_[entryIndex(held)];
  return {entry.composition.get(), entry.unit, entry.marked};
}

void CompositionCache::setUnit(const std::string& text, const UnitRepresentationApi* unit,
                               bool marked) {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  assert(held != kEmpty && "a unit's name has an entry");
  entries_[entryIndex(held)].unit = unit;
  entries_[entryIndex(held)].marked = marked;
}

void CompositionCache::mark(const std::string& text) {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  assert(held != kEmpty && "a marked text has an entry");
  entries_[entryIndex(held)].marked = true;
}

UnitComposition* CompositionCache::insert(const std::string& text,
                                          std::unique_ptr<UnitComposition> composition) {
  std::uint64_t hash = hashOf(text);
  std::size_t slot = slotOf(text, hash);
  if (slots_[slot] != kEmpty) return entries_[entryIndex(slots_[slot])].composition.get();
  // At most half the slots in use keeps the probes short.
  if (2 * (entries_.size() + 1) > slots_.size()) {
    grow();
    slot = slotOf(text, hash);
  }
  entries_.push_back(Entry{text, std::move(composition), hash, nullptr, false});
  slots_[slot] = slotValue(entries_.size() - 1, hash);
  return entries_.back().composition.get();
}

UnitComposition* CompositionCache::assign(const std::string& text,
                                          std::unique_ptr<UnitComposition> composition) {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  if (held == kEmpty) return insert(text, std::move(composition));
  Entry& entry = entries_[entryIndex(held)];
  entry.composition = std::move(composition);
  entry.unit = nullptr;
  entry.marked = false;
  return entry.composition.get();
}

bool CompositionCache::erase(const std::string& text) {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  if (held == kEmpty) return false;
  eraseEntry(entryIndex(held));
  return true;
}

void CompositionCache::eraseEntry(std::size_t index) {
  // Backward-shift deletion: later members of the probe run move into the hole when
  // their home slot allows, so no run is broken and no tombstones pile up.
  std::size_t hole = slotOfEntry(index);
  for (std::size_t next = (hole + 1) & mask_; slots_[next] != kEmpty; next = (next + 1) & mask_) {
    std::size_t home = entries_[entryIndex(slots_[next])].hash & mask_;
    if (((next - home) & mask_) >= ((next - hole) & mask_)) {
      slots_[hole] = slots_[next];
      hole = next;
    }
  }
  slots_[hole] = kEmpty;

  // The last entry fills the freed place in the dense list.
  std::size_t last = entries_.size() - 1;
  if (index != last) {
    slots_[slotOfEntry(last)] = slotValue(index, entries_[last].hash);
    entries_[index] = std::move(entries_[last]);
  }
  entries_.pop_back();
}

void CompositionCache::grow() {
  std::vector<std::uint64_t> slots(slots_.size() * 2, kEmpty);
  std::size_t mask = slots.size() - 1;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    std::size_t slot = entries_[i].hash & mask;
    while (slots[slot] != kEmpty) slot = (slot + 1) & mask;
    slots[slot] = slotValue(i, entries_[i].hash);
  }
  slots_ = std::move(slots);
  mask_ = mask;
}

}  // namespace TwUnits
