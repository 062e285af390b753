#include "bench/library/SharedObject.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

void* checked(void* result, const char* what) {
  if (!result) {
    std::fprintf(stderr, "%s: cannot be loaded, error %lu\n", what, GetLastError());
    std::exit(2);
  }
  return result;
}

}  // namespace

void* loadSharedObject(const std::string& path) {
  return checked(LoadLibraryA(path.c_str()), path.c_str());
}

void* addressIn(void* library, const char* name) {
  const auto module = static_cast<HMODULE>(library);
  return checked(reinterpret_cast<void*>(GetProcAddress(module, name)), name);
}

}  // namespace bench
