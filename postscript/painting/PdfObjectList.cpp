#include "postscript/painting/PdfObjectList.h"

#include <utility>

namespace postscript {

struct PdfObjectGeneration {
  std::vector<std::unique_ptr<StoredPdfObject>> records;
  // How many of them have been handed out to some converter.
  size_t handedOut = 0;
  // Of those: the records that finished ones replaced, and the indexes of these, in the order in
  // which that happened.
  std::vector<std::unique_ptr<StoredPdfObject>> replaced;
  std::vector<size_t> completions;
  // The data of the images, by their index in `records`.
  PrefixTree images;
};

StoredPdfObject::StoredPdfObject(std::string resourceName, PdfObjectContents contents)
    : PdfObject(),
      dictionaryText_(std::move(contents.dictionary)),
      dataBytes_(std::move(contents.data).value_or(Text())),
      nameText_(std::move(resourceName)) {
  dictionary = dictionaryText_.data();
  compress = contents.compress;
  if (contents.data) {
    data = reinterpret_cast<unsigned char*>(dataBytes_.data());
    dataLength = dataBytes_.size();
  }
  name = nameText_.data();
  kind = contents.kind;
  source = contents.source;
}

StoredPdfObject::~StoredPdfObject() = default;

PdfObjectList::Place PdfObjectList::addPdfObject(std::string_view prefix,
                                                 PdfObjectContents contents) {
  const std::lock_guard lock(mutex_);
  const size_t index = add(prefix, std::move(contents));
  return {clearCount_, index, current_->records[index]->name};
}

PdfObjectList::NamedImage PdfObjectList::nameImage(std::string_view prefix,
                                                   PdfObjectContents image) {
  const std::lock_guard lock(mutex_);
  size_t index = current_ ? current_->images.find(*image.data) : PrefixTree::none;
  const bool isNew = index == PrefixTree::none;
  if (isNew) {
    index = add(prefix, std::move(image));
    // The record comes first: its number is taken even if there is no memory to find it by.
    const PdfObject& record = *current_->records[index];
    current_->images.add({reinterpret_cast<const char*>(record.data), record.dataLength}, index);
  }
  return {current_->records[index]->name, isNew};
}

size_t PdfObjectList::add(std::string_view prefix, PdfObjectContents contents) {
  if (!current_) {
    current_ = std::make_shared<PdfObjectGeneration>();
  }
  auto& records = current_->records;
  std::string name = std::string(prefix) + std::to_string(records.size() + 1);
  records.push_back(std::make_unique<StoredPdfObject>(std::move(name), std::move(contents)));
  return records.size() - 1;
}

void PdfObjectList::complete(const Place& place, Text data) {
  const std::lock_guard lock(mutex_);
  if (place.clearings != clearCount_) {
    return;
  }
  auto& record = current_->records[place.index];
  auto finished = std::make_unique<StoredPdfObject>(
      record->name, PdfObjectContents{record->kind, record->dictionary, std::move(data),
                                      record->compress, record->source});
  if (place.index < current_->handedOut) {
    current_->replaced.emplace_back();
    current_->completions.push_back(place.index);
    current_->replaced.back() = std::move(record);
  }
  record = std::move(finished);
}

void PdfObjectList::clearPdfObjects() noexcept {
  // The old records end after the lock is given back, unless a converter still has them.
  std::shared_ptr<PdfObjectGeneration> old;
  const std::lock_guard lock(mutex_);
  current_.swap(old);
  ++clearCount_;
}

PdfObject* const* PdfObjectList::handOut(HandedOutPdfObjects& to, uint64_t* count) const {
  *count = 0;
  // Never null, not even without a record.
  if (to.array_.capacity() == 0) {
    to.array_.reserve(8);
  }
  std::shared_ptr<const PdfObjectGeneration> old;
  const std::lock_guard lock(mutex_);
  if (to.generation_ != current_) {
    old = std::exchange(to.generation_, current_);
    to.array_.clear();
    to.completionsSeen_ = 0;
  }
  if (current_) {
    append(to);
  }
  *count = to.array_.size();
  return to.array_.data();
}

// What is new since the last time: records at the end, and finished ones in the place of others.
void PdfObjectList::append(HandedOutPdfObjects& to) const {
  const auto& records = current_->records;
  current_->handedOut = records.size();
  while (to.array_.size() < records.size()) {
    to.array_.push_back(records[to.array_.size()].get());
  }
  for (; to.completionsSeen_ < current_->completions.size(); ++to.completionsSeen_) {
    const size_t index = current_->completions[to.completionsSeen_];
    to.array_[index] = records[index].get();
  }
}

}  // namespace postscript
