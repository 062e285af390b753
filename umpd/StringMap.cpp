// 190 pairs are few enough to look through one by one, and a new pair goes to the end, so that the
// order in which they came needs no care.
#include "umpd/StringMap.h"

#include <algorithm>

#include "umpd/platform/WideText.h"

namespace umpd {

StringMap::~StringMap() = default;

template <class Pairs>
auto StringMap::search(Pairs& pairs, std::u16string_view key) {
  return std::find_if(pairs.begin(), pairs.end(),
                      [&](const Pair& each) { return equalsIgnoringCase(each.key, key); });
}

// A value is replaced in its place: the key keeps the spelling that it came with first.
bool StringMap::set(std::u16string_view key, std::u16string_view value) {
  const std::lock_guard lock(mutex_);
  if (const auto pair = search(stored_, key); pair != stored_.end()) {
    pair->value = value;
    return true;
  }
  if (stored_.size() == capacity) {
    messages_.debug(u"Help!! too many parms \n");
    return false;
  }
  stored_.push_back({std::u16string(key), std::u16string(value)});
  return true;
}

void StringMap::clear() {
  const std::lock_guard lock(mutex_);
  stored_.clear();
}

std::optional<std::u16string> StringMap::find(std::u16string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto pair = search(stored_, key);
  if (pair == stored_.end()) {
    return std::nullopt;
  }
  return pair->value;
}

std::vector<StringMap::Pair> StringMap::pairs() const {
  const std::lock_guard lock(mutex_);
  return stored_;
}

}  // namespace umpd
