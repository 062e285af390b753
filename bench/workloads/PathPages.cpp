// A map's page has items of five sorts by turns of chance. vector and alias paint the same items,
// with names from two vocabularies.
#include "bench/workloads/Pages.h"

namespace workloads {

namespace {

struct Vocabulary {
  const char *move, *line, *curve, *close, *stroke, *fill, *rgb, *gray, *width, *save, *restore;
};

constexpr Vocabulary full = {"moveto ",       "lineto ", "curveto ",      "closepath ",
                             "stroke\n",      "fill\n",  "setrgbcolor\n", "setgray\n",
                             "setlinewidth ", "gsave ",  "grestore\n"};
constexpr Vocabulary brief = {"m ",   "l ",  "c ", "h ", "s\n", "f\n",
                              "rg\n", "g\n", "w ", "q ", "Q\n"};

constexpr const char* briefProlog =
    "/Brief 40 dict def Brief begin /bd{bind def}bind def/ld{load def}bind def\n"
    "/m{moveto}bd/l{lineto}bd/c{curveto}bd/h{closepath}bd/s{stroke}bd/f{fill}bd\n"
    "/rg{setrgbcolor}bd/g{setgray}bd/w{setlinewidth}bd/q/gsave ld/Q/grestore ld\n"
    "/box{/high exch def/wide exch def moveto wide 0 rlineto 0 high rlineto wide neg 0 rlineto "
    "closepath}bd\n/many{moveto{lineto}repeat stroke}bd end Brief begin\n";

void colour(PageText& out, const Vocabulary& words) {
  if (out.choices.oneIn(3)) {
    out.putData("0.");
    out.number(1000, 0);
    out.put(words.gray, 1);
  } else {
    for (int i = 0; i < 3; ++i) {
      out.putData("0.");
      out.number(1000, 0);
    }
    out.put(words.rgb, 1);
  }
}

void polyline(PageText& out, const Vocabulary& words, int decimals) {
  const uint32_t points = 10 + out.choices.below(50);
  colour(out, words);
  out.number(4, 2);
  out.put(words.width, 1);
  out.point(5000, decimals);
  out.put(words.move, 1);
  for (uint32_t i = 0; i < points; ++i) {
    out.point(5000, decimals);
    out.put(words.line, 1);
  }
  out.put(words.stroke, 1);
}

void curves(PageText& out, const Vocabulary& words, int decimals) {
  out.point(5000, decimals);
  out.put(words.move, 1);
  for (uint32_t i = 3 + out.choices.below(9); i > 0; --i) {
    out.point(5000, decimals);
    out.point(5000, decimals);
    out.point(5000, decimals);
    out.put(words.curve, 1);
    out.putData("\n");
  }
  out.put(words.stroke, 1);
}

void area(PageText& out, const Vocabulary& words) {
  colour(out, words);
  out.point(5000, 0);
  out.put(words.move, 1);
  for (uint32_t i = 3 + out.choices.below(6); i > 0; --i) {
    out.point(5000, 0);
    out.put(words.line, 1);
  }
  out.put(words.close, 1);
  out.put(words.fill, 1);
}

void rectangles(PageText& out, const Vocabulary& words) {
  for (uint32_t i = 1 + out.choices.below(5); i > 0; --i) {
    out.point(5000, 2);
    if (&words == &brief) {
      out.point(90, 2);
      out.put("box\n", 17);
    } else {
      out.put("moveto ");
      out.number(90, 2);
      out.put("0 rlineto 0 ");
      out.number(90, 0);
      out.put("rlineto -");
      out.number(90, 2);
      out.put("0 rlineto closepath\n");
    }
  }
  out.put(words.fill, 1);
}

void symbol(PageText& out, const Vocabulary& words) {
  out.put(words.save, 1);
  out.point(5000, 1);
  out.put("translate ");
  out.number(360, 1);
  out.put("rotate ");
  out.point(3, 3);
  out.put("scale ");
  out.point(4, 4);
  out.put(words.move, 1);
  for (uint32_t i = 3 + out.choices.below(5); i > 0; --i) {
    out.point(9, 4);
    out.put("rlineto ");
  }
  out.put(words.close, 1);
  out.put(words.stroke, 1);
  out.put(words.restore, 1);
}

void item(PageText& out, const Vocabulary& words) {
  const int decimals = static_cast<int>(out.choices.below(3)) + 1;
  switch (out.choices.below(6)) {
    case 0:
    case 1:
      return polyline(out, words, decimals);
    case 2:
      return curves(out, words, decimals);
    case 3:
      return area(out, words);
    case 4:
      return rectangles(out, words);
    default:
      return symbol(out, words);
  }
}

void mapPages(PageText& out, const Vocabulary& words) {
  for (int page = 1; !out.isFull(); ++page) {
    out.putData("%%Page: " + std::to_string(page) + "\n");
    out.put(words.save, 1);
    out.put("0.12 0.12 scale\n");
    for (int i = 0; i < 1000 && !out.isFull(); ++i) {
      item(out, words);
    }
    out.put(words.restore, 1);
    out.put("showpage\n");
  }
}

void clipItem(PageText& out) {
  out.put("gsave ");
  out.point(400, 2);
  out.put("moveto ");
  for (int i = 0; i < 3; ++i) {
    out.point(500, 2);
    out.put("lineto ");
  }
  out.put("closepath clip newpath\n");
}

}  // namespace

void vectorPages(PageText& out) {
  mapPages(out, full);
}

void aliasPages(PageText& out) {
  out.putData(briefProlog);
  mapPages(out, brief);
  out.put("end\n");
}

void arcPages(PageText& out) {
  while (!out.isFull()) {
    out.point(500, 2);
    switch (out.choices.below(4)) {
      case 0:
        out.number(40, 2);
        out.put("0 360 arc stroke\n");
        break;
      case 1:
        out.number(40, 2);
        out.point(360, 1);
        out.put("arc closepath fill\n");
        break;
      case 2:
        out.number(40, 2);
        out.point(360, 1);
        out.put("arcn stroke\n");
        break;
      default:
        out.put("moveto ");
        out.point(500, 2);
        out.point(500, 2);
        out.number(9, 2);
        out.put("arct stroke\n");
    }
  }
}

void clipPages(PageText& out) {
  while (!out.isFull()) {
    const uint32_t depth = 1 + out.choices.below(4);
    for (uint32_t i = 0; i < depth; ++i) {
      clipItem(out);
      area(out, full);
    }
    for (uint32_t i = 0; i < depth; ++i) {
      out.put("grestore\n");
    }
  }
}

void farClipPages(PageText& out) {
  out.put("10 10 moveto 20 20 lineto 10 30 lineto closepath\n");
  while (!out.isFull()) {
    out.put("gsave clip ");
    colour(out, full);
    out.number(20, 2);
    out.put("setlinewidth grestore\n");
  }
}

}  // namespace workloads
