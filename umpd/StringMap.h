// StringMap: a job's settings in memory, wide text to wide text.
//
// Keys compare without regard to case, in the manner of ASCII. Pairs keep the order in which their
// keys first came. The map holds 190 pairs and no more: a further key is lost.
#pragma once

#include <cstddef>
#include <mutex>
#include <optional>
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
  void clear();

  std::optional<std::u16string> find(std::u16string_view key) const;
  // As they are now, in order.
  std::vector<Pair> pairs() const;

 private:
  // An iterator of `stored_`, which may be const.
  template <class Pairs>
  static auto search(Pairs& pairs, std::u16string_view key);

  Messages& messages_;
  // A job's settings may be read while its end writes some.
  mutable std::mutex mutex_;
  std::vector<Pair> stored_;
};

}  // namespace umpd
