// PdfObjectList: the images and patterns to which content text refers by name. One list serves the
// whole process, so that names never collide and an image seen twice is stored once. Records stay
// until the list is emptied or the library goes.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "include/tqpumpd2k.h"
#include "postscript/values/PostscriptObject.h"

namespace postscript {

// A record with what it owns. The texts and bytes to which its pointers point stand behind it.
class StoredPdfObject : public PdfObject {
 public:
  StoredPdfObject(uint32_t kindOfObject, std::string resourceName);
  StoredPdfObject(const StoredPdfObject&) = delete;
  StoredPdfObject& operator=(const StoredPdfObject&) = delete;
  ~StoredPdfObject();

  void setDictionary(std::string text);
  void setData(std::string bytes);
  // Counted as long as the record stands.
  void setSource(PostscriptObject* object);

  std::string note;

 private:
  std::string dictionaryText;
  std::string dataBytes;
  std::string nameText;
};

class PdfObjectList {
 public:
  // The one of the process.
  static PdfObjectList& instance();

  // Makes a record named by the prefix and its number in the list.
  StoredPdfObject* addPdfObject(uint32_t kind, std::string_view prefix);
  // The first record of the kind whose data begin with the bytes; null when there is none.
  StoredPdfObject* findPdfObject(uint32_t kind, std::string_view bytes) const;
  // The first record that stands for the object; null when there is none.
  StoredPdfObject* findSource(const PostscriptObject* object) const;
  void clearPdfObjects();
  // Counts the clearings: a record is good only as long as this stays.
  uint64_t clearings() const { return clearCount; }

  // All records, oldest first, in an array that stands until the next call or clearing.
  PdfObject* const* handOut(uint64_t* count);

 private:
  std::vector<std::unique_ptr<StoredPdfObject>> records;
  std::unique_ptr<PdfObject*[]> handedOut;
  uint64_t clearCount = 0;
};

}  // namespace postscript
