#include "postscript/painting/ContentText.h"

#include <cstring>

namespace postscript {

std::string_view ContentText::text() {
  mergeFrom(0);
  *bytes_.room(1) = '\0';
  return written();
}

void ContentText::insertClip(std::string_view clip) {
  const auto place = clipPlace_.in(written());
  if (!place) {
    return bytes_.append(clip);
  }
  if (insertions_.size() == insertions_.capacity()) {
    const size_t wanted = 2 * insertions_.size() + 16;
    insertionsShare_.resizeMoving(wanted * sizeof(Insertion));
    insertions_.reserve(wanted);
  }
  insertions_.push_back({*place, clip});
  insertedLength_ += clip.size();
}

void ContentText::clear() {
  bytes_.cut(0);
  insertions_.clear();
  insertedLength_ = 0;
  clipPlace_ = {};
  placeAtPart_ = {};
}

size_t ContentText::beginPart() {
  clipPlace_.read(written());
  placeAtPart_ = clipPlace_;
  return size();
}

// A clip of the part may have gone in front of it and have moved its beginning: the part is cut off
// by length, so that it then takes the end of the text before it along.
Text ContentText::takePart(size_t start) {
  size_t kept = insertions_.size();
  size_t keptLength = insertedLength_;
  while (kept > 0 && insertions_[kept - 1].place + keptLength > start) {
    const size_t first = groupBegin(kept);
    for (; kept > first; --kept) {
      keptLength -= insertions_[kept - 1].clip.size();
    }
  }
  mergeFrom(kept);
  const size_t cut = start - insertedLength_;
  Text part(written().substr(cut));
  bytes_.cut(cut);
  clipPlace_ = placeAtPart_;
  clipPlace_.keep(cut);
  return part;
}

// The first of the insertions at the same place as the one before the index.
size_t ContentText::groupBegin(size_t end) const {
  size_t first = end - 1;
  while (first > 0 && insertions_[first - 1].place == insertions_[first].place) {
    --first;
  }
  return first;
}

// Puts the insertions from one on into the text, from its end backwards.
void ContentText::mergeFrom(size_t first) {
  if (first == insertions_.size()) {
    return;
  }
  clipPlace_.keep(insertions_[first].place);
  placeAtPart_.keep(insertions_[first].place);
  size_t length = 0;
  for (size_t i = first; i < insertions_.size(); ++i) {
    length += insertions_[i].clip.size();
  }
  bytes_.room(length);
  char* const bytes = bytes_.data();
  size_t from = bytes_.size();
  size_t to = from + length;
  bytes_.endAt(bytes + to);
  for (size_t end = insertions_.size(), begin; end > first; end = begin) {
    begin = groupBegin(end);
    const size_t place = insertions_[begin].place;
    to -= from - place;
    std::memmove(bytes + to, bytes + place, from - place);
    from = place;
    for (size_t i = begin; i < end; ++i) {
      const std::string_view clip = insertions_[i].clip;
      to -= clip.size();
      std::memcpy(bytes + to, clip.data(), clip.size());
    }
  }
  insertions_.resize(first);
  insertedLength_ -= length;
}

}  // namespace postscript
