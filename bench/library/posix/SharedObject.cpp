#include "bench/library/SharedObject.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

void* checked(void* result) {
  if (!result) {
    std::fprintf(stderr, "%s\n", dlerror());
    std::exit(2);
  }
  return result;
}

}  // namespace

void* loadSharedObject(const std::string& path) {
  // Without a slash the system's folders would be searched instead of the current one.
  const std::string file = path.find('/') == std::string::npos ? "./" + path : path;
  return checked(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL));
}

void* addressIn(void* library, const char* name) {
  return checked(dlsym(library, name));
}

}  // namespace bench
