#include "bench/workloads/Workloads.h"

#include <stdexcept>

#include "bench/workloads/Pages.h"

namespace workloads {

namespace {

struct Entry {
  Kind kind;
  void (*write)(PageText&);
  // Short texts that run many objects: the size is theirs.
  bool sizeIsObjects = false;
};

constexpr Entry entries[] = {
    {{"vector", "lines, curves and areas, operators written out"}, vectorPages},
    {{"alias", "the same by short names and small procedures"}, aliasPages},
    {{"arcs", "arc, arcn, arct"}, arcPages},
    {{"clip", "nested clips, the path near the clip"}, clipPages},
    {{"clipfar", "clips far after the path's last segment"}, farClipPages},
    {{"procs", "loops, arithmetic, dictionaries and arrays"}, procedurePages, true},
    {{"strings", "comments, strings, names, arrays, procedures"}, stringPages},
    {{"nested", "names found at the bottom of five dictionaries"}, nestedPages, true},
    {{"params", "procedures that define their parameters"}, parameterPages},
    {{"forall", "forall with aload, get and ifelse"}, forallPages},
    {{"cvs", "cvs, putinterval, getinterval"}, conversionPages},
    {{"unpainted", "text that nobody paints"}, unpaintedPages},
    {{"saves", "save and restore around everything"}, savePages},
    {{"imghex", "large images in hexadecimal"}, hexImagePages},
    {{"imgraw", "large images as bytes"}, rawImagePages},
    {{"imga85", "images in ASCII85, and through filters"}, ascii85ImagePages},
    {{"imgsmall", "many small images and masks"}, smallImagePages},
    {{"image", "the four kinds of images in turn"}, mixedImagePages},
};

}  // namespace

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all = [] {
    std::vector<Kind> list;
    for (const Entry& entry : entries) {
      list.push_back(entry.kind);
    }
    return list;
  }();
  return all;
}

Workload makeWorkload(std::string_view name, size_t size) {
  return makeWorkload(name, size, name.size());
}

Workload makeWorkload(std::string_view name, size_t size, uint64_t seed) {
  for (const Entry& entry : entries) {
    if (name == entry.kind.name) {
      PageText out(seed, size, entry.sizeIsObjects);
      out.putData("%!PS-Adobe-3.0\n%%Title: (" + std::string(name) + ")\n%%EndComments\n");
      entry.write(out);
      return {out.text(), out.objects()};
    }
  }
  throw std::invalid_argument("there is no workload " + std::string(name));
}

}  // namespace workloads
