// Any number of threads, each with converters of its own: the text is that of one thread.
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "include/tqpumpd2k.h"

namespace {

constexpr std::array<float, 6> identity = {1, 0, 0, 1, 0, 0};
constexpr int threadCount = 8, convertersOfThread = 10, pagesOfConverter = 60;

#ifdef _WIN32
constexpr bool jobsEmptyTheList = true;
#else
constexpr bool jobsEmptyTheList = false;
#endif

// A page with an image that other pages and threads have too, one that only few have, a pattern,
// saves and fonts. A pattern's colour is known for as long as nobody empties the list.
std::string pageProgram(int page) {
  const std::string number = std::to_string(page);
  const std::string shared(4001, static_cast<char>('a' + page % 7));
  return "save /Helvetica findfont " + number + " scalefont setfont (text) show gsave " + number +
         " 2 div setlinewidth 4001 1 8 [] (" + shared + ") image 4011 1 8 [] (" + number + shared +
         "0123456789) image /P 9 dict dup begin /XStep 1 def /YStep " + number +
         " def /PaintProc {pop 0 0 " + number +
         " 5 rectclip fill} def end def P matrix makepattern " +
         (jobsEmptyTheList ? "pop " : "setpattern ") + "0 0 10 0 " + number +
         " arc stroke grestore 5 dict begin /x " + number + " def x setgray end restore ";
}

// Records are numbered over the process.
std::string withoutNumbers(const std::string& text) {
  static const std::regex numbers("/(PSI|PA)[0-9]+");
  return std::regex_replace(text, numbers, "/$1");
}

// Reads the last records of the list, of which a name without data would be an unfinished one.
size_t sumOfRecords(void* converter) {
  uint64_t count = 0;
  PdfObject* const* records = PSGetPdfObjects(converter, &count);
  size_t sum = 0;
  for (uint64_t i = count > 20 ? count - 20 : 0; i < count; ++i) {
    sum += std::string(records[i]->name).size() + std::string(records[i]->dictionary).size();
    for (uint64_t byte = 0; byte < records[i]->dataLength; byte += 100) {
      sum += records[i]->data[byte];
    }
  }
  return sum;
}

// The text of all pages, as one converter writes it; "failed" if a call fails.
std::string convertPages() {
  void* const converter = PSOpen(identity.data());
  std::string all;
  for (int page = 1; page <= pagesOfConverter; ++page) {
    PSStartPage(converter, identity.data());
    const std::string program = pageProgram(page);
    auto length = static_cast<int32_t>(program.size());
    const char* text = PSConvertToPdf(converter, program.data(), &length);
    all += text ? withoutNumbers({text, static_cast<size_t>(length)}) : "failed\n";
    if (page % 8 == 0 && sumOfRecords(converter) == 0 && !jobsEmptyTheList) {
      all += "no records\n";
    }
  }
  PSClose(converter);
  return all;
}

// Print jobs, which empty the list when they begin and when they end. These fail for want of a
// printer.
void printUntil([[maybe_unused]] const std::atomic<bool>& end) {
#ifdef _WIN32
  while (!end) {
    DocStart2K(nullptr, 0, nullptr, nullptr);
  }
#endif
}

TEST(Threads, WriteTheTextOfOneThread) {
  const std::string expected = convertPages();
  ASSERT_EQ(expected.find("failed"), std::string::npos);
  std::atomic<int> same = 0;
  std::atomic<bool> end = false;
  std::thread printing(printUntil, std::cref(end));
  std::vector<std::thread> threads;
  for (int i = 0; i < threadCount; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < convertersOfThread; ++round) {
        same += convertPages() == expected;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  end = true;
  printing.join();
  EXPECT_EQ(same, threadCount * convertersOfThread);
}

}  // namespace
