// What programs cannot see of the interpreter: how its objects share bodies, and what it reports.
#include "postscript/engine/Interpreter.h"

#include <gtest/gtest.h>

#include "postscript/converter/Layers.h"
#include "postscript/engine/FileObject.h"
#include "postscript/engine/Operands.h"
#include "support/DebugOutput.h"

using namespace postscript;

namespace {

TEST(Handles, ShareTheBodyAndKnowItsPlace) {
  Interpreter ps;
  installLanguage(ps);
  const auto* first = pushString(ps, "a");
  const auto* second = pushString(ps, "b");
  EXPECT_EQ(second->dataIndex, first->dataIndex + 1);
  EXPECT_EQ(second->memory, ps.memory.local);
  auto* array = pushArray(ps, ArrayData::procedure);
  array->executable = true;
  array->execIndex = 3;
  const auto copy = ps.hold(static_cast<ArrayObject*>(array->clone()));
  EXPECT_EQ(copy->data, array->data);
  EXPECT_EQ(copy->dataIndex, array->dataIndex);
  EXPECT_EQ(copy->execIndex, 3);
  EXPECT_TRUE(copy->executable);
  EXPECT_EQ(copy->refCount, 0);
  EXPECT_EQ(copy->describe(), "ps_array, size=0, exec index=3");
  EXPECT_STREQ(array->items().name, "Array { Stack");
}

TEST(Filters, HoldTheirSource) {
  Interpreter ps;
  installLanguage(ps);
  ps.run("/s (abc) def s /A filter ");
  EXPECT_EQ(as<FileObject>(ps.operandStack.top())->body().source->refCount, 2);
  ps.run("pop /s 0 def ");
  EXPECT_TRUE(ps.operandStack.empty());  // and the body still holds the string
}

std::string debugText;

TEST(UnknownNames, AreListedInOrderWithTheirCounts) {
  Interpreter ps;
  installLanguage(ps);
  quillpress::debugReceiver = [](const char* text) { debugText += text; };
  const std::string_view program = "zz add /ab zz { x Ab a1 a~b zz } (ab) /x1 unfinished";
  ps.listUnknownNames(program.data(), program.size());
  quillpress::debugReceiver = nullptr;
  EXPECT_EQ(debugText, "ab (1)\nzz (3)\n");
  EXPECT_TRUE(ps.operandStack.empty());
}

}  // namespace
