#include "base/scoped_flag.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "panel/program_flags.h"

namespace corvane {
namespace {

TEST(ScopedFlagTest, IsSetForTheLengthOfTheScope) {
  Flag flag;
  {
    const ScopedFlag set(flag);
    EXPECT_TRUE(flag);
  }
  EXPECT_FALSE(flag);
}

TEST(ScopedFlagTest, IsClearedWhenTheScopeIsLeftByAnException) {
  bool flag = false;
  EXPECT_THROW(
      {
        const ScopedFlag set(flag);
        throw std::runtime_error("out");
      },
      std::runtime_error);
  EXPECT_FALSE(flag);
}

TEST(ScopedDepthTest, CountsTheScopesThatAreOpen) {
  int depth = 0;
  {
    const ScopedDepth outer(depth);
    const ScopedDepth inner(depth);
    EXPECT_EQ(depth, 2);
  }
  EXPECT_EQ(depth, 0);
}

}  // namespace
}  // namespace corvane
