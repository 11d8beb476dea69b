#include "core/call_sequence.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(CallSequence, WithoutASequenceAnActionRunsAtOnce) {
  CallSequence sequence;
  int runs = 0;
  sequence.RunOrDefer(1, [&] { ++runs; });
  EXPECT_EQ(runs, 1);
}

TEST(CallSequence, ActionsWaitForTheOutermostSequenceInTheirOrder) {
  CallSequence sequence;
  std::string order;
  sequence.Run([&] {
    sequence.Run([&] {
      sequence.RunOrDefer(1, [&] { order += "a"; });
      sequence.RunOrDefer(2, [&] { order += "b"; });
    });
    EXPECT_TRUE(sequence.running());
    order += "x";
  });
  EXPECT_EQ(order, "xab");
  EXPECT_FALSE(sequence.running());
}

TEST(CallSequence, TheSameActionIsCarriedOutOnce) {
  CallSequence sequence;
  int runs = 0;
  sequence.Run([&] {
    for (int i = 0; i < 3; ++i) sequence.RunOrDefer(1, [&] { ++runs; });
    EXPECT_TRUE(sequence.IsDeferred(1));
  });
  EXPECT_EQ(runs, 1);
  EXPECT_FALSE(sequence.IsDeferred(1));
}

TEST(CallSequence, ADeferredActionMayRunASequenceOfItsOwn) {
  CallSequence sequence;
  std::string order;
  sequence.Run([&] {
    sequence.RunOrDefer(1, [&] {
      sequence.Run([&] { sequence.RunOrDefer(2, [&] { order += "late"; }); });
      order += "-end";
    });
  });
  EXPECT_EQ(order, "late-end");
}

TEST(CallSequence, AnExceptionLeavesNoSequenceRunning) {
  CallSequence sequence;
  EXPECT_THROW(sequence.Run([] { throw std::runtime_error("x"); }), std::runtime_error);
  EXPECT_FALSE(sequence.running());
}

}  // namespace
}  // namespace corvane
