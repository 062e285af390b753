// What programs cannot see of values and their containers: counts, ends, texts.
#include <gtest/gtest.h>

#include <functional>

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
