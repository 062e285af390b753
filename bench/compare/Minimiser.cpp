// Takes away ever smaller parts: first of the list of calls, then of each text, between blanks.
#include "bench/compare/Minimiser.h"

#include <string>
#include <vector>

namespace bench {

namespace {

using programs::Call;
using programs::Program;

constexpr int mostQuestions = 1500;

class Minimiser {
 public:
  explicit Minimiser(const std::function<bool(const Program&)>& differs) : differs_(differs) {}

  Program minimise(Program program) {
    program = joined(std::move(program));
    program = fewer<Call>(program, [](const Program& calls) { return calls; });
    for (size_t i = 0; i < program.size(); ++i) {
      const std::vector<std::string> best =
          fewer<std::string>(words(program[i].text), [&](const std::vector<std::string>& some) {
            Program candidate = program;
            candidate[i].text = textOf(some);
            return candidate;
          });
      program[i].text = textOf(best);
    }
    return program;
  }

 private:
  // The parts without as many as possible; `build` makes a program of some of them.
  template <class Part>
  std::vector<Part> fewer(std::vector<Part> parts,
                          const std::function<Program(const std::vector<Part>&)>& build) {
    for (size_t size = parts.size() / 2 + 1; size > 0; size /= 2) {
      for (size_t at = 0; at < parts.size();) {
        std::vector<Part> rest(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(at));
        const size_t end = std::min(at + size, parts.size());
        rest.insert(rest.end(), parts.begin() + static_cast<std::ptrdiff_t>(end), parts.end());
        if (++questions_ <= mostQuestions && differs_(build(rest))) {
          parts = std::move(rest);
        } else {
          at = end;
        }
      }
    }
    return parts;
  }

  // Neighbouring calls as one, where the difference does not need the cut.
  Program joined(Program program) {
    for (size_t i = 0; i + 1 < program.size();) {
      const bool alike = program[i].kind == Call::Kind::convert &&
                         program[i + 1].kind == Call::Kind::convert &&
                         program[i].secondConverter == program[i + 1].secondConverter;
      Program candidate = program;
      candidate[i].text += candidate[i + 1].text;
      candidate.erase(candidate.begin() + static_cast<std::ptrdiff_t>(i) + 1);
      if (alike && ++questions_ <= mostQuestions && differs_(candidate)) {
        program = std::move(candidate);
      } else {
        ++i;
      }
    }
    return program;
  }

  // The text in words, each with the white space behind it.
  static std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> out;
    bool ended = true;
    for (const char c : text) {
      const bool blank = c == ' ' || c == '\n';
      const bool bracket = c == '{' || c == '}' || c == '[' || c == ']';
      if ((ended && !blank) || bracket) {
        out.emplace_back();
      }
      if (out.empty()) {
        out.emplace_back();
      }
      out.back() += c;
      ended = blank || bracket;
    }
    return out;
  }

  static std::string textOf(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) {
      text += part;
    }
    return text;
  }

  const std::function<bool(const Program&)>& differs_;
  int questions_ = 0;
};

}  // namespace

Program minimised(Program program, const std::function<bool(const Program&)>& differs) {
  return Minimiser(differs).minimise(std::move(program));
}

}  // namespace bench
