// The list of objects by itself, and in the hands of several threads.
#include "postscript/painting/PdfObjectList.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace postscript {
namespace {

PdfObjectContents image(std::string data) {
  return {TQP_IMAGE, "/Width 1", Text(data), 1, nullptr};
}
PdfObjectContents pattern() {
  return {TQP_PATTERN, "/Type /Pattern", {}, 1, nullptr};
}

std::vector<PdfObject*> handedOut(const PdfObjectList& list, HandedOutPdfObjects& to) {
  uint64_t count = 0;
  PdfObject* const* array = list.handOut(to, &count);
  EXPECT_NE(array, nullptr);
  return {array, array + count};
}

// Strings of two letters are beginnings of each other all the time.
TEST(PrefixTree, FindsWhatAWalkOverAllFinds) {
  std::minstd_rand random(7);
  for (size_t round = 0; round < 100; ++round) {
    PrefixTree tree;
    std::vector<std::string> strings(20);
    for (size_t i = 0; i < strings.size(); ++i) {
      for (auto length = random() % 8 + (round % 3) * 300; length > 0; --length) {
        strings[i] += random() % 40 ? 'a' : 'b';
      }
      size_t first = 0;
      while (!strings[first].starts_with(strings[i])) {
        ++first;
      }
      ASSERT_EQ(tree.find(strings[i]), first == i ? PrefixTree::none : first);
      tree.add(strings[i], i);
    }
  }
}

TEST(PdfObjectList, NamesAnImageByTheFirstThatBeginsWithItsData) {
  PdfObjectList list;
  list.addPdfObject("/PA", pattern());
  EXPECT_EQ(list.nameImage("/PSI", image(std::string("ab\0d", 4))).name, "/PSI2");
  EXPECT_EQ(list.nameImage("/PSI", image(std::string("ab\0", 3))).name, "/PSI2");
  EXPECT_EQ(list.nameImage("/PSI", image("abc")).name, "/PSI3");
  EXPECT_EQ(list.nameImage("/PSI", image(std::string("ab\0de", 5))).name, "/PSI4");
  EXPECT_EQ(list.nameImage("/PSI", image("a")).name, "/PSI2");
}

TEST(PdfObjectList, HandsOutAFinishedPatternInItsPlace) {
  PdfObjectList list;
  HandedOutPdfObjects early;
  HandedOutPdfObjects late;
  const PdfObjectList::Place first = list.addPdfObject("/PA", pattern());
  EXPECT_EQ(first.name, "/PA1");
  const PdfObject* open = handedOut(list, early)[0];
  list.nameImage("/PSI", image("abc"));
  const PdfObjectList::Place empty = list.addPdfObject("/PA", pattern());
  list.complete(empty, "");
  list.complete(first, "Q\n");
  EXPECT_EQ(open->data, nullptr);
  for (HandedOutPdfObjects* to : {&early, &late}) {
    const PdfObject* finished = handedOut(list, *to)[0];
    EXPECT_STREQ(finished->name, "/PA1");
    EXPECT_STREQ(finished->dictionary, "/Type /Pattern");
    EXPECT_EQ(finished->dataLength, 2U);
    EXPECT_STREQ(handedOut(list, *to)[1]->name, "/PSI2");
    EXPECT_STREQ(reinterpret_cast<const char*>(handedOut(list, *to)[2]->data), "");
  }
}

TEST(PdfObjectList, KeepsWhatIsHandedOutUntilTheNextTime) {
  PdfObjectList list;
  HandedOutPdfObjects to;
  EXPECT_TRUE(handedOut(list, to).empty());
  const PdfObjectList::Place place = list.addPdfObject("/PA", pattern());
  const PdfObject* record = handedOut(list, to)[0];
  list.clearPdfObjects();
  list.complete(place, "Q\n");
  EXPECT_STREQ(record->name, "/PA1");
  EXPECT_TRUE(handedOut(list, to).empty());
  EXPECT_EQ(list.nameImage("/PSI", image("abc")).name, "/PSI1");
}

// Each thread stores images that all have, images and patterns of its own, and reads everything it
// is handed out; one of them empties the list now and then.
void useList(PdfObjectList& list, int thread, int rounds) {
  HandedOutPdfObjects to;
  for (int i = 0; i < rounds; ++i) {
    list.nameImage("/PSI", image("common " + std::to_string(i % 7)));
    list.nameImage("/PSI", image("of " + std::to_string(thread) + " " + std::to_string(i)));
    const PdfObjectList::Place place = list.addPdfObject("/PA", pattern());
    const std::vector<PdfObject*> before = handedOut(list, to);
    list.complete(place, Text("content of " + place.name));
    if (thread == 0 && i % 50 == 49) {
      list.clearPdfObjects();
    }
    std::set<std::string_view> names;
    for (const PdfObject* record : before) {
      const std::string_view data(reinterpret_cast<const char*>(record->data), record->dataLength);
      EXPECT_TRUE(names.insert(record->name).second);
      EXPECT_TRUE(record->kind == TQP_PATTERN
                      ? data.empty() || data.ends_with(record->name)
                      : data.starts_with("common") || data.starts_with("of"))
          << data;
    }
  }
}

TEST(PdfObjectList, ServesAnyNumberOfThreads) {
  PdfObjectList list;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 8; ++thread) {
    threads.emplace_back(useList, std::ref(list), thread, 200);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

}  // namespace
}  // namespace postscript
