// UmDriver2k: a job whose driver tells its document, as that of Windows 2000 does. Only its start
// differs.
#pragma once

#include "umpd/UmDriver.h"

class UmDriver2k : public UmDriver {
 public:
  using UmDriver::UmDriver;
  ~UmDriver2k() override;

  // The printer's settings are those of the name that the spooler has for it. False without one.
  bool init(PrinterHandle handle, std::uint32_t job, const char16_t* document);
};
