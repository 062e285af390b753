// StringObject: a string of bytes. The text stays as it was written: when it is encoded, `filters`
// of the body name the decoders that still apply, and whoever uses the text passes them on.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "postscript/values/Budget.h"
#include "postscript/values/CompositeObject.h"
#include "postscript/values/FilterNames.h"
#include "postscript/values/Limits.h"
#include "postscript/values/Text.h"

namespace postscript {

class StringData : public CompositeData {
 public:
  // Fails for a text that is too long to keep, or for which the budget has no room.
  StringData(Budget& budget, Text&& bytes);
  ~StringData() override;

  void forEachElement(const Visit&) const override {}
  void clearContents() override { text().clear(); }
  // Before the text grows to so many bytes.
  void expectSize(size_t bytes);
  void setText(Text bytes);
  // Leaves the string empty; the text is the caller's, who has to take a share for it.
  Text takeText();

  // To read or to change; may hold NUL bytes.
  Text& text() {
    if (dropped_ > 0) {
      text_.erase(0, std::exchange(dropped_, 0));
    }
    return text_;
  }
  // To read, which leaves dropped bytes where they are.
  std::string_view view() const { return std::string_view(text_).substr(dropped_); }
  // Takes bytes off the front. They move out of the way only when they are half of the text, so
  // that a text can be taken off piece by piece.
  void dropFront(size_t bytes) {
    dropped_ += bytes;
    if (dropped_ > text_.size() / 2) {
      text();
    }
  }

  FilterNames filters;

 private:
  Text text_;
  size_t dropped_ = 0;  // bytes at the front that are no longer part of the text
  BudgetShare share_;
};

class StringObject : public CompositeObject {
 public:
  static constexpr TypeTag tag = TypeTag::string;

  // A literal string. Fails for a text that is too long to keep.
  StringObject(VirtualMemoryObject& space, Text text);

  std::string describe() const override;
  std::string syntaxText() const override;
  std::string valueText() const override { return std::string(textToNul()); }
  PostscriptObject* clone() const override { return new StringObject(*this); }

  StringData& body() const { return *static_cast<StringData*>(data); }
  Text& text() const { return body().text(); }
  std::string_view view() const { return body().view(); }
  FilterNames& filters() const { return body().filters; }
  // The text up to its first NUL byte.
  std::string_view textToNul() const { return view().substr(0, view().find('\0')); }
  // Writes one byte in place. The place behind the last byte takes it without effect; beyond,
  // fails.
  void setByte(size_t index, char byte);
  void append(std::string_view bytes);
  void setText(Text bytes);

 private:
  StringObject(const StringObject& source) : CompositeObject(source, source.executable) {}
};

// A byte of a string as programs see it: bytes from 128 on are negative, because texts have always
// been made of signed characters here.
inline int32_t signedByte(char byte) {
  return static_cast<signed char>(byte);
}

// Fails for a size that no string may have.
[[noreturn]] void failOnStringSize();
inline void checkStringSize(size_t bytes) {
  if (bytes > limits::stringBytes) [[unlikely]] {
    failOnStringSize();
  }
}

}  // namespace postscript
