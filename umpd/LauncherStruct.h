// LauncherStruct: the record that the driver's side and the launcher share. It is a wire format
// between two programs: narrow text, each field ended by a NUL. This header is C11 and C++20.
#pragma once

#include <assert.h>
#include <stddef.h>

enum { launcherFieldSize = 260 };

typedef struct LauncherStruct {
  char reserved[3];
  char command[launcherFieldSize];  // "startprint" or "stopprint"
  char printerName[launcherFieldSize];
  char outputFile[launcherFieldSize];
  char docName[launcherFieldSize];
  char reservedToo[launcherFieldSize];
} LauncherStruct;

static_assert(sizeof(LauncherStruct) == 1303, "the record's size is fixed");
static_assert(offsetof(LauncherStruct, command) == 3, "the record's layout is fixed");
static_assert(offsetof(LauncherStruct, printerName) == 263, "the record's layout is fixed");
static_assert(offsetof(LauncherStruct, outputFile) == 523, "the record's layout is fixed");
static_assert(offsetof(LauncherStruct, docName) == 783, "the record's layout is fixed");
