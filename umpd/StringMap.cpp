#include "umpd/StringMap.h"

#include <algorithm>

#include "umpd/WideText.h"

StringMap::~StringMap() = default;

bool StringMap::set(std::u16string_view key, std::u16string_view value) {
  const auto pair = std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& each) {
    return equalsIgnoringCase(each.key, key);
  });
  if (pair != pairs_.end()) {
    pair->value = value;
    return true;
  }
  if (pairs_.size() == capacity) {
    messages_.debug(u"Help!! too many parms \n");
    return false;
  }
  pairs_.push_back({std::u16string(key), std::u16string(value)});
  return true;
}

const std::u16string* StringMap::find(std::u16string_view key) const {
  const auto pair = std::find_if(pairs_.begin(), pairs_.end(), [&](const Pair& each) {
    return equalsIgnoringCase(each.key, key);
  });
  return pair == pairs_.end() ? nullptr : &pair->value;
}
