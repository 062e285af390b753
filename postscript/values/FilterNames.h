// FilterNames: the names of the decode filters that still apply to some bytes, outermost first.
// Lists share their ends: a filter over a source is one more name in front of the source's. So a
// chain of filters and all strings that are read through it keep each name once.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "postscript/values/Budget.h"

namespace postscript {

class FilterNames {
 public:
  // No names.
  FilterNames() = default;
  // The name, then those of `rest`.
  FilterNames(Budget& budget, std::string_view name, FilterNames rest);
  FilterNames(const FilterNames&) = default;
  FilterNames(FilterNames&&) = default;
  FilterNames& operator=(const FilterNames&) = default;
  FilterNames& operator=(FilterNames&&) = default;
  ~FilterNames() {
    if (first_) {
      endChain();
    }
  }

  bool empty() const { return !first_; }
  // Calls the function with each name in turn.
  template <class Function>
  void forEach(Function function) const;

 private:
  struct Link;
  void endChain();

  std::shared_ptr<Link> first_;
};

struct FilterNames::Link {
  Link(Budget& budget, std::string_view theName, FilterNames theRest);

  const BudgetShare share;
  const std::string name;
  FilterNames rest;
};

template <class Function>
void FilterNames::forEach(Function function) const {
  for (const Link* link = first_.get(); link; link = link->rest.first_.get()) {
    function(std::string_view(link->name));
  }
}

}  // namespace postscript
