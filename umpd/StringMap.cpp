#include "umpd/StringMap.h"

#include <algorithm>

#include "umpd/WideText.h"

StringMap::~StringMap() = default;

bool StringMap::set(std::u16string_view key, std::u16string_view value) {
  const auto pair = std::find_if(stored.begin(), stored.end(), [&](const Pair& each) {
    return equalsIgnoringCase(each.key, key);
  });
  if (pair != stored.end()) {
    pair->value = value;
    return true;
  }
  if (stored.size() == capacity) {
    messages.debug(u"Help!! too many parms \n");
    return false;
  }
  stored.push_back({std::u16string(key), std::u16string(value)});
  return true;
}

const std::u16string* StringMap::find(std::u16string_view key) const {
  const auto pair = std::find_if(stored.begin(), stored.end(), [&](const Pair& each) {
    return equalsIgnoringCase(each.key, key);
  });
  return pair == stored.end() ? nullptr : &pair->value;
}
