#include "umpd/InterProcessComms.h"

#include <utility>

#include "umpd/LauncherStruct.h"
#include "umpd/Report.h"
#include "umpd/SecurityAttributesHolder.h"

std::u16string buildChannelName(Platform& platform, std::u16string_view name) {
  std::u16string channel;
  if (platform.version.isWin2kOrLater()) channel = u"Local\\";
  channel += name;
  channel += u'_';
  channel += platform.accounts.userName().value_or(std::u16string());
  return channel;
}

template <class Record>
InterProcessComms<Record>::InterProcessComms(Platform& platform, std::u16string_view name,
                                             std::uint32_t timeout)
    : platform_(platform), timeout_(timeout) {
  const std::u16string base = buildChannelName(platform, name);
  endEventName_ = base + u"_end";
  mutexName_ = base + u"_mutex";
  mappingName_ = base + u"_sm";
  eventName_ = base + u"_event";
}

template <class Record>
InterProcessComms<Record>::~InterProcessComms() {
  if (stopped == 0) {
    stopped = 1;
    signalReceiver();
  }
}

template <class Record>
bool InterProcessComms<Record>::isReceiverReady() {
  return static_cast<bool>(platform_.objects.openMutex(mutexName_));
}

template <class Record>
Record* InterProcessComms<Record>::openSharedMemory() {
  if (!memory_.view && !openMapping()) return nullptr;
  return reinterpret_cast<Record*>(memory_.view.get());
}

// A mapping stands for as long as either side has it open; the side that comes first makes it.
template <class Record>
bool InterProcessComms<Record>::openMapping() {
  SharedMemoryView opened;
  opened.mapping = platform_.objects.openMapping(mappingName_);
  if (!opened.mapping) {
    SecurityAttributesHolder security;
    opened.mapping = platform_.objects.createMapping(buildSecurityAttributes(platform_, security),
                                                     mappingName_, sizeof(Record));
    if (!opened.mapping) return false;
    opened.created = true;
  }
  opened.view = platform_.objects.mapView(opened.mapping.get());
  if (!opened.view) return false;
  memory_ = std::move(opened);
  return true;
}

template <class Record>
bool InterProcessComms<Record>::sendMsg() {
  if (!memory_.view) return false;
  if (!isReceiverReady()) {
    traceMessage("IPC sendMsg isReceiverReady failed\n");
    return false;
  }
  const OwnedObject endEvent = createEndEvent();
  if (!endEvent) {
    reportLastError(platform_, u"IPC sendMsg create event failed", 0);
    return false;
  }
  traceMessage("Created event %s\n", endEventName_.c_str());
  const OwnedObject event = signalReceiver();
  if (!event) {
    reportLastError(platform_, u"IPC sendMsg setting event failed", 0);
    return false;
  }
  if (platform_.objects.wait(endEvent.get(), timeout_) == WaitAnswer::timedOut) {
    traceMessage("IPC sendMsg listen.block failed\n");
    return false;
  }
  return true;
}

template <class Record>
OwnedObject InterProcessComms<Record>::createEndEvent() {
  SecurityAttributesHolder security;
  OwnedObject event =
      platform_.objects.createEvent(buildSecurityAttributes(platform_, security), endEventName_);
  traceMessage("TqpEvent %s handle %d \n", endEventName_.c_str(), event.get());
  return event;
}

template <class Record>
OwnedObject InterProcessComms<Record>::signalReceiver() {
  OwnedObject event = platform_.objects.openEvent(eventName_);
  if (!event) {
    traceMessage("Open TqpEvent [%s] failed.\n", eventName_.c_str());
    return {};
  }
  if (!platform_.objects.setEvent(event.get())) return {};
  return event;
}

template class InterProcessComms<LauncherStruct>;
