// Runs the desktop cases. Output is not buffered, so that a case that is ended leaves what it said.
#include <gtest/gtest.h>

#include <cstdio>

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
