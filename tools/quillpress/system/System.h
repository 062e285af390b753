// System: what the program needs of the operating system and what differs between systems. Paths
// and arguments are UTF-8 everywhere; descriptors are those of the C library, in binary mode.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace quillpress {

// The command line, with the program's name first. On Windows it is read from the system, as the
// one that main gets has lost what the code page cannot hold.
std::vector<std::string> systemArguments(int argc, char** argv);

// Must be called before anything is read or written: standard streams carry bytes, not lines.
void makeStandardStreamsBinary();

std::filesystem::path systemPath(const std::string& utf8);

// These three return a descriptor, or -1 with errno set.
int openToRead(const std::filesystem::path& path);
int openToWrite(const std::filesystem::path& path);

// Makes and opens a new file in the folder of `place`, and sets `made` to its path.
int createBeside(const std::filesystem::path& place, std::filesystem::path& made);

// Gives the new file the permissions of the file that it will replace or, without one, of any new
// file. False with errno set on failure.
bool setPermissions(int descriptor, const std::filesystem::path& replaced);

// Whether an error number says that the disk, or the user's share of it, is full.
bool isDiskFull(int error);

}  // namespace quillpress
