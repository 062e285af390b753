// What becomes of streams on their way into the file: text is decoded, and much of it waits on
// disk.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/quillpress/AsciiData.h"
#include "tools/quillpress/PageStore.h"

namespace quillpress {
namespace {

struct Case {
  const char* text;
  const char* bytes;  // null for none
};

TEST(AsciiData, HexadecimalIsTwoDigitsAByte) {
  const Case cases[] = {{"", ""},        {"414a4B", "AJK"}, {"4 1\n42>43", "AB"}, {"415>", "AP"},
                        {"4g", nullptr}, {"41@", nullptr},  {"4`", nullptr},      {"-1", nullptr}};
  for (const auto& [text, bytes] : cases) {
    EXPECT_EQ(decodeAsciiHex(text), bytes ? std::optional<std::string>(bytes) : std::nullopt)
        << text;
  }
}

TEST(AsciiData, Base85IsFiveDigitsAGroup) {
  const Case cases[] = {{"", ""},
                        {"<~87cURD]i,\"Ebo7~>", "Hello World"},
                        {"87cUR D]i,\n\"Ebo7~>rest", "Hello World"},
                        {"5l~>", "A"},
                        {"5~>", nullptr},  // one digit makes no byte
                        {"87z~>", nullptr},
                        {"s8W-\"~>", nullptr},  // more than four bytes hold
                        {"uu~>", nullptr},
                        {"87cv~>", nullptr}};
  for (const auto& [text, bytes] : cases) {
    EXPECT_EQ(decodeAscii85(text), bytes ? std::optional<std::string>(bytes) : std::nullopt)
        << text;
  }
  EXPECT_EQ(decodeAscii85("s8W-!~>"), "\xFF\xFF\xFF\xFF");
  EXPECT_EQ(decodeAscii85("87cURz"), std::string("Hell\0\0\0\0", 8));
}

// More than the store keeps in memory.
TEST(PageStore, GivesBackWhatItTook) {
  PageStore store;
  std::vector<StoredStream> streams;
  const auto bytesOf = [](size_t i) { return std::string(700000 + i, static_cast<char>('a' + i)); };
  for (size_t i = 0; i < 20; ++i) {
    streams.push_back(store.put(bytesOf(i)));
  }
  for (size_t i = streams.size(); i-- > 0;) {
    std::string read;
    store.read(streams[i], [&](std::string_view some) { read += some; });
    EXPECT_EQ(read, bytesOf(i)) << i;
  }
}

}  // namespace
}  // namespace quillpress
