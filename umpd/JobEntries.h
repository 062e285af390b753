// JobEntries: what the printer driver calls. A job is started, written to and ended by a handle of
// 32 bits, its record's address; its settings are read by a pointer to the record.
//
// A bad handle costs a box and the result 0 (of getIntVal: the default), and no more.
#pragma once

#include <cstddef>
#include <cstdint>

#include "umpd/JobRecords.h"

namespace umpd {

using JobHandle = uint32_t;

JobHandle DocStart(JobRecords& records, const char16_t* printerName);
// The printer's name is for the trace alone.
JobHandle DocStart2K(JobRecords& records, PrinterHandle printer, uint32_t jobId,
                     const char16_t* printerName, const char16_t* docName);
// 1, or 0 for a failure. After a failed write none is tried again.
uint32_t DocWrite(JobRecords& records, JobHandle handle, const void* buffer, uint32_t length);
// The handle is dead after it. A job that failed ends in the normal way.
uint32_t DocEnd(JobRecords& records, JobHandle handle);

uint32_t getIntVal(JobRecords& records, const void* job, const char16_t* key,
                   uint32_t defaultValue);
// As copySettingText and copySettingUtf8, and 1 for any job that is one.
uint32_t getStringVal(JobRecords& records, const void* job, const char16_t* key, char16_t* buffer,
                      size_t size, const char16_t* defaultText);
uint32_t getStringMultibyte(JobRecords& records, const void* job, const char* key, char* buffer,
                            size_t size);

}  // namespace umpd
