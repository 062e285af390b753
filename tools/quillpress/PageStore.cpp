#include "tools/quillpress/PageStore.h"

namespace quillpress {

// Places count on from the memory's into the file's.
StoredStream PageStore::put(std::string_view bytes) {
  if (!file_ && memory_.size() + bytes.size() <= memoryLimit) {
    memory_ += bytes;
    return {memory_.size() - bytes.size(), bytes.size()};
  }
  if (!file_) {
    file_.emplace();
  }
  return {memory_.size() + file_->append(bytes), bytes.size()};
}

void PageStore::read(const StoredStream& stream,
                     const std::function<void(std::string_view)>& take) {
  if (stream.place + stream.length <= memory_.size()) {
    take(std::string_view(memory_).substr(stream.place, stream.length));
  } else {
    file_->read(stream.place - memory_.size(), stream.length, take);
  }
}

}  // namespace quillpress
