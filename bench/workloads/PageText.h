// PageText: a workload as it is written. It counts the objects that the text makes an interpreter
// run or push, so that a time can be given for one of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "bench/programs/Choices.h"

namespace workloads {

class PageText {
 public:
  // size: in bytes or, if sizeIsObjects, in objects.
  PageText(uint64_t seed, uint64_t size, bool sizeIsObjects)
      : choices(seed), size_(size), sizeIsObjects_(sizeIsObjects) {}

  // Appends words, each of which is one object.
  void put(std::string_view words);
  // Appends a text that makes so many objects run.
  void put(std::string_view text, uint64_t objects) {
    text_ += text;
    objects_ += objects;
  }
  // Appends bytes that are no objects, such as comments and samples.
  void putData(std::string_view bytes) { text_ += bytes; }

  // A number below `count` with so many decimals, and a blank.
  void number(uint32_t count, int decimals);
  // Two of them.
  void point(uint32_t count, int decimals) {
    number(count, decimals);
    number(count, decimals);
  }

  bool isFull() const { return (sizeIsObjects_ ? objects_ : text_.size()) >= size_; }
  size_t length() const { return text_.size(); }
  const std::string& text() const { return text_; }
  uint64_t objects() const { return objects_; }

  programs::SeededChoices choices;

 private:
  uint64_t size_;
  bool sizeIsObjects_;
  std::string text_;
  uint64_t objects_ = 0;
};

}  // namespace workloads
