// A scripted run: a scenario file of the stand-in with lines for the user in between.
//   #option network-on | network-plain | labels-after-start
//   #file NAME CONTENT        a file beside the program, "\n" for a line end
//   #user SECONDS click|double|release|type|enter|select|lock CONTROL [ARGUMENT]
//   #run SECONDS              how long it lasts
// "select" and "lock" are clicks of the left and the right button on a line of a list. A control
// whose name begins with "Dialog." is the open editor's; "Form1" is clicked to close the program.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "scenarios/world.h"

namespace corvane::sim {

struct UserStep {
  std::int64_t ms = 0;
  std::string verb;
  std::string control;
  std::string argument;
};

struct Script {
  std::string name;
  WorldOptions options;
  std::vector<UserStep> steps;
  std::int64_t run_ms = 0;
};

// Where the scripts lie, seen from the top of the sources.
inline const std::filesystem::path kRuns = "tests/scenarios/runs";

// The names of all of them, in order.
[[nodiscard]] std::vector<std::string> AllRuns();
// Throws std::invalid_argument when a line is wrong or the script has no length.
[[nodiscard]] Script ReadScript(const std::string& name);
// Throws std::invalid_argument when the program has no such control.
void Carry(World& world, const UserStep& step);

[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);

}  // namespace corvane::sim
