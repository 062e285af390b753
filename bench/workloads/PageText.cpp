#include "bench/workloads/PageText.h"

namespace workloads {

void PageText::put(std::string_view words) {
  bool inWord = false;
  for (const char c : words) {
    const bool blank = c == ' ' || c == '\n';
    objects_ += !blank && !inWord;
    inWord = !blank;
  }
  text_ += words;
}

void PageText::number(uint32_t count, int decimals) {
  text_ += std::to_string(choices.below(count));
  if (decimals > 0) {
    text_ += '.';
    for (int i = 0; i < decimals; ++i) {
      text_ += static_cast<char>('0' + choices.below(10));
    }
  }
  text_ += ' ';
  ++objects_;
}

}  // namespace workloads
