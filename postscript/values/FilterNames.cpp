#include "postscript/values/FilterNames.h"

#include <utility>

namespace postscript {

namespace {
// A link besides its name.
constexpr size_t bytesOfLink = 128;
}  // namespace

FilterNames::Link::Link(Budget& budget, std::string_view theName, FilterNames theRest)
    : share(&budget, bytesOfLink + theName.size()), name(theName), rest(std::move(theRest)) {}

FilterNames::FilterNames(Budget& budget, std::string_view name, FilterNames rest)
    : first_(std::make_shared<Link>(budget, name, std::move(rest))) {}

// Link by link, as a long chain must not end by recursion.
void FilterNames::endChain() {
  std::shared_ptr<Link> link = std::move(first_);
  while (link && link.use_count() == 1) {
    link = std::exchange(link->rest.first_, nullptr);
  }
}

}  // namespace postscript
