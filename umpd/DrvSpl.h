// DrvSpl: a second way to a job, for a driver that is built into the library. Nothing in the
// library calls it; it is required from outside and stays. It goes by the record's own address and
// takes the job's steps one by one: the end leaves the record, the close deletes it.
//
// Bad addresses cost a box, and the result is null, 0 or false.
#pragma once

#include <cstdint>

#include "umpd/JobRecords.h"

namespace umpd {

UmDriver* DrvSplStartDoc(JobRecords& records, PrinterHandle printer, uint32_t jobId);
// `written` becomes `length` for any job that is one, also for one that ended and if nothing is
// written.
uint32_t DrvSplWritePrinter(JobRecords& records, const void* job, const void* buffer,
                            uint32_t length, uint32_t& written);
bool DrvSplEndDoc(JobRecords& records, const void* job);
void DrvSplClose(JobRecords& records, const void* job);
uint32_t DrvSplStartPage(JobRecords& records, const void* job);
uint32_t DrvSplEndPage(JobRecords& records, const void* job);
void DrvSplAbort(JobRecords& records, const void* job);

}  // namespace umpd
