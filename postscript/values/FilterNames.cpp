#include "postscript/values/FilterNames.h"

#include <utility>

namespace postscript {

FilterNames::FilterNames(std::string_view name, FilterNames rest)
    : first_(std::make_shared<Link>(Link{std::string(name), std::move(rest)})) {}

// Link by link, as a long chain must not end by recursion.
void FilterNames::endChain() {
  std::shared_ptr<Link> link = std::move(first_);
  while (link && link.use_count() == 1) {
    link = std::exchange(link->rest.first_, nullptr);
  }
}

}  // namespace postscript
