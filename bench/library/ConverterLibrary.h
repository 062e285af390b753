// ConverterLibrary: a build of the library, loaded by its path at run time, so that programs can
// measure and compare builds that they were not linked with.
#pragma once

#include <string>

#include "include/tqpumpd2k.h"

namespace bench {

struct ConverterLibrary {
  // Loads the library for the rest of the process. Ends the program with a message if the file is
  // no library or lacks a call.
  explicit ConverterLibrary(const std::string& path);

  void* (*open)(const float*);
  void (*startPage)(void*, const float*);
  const char* (*convert)(void*, const char*, int32_t*);
  PdfObject* const* (*objects)(void*, uint64_t*);
  const char* (*error)(void*);
  void (*close)(void*);
};

}  // namespace bench
