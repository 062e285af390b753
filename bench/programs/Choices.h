// Choices: where a generator's decisions come from, either a seeded sequence that is the same on
// every platform or the bytes of a fuzzer, which then learns what they lead to.
#pragma once

#include <cstddef>
#include <cstdint>

namespace programs {

class Choices {
 public:
  virtual ~Choices() = default;
  // A number from 0 to count - 1; count is at least 1.
  virtual uint32_t below(uint32_t count) = 0;
  bool oneIn(uint32_t count) { return below(count) == 0; }
};

// The sequence of one seed (splitmix64). The seed itself is mixed first: the sequences of
// neighbouring seeds would be the same but for a shift.
class SeededChoices : public Choices {
 public:
  explicit SeededChoices(uint64_t seed) : state_(mixed(seed + step)) {}
  uint32_t below(uint32_t count) override {
    state_ += step;
    return static_cast<uint32_t>(((mixed(state_) >> 32) * count) >> 32);
  }

 private:
  static constexpr uint64_t step = 0x9E3779B97F4A7C15u;

  static uint64_t mixed(uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9u;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBu;
    return bits ^ (bits >> 31);
  }

  uint64_t state_;
};

// Two bytes a decision while they last, then always 0: the generator's shortest choice.
class ByteChoices : public Choices {
 public:
  ByteChoices(const uint8_t* bytes, size_t size) : bytes_(bytes), left_(size) {}
  uint32_t below(uint32_t count) override {
    const uint32_t high = next();
    const uint32_t number = high << 8 | next();
    return number % count;
  }

 private:
  uint32_t next() {
    if (left_ == 0) {
      return 0;
    }
    --left_;
    return *bytes_++;
  }

  const uint8_t* bytes_;
  size_t left_;
};

}  // namespace programs
