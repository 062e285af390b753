#include "postscript/painting/PdfObjectList.h"

namespace postscript {

StoredPdfObject::StoredPdfObject(uint32_t kindOfObject, std::string resourceName)
    : PdfObject(), nameText(std::move(resourceName)) {
  compress = 1;
  kind = kindOfObject;
  name = nameText.data();
}

StoredPdfObject::~StoredPdfObject() {
  if (source) {
    giveUp(static_cast<PostscriptObject*>(source));
  }
}

void StoredPdfObject::setDictionary(std::string text) {
  dictionaryText = std::move(text);
  dictionary = dictionaryText.data();
}

void StoredPdfObject::setData(std::string bytes) {
  dataBytes = std::move(bytes);
  data = reinterpret_cast<unsigned char*>(dataBytes.data());
  dataLength = dataBytes.size();
}

void StoredPdfObject::setSource(PostscriptObject* object) {
  ++object->refCount;
  source = object;
}

PdfObjectList& PdfObjectList::instance() {
  static PdfObjectList list;
  return list;
}

StoredPdfObject* PdfObjectList::addPdfObject(uint32_t kind, std::string_view prefix) {
  std::string name = std::string(prefix) + std::to_string(records.size() + 1);
  records.push_back(std::make_unique<StoredPdfObject>(kind, std::move(name)));
  return records.back().get();
}

StoredPdfObject* PdfObjectList::findPdfObject(uint32_t kind, std::string_view bytes) const {
  for (const auto& record : records) {
    const std::string_view stored(reinterpret_cast<const char*>(record->data), record->dataLength);
    if (record->kind == kind && record->data && stored.starts_with(bytes)) {
      return record.get();
    }
  }
  return nullptr;
}

StoredPdfObject* PdfObjectList::findSource(const PostscriptObject* object) const {
  for (const auto& record : records) {
    if (record->source == object) {
      return record.get();
    }
  }
  return nullptr;
}

void PdfObjectList::clearPdfObjects() {
  handedOut.reset();
  records.clear();
  ++clearCount;
}

PdfObject* const* PdfObjectList::handOut(uint64_t* count) {
  *count = 0;
  handedOut.reset();
  handedOut = std::make_unique<PdfObject*[]>(records.size());
  for (const auto& record : records) {
    handedOut[(*count)++] = record.get();
  }
  return handedOut.get();
}

}  // namespace postscript
