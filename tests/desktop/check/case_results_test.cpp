#include "desktop/check/case_results.h"

#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

using Names = std::vector<std::string>;

TEST(CaseResults, CountsWhatPassedAndNamesWhatFailedOnce) {
  const CaseResults results = ReadCaseResults(
      "[ RUN      ] A.First\r\n"
      "[       OK ] A.First (3 ms)\r\n"
      "[ RUN      ] All/B.Second/2\r\n"
      "somewhere: Failure\r\n"
      "[  FAILED  ] All/B.Second/2, where GetParam() = 2 (1 ms)\r\n"
      "[ RUN      ] A.Third\r\n"
      "[       OK ] A.Third (0 ms)\r\n"
      "[  PASSED  ] 2 tests.\r\n"
      "[  FAILED  ] 1 test, listed below:\r\n"
      "[  FAILED  ] All/B.Second/2, where GetParam() = 2\r\n");
  EXPECT_EQ(results.passed, 2);
  EXPECT_EQ(results.failed, Names{"All/B.Second/2"});
  EXPECT_TRUE(results.whole);
}

TEST(CaseResults, ACaseThatTheProgramDidNotSurviveFailed) {
  const CaseResults results = ReadCaseResults(
      "[ RUN      ] A.First\n[       OK ] A.First (3 ms)\n[ RUN      ] A.Second\nhalf a li");
  EXPECT_EQ(results.passed, 1);
  EXPECT_EQ(results.failed, Names{"A.Second"});
  EXPECT_FALSE(results.whole);
}

TEST(CaseResults, NothingIsNoResult) {
  const CaseResults results = ReadCaseResults("");
  EXPECT_EQ(results.passed, 0);
  EXPECT_TRUE(results.failed.empty());
  EXPECT_FALSE(results.whole);
}

}  // namespace
}  // namespace corvane::desktop
