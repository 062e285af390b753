// What programs cannot see of values and their containers: counts, ends, texts.
#include <gtest/gtest.h>

#include <functional>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "postscript/values/DictionaryObject.h"
#include "postscript/values/Ex.h"
#include "postscript/values/Held.h"
#include "postscript/values/IntegerObject.h"
#include "postscript/values/NumberUtils.h"
#include "postscript/values/ObjectStack.h"
#include "postscript/values/RealObject.h"
#include "postscript/values/SimpleObjects.h"

using namespace postscript;

namespace {

std::string failureOf(const std::function<void()>& action) {
  try {
    action();
  } catch (Ex& ex) {
    return ex.report();
  }
  return "";
}

// Counts how many of its kind are alive.
class Counted : public NullObject {
 public:
  Counted() { ++alive; }
  ~Counted() override { --alive; }
  static inline int alive = 0;
};

TEST(ObjectStack, CountsWhatItHolds) {
  ObjectStack stack("test");
  auto* object = new Counted;
  EXPECT_EQ(object->refCount, 0);
  stack.pushChecked(object);
  stack.pushChecked(object);
  EXPECT_EQ(object->refCount, 2);
  EXPECT_EQ(stack.pop(), object);
  EXPECT_EQ(stack.pop(), object);
  EXPECT_EQ(object->refCount, 0);
  EXPECT_EQ(Counted::alive, 1) << "pop does not delete";
  stack.pushChecked(object);
  EXPECT_EQ(object->refCount, 1);
  stack.clear();
  EXPECT_EQ(Counted::alive, 0);
  EXPECT_EQ(stack.size(), 0);
}

TEST(ObjectStack, SetsWithinItsSizeAndOneBeyond) {
  ObjectStack stack("test");
  stack.setAt(0, new Counted);
  stack.setAt(1, new Counted);
  PostscriptObject* first = stack.at(0);
  stack.setAt(0, first);
  EXPECT_EQ(first->refCount, 1);
  stack.setAt(0, stack.at(1));
  EXPECT_EQ(Counted::alive, 1);
  EXPECT_EQ(stack.at(0)->refCount, 2);
  NullObject other;
  EXPECT_EQ(failureOf([&] { stack.setAt(int64_t{1} << 32, &other); }),
            "[ostscript/lib/ObjectStack:133] Illegal array index\n");
  EXPECT_EQ(stack.at(-1), nullptr);
  EXPECT_EQ(stack.at(2), nullptr);
  EXPECT_EQ(stack.top(), stack.at(1));
}

TEST(DictionaryData, GivesUpWhatItReplacesOrLoses) {
  {
    SymbolTable symbols;
    Budget budget;
    DictionaryData dictionary(budget, symbols);
    auto* kept = new Counted;
    dictionary.put("a", kept);
    dictionary.put("a", kept);
    EXPECT_EQ(kept->refCount, 1);
    dictionary.put("b", kept);
    dictionary.put("a", new Counted);
    EXPECT_EQ(kept->refCount, 1);
    EXPECT_EQ(Counted::alive, 2);
    dictionary.remove("b");
    dictionary.remove("b");
    EXPECT_EQ(Counted::alive, 1);
    EXPECT_EQ(dictionary.get("b"), nullptr);
  }
  EXPECT_EQ(Counted::alive, 0);
}

// Enough keys to fill blocks of the order and to empty them again, walked over all along.
TEST(DictionaryData, StaysInOrderWhileItGrowsAndShrinks) {
  SymbolTable symbols;
  Budget budget;
  DictionaryData dictionary(budget, symbols);
  std::set<std::string> keys;
  std::minstd_rand random(3);
  const auto expectSame = [&](size_t index) {
    ASSERT_EQ(static_cast<size_t>(dictionary.size()), keys.size());
    if (index < keys.size()) {
      const auto& entry = dictionary.entryAt(static_cast<int32_t>(index));
      ASSERT_EQ(entry.symbol.text(), *std::next(keys.begin(), static_cast<ptrdiff_t>(index)));
    }
  };
  for (int turn = 0; turn < 6000; ++turn) {
    const std::string key = std::to_string(random() % 2500);
    // Mostly more keys, then mostly fewer, from the front on.
    if (turn < 3000 ? random() % 8 > 0 : random() % 8 == 0) {
      dictionary.put(key, new NullObject);
      keys.insert(key);
    } else if (!keys.empty()) {
      const std::string first = *keys.begin();
      dictionary.remove(first);
      keys.erase(first);
    }
    expectSame(random() % 2500);
  }
  EXPECT_LT(keys.size(), 20u);
}

TEST(SymbolTable, DropsWhatNobodyUsesAndKeepsTheRest) {
  std::vector<Symbol*> taken;
  {
    SymbolTable table;
    for (int i = 0; i < 20000; ++i) {
      Symbol& symbol = table.symbolOf("n" + std::to_string(i));
      if (i % 100 == 0) {
        symbol.take();
        taken.push_back(&symbol);
      }
    }
    for (size_t i = 0; i < taken.size(); ++i) {
      EXPECT_EQ(&table.symbolOf("n" + std::to_string(100 * i)), taken[i]);
    }
    EXPECT_EQ(table.find("n1"), nullptr) << "long gone";
  }
  // What is used outlives the table.
  for (size_t i = 0; i < taken.size(); ++i) {
    EXPECT_EQ(taken[i]->text(), "n" + std::to_string(100 * i));
    EXPECT_EQ(taken[i]->table(), nullptr);
    taken[i]->giveBack();
  }
}

TEST(Held, ReleasesOnTheNormalWayAndKeepsOnFailure) {
  {
    AbandonedObjects abandoned;
    auto* object = new Counted;
    {
      const Held<> first(abandoned, object);
      const Held<> again(abandoned, object);
    }
    EXPECT_EQ(Counted::alive, 0);
    failureOf([&] {
      auto* popped = new Counted;
      const Held<> first(abandoned, popped);
      const Held<> again(abandoned, popped);
      throw Ex("file", 1, "");
    });
    EXPECT_EQ(Counted::alive, 1);
  }
  EXPECT_EQ(Counted::alive, 0);
}

TEST(Numbers, AreAddedInPlace) {
  IntegerObject integer(2147483647);
  integer.add(IntegerObject(2));
  EXPECT_EQ(integer.value, -2147483647);
  integer.value = 5;
  integer.add(RealObject(-2.9));
  EXPECT_EQ(integer.value, 3);
  integer.add(RealObject(1e300));
  EXPECT_EQ(integer.value, -2147483645);
  RealObject real(0.5);
  real.add(IntegerObject(2));
  real.add(RealObject(0.25));
  EXPECT_EQ(real.value, 2.75);
  EXPECT_EQ(failureOf([&] { integer.add(NullObject()); }),
            "[ntegerObject:12] Unsupported number type for IntegerObject adding\n");
  EXPECT_EQ(failureOf([&] { real.add(NullObject()); }),
            "[ealObject:12] Unsupported number type for adding\n");
}

TEST(Ex, ReportShowsTheFileBehindItsLastBackslash) {
  const auto report = [](const char* file, const char* message) {
    return std::string(Ex(file, 7, message).report());
  };
  EXPECT_EQ(report("a\\b\\c", "m"), "[c:7] m\n");
  EXPECT_EQ(report("a/b", "m\n"), "[/b:7] m\n");
  EXPECT_EQ(report("\\ab", "m"), "[ab:7] m\n");
  EXPECT_EQ(report("ab\\", ""), "[:7] \n");
}

}  // namespace
