// XmpPacket: the metadata of a PDF/A-1b file (ISO 19005-1, 6.7), as text to be put into it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "umpd/platform/Platform.h"

namespace umpd {

// Plain text, except the dates, which go into the packet as they are. An empty date is the
// present moment; any other empty property is left out.
struct XmpProperties {
  std::u16string_view title;
  std::u16string_view author;
  std::u16string_view subject;
  std::u16string_view keywords;
  std::u16string_view producer;
  std::u16string_view creatorTool;
  std::u16string_view createDate;
  std::u16string_view modifyDate;
};

std::u16string buildXmpPacket(Clock& clock, const XmpProperties& properties);

// "2026-11-21T12:36:08+01:00". The offset is always that of standard time, also when the local time
// before it is daylight saving's. Empty if the calendar does not reach to `time`.
std::u16string formatXmpDate(Clock& clock, int64_t time);

}  // namespace umpd
