// PdfObjectList: the images and patterns to which content text refers by name. One list serves the
// whole process, so that names never collide and an image seen twice is stored once.
//
// Any number of threads may use the list at the same time. A record is complete when it enters the
// list and never changes. A pattern whose content is still being captured has a record without
// data; the finished pattern is a record of its own that takes its place. Records live until the
// list is emptied, and beyond that for as long as they are handed out to a converter.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "include/tqpumpd2k.h"
#include "postscript/painting/PrefixTree.h"
#include "postscript/values/Text.h"

namespace postscript {

// What a record holds besides its name.
struct PdfObjectContents {
  uint32_t kind;
  std::string dictionary;
  std::optional<Text> data;  // none: to be completed
  int32_t compress = 1;
  void* source = nullptr;  // an address to compare, never to follow
};

// A record with what it owns. The texts and bytes to which its pointers point follow its own
// fields.
class StoredPdfObject : public PdfObject {
 public:
  StoredPdfObject(std::string resourceName, PdfObjectContents contents);
  StoredPdfObject(const StoredPdfObject&) = delete;
  StoredPdfObject& operator=(const StoredPdfObject&) = delete;
  ~StoredPdfObject();

  // Belongs to the record's layout; nothing fills it.
  const std::string note;

 private:
  std::string dictionaryText_;
  Text dataBytes_;
  std::string nameText_;
};

// The records from one emptying of the list to the next.
struct PdfObjectGeneration;

// What one converter has been handed out. It keeps the records in memory.
class HandedOutPdfObjects {
 private:
  friend class PdfObjectList;

  std::shared_ptr<const PdfObjectGeneration> generation_;
  std::vector<PdfObject*> array_;
  size_t completionsSeen_ = 0;
};

class PdfObjectList {
 public:
  // Where a record is in the list, as long as that is not emptied.
  struct Place {
    uint64_t clearings = 0;
    size_t index = 0;
    std::string name;  // of the record
  };

  // Makes a record, named by the prefix and its number in the list.
  Place addPdfObject(std::string_view prefix, PdfObjectContents contents);
  struct NamedImage {
    std::string name;
    bool isNew;
  };
  // The first image whose data begin with those of the given one: also a longer image, and whatever
  // its dictionary says. If there is none the image becomes a record.
  NamedImage nameImage(std::string_view prefix, PdfObjectContents image);
  // Replaces a record by one with the data. Does nothing if the list was emptied since.
  void complete(const Place& place, Text data);
  void clearPdfObjects() noexcept;
  // Counts the emptyings: a place or a name is good only as long as this stays the same.
  uint64_t clearings() const { return clearCount_; }

  // All records, oldest first, in an array that stays valid until the next call with the same `to`.
  // Costs no more than the records that are new since then.
  PdfObject* const* handOut(HandedOutPdfObjects& to, uint64_t* count) const;

 private:
  size_t add(std::string_view prefix, PdfObjectContents contents);
  void append(HandedOutPdfObjects& to) const;

  mutable std::mutex mutex_;                      // for all that follows
  std::shared_ptr<PdfObjectGeneration> current_;  // null: no records
  std::atomic<uint64_t> clearCount_ = 0;
};

}  // namespace postscript
