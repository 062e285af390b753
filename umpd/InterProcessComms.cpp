// Everything goes by names made of one base name: the receiver's mutex (it runs), its event (a
// message is there), the mapping (the message) and the sender's end event (it was read).
// A sender keeps the mapping for the life of its channel, and makes the end event anew for each
// message, so that an answer that came too late cannot be taken for the next one.
#include "umpd/InterProcessComms.h"

#include <utility>

#include "umpd/LauncherStruct.h"
#include "umpd/Report.h"
#include "umpd/SecurityAttributesHolder.h"
#include "umpd/Trace.h"

namespace umpd {

// A user without a name still has a channel: the base name then ends in the underscore.
std::u16string buildChannelName(Platform& platform, std::u16string_view name) {
  std::u16string channel;
  if (platform.version.isWin2kOrLater()) {
    channel = u"Local\\";
  }
  channel += name;
  channel += u'_';
  channel += platform.accounts.userName().value_or(std::u16string());
  return channel;
}

template <class Record>
InterProcessComms<Record>::InterProcessComms(Platform& platform, std::u16string_view name,
                                             uint32_t theTimeout)
    : platform_(platform), timeout(theTimeout) {
  const std::u16string base = buildChannelName(platform_, name);
  endEventName = base + u"_end";
  mutexName = base + u"_mutex";
  mappingName = base + u"_sm";
  eventName = base + u"_event";
}

// Only a side that listens has a wait to end. A sender leaves the receiver's event alone.
template <class Record>
InterProcessComms<Record>::~InterProcessComms() {
  if (stopped == 0) {
    stopped = 1;
    signalReceiver();
  }
}

// The mutex is never waited for: that it exists is the answer, and it goes with its process.
template <class Record>
bool InterProcessComms<Record>::isReceiverReady() {
  return static_cast<bool>(platform_.objects.openMutex(mutexName));
}

template <class Record>
Record* InterProcessComms<Record>::openSharedMemory() {
  if (!memory_.view && !openMapping()) {
    return nullptr;
  }
  return reinterpret_cast<Record*>(memory_.view.get());
}

// A mapping exists as long as either side has it open; the side that comes first makes it.
template <class Record>
bool InterProcessComms<Record>::openMapping() {
  SharedMemoryView opened;
  opened.mappingHandle = platform_.objects.openMapping(mappingName);
  if (!opened.mappingHandle) {
    SecurityAttributesHolder security;
    opened.mappingHandle = platform_.objects.createMapping(
        buildSecurityAttributes(platform_, security), mappingName, sizeof(Record));
    if (!opened.mappingHandle) {
      return false;
    }
    opened.mappingCreated = true;
  }
  opened.view = platform_.objects.mapView(opened.mappingHandle.get(), sizeof(Record));
  if (!opened.view) {
    return false;
  }
  memory_ = std::move(opened);
  return true;
}

template <class Record>
bool InterProcessComms<Record>::sendMsg() {
  if (!memory_.view) {
    return false;
  }
  if (!isReceiverReady()) {
    traceMessage("IPC sendMsg isReceiverReady failed\n");
    return false;
  }
  // Made before the receiver is told of the message, as it may answer at once.
  const OwnedObject endEvent = createEndEvent();
  if (!endEvent) {
    reportLastError(platform_, u"IPC sendMsg create event failed", 0);
    return false;
  }
  traceMessage("Created event %s\n", endEventName);
  const OwnedObject event = signalReceiver();
  if (!event) {
    reportLastError(platform_, u"IPC sendMsg setting event failed", 0);
    return false;
  }
  // The receiver has the message by now, so that a wait that fails is no failure to send.
  if (platform_.objects.wait(endEvent.get(), timeout) == WaitAnswer::timedOut) {
    traceMessage("IPC sendMsg listen.block failed\n");
    return false;
  }
  return true;
}

template <class Record>
OwnedObject InterProcessComms<Record>::createEndEvent() {
  SecurityAttributesHolder security;
  OwnedObject event =
      platform_.objects.createEvent(buildSecurityAttributes(platform_, security), endEventName);
  traceMessage("TqpEvent %s handle %d \n", endEventName, event.get());
  return event;
}

template <class Record>
OwnedObject InterProcessComms<Record>::signalReceiver() {
  OwnedObject event = platform_.objects.openEvent(eventName);
  if (!event) {
    traceMessage("Open TqpEvent [%s] failed.\n", eventName);
    return {};
  }
  if (!platform_.objects.setEvent(event.get())) {
    return {};
  }
  return event;
}

template class InterProcessComms<LauncherStruct>;

}  // namespace umpd
