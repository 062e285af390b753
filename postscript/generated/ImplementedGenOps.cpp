#include "postscript/generated/ImplementedGenOps.h"

namespace postscript {

generated::GeneratedOps::~GeneratedOps() = default;

void ImplementedGenOps::performCountdictstack(std::tuple<IntegerObject&> objects) {
  std::get<0>(objects).value = interpreter_->dictionaries.stack.size();
}

void ImplementedGenOps::performCvs(
    std::tuple<PostscriptObject&, StringObject&, StringObject&> objects) {
  std::get<2>(objects).setText(Text(std::get<0>(objects).valueText()));
}

void ImplementedGenOps::performProduct(std::tuple<StringObject&> objects) {
  std::get<0>(objects).append("quillpress ps interpreter");
}

}  // namespace postscript
