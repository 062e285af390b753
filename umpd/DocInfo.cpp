// Each value opens and closes the printer's key by itself, so that a key that goes away in the
// middle costs no more than the values that were not read yet.
#include "umpd/DocInfo.h"

#include <cstddef>

#include "umpd/PathParts.h"
#include "umpd/ProductNames.h"
#include "umpd/XmpPacket.h"

namespace umpd {
namespace {

// A longer text cannot be read, which leaves its field as it is.
constexpr size_t textRoom = 4000;  // bytes

struct TextValue {
  const char16_t* name;
  std::u16string DocInfoValues::*field;
};

constexpr TextValue textValues[] = {
    {u"DocInfoTitle", &DocInfoValues::title},
    {u"DocInfoAuthor", &DocInfoValues::author},
    {u"DocInfoSubject", &DocInfoValues::subject},
    {u"DocInfoKeywords", &DocInfoValues::keywords},
    {u"DocInfoCreator", &DocInfoValues::creator},
    {u"DocInfoProducer", &DocInfoValues::producer},
    {u"DocInfoCreationDate", &DocInfoValues::creationDate},
    {u"DocInfoModDate", &DocInfoValues::modDate},
};

// A key that cannot be opened answers like a value that cannot be read.
RegistryValue readPrinterValue(PrinterSettings& settings, const std::u16string& name, size_t room) {
  const OwnedKey key = settings.openPrinterKey(keyRead);
  return key ? settings.platform.registry.readValue(key.get(), name, room) : RegistryValue();
}

}  // namespace

void readDocInfo(DocInfoValues& values, PrinterSettings& settings) {
  const RegistryValue enable = readPrinterValue(settings, u"DocInfoEnable", sizeof(values.enable));
  values.enable = enable.ok() ? enable.dword() : 0;
  for (const auto& [name, field] : textValues) {
    const RegistryValue value = readPrinterValue(settings, name, textRoom);
    if (value.answer != RegistryAnswer::failed) {
      values.*field = value.text();
    }
  }
}

std::u16string makeXmp(PrinterSettings& settings, std::u16string_view docName) {
  DocInfoValues values;
  readDocInfo(values, settings);
  if (values.enable == 0) {
    values.title.clear();
    values.author.clear();
  }
  if (values.title.empty()) {
    // Looked for from the second character on: a separator in front stays with the name.
    values.title = docName.substr(lastSeparator(docName, 1) + 1);
  }
  // The creator, the producer and the dates that the user has set go nowhere.
  return buildXmpPacket(settings.platform.clock, {.title = values.title,
                                                  .author = values.author,
                                                  .subject = values.subject,
                                                  .keywords = values.keywords,
                                                  .producer = productName,
                                                  .creatorTool = productName,
                                                  .createDate = {},
                                                  .modifyDate = {}});
}

}  // namespace umpd
