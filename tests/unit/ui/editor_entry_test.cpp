// The ways into the editor and what they hand over.
#include "ui/editor_entry.h"

#include <limits>

#include "unit/ui/form_fixture.h"

namespace corvane {

namespace {

constexpr char kStamp[] = "15/11/2026 14:23:05 - ";

std::optional<LineParty> Party(const std::string& line) {
  return FindParty(kStamp + line);
}
LineParty Group(std::int32_t gssi) {
  return {gssi, 0};
}
LineParty Subscriber(std::int32_t ssi) {
  return {0, ssi};
}

TEST(FindParty, ReadsTheGroupOfACallLine) {
  EXPECT_EQ(Party("Call ID: 1207 - On carrier: 2610 - Group: 9001 [Fire north]"), Group(9001));
  EXPECT_EQ(Party("Call ID: 1207 - On carrier: 2610 - Group: 9001 "), Group(9001));
  EXPECT_EQ(Party("Call ID: 1207 - Group: 9001"), Group(9001));
  EXPECT_EQ(FindParty(" - Group: 16777215"), Group(16777215));
  EXPECT_EQ(FindParty(" - Group:9001 [x]"), Group(9001));
}

TEST(FindParty, ReadsTheGroupOfASkippedCall) {
  EXPECT_EQ(Party("Skipping Call, lockout found GSSI: 9001 [x]"), Group(9001));
}

TEST(FindParty, ReadsTheSubscriberOfEachKindOfLine) {
  EXPECT_EQ(Party("Call ID: 1207 - VC D-TX-Granted SSI: 5010"), Subscriber(5010));
  EXPECT_EQ(Party("Call ID: 1207 - VC D-TX-Ceased SSI: 5010 [Commander]"), Subscriber(5010));
  EXPECT_EQ(Party("Call ID: 1207 - VC D-TX-Interrupt SSI: 5010"), Subscriber(5010));
  EXPECT_EQ(Party("VC D-TX-Continuing SSI: 5010"), Subscriber(5010));
  EXPECT_EQ(Party("On carrier: 2610 - TX SSI: 5010 [x]"), Subscriber(5010));
}

TEST(FindParty, GroupOutweighsSubscriber) {
  EXPECT_EQ(Party("Call ID: 1 - TX SSI: 5010 - Group: 9001 [x]"), Group(9001));
}

TEST(FindParty, ALabelWithAMarkerDoesNotHideTheLinesOwn) {
  EXPECT_EQ(Party("Call ID: 1 - Group: 9001 [not - Group: 7]"), Group(9001));
}

TEST(FindParty, OnlyALabelAfterTheMarkerEndsTheNumber) {
  EXPECT_EQ(FindParty("[old] [x] - Group: 9001"), Group(9001));
}

TEST(FindParty, LinesWithoutAReadablePartyHaveNone) {
  for (const char* line :
       {"", " ", " [x]", "15/11/2026 14:23:05 - Manual D-Release occured and UI reset",
        " - Group:", " - Group: ", " - Group: abc", " - Group: 9001x", " - Group: 99999999999",
        " - Group:  [x]", " TX SSI: [x]", "ted SSI:", "Group: 9001"}) {
    EXPECT_EQ(FindParty(line), std::nullopt) << line;
  }
}

TEST(FindParty, ReadsEveryNumberOfItsWidth) {
  EXPECT_EQ(FindParty(" - Group: 2147483647"), Group(std::numeric_limits<std::int32_t>::max()));
  EXPECT_EQ(FindParty(" - Group: 2147483648"), std::nullopt);
  EXPECT_EQ(FindParty(" - Group: -5"), Group(-5));
}

class EditorEntryTest : public FormTest {
 protected:
  void ShowCall() {
    form_.lblGroupNumber.caption = " 9001";
    form_.lblNetworkInfo.caption = "MNC:1  LA:5";
    form_.lblCurrentSSI.caption = " 5010";
  }
  void ExpectHandOver(std::int32_t gssi, std::int32_t ssi) {
    EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
    EXPECT_EQ(hand_over_.EditorMcc, 262);
    EXPECT_EQ(hand_over_.EditorMnc, 1);
    EXPECT_EQ(hand_over_.EditorGssi, gssi);
    EXPECT_EQ(hand_over_.EditorSsi, ssi);
    EXPECT_TRUE(hand_over_.EditorPreselect);
    EXPECT_TRUE(StatusLines().empty());
  }
  void ExpectNothingShown() {
    EXPECT_TRUE(actions_.calls.empty());
    EXPECT_FALSE(hand_over_.EditorPreselect);
    EXPECT_EQ(hand_over_.EditorGssi, 77);
    EXPECT_EQ(hand_over_.EditorMcc, 0);
  }
  void ExpectNetworkMissing() {
    ExpectNothingShown();
    EXPECT_EQ(StatusLines(), Calls{"MCC must be valid before showing editor"});
  }
  EditorHandOver hand_over_{.EditorGssi = 77};
};

TEST_F(EditorEntryTest, MenuOpensOnTheNetworkWithNothingGiven) {
  hand_over_ = {.EditorGssi = 5, .EditorSsi = 6, .EditorPreselect = false};
  ShowEditorFromMenu(hand_over_, actions_);
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(hand_over_.EditorMcc, 262);
  EXPECT_EQ(hand_over_.EditorMnc, 1);
  EXPECT_EQ(hand_over_.EditorGssi, 0);
  EXPECT_EQ(hand_over_.EditorSsi, 0);
  EXPECT_FALSE(hand_over_.EditorPreselect);
}

TEST_F(EditorEntryTest, MenuOpensWithoutANetworkToo) {
  actions_.mcc_now = actions_.mnc_now = 0;
  ShowEditorFromMenu(hand_over_, actions_);
  EXPECT_EQ(actions_.calls, Calls{"ShowEditor"});
  EXPECT_EQ(hand_over_.EditorMcc, 0);
}

TEST_F(EditorEntryTest, CallLogOpensOnTheSelectedLine) {
  form_.lstCallLog.Add(" - Group: 9001 [x]");
  form_.lstCallLog.Add(" - VC D-TX-Granted SSI: 5010");
  form_.lstCallLog.Select(0);
  ShowEditorFromCallLog(form_, hand_over_, actions_);
  ExpectHandOver(9001, 0);
  actions_.calls.clear();
  form_.lstCallLog.Select(1);
  ShowEditorFromCallLog(form_, hand_over_, actions_);
  ExpectHandOver(0, 5010);
}

TEST_F(EditorEntryTest, CallLogWithoutSelectionOrPartyShowsNothing) {
  form_.lstCallLog.Add("");
  form_.lstCallLog.Add(" - no party");
  for (const int line : {-1, 0, 1}) {
    form_.lstCallLog.Select(line);
    ShowEditorFromCallLog(form_, hand_over_, actions_);
    ExpectNothingShown();
    EXPECT_TRUE(StatusLines().empty());
  }
}

TEST_F(EditorEntryTest, UnknownNetworkOnlyAddsTheMessage) {
  ShowCall();
  form_.lstCurrentSSI_Users.Add("5010");
  form_.lstCurrentSSI_Users.Select(0);
  for (const bool without_mcc : {true, false}) {
    actions_.mcc_now = without_mcc ? 0 : 262;
    actions_.mnc_now = without_mcc ? 1 : 0;
    ShowEditorFromCallLog(form_, hand_over_, actions_);
    ExpectNetworkMissing();
    form_.lstStatusLog.Clear();
    QuickEditShown(form_, hand_over_, actions_);
    ExpectNetworkMissing();
    form_.lstStatusLog.Clear();
    QuickEditListed(form_, hand_over_, actions_);
    ExpectNetworkMissing();
    form_.lstStatusLog.Clear();
  }
}

TEST_F(EditorEntryTest, QuickEditHandsOverWhatIsShown) {
  ShowCall();
  QuickEditShown(form_, hand_over_, actions_);
  ExpectHandOver(9001, 5010);
}

TEST_F(EditorEntryTest, QuickEditWithoutSubscriberHandsOverNone) {
  ShowCall();
  form_.lblCurrentSSI.caption = "";
  QuickEditShown(form_, hand_over_, actions_);
  ExpectHandOver(9001, 0);
}

TEST_F(EditorEntryTest, QuickEditNeedsAGroupAndANetworkOnScreen) {
  ShowCall();
  form_.lblGroupNumber.caption = "";
  QuickEditShown(form_, hand_over_, actions_);
  ExpectNothingShown();
  ShowCall();
  form_.lblNetworkInfo.caption = "";
  actions_.mcc_now = 0;
  QuickEditShown(form_, hand_over_, actions_);
  ExpectNothingShown();
  EXPECT_TRUE(StatusLines().empty());
}

TEST_F(EditorEntryTest, QuickEditOfAListedSubscriber) {
  ShowCall();
  form_.lstCurrentSSI_Users.Add("5010");
  form_.lstCurrentSSI_Users.Add("5011");
  QuickEditListed(form_, hand_over_, actions_);
  ExpectNothingShown();
  form_.lstCurrentSSI_Users.Select(1);
  QuickEditListed(form_, hand_over_, actions_);
  ExpectHandOver(9001, 5011);
}

}  // namespace

}  // namespace corvane
