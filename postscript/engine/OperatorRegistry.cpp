#include "postscript/engine/OperatorRegistry.h"

#include <algorithm>

namespace postscript {

void OperatorRegistry::defineAll(DictionaryStack& dictionaries,
                                 std::span<const std::string_view> order) {
  for (const std::string_view name : order) {
    const auto found = std::find_if(operators_.begin(), operators_.end(), [name](const auto& item) {
      return item && item->name() == name;
    });
    if (found != operators_.end()) {
      dictionaries.addOperator(std::move(*found));
    }
  }
  for (auto& item : operators_) {
    if (item) {
      dictionaries.addOperator(std::move(item));
    }
  }
  operators_.clear();
}

}  // namespace postscript
