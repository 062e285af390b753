#include "umpd/StringMap.h"

#include <algorithm>

#include "umpd/platform/WideText.h"

namespace umpd {

StringMap::~StringMap() = default;

bool StringMap::set(std::u16string_view key, std::u16string_view value) {
  const auto pair = std::find_if(stored_.begin(), stored_.end(), [&](const Pair& each) {
    return equalsIgnoringCase(each.key, key);
  });
  if (pair != stored_.end()) {
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

const std::u16string* StringMap::find(std::u16string_view key) const {
  const auto pair = std::find_if(stored_.begin(), stored_.end(), [&](const Pair& each) {
    return equalsIgnoringCase(each.key, key);
  });
  return pair == stored_.end() ? nullptr : &pair->value;
}

}  // namespace umpd
