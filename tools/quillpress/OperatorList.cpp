#include "tools/quillpress/OperatorList.h"

#include <algorithm>
#include <map>
#include <sstream>

#include "postscript/converter/OpenConverter.h"
#include "postscript/engine/Interpreter.h"
#include "postscript/generated/OperatorRows.h"

namespace quillpress {
namespace {

constexpr float plainMatrix[] = {1, 0, 0, 1, 0, 0};

constexpr const char* classTexts[] = {
    "works",
    "does nothing: text is not painted",
    "does nothing: what it paints or sets is missing",
    "answers a fixed value",
    "does nothing: page set-up is not followed",
    "does nothing, which no page shows",
};

// What each name of the system dictionary does.
std::map<std::string, const char*> operators() {
  std::map<std::string, const char*> all;
  const auto converter = postscript::openConverter(plainMatrix);
  for (size_t i = 0; i < postscript::operatorRows; ++i) {
    const auto row = static_cast<postscript::OperatorRow>(i);
    all.emplace(postscript::operatorName(row),
                classTexts[static_cast<size_t>(postscript::operatorLoss(row).lossClass)]);
  }
  // The engine tells the names itself, one a line.
  converter->convertOn("systemdict {pop =} forall ");
  std::istringstream names(converter->interpreter->printBuffer);
  for (std::string name; std::getline(names, name);) {
    all.emplace(name, classTexts[0]);
  }
  return all;
}

}  // namespace

bool listOperators(std::ostream& out, const std::vector<std::string>& names) {
  const auto all = operators();
  size_t longest = 0;
  for (const auto& [name, text] : all) {
    longest = std::max(longest, name.size());
  }
  const auto write = [&](const std::string& name, const char* text) {
    out << name << std::string(longest + 2 - name.size(), ' ') << text << '\n';
  };
  if (names.empty()) {
    for (const auto& [name, text] : all) {
      write(name, text);
    }
  }
  bool allFound = true;
  for (const std::string& name : names) {
    const auto found = all.find(name);
    allFound = allFound && found != all.end();
    write(name, found != all.end() ? found->second : "is no operator");
  }
  return allFound;
}

}  // namespace quillpress
