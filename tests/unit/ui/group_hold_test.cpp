// Holding and releasing a group.
#include "ui/group_hold.h"

#include "unit/ui/form_fixture.h"

namespace corvane {

namespace {

class GroupHoldTest : public FormTest {
 protected:
  void ExpectReleased() {
    EXPECT_FALSE(HoldingGroup(form_));
    EXPECT_EQ(form_.lblGroupHold.tool_tip.get(), "Right click to hold a GSSI");
    EXPECT_EQ(form_.lblGroupNumber.tool_tip.get(), "");
    EXPECT_EQ(form_.lblGroupHold.tag.get(), "");
    EXPECT_EQ(form_.lblGroupHold.fore_colour.get(), 0x80000012U);
    EXPECT_FALSE(form_.lblGroupHold.bold);
  }
};

TEST_F(GroupHoldTest, NothingIsHeldAtTheStart) {
  ExpectReleased();
}

TEST_F(GroupHoldTest, HoldsTheGroupOnScreenWithItsLeadingBlank) {
  form_.lblGroupNumber.caption = " 9001  ";
  ToggleGroupHold(form_);
  EXPECT_TRUE(HoldingGroup(form_));
  EXPECT_EQ(form_.lblGroupHold.tag.get(), " 9001");
  EXPECT_EQ(form_.lblGroupHold.tool_tip.get(), "Holding GSSI:  9001");
  EXPECT_EQ(form_.lblGroupNumber.tool_tip.get(), "Holding GSSI:  9001");
  EXPECT_EQ(form_.lblGroupHold.fore_colour.get(), 33023U);
  EXPECT_TRUE(form_.lblGroupHold.bold);
}

TEST_F(GroupHoldTest, WithoutAGroupOnScreenNothingChanges) {
  ToggleGroupHold(form_);
  ExpectReleased();
  form_.lblGroupNumber.caption = "   ";
  (void)sink_.Take();
  ToggleGroupHold(form_);
  EXPECT_TRUE(sink_.Take().empty());
}

TEST_F(GroupHoldTest, SecondToggleReleasesWhateverIsOnScreen) {
  for (const char* next : {" 9001", " 9002", ""}) {
    form_.lblGroupNumber.caption = " 9001";
    ToggleGroupHold(form_);
    ASSERT_TRUE(HoldingGroup(form_));
    form_.lblGroupNumber.caption = next;
    ToggleGroupHold(form_);
    ExpectReleased();
  }
}

TEST_F(GroupHoldTest, TagOfALostLinkIsNoHold) {
  form_.lblGroupHold.tag = "0";
  EXPECT_FALSE(HoldingGroup(form_));
}

}  // namespace

}  // namespace corvane
