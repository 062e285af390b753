// LauncherStruct: the record that the driver's side and the launcher share. It is a wire format
// between two programs: narrow text, each field ended by a NUL.
#pragma once

#include <cstddef>

struct LauncherStruct {
  static constexpr std::size_t fieldSize = 260;

  char reserved[3];
  char command[fieldSize];  // "startprint" or "stopprint"
  char printerName[fieldSize];
  char outputFile[fieldSize];
  char docName[fieldSize];
  char reservedToo[fieldSize];
};

static_assert(sizeof(LauncherStruct) == 1303);
static_assert(offsetof(LauncherStruct, command) == 3);
static_assert(offsetof(LauncherStruct, printerName) == 263);
static_assert(offsetof(LauncherStruct, outputFile) == 523);
static_assert(offsetof(LauncherStruct, docName) == 783);
