#include "core/group_locks.h"

#include <gmock/gmock.h>

#include "sim/trace_sink.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Lockout = GroupLocks::Lockout;

class GroupLocksTest : public ::testing::Test {
 protected:
  void ExpectReleased(const std::string& tag = "") {
    EXPECT_FALSE(locks_.held());
    EXPECT_EQ(form_.lblGroupHold.tool_tip, "Right click to hold a GSSI");
    EXPECT_EQ(form_.lblGroupNumber.tool_tip, "");
    EXPECT_EQ(form_.lblGroupHold.tag, tag);
    EXPECT_EQ(form_.lblGroupHold.fore_colour, 0x80000012U);
    EXPECT_EQ(form_.lblGroupHold.bold, false);
  }
  void Age(int ticks) {
    for (int i = 0; i < ticks; ++i) locks_.AgeLockouts();
  }

  sim::TraceSink sink_;
  Form1 form_{sink_};
  GroupLocks locks_{form_};
};

TEST_F(GroupLocksTest, NothingIsHeldAtTheStart) {
  ExpectReleased();
  EXPECT_FALSE(locks_.IsHeldElsewhere(9001));
}

TEST_F(GroupLocksTest, HoldsTheGroupOnScreenWithItsLeadingBlank) {
  locks_.ToggleHold(9001);
  EXPECT_EQ(locks_.held(), 9001);
  EXPECT_EQ(form_.lblGroupHold.tag, " 9001");
  EXPECT_EQ(form_.lblGroupHold.tool_tip, "Holding GSSI:  9001");
  EXPECT_EQ(form_.lblGroupNumber.tool_tip, "Holding GSSI:  9001");
  EXPECT_EQ(form_.lblGroupHold.fore_colour, 33023U);
  EXPECT_EQ(form_.lblGroupHold.bold, true);
  EXPECT_FALSE(locks_.IsHeldElsewhere(9001));
  EXPECT_TRUE(locks_.IsHeldElsewhere(9002));
}

TEST_F(GroupLocksTest, WithoutAGroupOnScreenNothingChanges) {
  (void)sink_.Take();
  locks_.ToggleHold(std::nullopt);
  EXPECT_THAT(sink_.Take(), IsEmpty());
  ExpectReleased();
}

TEST_F(GroupLocksTest, SecondToggleReleasesWhateverIsOnScreen) {
  for (const std::optional<std::int32_t> next : {std::optional(9001), std::optional(9002), {}}) {
    locks_.ToggleHold(9001);
    ASSERT_TRUE(locks_.held());
    locks_.ToggleHold(next);
    ExpectReleased();
  }
}

TEST_F(GroupLocksTest, ALostLinkReleasesTheHoldWithAZeroInItsTag) {
  locks_.ToggleHold(9001);
  locks_.ResetHold();
  ExpectReleased("0");
  EXPECT_FALSE(locks_.IsHeldElsewhere(9002));
}

TEST_F(GroupLocksTest, AnEmptyTableDropsNoGroupNotEvenZero) {
  EXPECT_FALSE(locks_.IsDropped(0));
  Age(1);
  EXPECT_THAT(locks_.TempGroupLockouts, IsEmpty());
}

TEST_F(GroupLocksTest, ADroppedGroupIsLeftAloneForSixteenTicks) {
  locks_.Drop(9001);
  Age(15);
  EXPECT_TRUE(locks_.IsDropped(9001));
  Age(1);
  EXPECT_FALSE(locks_.IsDropped(9001));
}

TEST_F(GroupLocksTest, DroppedAgainAfterTenTicksItIsLeftAloneForSixteenMore) {
  locks_.Drop(9001);
  Age(10);
  locks_.Drop(9001);
  Age(15);
  EXPECT_TRUE(locks_.IsDropped(9001));
  Age(1);
  EXPECT_FALSE(locks_.IsDropped(9001));
}

TEST_F(GroupLocksTest, AnotherGroupTakesThePlaceOfTheOnlyOne) {
  locks_.Drop(9001);
  locks_.Drop(9002);
  EXPECT_THAT(locks_.TempGroupLockouts, ElementsAre(Lockout{9002, 0}));
}

TEST_F(GroupLocksTest, ATableOfMoreGroupsGrows) {
  locks_.TempGroupLockouts = {{1, 5}, {2, 5}};
  locks_.Drop(9001);
  EXPECT_THAT(locks_.TempGroupLockouts,
              ElementsAre(Lockout{1, 5}, Lockout{2, 5}, Lockout{9001, 0}));
}

TEST_F(GroupLocksTest, AKnownGroupOnlyStartsItsTimeAgain) {
  locks_.TempGroupLockouts = {{1, 5}, {9001, 10}};
  locks_.Drop(9001);
  EXPECT_THAT(locks_.TempGroupLockouts, ElementsAre(Lockout{1, 5}, Lockout{9001, 0}));
}

TEST_F(GroupLocksTest, TheGroupBehindARemovedOneIsAgedToo) {
  locks_.TempGroupLockouts = {{1, 15}, {2, 3}, {3, 15}, {4, 7}};
  Age(1);
  EXPECT_THAT(locks_.TempGroupLockouts, ElementsAre(Lockout{2, 4}, Lockout{4, 8}));
}

}  // namespace
}  // namespace corvane
