// PlatformContract: what every implementation of the platform has to answer. The suite runs over
// each machine that is named to it, so that the simulated one cannot drift from the real one.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "umpd/platform/Platform.h"

namespace umpd {

// A machine with what the suite needs to find there.
class ContractMachine {
 public:
  explicit ContractMachine(Platform& machine) : platform(machine) {}
  virtual ~ContractMachine();

  virtual void writeProfile(const std::u16string& path, const std::u16string& section,
                            const std::vector<std::u16string>& lines) = 0;
  // A job of that document in the printer's queue; its number.
  virtual uint32_t startJob(const std::u16string& document) = 0;
  // The handle that the last job is printed with.
  virtual PrinterHandle jobsHandle() = 0;
  // Another holder of the mutex died with it.
  virtual void abandonMutex(const std::u16string& name) = 0;

  Platform& platform;
  // An empty directory that stands, with no separator behind it.
  std::u16string folder;
  // A printer of the driver "Tarnwick Quillpress", on the port `port`.
  std::u16string printer;
  std::u16string port;
  // A key of the current user that does not stand.
  std::u16string key;
  // A program that ends with the code 3.
  std::u16string program;

  // Wine 8 keeps the queue's jobs to itself: EnumJobsA fails without a reason, and SetJobW succeeds
  // and removes none.
  bool answersForJobs = true;
  // Nor does its ieframe.dll know of Protected Mode.
  bool knowsProtectedMode = true;
};

using MakeContractMachine = std::unique_ptr<ContractMachine> (*)();

class PlatformContract : public testing::TestWithParam<MakeContractMachine> {
 protected:
  std::u16string inFolder(const std::u16string& name) const {
    return machine_->folder + u"\\" + name;
  }
  bool writeFile(const std::u16string& path, const std::string& content);
  FunctionAddress function(const std::u16string& module, const std::string& name);

  std::unique_ptr<ContractMachine> machine_ = GetParam()();
  Platform& platform_ = machine_->platform;
  Registry& registry_ = platform_.registry;
  Spooler& spooler_ = platform_.spooler;
  NamedObjects& objects_ = platform_.objects;
  Files& files_ = platform_.files;

 private:
  // Stay loaded, as the functions are called.
  std::vector<OwnedModule> modules_;
};

}  // namespace umpd
