// Loading a shared library by its path; there is one implementation for each system.
#pragma once

#include <string>

namespace bench {

// The library's handle. Ends the program with a message if it cannot be loaded.
void* loadSharedObject(const std::string& path);

// The address of an exported function. Ends the program with a message if there is none.
void* addressIn(void* library, const char* name);

}  // namespace bench
