// Text: the bytes of a string or of an image, which programs make and drop by the million. A
// standard string whose memory comes from the pool, as that of objects does.
#pragma once

#include <string>

#include "postscript/values/ObjectPool.h"

namespace postscript {

using Text = std::basic_string<char, std::char_traits<char>, objectPool::Allocator<char>>;

}  // namespace postscript
