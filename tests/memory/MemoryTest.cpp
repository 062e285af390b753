// What becomes of memory: every allocation of a job fails once, and once for good; and converters
// that come and go leave nothing behind.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <thread>

#include "include/tqpumpd2k.h"
#include "postscript/painting/ClearPdfObjects.h"
#include "postscript/values/DictionaryObject.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/ObjectPool.h"
#include "postscript/values/VirtualMemory.h"
#include "tests/memory/Allocations.h"

namespace {

constexpr float identity[] = {1, 0, 0, 1, 0, 0};

// A page that uses every part: values, dictionaries, procedures, loops, saves, files, fonts, paths,
// clips, images that stay in the text and that become objects, a pattern, and a failure.
const std::string& everything() {
  static const std::string text =
      "/d 5 dict def d begin /x 12.5 def /s (some text) def end 3 dict begin d {def} forall "
      "[1 2 [3 (four)] /five] dup length array copy {pop} forall 0 1 3 {pop} for "
      "{{true {exit} if} loop} stopped pop {stop} stopped pop /p {moveto lineto} bind def "
      "s 4 (putinterval) putinterval x 20 string cvs pop (abc) (a) anchorsearch {pop} if pop "
      "save gsave 1 2 3 4 p 5 5 lineto closepath clip 0.5 setgray 1 0 0 setrgbcolor fill "
      "10 10 5 0 270 arc stroke [3 1] 0 setdash grestore restore "
      "/Helvetica findfont 12 scalefont setfont (shown) show "
      "2 2 8 matrix {<00FF00FF>} image 4 1 8 matrix {currentfile 2 string readhexstring pop} image "
      "61 62 63 64 (abc) /ASCIIHexDecode filter 9 string readstring pop pop "
      "/buffer 5000 string def 0 setgray 5000 1 8 matrix {buffer} image "
      "/P 9 dict dup begin /XStep 5 def /YStep 5 def /BBox [0 0 5 5] def /PaintProc {pop fill} def "
      "end def P matrix makepattern setpattern [[1 2] 3] == end ";
  return text;
}

// All calls of a job. What fails must say so and leave a converter that can be used and closed.
void runJob(const std::string& page) {
  void* converter = PSOpen(identity);
  if (!converter) {
    return;
  }
  for (int i = 0; i < 2; ++i) {
    PSStartPage(converter, identity);
    auto length = static_cast<int32_t>(page.size());
    if (!PSConvertToPdf(converter, page.data(), &length)) {
      EXPECT_NE(PSGetErrorStr(converter), nullptr);
    }
    uint64_t count = 0;
    PdfObject* const* objects = PSGetPdfObjects(converter, &count);
    for (uint64_t j = 0; objects && j < count; ++j) {
      EXPECT_NE(objects[j]->name, nullptr);
      EXPECT_TRUE(objects[j]->dataLength == 0 || objects[j]->data != nullptr);
    }
    length = 9;
    PSConvertToPdf(converter, "(x) nosuc", &length);
  }
  PSClose(converter);
  postscript::clearPdfObjects();
}

// How many blocks are in use, of which none is only kept for the next who asks.
int64_t inUse() {
  postscript::objectPool::releaseUnused();
  return allocations::inUse();
}

// Fails each allocation in turn and returns what stays in use.
int64_t leftByFailures(bool andAllAfter) {
  runJob(everything());  // what the process keeps is there from now on
  allocations::failAt(0);
  runJob(everything());
  const uint64_t last = allocations::count();
  EXPECT_GT(last, 100u);
  const int64_t before = inUse();
  for (uint64_t number = 1; number <= last; ++number) {
    allocations::failAt(number, andAllAfter);
    runJob(everything());
  }
  allocations::failAt(0);
  return inUse() - before;
}

TEST(Memory, EveryAllocationMayFailOnce) {
  EXPECT_EQ(leftByFailures(false), 0);
}

TEST(Memory, EveryAllocationMayFailForGood) {
  EXPECT_EQ(leftByFailures(true), 0);
}

// Fails the given allocation of the entry that comes after so many others, in a dictionary that
// somebody walks over. Whether it was one.
bool failsEntryAfter(int size, uint64_t allocation) {
  postscript::VirtualMemorySet memory;
  postscript::DictionaryObject dictionary(*memory.local);
  const postscript::DictionaryData& body = dictionary.body();
  for (int i = 0; i < size; ++i) {
    dictionary.putNew<postscript::IntegerObject>("k" + std::to_string(1000 + i), i);
    body.entryAt(0);
  }
  bool failed = false;
  allocations::failAt(allocation);
  try {
    dictionary.putNew<postscript::IntegerObject>("a", -1);
  } catch (const std::bad_alloc&) {
    failed = true;
  }
  allocations::failAt(0);
  EXPECT_EQ(body.size(), size + !failed);
  for (int i = 0; i < body.size(); ++i) {
    const std::string key = i == 0 && !failed ? "a" : "k" + std::to_string(1000 + i - !failed);
    EXPECT_EQ(&body.entryAt(i), body.find(memory.symbols.symbolOf(key))) << key;
  }
  return failed;
}

// Entries lie in order in blocks, and a full block is split.
TEST(Memory, EntriesStayInOrderWithoutMemoryForOneMore) {
  for (const int size : {3, 511, 512}) {
    uint64_t allocation = 1;
    while (failsEntryAfter(size, allocation)) {
      ++allocation;
    }
    EXPECT_GT(allocation, 2u);
  }
}

// As many converters as CONVERTERS says; scripts/soak asks for more than the tests do.
TEST(Memory, ConvertersLeaveNothing) {
  const char* asked = std::getenv("CONVERTERS");
  const int converters = asked ? std::atoi(asked) : 300;
  ASSERT_GT(converters, 10);
  for (int i = 0; i < 10; ++i) {
    runJob(everything());
  }
  const int64_t before = inUse();
  for (int i = 0; i < converters; ++i) {
    runJob(everything());
  }
  EXPECT_EQ(inUse(), before);
}

// A thread that only frees what another has taken gives that back, too.
TEST(Memory, ThreadsLeaveNothing) {
  int64_t before = 0;
  for (int i = 0; i < 4; ++i) {
    void* converter = nullptr;
    std::thread([&converter] {
      converter = PSOpen(identity);
      auto length = static_cast<int32_t>(everything().size());
      PSConvertToPdf(converter, everything().data(), &length);
    }).join();
    std::thread([converter] {
      PSClose(converter);
      postscript::clearPdfObjects();
    }).join();
    if (i == 1) {
      before = inUse();
    }
  }
  EXPECT_EQ(inUse(), before);
}

// Pages of one converter that leave nothing on its stacks leave nothing in its memory.
TEST(Memory, PagesLeaveNothing) {
  void* converter = PSOpen(identity);
  const std::string page =
      "/s (a string of the page) def [1 2 (three) {4}] pop 5 dict begin /x 1 def end save gsave "
      "1 2 moveto 3 4 lineto stroke grestore restore 4 1 8 matrix (abcd) image ";
  const auto run = [&](int times) {
    for (int i = 0; i < times; ++i) {
      PSStartPage(converter, identity);
      auto length = static_cast<int32_t>(page.size());
      ASSERT_NE(PSConvertToPdf(converter, page.data(), &length), nullptr)
          << PSGetErrorStr(converter);
    }
  };
  run(20);
  const int64_t before = inUse();
  run(2000);
  EXPECT_LE(inUse() - before, 20);
  PSClose(converter);
}

}  // namespace
