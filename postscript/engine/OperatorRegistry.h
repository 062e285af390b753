// OperatorRegistry: collects the operators of a layer from the families that make them, and defines
// them in the system dictionary.
#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "postscript/engine/DictionaryStack.h"
#include "postscript/values/NameObject.h"

namespace postscript {

class OperatorRegistry {
 public:
  template <class Operator, class... Arguments>
  void add(Arguments&&... arguments) {
    operators_.push_back(std::make_unique<Operator>(std::forward<Arguments>(arguments)...));
  }

  // Defines all of them: first those that `order` names, in that order, then the others in the
  // order in which they were added. The registry is empty afterwards.
  void defineAll(DictionaryStack& dictionaries, std::span<const std::string_view> order);

 private:
  std::vector<std::unique_ptr<NameObject>> operators_;
};

}  // namespace postscript
