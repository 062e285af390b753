// The fixture of the front end's tests: a simulated machine of their own.
#pragma once

#include <gtest/gtest.h>

#include "umpd/platform/simulated/SimulatedPlatform.h"

namespace umpd {

class OnMachine : public testing::Test {
 protected:
  SimulatedPlatform simulated_;
  SimulatedParts& machine_ = simulated_.machine;
  Platform& platform_ = simulated_.platform;
};

}  // namespace umpd
