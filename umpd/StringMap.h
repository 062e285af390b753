// StringMap: a job's settings in memory, wide text to wide text.
//
// Keys compare without regard to case, in the manner of ASCII. Pairs keep the order in which their
// keys first came. The map holds 190 pairs and no more: a further key is lost.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "umpd/platform/Platform.h"

namespace umpd {

class StringMap {
 public:
  static constexpr size_t capacity = 190;

  struct Pair {
    std::u16string key;
    std::u16string value;
  };

  explicit StringMap(Messages& messages) : messages_(messages) {}
  virtual ~StringMap();
  StringMap(const StringMap&) = delete;
  StringMap& operator=(const StringMap&) = delete;

  // Replaces the value of a key that is there, even in a full map. False if the pair is lost.
  bool set(std::u16string_view key, std::u16string_view value);
  void clear() { stored_.clear(); }

  // Null if the key is not there. Valid until the map changes.
  const std::u16string* find(std::u16string_view key) const;
  std::span<const Pair> pairs() const { return stored_; }

 private:
  Messages& messages_;
  std::vector<Pair> stored_;
};

}  // namespace umpd
