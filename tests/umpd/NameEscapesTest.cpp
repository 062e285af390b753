#include "umpd/NameEscapes.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/umpd/Wide.h"

namespace umpd {
namespace {

struct Case {
  std::string text, expected;
};

TEST(NameEscapes, AreDecoded) {
  const Case cases[] = {
      {"a+b", "a b"},        {"%41%6a%E9", "Aj\xE9"},  {"%%41", "%A"}, {"%", "%"},
      {"a%%", "a%%"},        {"%2F%5c%3A%1f", "____"}, {"%4x.", "_."}, {"%4", "_"},
      {"%A", "_"},           {"a%00b", "a"},           {"a%zzb", "a"}, {"a%-1b", "a"},
      {"a% 41", "a"},        {"%4%41", "_41"},         {"%2B", "_"},   {"%25%32", "%2"},
      {"a:b\xBF", "a:b\xBF"}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(narrow(decodeNameEscapes(wide(text))), expected) << text;
  }
}

}  // namespace
}  // namespace umpd
