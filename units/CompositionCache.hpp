#pragma once

// File: CompositionCache.hpp
// The unit registry's composition cache: the resolved composition of every unit name
// and of every composition text the registry has verified, by exact text. Every
// conversion between texts looks both of them up here, so a look-up hashes the text
// once and probes an open-addressing index whose size is a power of two (no division).
// Each entry is one allocation that holds the composition, the units of a side of the
// fraction too many to fit inside it, and the text itself. The order of visits is
// unspecified.
//
// Example:
//   CompositionCache cache;
//   cache.insert("meter", UnitComposition(UnitBase(2, 0, -1)));
//   cache.find("meter");                                  // the cache's composition
//   cache.eraseIf([](std::string_view, const UnitComposition& c) { return c.containsUnit(2, 0); });
//   cache.find("meter");                                  // null

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "units/UnitComposition.hpp"

namespace TwUnits {

class UnitRepresentationApi;

class CompositionCache {
 public:
  CompositionCache();
  CompositionCache(const CompositionCache&) = delete;
  CompositionCache& operator=(const CompositionCache&) = delete;
  ~CompositionCache();

  struct Found {
    UnitComposition* composition = nullptr;       // null when the text has no entry
    const UnitRepresentationApi* unit = nullptr;  // when the text is a registered unit's name
    bool marked = false;
  };

  // The text's composition (the cache keeps it), or null.
  UnitComposition* find(std::string_view text) const { return lookup(text).composition; }
  Found lookup(std::string_view text) const;
  // Records the registered unit whose name the text is, and the entry's mark; the text
  // must have an entry.
  void setUnit(std::string_view text, const UnitRepresentationApi* unit, bool marked);
  // Sets the mark of the text's entry, which the registry gives to the entries that
  // name user units; the text must have an entry.
  void mark(std::string_view text);
  bool contains(std::string_view text) const { return find(text) != nullptr; }
  // Stores the composition under a text that has none and returns the stored one; when
  // the text has one already, keeps that and returns it.
  UnitComposition* insert(std::string_view text, UnitComposition&& composition);
  UnitComposition* insert(std::string_view text, std::unique_ptr<UnitComposition> composition) {
    return insert(text, std::move(*composition));
  }
  // The text's entry; when it has none, first stores make()'s composition under it (a
  // make() that raises stores nothing). make() may look texts up, not change the cache.
  template <typename Make>
  Found findOrInsert(std::string_view text, Make make);
  // Stores the composition under the text, freeing the one it replaces.
  UnitComposition* assign(std::string_view text, std::unique_ptr<UnitComposition> composition);
  // Frees the text's composition; false when there was none.
  bool erase(std::string_view text);
  // Frees every entry for which the predicate, given the text and its composition, is true.
  template <typename Predicate>
  void eraseIf(Predicate predicate);
  // Calls the visitor with each composition.
  template <typename Visitor>
  void forEach(Visitor visitor);
  std::size_t size() const { return entries_.size(); }

  // A fast hash of short texts, also the registry's for unit names.
  static std::uint64_t hashOf(std::string_view text);

 private:
  // One allocation: the entry, then the units that the composition's sides hold outside
  // themselves (a side with more units than fit inside it), then the text's bytes.
  struct Entry {
    // Copied, not moved, so that each side is sized to its units.
    Entry(UnitComposition&& made, std::uint32_t textLength, std::uint16_t unitsOutside)
        : composition(made), length(textLength), outside(unitsOutside) {}
    UnitBase* units() { return reinterpret_cast<UnitBase*>(this + 1); }
    std::string_view text() const {
      return {reinterpret_cast<const char*>(this + 1) + outside * sizeof(UnitBase), length};
    }
    std::size_t bytes() const { return sizeof(Entry) + outside * sizeof(UnitBase) + length; }

    UnitComposition composition;
    const UnitRepresentationApi* unit = nullptr;
    std::uint32_t length;
    std::uint16_t outside;
    bool marked = false;
  };
  // Where the entries live: memory taken in large blocks (huge pages where the system
  // offers them), handed out in sizes rounded to 8 bytes and taken back for reuse. A
  // cache of many texts costs little more than its bytes, and little time to grow.
  class Arena {
   public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena();
    void* allocate(std::size_t size);
    void release(void* memory, std::size_t size);

   private:
    struct Block {
      void* memory;
      std::size_t size;
    };
    std::vector<Block> blocks_;
    char* next_ = nullptr;
    std::size_t left_ = 0;
    std::vector<std::vector<void*>> released_;  // by size / 16
  };

  Entry* makeEntry(std::string_view text, UnitComposition&& composition);
  void freeEntry(Entry* entry);
  // A slot holds the entry's index + 1 in its low half and the low half of the entry's
  // hash in its high half: enough to find the home slot and to pass over most other
  // entries without a visit to them, which is a cache miss in a large cache.
  static constexpr std::uint64_t kEmpty = 0;
  // The slot that holds the entry with this text, or the empty slot where it would go.
  std::size_t slotOf(std::string_view text, std::uint64_t hash) const;
  Entry* entryOf(std::string_view text) const;
  // Stores a new entry in the empty slot that slotOf found for the text; returns its slot.
  std::size_t insertAt(std::size_t slot, std::string_view text, std::uint64_t hash,
                       UnitComposition&& composition);
  // The slot that refers to the entry at this index.
  std::size_t slotOfEntry(std::size_t index) const;
  void eraseEntry(std::size_t index);
  void grow();

  Arena arena_;
  std::vector<Entry*> entries_;  // the cache owns them; dense, in no order
  std::vector<std::uint64_t> slots_;
  std::size_t mask_;
};

template <typename Make>
CompositionCache::Found CompositionCache::findOrInsert(std::string_view text, Make make) {
  // One hash and one probe, which in a large cache is a miss: the slot is kept.
  std::uint64_t hash = hashOf(text);
  std::size_t slot = slotOf(text, hash);
  if (slots_[slot] == kEmpty) {
    UnitComposition made = make();
    slot = insertAt(slot, text, hash, std::move(made));
  }
  const Entry* entry = entries_[(slots_[slot] & 0xffffffffULL) - 1];
  return {const_cast<UnitComposition*>(&entry->composition), entry->unit, entry->marked};
}

template <typename Predicate>
void CompositionCache::eraseIf(Predicate predicate) {
  // Erasing moves the last entry into the freed place, which is then looked at again.
  for (std::size_t i = 0; i < entries_.size();) {
    const Entry* entry = entries_[i];
    if (predicate(entry->text(), std::as_const(entry->composition))) {
      eraseEntry(i);
    } else {
      ++i;
    }
  }
}

template <typename Visitor>
void CompositionCache::forEach(Visitor visitor) {
  for (Entry* entry : entries_) visitor(entry->composition);
}

}  // namespace TwUnits
