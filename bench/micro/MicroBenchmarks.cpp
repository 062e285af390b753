// Single steps, timed by Google Benchmark: what the tables of scripts/bench are made of. What goes
// through the calls runs a program over and over in one converter, and counts its objects.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "bench/programs/Choices.h"
#include "include/tqpumpd2k.h"
#include "postscript/values/NumberText.h"
#include "postscript/values/NumberToken.h"

namespace {

std::vector<double> numbers(int decimals) {
  programs::SeededChoices choices(1);
  double scale = 1;
  for (int i = 0; i < decimals; ++i) {
    scale *= 10;
  }
  std::vector<double> out;
  for (int i = 0; i < 1000; ++i) {
    out.push_back(choices.below(5000000) / scale);
  }
  return out;
}

void numberText(benchmark::State& state) {
  const std::vector<double> values = numbers(static_cast<int>(state.range(0)));
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const double value : values) {
      postscript::formatNumber(text, value);
    }
    benchmark::DoNotOptimize(text.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(values.size()));
}
BENCHMARK(numberText)->Arg(0)->Arg(2)->Arg(4)->Arg(9);

void numberToken(benchmark::State& state) {
  std::vector<std::string> tokens;
  for (const double value : numbers(static_cast<int>(state.range(0)))) {
    tokens.push_back(std::to_string(value));
  }
  for (auto _ : state) {
    for (const std::string& token : tokens) {
      benchmark::DoNotOptimize(postscript::readNumber(token));
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(tokens.size()));
}
BENCHMARK(numberToken)->Arg(0)->Arg(2)->Arg(4);

// Runs the setup once, then the program over and over.
void runProgram(benchmark::State& state, const std::string& setup, const std::string& program,
                int64_t objects) {
  constexpr float identity[] = {1, 0, 0, 1, 0, 0};
  void* converter = PSOpen(identity);
  auto length = static_cast<int32_t>(setup.size());
  const char* text = PSConvertToPdf(converter, setup.data(), &length);
  for (auto _ : state) {
    length = static_cast<int32_t>(program.size());
    text = PSConvertToPdf(converter, program.data(), &length);
    if (!text) {
      state.SkipWithError(PSGetErrorStr(converter));
      break;
    }
  }
  benchmark::DoNotOptimize(text);
  PSClose(converter);
  state.SetItemsProcessed(state.iterations() * objects);
}

std::string repeated(const std::string& text, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) {
    out += text;
  }
  return out;
}

// Tokens that only become objects: a procedure that nothing runs.
void tokens(benchmark::State& state) {
  runProgram(state, "", "{" + repeated("12 3.25 /name (text) operator ", 200) + "} pop ", 1000);
}
BENCHMARK(tokens);

// A name of the bottom dictionary under so many others.
void lookUp(benchmark::State& state) {
  const int depth = static_cast<int>(state.range(0));
  runProgram(state, "/bottom 1 def " + repeated("9 dict begin /other 2 def ", depth),
             repeated("bottom pop ", 500), 1000);
}
BENCHMARK(lookUp)->Arg(0)->Arg(5)->Arg(50);

// The same name in a procedure.
void lookUpInProcedure(benchmark::State& state) {
  runProgram(state, "/bottom 1 def 9 dict begin 9 dict begin ", "500 {bottom pop} repeat ", 1000);
}
BENCHMARK(lookUpInProcedure);

void runLoop(benchmark::State& state) {
  runProgram(state, "", "500 {1 2 add pop} repeat ", 2000);
}
BENCHMARK(runLoop);

void conditionals(benchmark::State& state) {
  runProgram(state, "", "500 {true {1}{2} ifelse pop} repeat ", 3000);
}
BENCHMARK(conditionals);

void definitions(benchmark::State& state) {
  runProgram(state, "/f {/y exch def /x exch def x y add pop} def ", "500 {1 2 f} repeat ", 6500);
}
BENCHMARK(definitions);

void segments(benchmark::State& state) {
  runProgram(state, "1 1 moveto ", repeated("12.5 100.25 lineto ", 300), 900);
}
BENCHMARK(segments);

}  // namespace

BENCHMARK_MAIN();
