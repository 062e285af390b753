// The layers of operators: how many each has, and whose operator a name means in the end.
#include <gmock/gmock.h>

#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "postscript/converter/Layers.h"
#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"
#include "postscript/engine/OperatorRegistry.h"

namespace postscript {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class Layers : public testing::Test {
 protected:
  // What the names of the system dictionary mean.
  std::map<std::string, PostscriptObject*> entries() const {
    std::map<std::string, PostscriptObject*> all;
    for (const DictionaryEntry* entry : dictionaries.systemDictionary->body().entries()) {
      all.emplace(entry->symbol.text(), entry->value);
    }
    return all;
  }

  Interpreter ps;
  const DictionaryStack& dictionaries = ps.dictionaries;
};

// Operators that came after the first release follow those that are counted here.
TEST_F(Layers, InstallAllTheirOperatorsInOrder) {
  installGeneratedLayer(ps);
  const auto generated = entries();
  EXPECT_THAT(generated, SizeIs(316));
  EXPECT_THAT(dictionaries.generatedNames, SizeIs(316));
  EXPECT_EQ(dictionaries.generatedNames.front(), "add");
  EXPECT_EQ(dictionaries.generatedNames.back(), "ucachestatus");
  EXPECT_THAT(dictionaries.replacedNames, SizeIs(0));

  installCoreLayer(ps);
  const size_t coreReplaces = dictionaries.replacedNames.size();
  ASSERT_GE(coreReplaces, 81u);
  EXPECT_GE(entries().size(), 316u + 24u) << "105 operators in all";
  EXPECT_EQ(dictionaries.replacedNames.front(), "known");
  EXPECT_EQ(*std::next(dictionaries.replacedNames.begin(), 80), "anchorsearch");

  installPaintingLayer(ps, nullptr);
  EXPECT_GE(dictionaries.replacedNames.size(), coreReplaces + 79) << "80 operators in all";
  EXPECT_GE(entries().size(), 316u + 24u + 1u);
  size_t replaced = 0;
  for (const auto& [name, value] : generated) {
    replaced += entries().at(name) != value;
  }
  EXPECT_EQ(replaced, dictionaries.replacedNames.size()) << "painting replaces no core operator";
  for (const auto& [name, value] : entries()) {
    EXPECT_EQ(value->refCount, 1) << name;
  }
}

TEST_F(Layers, LeaveSixNamesToDataInTheEnd) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  const auto converter = openConverter(identity);
  const DictionaryStack& installed = converter->interpreter->dictionaries;
  std::vector<std::string> data;
  for (const DictionaryEntry* entry : installed.systemDictionary->body().entries()) {
    if (entry->value->type != TypeTag::name) {
      data.emplace_back(entry->symbol.text());
    }
  }
  EXPECT_THAT(data, ElementsAre("errordict", "globaldict", "languagelevel", "systemdict",
                                "userdict", "version"));
}

// An operator that the order does not name is defined after those that it does.
TEST_F(Layers, DefineOperatorsThatTheirOrderDoesNotName) {
  class Named : public NameObject {
   public:
    using NameObject::NameObject;
  };
  OperatorRegistry registry;
  for (const char* name : {"late", "second", "first", "later"}) {
    registry.add<Named>(name);
  }
  constexpr std::string_view order[] = {"first", "nobody", "second"};
  registry.defineAll(ps.dictionaries, order);
  EXPECT_THAT(entries(), SizeIs(4));
  // Again, for what is replaced is listed as it comes.
  for (const char* name : {"late", "second", "first", "later"}) {
    registry.add<Named>(name);
  }
  registry.defineAll(ps.dictionaries, order);
  EXPECT_THAT(dictionaries.replacedNames, ElementsAre("first", "second", "late", "later"));
}

}  // namespace
}  // namespace postscript
