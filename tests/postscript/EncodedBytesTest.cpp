// The reading in blocks beside the plainest way to do the same, over every cut of the input.
#include "postscript/operators/EncodedBytes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

namespace postscript {
namespace {

constexpr size_t wanted = 150;

struct Reading {
  Text text;
  size_t taken = 0;
  int32_t pending = noDigit;

  bool operator==(const Reading&) const = default;
};

Reading plainHex(std::string_view input) {
  Reading reading;
  while (reading.text.size() < wanted && reading.taken < input.size()) {
    const char c = input[reading.taken++];
    const size_t place = std::string_view("0123456789abcdefABCDEF").find(c);
    if (place == std::string_view::npos) {
      continue;
    }
    const auto digit = static_cast<int32_t>(place < 16 ? place : place - 6);
    if (reading.pending == noDigit) {
      reading.pending = digit;
    } else {
      reading.text += static_cast<char>(reading.pending * 16 + digit);
      reading.pending = noDigit;
    }
  }
  return reading;
}

Reading plainBytes(std::string_view input) {
  Reading reading;
  while (reading.text.size() < wanted && reading.taken < input.size()) {
    const char c = input[reading.taken++];
    if (std::string_view("\r\n\t ").find(c) == std::string_view::npos) {
      reading.text += c;
    }
  }
  return reading;
}

// In two pieces; what the first leaves is read again with the second.
template <class Append>
Reading inPieces(std::string_view input, size_t cut, Append append) {
  Reading reading;
  reading.taken = append(input.substr(0, cut), reading);
  if (reading.text.size() < wanted) {
    EXPECT_EQ(reading.taken, cut);
    reading.taken += append(input.substr(cut), reading);
  }
  return reading;
}

// Mostly stretches of digits, in lines of any length, and bytes of every value in between.
std::string randomText(std::minstd_rand& random) {
  std::string text;
  while (text.size() < 400) {
    for (auto left = random() % 90; left > 0; --left) {
      text += "0123456789abcdefABCDEF"[random() % 22];
    }
    const auto other = random() % 3;
    text += other == 0 ? '\n' : other == 1 ? ' ' : static_cast<char>(random() % 256);
  }
  return text;
}

TEST(EncodedBytes, AreReadInBlocksAsOneByOne) {
  std::minstd_rand random(11);
  for (int round = 0; round < 20; ++round) {
    const std::string input = randomText(random);
    for (size_t cut = 0; cut <= input.size(); ++cut) {
      ASSERT_EQ(inPieces(input, cut,
                         [](std::string_view piece, Reading& to) {
                           return appendHexBytes(piece, wanted, to.pending, to.text);
                         }),
                plainHex(input));
      ASSERT_EQ(inPieces(input, cut,
                         [](std::string_view piece, Reading& to) {
                           return appendWithoutSpace(piece, wanted, to.text);
                         }),
                plainBytes(input));
    }
  }
}

}  // namespace
}  // namespace postscript
