#include "bench/programs/Program.h"

#include <algorithm>

#include "bench/programs/Grammar.h"

namespace programs {

namespace {

// What the rules' names mean at first, and the writers of values: an image without rows has its
// whole data in the text.
constexpr const char* prolog =
    "/W {99 string cvs /TT exch def 1 0 8 [] /TT load image} def\n"
    "/WA {dup type /arraytype eq {{dup type /arraytype eq {length} if W} forall}{W} ifelse} def\n"
    "/WD {{W W} forall} def\n"
    "/n0 $N def /n1 $N def /n2 $N def /n3 $N def\n"
    "/s0 (some text) def /s1 (abcabc) def /s2 12 string def\n"
    "/a0 [$N $N $N $N $N $N] def /a1 [$N (q) /r] def /a2 [[1 2] {3 4} (in)] def\n"
    "/d0 4 dict def d0 /n1 $N put d0 /x (in d0) put /d1 3 dict def d1 /y $N put /d2 $i dict def\n"
    "/x $N def /y (y) def /key $N def\n"
    "/m{moveto}bind def/l/lineto load def/h{closepath}def/s{stroke}bind def/f{fill}bind def\n"
    "/rg{setrgbcolor}bind def/w{setlinewidth}bind def/q/gsave load def/Q/grestore load def\n"
    "/re{/hh exch def/ww exch def moveto ww 0 rlineto 0 hh rlineto ww neg 0 rlineto closepath}bind "
    "def\n/pl{moveto{lineto}repeat stroke}bind def\n"
    "/P 9 dict dup begin /XStep 5 def /YStep 5 def /PaintProc {pop fill} def end def\n"
    "/F 3 dict dup begin /FontMatrix matrix def /FontName /G def end definefont pop /sv save def\n";

// What the program left: its stacks, what it defined, and the graphics state. Calls of their own,
// as a failure loses the rest of its call.
constexpr const char* epilogue[] = {
    "\n) > ~> } ",
    "} } } ",
    "count W countdictstack W mark counttomark W cleartomark ",
    "count 12 gt {12}{count} ifelse {WA} repeat ",
    "n0 W n1 W n2 W n3 W s0 W s1 W s2 W ",
    "a0 WA a1 WA a2 WA d0 WD d1 WD d2 WD ",
    "x W y W key W currentdict length W vmstatus W W W save W ",
    "1 2 moveto p0 p1 5 6 lineto ",
    "currentlinewidth W matrix currentmatrix WA grestore currentpoint W W ",
    "currentgray W currentrgbcolor W W W ",
};

std::string makeText(Choices& choices, bool first) {
  static constexpr uint32_t noises[] = {0, 0, 0, 40, 12};
  const uint32_t noise = noises[choices.below(5)];
  Grammar grammar(choices, noise, 20 + static_cast<int>(choices.below(200)));
  std::string text;
  if (first && !choices.oneIn(40)) {
    text = grammar.expandText(prolog, 3);
  }
  if (first || choices.oneIn(3)) {
    text += grammar.expandText(
        "/p0 {$T} def /p1 {$S p0} def /p2 {p1 $S} bind def /p3 {p2 $T} def\n", 3);
  }
  const uint32_t statements = 1 + choices.below(8);
  for (uint32_t i = 0; i < statements; ++i) {
    text += grammar.expand(choices.oneIn(6) ? 'D' : 'T') + (choices.oneIn(2) ? "\n" : " ");
  }
  return text;
}

// A piece that is lost, so that a construct is left open or a name is missing.
void damage(std::string& text, Choices& choices) {
  if (text.find("loop") != std::string::npos || text.find("for") != std::string::npos) {
    return;
  }
  const size_t at = choices.below(static_cast<uint32_t>(text.size()) + 1);
  text.erase(at, 1 + choices.below(6));
}

void append(Program& program, Program more) {
  std::move(more.begin(), more.end(), std::back_inserter(program));
}

}  // namespace

Program cutAtRandom(std::string_view text, uint32_t cuts, Choices& choices) {
  std::vector<size_t> places = {0, text.size()};
  for (uint32_t i = 0; i < cuts; ++i) {
    places.push_back(choices.below(static_cast<uint32_t>(text.size()) + 1));
  }
  std::sort(places.begin(), places.end());
  Program program;
  for (size_t i = 0; i + 1 < places.size(); ++i) {
    program.push_back({Call::Kind::convert,
                       std::string(text.substr(places[i], places[i + 1] - places[i])), 0, false});
  }
  return program;
}

Program makeProgram(Choices& choices) {
  Program program;
  const bool twoConverters = choices.oneIn(25);
  const uint32_t parts = 1 + choices.below(4);
  for (uint32_t part = 0; part < parts; ++part) {
    if (part > 0 && choices.oneIn(3)) {
      program.push_back({Call::Kind::startPage, "", choices.below(4), false});
    }
    std::string text = makeText(choices, part == 0);
    if (choices.oneIn(20)) {
      damage(text, choices);
    }
    append(program, cutAtRandom(text, choices.oneIn(2) ? 0 : choices.below(6), choices));
    if (choices.oneIn(10)) {
      program.back().kind = Call::Kind::convertNul;
    }
  }
  for (const char* call : epilogue) {
    program.push_back({Call::Kind::convert, call, 0, false});
  }
  program.push_back({Call::Kind::startPage, "", 1, false});
  program.push_back({Call::Kind::convert, epilogue[4], 0, false});
  if (twoConverters) {
    for (Call& call : program) {
      call.secondConverter = choices.oneIn(2);
    }
  }
  return program;
}

}  // namespace programs
