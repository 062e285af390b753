// OrderedEntries: the entries of a dictionary in the order of their texts, as unsigned bytes, for
// those who walk over it. Entries lie in blocks of bounded size, so that adding, removing and
// finding the n-th one cost little however many there are.
#pragma once

#include <cstddef>
#include <vector>

namespace postscript {

class DictionaryEntry;

class OrderedEntries {
 public:
  // entries: in any order; they stay the caller's.
  explicit OrderedEntries(std::vector<DictionaryEntry*> entries);

  // Without memory for it everything stays as it was.
  void insert(DictionaryEntry* entry);
  void remove(const DictionaryEntry* entry);
  // index: below the number of entries.
  DictionaryEntry* at(size_t index) const;

 private:
  using Block = std::vector<DictionaryEntry*>;
  // The block that holds the entry or would take it.
  size_t blockOf(const DictionaryEntry* entry) const;
  // Moves the upper half of a full block into one of its own.
  void split(size_t index);

  std::vector<Block> blocks_;  // never empty blocks, but for the only one
};

}  // namespace postscript
