#pragma once

// File: CompositionCache.hpp
// The unit registry's composition cache: the resolved composition of every unit name
// and of every composition text the registry has verified, by exact text. Every
// conversion between texts looks both of them up here, so a look-up hashes the text
// once and probes an open-addressing index whose size is a power of two (no division)
// over a dense list of entries. The order of visits is unspecified.
//
// Example:
//   CompositionCache cache;
//   cache.insert("meter", std::make_unique<UnitComposition>(UnitBase(2, 0, -1)));
//   cache.find("meter");                                  // the cache's composition
//   cache.eraseIf([](const std::string&, const UnitComposition& c) { return c.containsUnit(2, 0);
//   }); cache.find("meter");                                  // null

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
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
  UnitComposition* find(const std::string& text) const;
  Found lookup(const std::string& text) const;
  // Records the registered unit whose name the text is, and the entry's mark; the text
  // must have an entry.
  void setUnit(const std::string& text, const UnitRepresentationApi* unit, bool marked);
  // Sets the mark of the text's entry, which the registry gives to the entries that
  // name user units; the text must have an entry.
  void mark(const std::string& text);
  bool contains(const std::string& text) const { return find(text) != nullptr; }
  // Stores the composition under a text that has none and returns it; when the text
  // has one already, keeps that, frees the new one and returns the kept one.
  UnitComposition* insert(const std::string& text, std::unique_ptr<UnitComposition> composition);
  // Stores the composition under the text, freeing the one it replaces.
  UnitComposition* assign(const std::string& text, std::unique_ptr<UnitComposition> composition);
  // Frees the text's composition; false when there was none.
  bool erase(const std::string& text);
  // Frees every entry for which the predicate, given the text and its composition, is true.
  template <typename Predicate>
  void eraseIf(Predicate predicate);
  // Calls the visitor with each composition.
  template <typename Visitor>
  void forEach(Visitor visitor);
  std::size_t size() const { return entries_.size(); }

  // A fast hash of short texts, also the registry's for unit names.
  static std::uint64_t hashOf(const std::string& text);

 private:
  struct Entry {
    std::string text;
    std::unique_ptr<UnitComposition> composition;
    std::uint64_t hash;
    const UnitRepresentationApi* unit = nullptr;
    bool marked = false;
  };
  // A slot holds the entry's index + 1 in its low half and the high half of the
  // entry's hash in its high half, so that most mismatches need no visit to the entry.
  static constexpr std::uint64_t kEmpty = 0;

  // The slot that holds the entry with this text, or the empty slot where it would go.
  std::size_t slotOf(const std::string& text, std::uint64_t hash) const;
  // The slot that refers to the entry at this index.
  std::size_t slotOfEntry(std::size_t index) const;
  void eraseEntry(std::size_t index);
  void grow();

  std::deque<Entry> entries_;  // never moved as it grows
  std::vector<std::uint64_t> slots_;
  std::size_t mask_;
};

template <typename Predicate>
void CompositionCache::eraseIf(Predicate predicate) {
  // Erasing moves the last entry into the freed place, which is then looked at again.
  for (std::size_t i = 0; i < entries_.size();) {
    if (predicate(static_cast<const std::string&>(entries_[i].text),
                  static_cast<const UnitComposition&>(*entries_[i].composition))) {
      eraseEntry(i);
    } else {
      ++i;
    }
  }
}

template <typename Visitor>
void CompositionCache::forEach(Visitor visitor) {
  for (Entry& entry : entries_) visitor(*entry.composition);
}

}  // namespace TwUnits
