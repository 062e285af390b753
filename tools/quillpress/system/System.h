// System: what the program needs of the operating system and what differs between systems. Paths
// and arguments are UTF-8 everywhere; descriptors are those of the C library, in binary mode.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace quillpress {

// The command line, with the program's name first. On Windows it is read from the system, as the
// one that main gets has lost what the code page cannot hold.
std::vector<std::string> systemArguments(int argc, char** argv);

// Must be called before anything is read or written: standard streams carry bytes, not lines.
void makeStandardStreamsBinary();

// Has a signal that ends the program remove the output that is being written, and a closed pipe or
// a full disk be reported as failures of a write. Windows has no such signals.
void prepareSignals();

// The file that such a signal removes; an empty path when there is none.
void setUnfinishedFile(const std::filesystem::path& path);

std::filesystem::path systemPath(const std::string& utf8);

// These four return a descriptor, or -1 with errno set.
int openToRead(const std::filesystem::path& path);
int openToWrite(const std::filesystem::path& path);

// Makes and opens a new file in the folder of `place`, and sets `made` to its path.
int createBeside(const std::filesystem::path& place, std::filesystem::path& made);

// A new file for reading and writing that goes with its descriptor, however the program ends.
int createScratch();

// Gives the new file the permissions of the file that it will replace or, without one, of any new
// file. False with errno set on failure.
bool setPermissions(int descriptor, const std::filesystem::path& replaced);

// False with errno set on failure.
bool seekTo(int descriptor, uint64_t place);

// Maps a plain file for reading, all of it, and sets its size. Null where that cannot be done; then
// the file is to be read.
const void* mapFile(int descriptor, size_t& size);
void unmapFile(const void* place, size_t size);

// Whether an error number says that the disk, or the user's share of it, is full.
bool isDiskFull(int error);

// Processor time of the calling thread.
double threadSeconds();

// What the program holds in memory, mapped files aside; 0 where the system does not say.
uint64_t memoryInUse();

// Has memory beyond this run out: std::bad_alloc instead of a machine that swaps. What is mapped
// from files does not count. Does nothing where the system has no such limit.
void limitMemory(uint64_t bytes);

}  // namespace quillpress
