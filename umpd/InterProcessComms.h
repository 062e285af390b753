// InterProcessComms: a channel of named objects over which one process leaves messages for another.
//
// The receiver holds a mutex for as long as it lives and waits on an event. A sender fills the one
// record of the shared memory, makes an event for the answer, sets the receiver's and waits until
// the receiver has set the answer's: the record is read. Nothing numbers the messages, so senders
// must keep each other out; the jobs do with their lock. The making of a channel touches no object.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "umpd/platform/Platform.h"

namespace umpd {

// Each user has a channel of his own: "tqpsend" becomes "Local\tqpsend_mary".
std::u16string buildChannelName(Platform& platform, std::u16string_view name);

// A record's mapping and the view of it, both or neither.
struct SharedMemoryView {
  OwnedObject mappingHandle;
  OwnedView view;
  bool mappingCreated = false;  // by this process
};

template <class Record>
class InterProcessComms {
 public:
  // theTimeout: how many milliseconds an answer is waited for.
  InterProcessComms(Platform& platform, std::u16string_view name, uint32_t theTimeout);
  virtual ~InterProcessComms();
  InterProcessComms(const InterProcessComms&) = delete;
  InterProcessComms& operator=(const InterProcessComms&) = delete;

  bool isReceiverReady();
  // The record to fill, null if it cannot be had. What other messages have left in it is still
  // there.
  Record* openSharedMemory();
  // Tells the receiver of the record. True if it answered.
  bool sendMsg();

  // 0 on a side that listens: then the end of the channel wakes it up.
  int32_t stopped = 1;

 private:
  OwnedObject createEndEvent();
  // The receiver's event, set; none if it could not be.
  OwnedObject signalReceiver();
  bool openMapping();

  Platform& platform_;
  std::u16string endEventName;
  std::u16string mutexName;
  std::u16string mappingName;
  std::u16string eventName;
  uint32_t timeout;
  SharedMemoryView memory_;
};

}  // namespace umpd
