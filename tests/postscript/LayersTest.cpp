// The layers of operators, and which of them stands under each name in the end.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "postscript/lib/CoreLayer.h"
#include "postscript/lib/Interpreter.h"
#include "postscript/lib/Postscript2Pdf.h"
#include "postscript/lib/generated/GeneratedLayer.h"
#include "postscript/lib/painting/PaintingLayer.h"

namespace postscript {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class Layers : public testing::Test {
 protected:
  // What stands under the names of the system dictionary.
  DictionaryData::Entries entries() const {
    return dictionaries.systemDictionary->body().entries();
  }

  VirtualMemorySet memory;
  DictionaryStack dictionaries{memory};
};

TEST_F(Layers, AreOf316Then105Then80Operators) {
  registerGeneratedLayer(dictionaries);
  const auto generated = entries();
  EXPECT_THAT(generated, SizeIs(316));
  EXPECT_THAT(dictionaries.generatedNames, SizeIs(316));
  EXPECT_EQ(dictionaries.generatedNames.front(), "add");
  EXPECT_EQ(dictionaries.generatedNames.back(), "ucachestatus");
  EXPECT_THAT(dictionaries.replacedNames, SizeIs(0));

  registerCoreLayer(dictionaries);
  EXPECT_THAT(entries(), SizeIs(316 + 24));
  EXPECT_THAT(dictionaries.replacedNames, SizeIs(81));
  EXPECT_EQ(dictionaries.replacedNames.front(), "known");
  EXPECT_EQ(dictionaries.replacedNames.back(), "anchorsearch");

  registerPaintingLayer(dictionaries, nullptr);
  EXPECT_THAT(entries(), SizeIs(316 + 24 + 1));
  EXPECT_THAT(dictionaries.replacedNames, SizeIs(81 + 79));
  size_t replaced = 0;
  for (const auto& [name, value] : generated) replaced += entries().at(name) != value;
  EXPECT_EQ(replaced, 81u + 79u) << "none of the 79 a core operator's";
  for (const auto& [name, value] : entries()) EXPECT_EQ(value->refCount, 1) << name;
}

TEST_F(Layers, DataStandsInFrontOfFiveGeneratedOperators) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  const Postscript2Pdf converter(identity);
  const DictionaryStack& standing = converter.interpreter->dictionaries;
  const DictionaryData& system = standing.systemDictionary->body();
  EXPECT_EQ(system.size(), 316 + 24 + 1 + 1);
  std::vector<std::string> data;
  for (const auto& [name, value] : system.entries()) {
    if (value->type != TypeTag::name) data.push_back(name);
  }
  EXPECT_THAT(data, ElementsAre("errordict", "globaldict", "languagelevel", "systemdict",
                                "userdict", "version"));
  EXPECT_THAT(standing.replacedNames, SizeIs(81 + 79));
}

}  // namespace
}  // namespace postscript
