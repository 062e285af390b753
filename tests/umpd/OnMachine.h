// The fixture of the front end's tests: a simulated machine of their own.
#pragma once

#include <gtest/gtest.h>

#include "umpd/platform/simulated/SimulatedPlatform.h"

class OnMachine : public testing::Test {
 protected:
  SimulatedPlatform simulated;
  SimulatedParts& machine = simulated.machine;
  Platform& platform = simulated.platform;
};
