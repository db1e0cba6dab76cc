#include "units/CompositionCache.hpp"

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace TwUnits {

namespace {

constexpr std::size_t kInitialSlots = 256;  // a power of two

std::uint64_t mix(std::uint64_t value) {
  value *= 0xff51afd7ed558ccdULL;
  return value ^ (value >> 32);
}

}  // namespace

CompositionCache::CompositionCache() : slots_(kInitialSlots, kEmpty), mask_(kInitialSlots - 1) {}

CompositionCache::~CompositionCache() {
  for (Entry* entry : entries_) entry->~Entry();  // the arena frees their memory
}

// Eight bytes at a time; a short tail is read as two overlapping four-byte words or as
// its first, middle and last bytes, which together cover every byte. The length is
// mixed in first, since the tail reads alone do not tell "ab" from "abb".
std::uint64_t CompositionCache::hashOf(std::string_view text) {
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

namespace {

constexpr std::size_t kGrain = 8;  // an entry's alignment
constexpr std::size_t kFirstBlock = std::size_t{64} << 10;
constexpr std::size_t kLargestBlock = std::size_t{2} << 20;  // a huge page

std::size_t rounded(std::size_t size) { return (size + kGrain - 1) / kGrain * kGrain; }

}  // namespace

CompositionCache::Arena::~Arena() {
  for (const Block& block : blocks_) std::free(block.memory);
}

void* CompositionCache::Arena::allocate(std::size_t size) {
  size = rounded(size);
  std::size_t sizeClass = size / kGrain;
  if (sizeClass < released_.size() && !released_[sizeClass].empty()) {
    void* reused = released_[sizeClass].back();
    released_[sizeClass].pop_back();
    return reused;
  }
  if (size > left_) {
    // Blocks double up to a huge page; what is left of the old block is given back.
    std::size_t blockSize =
        blocks_.empty() ? kFirstBlock : std::min(2 * blocks_.back().size, kLargestBlock);
    while (blockSize < size) blockSize *= 2;
    if (left_ >= kGrain) release(next_, left_ / kGrain * kGrain);
    void* memory =
        std::aligned_alloc(blockSize == kLargestBlock ? kLargestBlock : kGrain, blockSize);
    if (memory == nullptr) throw std::bad_alloc();
#ifdef __linux__
    // One fault per 2 MiB instead of one per 4 KiB, where the system allows it.
    if (blockSize == kLargestBlock) madvise(memory, blockSize, MADV_HUGEPAGE);
#endif
    blocks_.push_back({memory, blockSize});
    next_ = static_cast<char*>(memory);
    left_ = blockSize;
  }
  void* memory = next_;
  next_ += size;
  left_ -= size;
  return memory;
}

void CompositionCache::Arena::release(void* memory, std::size_t size) {
  std::size_t sizeClass = rounded(size) / kGrain;
  if (sizeClass >= released_.size()) released_.resize(sizeClass + 1);
  released_[sizeClass].push_back(memory);
}

CompositionCache::Entry* CompositionCache::makeEntry(std::string_view text,
                                                     UnitComposition&& composition) {
  // A side that does not fit inside itself would take a heap block of its own; its units
  // go into the entry instead (unless there are very many of them).
  static_assert(alignof(Entry) <= kGrain, "the arena aligns entries");
  auto outsideOf = [](const UnitMultiset& side) {
    return side.size() > UnitMultiset::kInside ? side.size() : 0;
  };
  std::size_t numerator = outsideOf(composition.numerator_);
  std::size_t denominator = outsideOf(composition.denominator_);
  if (numerator + denominator > std::numeric_limits<std::uint16_t>::max())
    numerator = denominator = 0;
  const auto outside = static_cast<std::uint16_t>(numerator + denominator);
  void* memory = arena_.allocate(sizeof(Entry) + outside * sizeof(UnitBase) + text.size());
  Entry* entry =
      new (memory) Entry(std::move(composition), static_cast<std::uint32_t>(text.size()), outside);
  if (numerator > 0) entry->composition.numerator_.lendStorage(entry->units(), numerator);
  if (denominator > 0)
    entry->composition.denominator_.lendStorage(entry->units() + numerator, denominator);
  std::memcpy(const_cast<char*>(entry->text().data()), text.data(), text.size());
  return entry;
}

void CompositionCache::freeEntry(Entry* entry) {
  std::size_t size = entry->bytes();
  entry->~Entry();
  arena_.release(entry, size);
}

namespace {

constexpr std::uint64_t kIndexBits = 0xffffffffULL;

std::uint64_t slotValue(std::size_t index, std::uint64_t hash) {
  return (hash << 32) | (static_cast<std::uint64_t>(index) + 1);
}

std::size_t entryIndex(std::uint64_t slot) {
  return static_cast<std::size_t>(slot & kIndexBits) - 1;
}

// The low half of the hash, which the slot keeps and the home slot comes from.
std::uint64_t heldHash(std::uint64_t slot) { return slot >> 32; }

}  // namespace

std::size_t CompositionCache::slotOf(std::string_view text, std::uint64_t hash) const {
  for (std::size_t slot = hash & mask_;; slot = (slot + 1) & mask_) {
    std::uint64_t held = slots_[slot];
    if (held == kEmpty) return slot;
    if (heldHash(held) != (hash & kIndexBits)) continue;
    const Entry* entry = entries_[entryIndex(held)];
    if (entry->text() == text) return slot;
  }
}

std::size_t CompositionCache::slotOfEntry(std::size_t index) const {
  // The entry keeps no hash: its text is hashed again.
  for (std::size_t slot = hashOf(entries_[index]->text()) & mask_;; slot = (slot + 1) & mask_) {
    if (slots_[slot] != kEmpty && entryIndex(slots_[slot]) == index) return slot;
    assert(slots_[slot] != kEmpty && "every entry has a slot");
  }
}

CompositionCache::Entry* CompositionCache::entryOf(std::string_view text) const {
  std::uint64_t held = slots_[slotOf(text, hashOf(text))];
  return held == kEmpty ? nullptr : entries_[entryIndex(held)];
}

CompositionCache::Found CompositionCache::lookup(std::string_view text) const {
  const Entry* entry = entryOf(text);
  if (entry == nullptr) return {};
  return {const_cast<UnitComposition*>(&entry->composition), entry->unit, entry->marked};
}

void CompositionCache::setUnit(std::string_view text, const UnitRepresentationApi* unit,
                               bool marked) {
  Entry* entry = entryOf(text);
  assert(entry != nullptr && "a unit's name has an entry");
  entry->unit = unit;
  entry->marked = marked;
}

void CompositionCache::mark(std::string_view text) {
  Entry* entry = entryOf(text);
  assert(entry != nullptr && "a marked text has an entry");
  entry->marked = true;
}

UnitComposition* CompositionCache::insert(std::string_view text, UnitComposition&& composition) {
  std::uint64_t hash = hashOf(text);
  std::size_t slot = slotOf(text, hash);
  if (slots_[slot] == kEmpty) slot = insertAt(slot, text, hash, std::move(composition));
  return &entries_[entryIndex(slots_[slot])]->composition;
}

std::size_t CompositionCache::insertAt(std::size_t slot, std::string_view text, std::uint64_t hash,
                                       UnitComposition&& composition) {
  // At most half the slots in use keeps the probes short.
  if (2 * (entries_.size() + 1) > slots_.size()) {
    grow();
    slot = slotOf(text, hash);
  }
  entries_.push_back(makeEntry(text, std::move(composition)));
  slots_[slot] = slotValue(entries_.size() - 1, hash);
  return slot;
}

UnitComposition* CompositionCache::assign(std::string_view text,
                                          std::unique_ptr<UnitComposition> composition) {
  Entry* entry = entryOf(text);
  if (entry == nullptr) return insert(text, std::move(*composition));
  entry->composition = *composition;
  entry->unit = nullptr;
  entry->marked = false;
  return &entry->composition;
}

bool CompositionCache::erase(std::string_view text) {
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
    std::size_t home = heldHash(slots_[next]) & mask_;
    if (((next - home) & mask_) >= ((next - hole) & mask_)) {
      slots_[hole] = slots_[next];
      hole = next;
    }
  }
  slots_[hole] = kEmpty;

  freeEntry(entries_[index]);
  // The last entry fills the freed place in the dense list.
  std::size_t last = entries_.size() - 1;
  if (index != last) {
    const std::size_t moved = slotOfEntry(last);
    slots_[moved] = slotValue(index, heldHash(slots_[moved]));
    entries_[index] = entries_[last];
  }
  entries_.pop_back();
}

void CompositionCache::grow() {
  std::vector<std::uint64_t> slots(slots_.size() * 2, kEmpty);
  std::size_t mask = slots.size() - 1;
  for (std::uint64_t held : slots_) {
    if (held == kEmpty) continue;
    std::size_t slot = heldHash(held) & mask;
    while (slots[slot] != kEmpty) slot = (slot + 1) & mask;
    slots[slot] = held;
  }
  slots_ = std::move(slots);
  mask_ = mask;
}

}  // namespace TwUnits
