#include "postscript/values/OrderedEntries.h"

#include <algorithm>

#include "postscript/values/DictionaryObject.h"

namespace postscript {

namespace {

constexpr size_t blockLimit = 512;

bool isBefore(const DictionaryEntry* a, const DictionaryEntry* b) {
  return a->symbol.text() < b->symbol.text();
}

}  // namespace

OrderedEntries::OrderedEntries(std::vector<DictionaryEntry*> entries) {
  std::sort(entries.begin(), entries.end(), isBefore);
  const size_t half = blockLimit / 2;
  for (size_t i = 0; i < entries.size(); i += half) {
    const auto first = entries.begin() + static_cast<std::ptrdiff_t>(i);
    const auto count = static_cast<std::ptrdiff_t>(std::min(half, entries.size() - i));
    blocks_.emplace_back(first, first + count);
  }
  if (blocks_.empty()) {
    blocks_.emplace_back();
  }
}

size_t OrderedEntries::blockOf(const DictionaryEntry* entry) const {
  const auto next = std::upper_bound(
      blocks_.begin() + 1, blocks_.end(), entry,
      [](const DictionaryEntry* wanted, const Block& block) { return isBefore(wanted, block[0]); });
  return static_cast<size_t>(next - blocks_.begin()) - 1;
}

void OrderedEntries::insert(DictionaryEntry* entry) {
  size_t index = blockOf(entry);
  if (blocks_[index].size() == blockLimit) {
    split(index);
    index = blockOf(entry);
  }
  Block& block = blocks_[index];
  block.insert(std::upper_bound(block.begin(), block.end(), entry, isBefore), entry);
}

void OrderedEntries::split(size_t index) {
  const Block& block = blocks_[index];
  Block upper(block.begin() + blockLimit / 2, block.end());
  blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(index) + 1, std::move(upper));
  // Last, as all that needs memory is done.
  blocks_[index].resize(blockLimit / 2);
}

void OrderedEntries::remove(const DictionaryEntry* entry) {
  const size_t index = blockOf(entry);
  Block& block = blocks_[index];
  block.erase(std::lower_bound(block.begin(), block.end(), entry, isBefore));
  if (block.empty() && blocks_.size() > 1) {
    blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(index));
  }
}

DictionaryEntry* OrderedEntries::at(size_t index) const {
  auto block = blocks_.begin();
  for (; index >= block->size(); ++block) {
    index -= block->size();
  }
  return (*block)[index];
}

}  // namespace postscript
