// DocInfo: what a user has set about the documents of a printer, and the XMP packet made of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "umpd/PrinterSettings.h"

namespace umpd {

struct DocInfoValues {
  uint32_t enable = 0;
  std::u16string title;
  std::u16string author;
  std::u16string subject;
  std::u16string keywords;
  std::u16string creator;
  std::u16string producer;
  std::u16string creationDate;
  std::u16string modDate;
};

// Straight from the printer's key, not from the job's settings: a change is seen at once. A text
// that is not there becomes empty, one that cannot be read stays as it is in `values`.
void readDocInfo(DocInfoValues& values, PrinterSettings& settings);

// The packet of a job. Title and author are the user's if "DocInfoEnable" is set; without a title
// the document's name, less its folders, is one. Subject and keywords are always the user's.
std::u16string makeXmp(PrinterSettings& settings, std::u16string_view docName);

}  // namespace umpd
