#include "postscript/painting/PatternNames.h"

#include <utility>

namespace postscript {

// Once the list has been emptied, names from before belong to no record any more.
void PatternNames::add(PostscriptObject* pattern, const PdfObjectList::Place& place) {
  if (clearings_ != place.clearings) {
    forgetAll();
    clearings_ = place.clearings;
  }
  if (names_.emplace(pattern, place.name).second) {
    ++pattern->refCount;
  }
}

const std::string* PatternNames::nameOf(PostscriptObject* pattern) {
  if (clearings_ != list_.clearings()) {
    forgetAll();
  }
  const auto found = names_.find(pattern);
  return found == names_.end() ? nullptr : &found->second;
}

void PatternNames::forgetAll() {
  for (const auto& [pattern, name] : std::exchange(names_, {})) {
    giveUp(pattern);
  }
}

}  // namespace postscript
