// UmDriver2k: a job whose driver names its document, as that of Windows 2000 does. Only its start
// differs.
#pragma once

#include <cstdint>

#include "umpd/UmDriver.h"

namespace umpd {

class UmDriver2k : public UmDriver {
 public:
  using UmDriver::UmDriver;
  ~UmDriver2k() override;

  // The printer's settings are those of the name that the spooler has for it. False without one.
  bool init(PrinterHandle handle, uint32_t job, const char16_t* document);
};

}  // namespace umpd
