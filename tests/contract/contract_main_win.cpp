// Starts the cases, or one of the child processes that some of them need.
#include <gtest/gtest.h>

#include <string>

#include "contract/child_windows.h"
#include "contract/real_program_win.h"

int main(int argc, char** argv) {
  const std::string first = argc > 1 ? argv[1] : "";
  if (first == corvane::contract::kChildSwitch) return corvane::contract::RunChildWindows();
  if (first == corvane::contract::kEndSwitch && argc > 2) {
    return corvane::contract::RunEndOfProgram(argv[2]);
  }
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
