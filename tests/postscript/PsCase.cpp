#include "tests/postscript/PsCase.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "postscript/lib/Interpreter.h"
#include "postscript/lib/Postscript2Pdf.h"

namespace {

constexpr std::string_view callCut = "‖";

[[noreturn]] void malformed(const std::string& name, const std::string& line) {
  std::fprintf(stderr, "malformed case %s: %s\n", name.c_str(), line.c_str());
  std::exit(2);
}

// Control pictures are E2 90 80 and on in UTF-8, in the order of the control bytes.
std::string decoded(std::string_view text) {
  std::string bytes;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool picture = text.substr(i, 2) == "\xE2\x90" && i + 2 < text.size();
    const auto control = picture ? static_cast<unsigned char>(text[i + 2]) - 0x80u : 0x20u;
    if (control >= 0x20) {
      bytes += text[i];
    } else if (control == 0x1b) {
      bytes += static_cast<char>(std::stoi(std::string(text.substr(i + 3, 2)), nullptr, 16));
      i += 4;
    } else {
      bytes += static_cast<char>(control);
      i += 2;
    }
  }
  return bytes;
}

std::vector<std::string> callsOf(std::string_view program) {
  std::vector<std::string> calls;
  for (;;) {
    const size_t cut = program.find(callCut);
    calls.push_back(decoded(program.substr(0, cut)));
    if (cut == std::string_view::npos) break;
    program.remove_prefix(cut + callCut.size());
  }
  calls.back() += '\n';
  return calls;
}

PsCase parsePsCase(const std::string& name, const std::string& line) {
  PsCase psCase{name, {}, {}, {}, {}, {}, true};
  const size_t mark = line.find(" %=");
  if (mark == std::string::npos) malformed(name, line);
  psCase.calls = callsOf(line.substr(0, mark));
  size_t at = mark + 3;
  while ((at = line.find_first_not_of(' ', at)) != std::string::npos) {
    const size_t keyEnd = std::min(line.find(' ', at), line.size());
    const std::string key = line.substr(at, keyEnd - at);
    at = keyEnd;
    if (key == "nocut") {
      psCase.mayBeCut = false;
      continue;
    }
    auto* value = key == "content"  ? &psCase.content
                  : key == "prints" ? &psCase.prints
                  : key == "stack"  ? &psCase.stack
                  : key == "error"  ? &psCase.error
                                    : nullptr;
    const size_t open = line.find('"', at);
    const size_t close = open == std::string::npos ? open : line.find('"', open + 1);
    if (!value || close == std::string::npos) malformed(name, line);
    *value = decoded(line.substr(open + 1, close - open - 1));
    at = close + 1;
  }
  return psCase;
}

std::string stackText(const postscript::ObjectStack& stack) {
  std::string text;
  for (int32_t i = 0; i < stack.size(); ++i) {
    if (i > 0) text += ' ';
    text += stack.at(i)->syntaxText();
  }
  return text;
}

}  // namespace

std::vector<PsCase> readPsCases(const std::string& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".ps") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  std::vector<PsCase> cases;
  for (const auto& file : files) {
    std::ifstream stream(file);
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
      if (line.empty() || line[0] == '%') continue;
      cases.push_back(parsePsCase(file.stem().string() + "_" + std::to_string(number), line));
    }
  }
  return cases;
}

PsOutcome runPs(const std::vector<std::string>& calls) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  postscript::Postscript2Pdf converter(identity);
  PsOutcome outcome;
  for (const std::string& call : calls) {
    auto length = static_cast<int32_t>(call.size());
    // A buffer of its own size, so that a read past its end is seen.
    const std::vector<char> bytes(call.begin(), call.end());
    converter.errorText.clear();
    const char* text = converter.convert(bytes.data(), &length);
    if (text) {
      outcome.content.append(text, static_cast<size_t>(length));
    } else {
      outcome.error += converter.errorText.substr(std::min<size_t>(10, converter.errorText.size()));
      if (converter.errorText.empty()) outcome.error += "(no text)";
    }
    outcome.prints += converter.interpreter->printBuffer;
  }
  outcome.stack = stackText(converter.interpreter->operandStack);
  return outcome;
}
