// What a user does with the main window, chosen by a number.
#pragma once

#include <functional>

#include "scenarios/world.h"

namespace corvane::sim {

// `pick` gives a random number from the first to the second.
void UseTheMainWindow(World& world, const std::function<int(int, int)>& pick);

}  // namespace corvane::sim
