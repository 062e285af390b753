// What writes each kind of workload: until the text is full.
#pragma once

#include "bench/workloads/PageText.h"

namespace workloads {

// Paths: a map's lines, curves, areas and symbols.
void vectorPages(PageText& out);
void aliasPages(PageText& out);
void arcPages(PageText& out);
void clipPages(PageText& out);
void farClipPages(PageText& out);

// The language.
void procedurePages(PageText& out);
void stringPages(PageText& out);
void nestedPages(PageText& out);
void parameterPages(PageText& out);
void forallPages(PageText& out);
void conversionPages(PageText& out);
void unpaintedPages(PageText& out);
void savePages(PageText& out);

// Images.
void hexImagePages(PageText& out);
void rawImagePages(PageText& out);
void ascii85ImagePages(PageText& out);
void smallImagePages(PageText& out);
void mixedImagePages(PageText& out);

}  // namespace workloads
