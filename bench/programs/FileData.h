// Statements whose bytes no table of rules can write: images of all kinds, and reads of the current
// file with the data that they read behind them.
#pragma once

#include <string>

#include "bench/programs/Choices.h"

namespace programs {

std::string imageStatement(Choices& choices);
std::string readStatement(Choices& choices);

}  // namespace programs
