// The front end's eight entries. Each converts its arguments, whose wide text is the system's, and
// makes one call. Nothing is thrown across them.
#include "include/tqpumpd2k.h"
#include "umpd/JobEntries.h"
#include "umpd/platform/win32/Win32Platform.h"

namespace {

// Made by the first call, ended by the unloading of the library. The loader holds its lock then, so
// that no call may go to the spooler: jobs that nobody ended are left alone.
struct FrontEnd {
  FrontEnd() = default;
  FrontEnd(const FrontEnd&) = delete;
  FrontEnd& operator=(const FrontEnd&) = delete;
  ~FrontEnd() { jobs.abandon(); }

  umpd::Win32Platform system;
  umpd::JobRecords jobs{system.platform};
};

umpd::JobRecords& jobsOfProcess() {
  static FrontEnd frontEnd;
  return frontEnd.jobs;
}

// Returns what the call returns or, if there is no memory for its work, `failure`.
template <class Call>
uint32_t guarded(uint32_t failure, Call call) {
  try {
    return call(jobsOfProcess());
  } catch (...) {
    return failure;
  }
}

const char16_t* text(const wchar_t* characters) {
  return reinterpret_cast<const char16_t*>(characters);
}

const char16_t* nameOf(const wchar_t* key) {
  return key ? text(key) : u"";
}

}  // namespace

unsigned long DocStart(wchar_t* printerName) {
  return guarded(0,
                 [&](umpd::JobRecords& jobs) { return umpd::DocStart(jobs, text(printerName)); });
}

CUmpd& CUmpd::operator=(const CUmpd&) = default;

extern "C" {

uint32_t DocStart2K(void* printer, uint32_t jobId, const wchar_t* printerName,
                    const wchar_t* docName) {
  const auto handle = umpd::PrinterHandle{reinterpret_cast<uintptr_t>(printer)};
  return guarded(0, [&](umpd::JobRecords& jobs) {
    return umpd::DocStart2K(jobs, handle, jobId, text(printerName), text(docName));
  });
}

uint32_t DocWrite(uint32_t job, const void* buffer, uint32_t length) {
  return guarded(0,
                 [&](umpd::JobRecords& jobs) { return umpd::DocWrite(jobs, job, buffer, length); });
}

uint32_t DocEnd(uint32_t job) {
  return guarded(0, [&](umpd::JobRecords& jobs) { return umpd::DocEnd(jobs, job); });
}

uint32_t getIntVal(const void* job, const wchar_t* key, uint32_t defaultValue) {
  return guarded(defaultValue, [&](umpd::JobRecords& jobs) {
    return umpd::getIntVal(jobs, job, nameOf(key), defaultValue);
  });
}

uint32_t getStringVal(const void* job, const wchar_t* key, wchar_t* buffer, uint32_t size,
                      const wchar_t* defaultText) {
  // Without a buffer there is no room for any text, and none for the default.
  const uint32_t room = buffer ? size : 0;
  const char16_t* const otherwise = buffer ? text(defaultText) : nullptr;
  return guarded(0, [&](umpd::JobRecords& jobs) {
    return umpd::getStringVal(jobs, job, nameOf(key), reinterpret_cast<char16_t*>(buffer), room,
                              otherwise);
  });
}

uint32_t getStringMultibyte(const void* job, const char* key, char* buffer, uint32_t size) {
  return guarded(0, [&](umpd::JobRecords& jobs) {
    return umpd::getStringMultibyte(jobs, job, key ? key : "", buffer, buffer ? size : 0);
  });
}

}  // extern "C"
