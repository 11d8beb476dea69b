#include "store/file_numbers.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(FileNumbers, TheLowestFreeNumberIsGiven) {
  FileNumbers numbers;
  EXPECT_EQ(numbers.FreeFile(), 1);
  numbers.Open(1, "a");
  EXPECT_EQ(numbers.FreeFile(), 2);
  numbers.Open(2, "b");
  numbers.Close(1);
  EXPECT_EQ(numbers.FreeFile(), 1);
  EXPECT_EQ(numbers.PathOf(1), "");
  EXPECT_EQ(numbers.PathOf(2), "b");
}

TEST(FileNumbers, ClosingANumberNotInUseDoesNothing) {
  FileNumbers numbers;
  numbers.Close(1);
  EXPECT_EQ(numbers.FreeFile(), 1);
}

}  // namespace
}  // namespace corvane
