// Programs whose time goes into the language. Their loops have fixed counts, so that the objects
// that they run can be told: a prolog defines the procedures and a page calls them by turns.
#include <array>

#include "bench/workloads/Pages.h"

namespace workloads {

namespace {

constexpr std::array words = {"river",  "contour", "bridge", "label", "parcel", "window", "origin",
                              "vector", "stream",  "header", "upper", "lower",  "matrix", "symbol"};

std::string word(PageText& out) {
  return words[out.choices.below(static_cast<uint32_t>(words.size()))];
}

// Calls a procedure of the prolog, which runs so many objects.
void call(PageText& out, std::string_view name, uint64_t objects) {
  out.put(name, objects);
  out.putData("\n");
}

void line(PageText& out) {
  out.put("10 10 moveto ");
  out.point(600, 0);
  out.put("lineto stroke\n");
}

}  // namespace

// A call runs many times its own length, so these pages are short: one megabyte is 80 million
// objects.
void procedurePages(PageText& out) {
  out.putData(
      "/seed 17 def /next {/seed seed 171 mul 30269 mod def seed} bind def\n"
      "/list 100 array def /fill100 {/i 0 def 100 {list i next put /i i 1 add def} repeat} bind "
      "def\n"
      "/sums {0 list {add} forall pop} bind def\n"
      "/table 20 dict def /keys [/red /green /blue /cyan /black /white /brown /gold] def\n"
      "/count100 {keys {table exch 0 put} forall 100 {/key keys next 8 mod get def table key 2 "
      "copy get 1 "
      "add put} repeat} bind def\n"
      "/turn {1 2 3 4 5 6 100 {6 2 roll exch 2 index add 1000 mod 3 1 roll} repeat clear} bind "
      "def\n"
      "/choose {/hits 0 def 100 {next dup 3 mod 0 eq exch 5 mod 0 eq or {/hits hits 1 add "
      "def}{/hits "
      "hits 2 add def} ifelse} repeat} bind def\n"
      "/steps {0 1 100 {dup 2 mod 0 eq {pop}{neg abs sqrt pop} ifelse} for} bind def\n"
      "/loops {/n 0 def {n 100 ge {exit} if /n n 1 add def} loop} bind def\n");
  while (!out.isFull()) {
    call(out, "fill100", 1900);
    call(out, "sums", 203);
    call(out, "count100", 2300);
    call(out, "turn", 1300);
    call(out, "choose", 2650);
    call(out, "steps", 1000);
    call(out, "loops", 1100);
    line(out);
  }
}

void stringPages(PageText& out) {
  out.putData("/total 0 def /skip {} bind def\n");
  while (!out.isFull()) {
    switch (out.choices.below(7)) {
      case 0:
        out.putData("% " + word(out) + " " + word(out) + " " + word(out) + " and more of it\n");
        break;
      case 1:
        out.put("(" + word(out) + " \\(" + word(out) + "\\)\\n " + word(out) +
                    ") length total add /total exch def\n",
                6);
        break;
      case 2:
        out.put("(" + word(out) + " (" + word(out) + ") \\101\\102 " + word(out) + ") pop\n", 2);
        break;
      case 3:
        out.putData("<");
        for (int i = 0; i < 60; ++i) {
          out.putData(std::to_string(10 + out.choices.below(90)));
        }
        out.put("> pop\n", 2);
        break;
      case 4:
        out.put("/" + word(out) + " /" + word(out) + "_" + word(out) + " pop pop\n");
        break;
      case 5:
        out.put("[/" + word(out) + " (" + word(out) + ") 12 3.25 <00ff>] pop\n", 9);
        break;
      default:
        out.put("{" + word(out) + " moveto (" + word(out) + ") 12 {skip} if} pop skip\n", 3);
    }
  }
  line(out);
}

void nestedPages(PageText& out) {
  out.putData(
      "/base 7 def /deep {base base add base sub pop} bind def\n"
      "/level {12 dict begin /own 1 def /other 2 def} bind def\n"
      "/five {level level level level level 100 {deep base own add pop} repeat end end end "
      "end end} bind def\n");
  while (!out.isFull()) {
    call(out, "five", 1250);
    line(out);
  }
}

void parameterPages(PageText& out) {
  out.putData(
      "/box {/high exch def /wide exch def /y exch def /x exch def x y moveto x wide add y lineto "
      "x "
      "wide add y high add lineto x y high add lineto closepath stroke} bind def\n"
      "/mid {/b exch def /a exch def a b add 2 div} bind def\n");
  while (!out.isFull()) {
    out.point(500, 2);
    out.point(90, 1);
    out.put("box ", 38);
    out.point(500, 1);
    out.put("mid setlinewidth\n", 13);
  }
}

void forallPages(PageText& out) {
  out.putData(
      "/draw {{aload pop moveto} forall} bind def\n"
      "/pairs {{dup 0 get 0 eq {dup 1 get exch 2 get moveto}{dup 1 get exch 2 get lineto} ifelse} "
      "forall stroke} bind def\n"
      "/codes {0 exch {add} forall pop} bind def\n");
  while (!out.isFull()) {
    const uint32_t count = 5 + out.choices.below(20);
    out.put("[", 1);
    for (uint32_t i = 0; i < count; ++i) {
      out.put("[", 1);
      out.put(i == 0 ? "0 " : "1 ");
      out.point(500, 1);
      out.put("] ", 1);
    }
    out.put("] pairs\n", 4 + 16 * count);
    out.put("(" + word(out) + word(out) + word(out) + ") codes\n", 20);
  }
}

void conversionPages(PageText& out) {
  out.putData(
      "/row 40 string def /digits 60 string def\n"
      "/label {digits cvs row 4 3 -1 roll putinterval row 4 3 getinterval length pop} bind def\n"
      "/tag {10 string cvs cvn pop} bind def\n");
  while (!out.isFull()) {
    out.number(900, 2);
    out.put("label ", 15);
    out.number(9000, 0);
    out.put("tag /" + word(out) + " 20 string cvs length pop\n", 12);
    out.put("row 0 (" + word(out) + ") putinterval\n", 4);
  }
  line(out);
}

void unpaintedPages(PageText& out) {
  out.put("/Helvetica findfont 12 scalefont setfont\n");
  while (!out.isFull()) {
    out.point(500, 1);
    out.put("moveto (" + word(out), 2);
    for (int i = 0; i < 12; ++i) {
      out.putData(" " + word(out));
    }
    out.put(") show\n", 1);
  }
}

void savePages(PageText& out) {
  out.putData(
      "/page {/sv save def gsave /x exch def x 10 moveto 20 x lineto stroke grestore sv restore} "
      "bind def\n");
  while (!out.isFull()) {
    out.put("save ");
    out.number(500, 1);
    out.put("page ", 19);
    out.put("5 dict begin /w 2 def w setlinewidth end restore\n");
  }
}

}  // namespace workloads
