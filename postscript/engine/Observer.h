// Observer: what an embedder in C++ may watch of a run, and how it ends one. An interpreter has
// none at first; then nothing is reported, and the hooks cost the test of a pointer in rare places.
// What programs see and what is written is the same with an observer and without one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace postscript {

// A line of the generated layer's table: an operator (see generated/OperatorRows.h).
enum class OperatorRow : uint16_t;

// How an image comes out that is not painted as its program says.
enum class ImageDifference : uint8_t {
  colorsReversed,     // several sources: the last one's component stands first
  matrixIgnored,      // the image's own matrix would place it otherwise
  decodeIgnored,      // its Decode array is not the plain one
  componentsOfColor,  // as many components as the current colour has, not one
};

class Observer {
 public:
  virtual ~Observer();

  // An operator took its operands and left default results, and did nothing else.
  virtual void ignored(OperatorRow row) = 0;
  virtual void imageDiffers(ImageDifference difference) = 0;
  // showpage ran when the content text had this length.
  virtual void pageShown(size_t textLength) = 0;
  // A run failed when so many bytes of its range had been read. The words are those of the error
  // text, without its prefix and line feed.
  virtual void failed(size_t position, std::string_view words) = 0;
  // Asked every few thousand turns of the run loop. If true, the run fails.
  virtual bool wantsStop() = 0;
};

}  // namespace postscript
