#include "store/rec_only_list.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

class RecOnlyListTest : public ::testing::Test {
 protected:
  void Type(const std::string& text) {
    run.form.txtRecOnlyGSSI.text = text;
    run.rec_only.AddRecOnlyGssi();
  }
  const std::vector<std::string>& Items() const { return run.form.lstRecOnlyGSSI.items(); }
  const std::vector<std::string>& Status() const { return run.form.lstStatusLog.items(); }

  sim::SimFiles files;
  StoreRun run{files};
};

using Texts = std::vector<std::string>;

TEST_F(RecOnlyListTest, AMissingFileIsSilent) {
  EXPECT_EQ(run.rec_only.Load(), kNoError);
  EXPECT_TRUE(Items().empty());
  EXPECT_TRUE(Status().empty());
}

TEST_F(RecOnlyListTest, AcceptedLinesBecomeItemsAsTheyAre) {
  files.Put(kRecOnlyPath,
            "# comment\r\n'another\r\n\r\n9001\r\n09001\r\n "
            "7\r\n0\r\n16777215\r\n16777216\r\n-1\r\nx\r\n");
  EXPECT_EQ(run.rec_only.Load(), kNoError);
  EXPECT_EQ(Items(), (Texts{"9001", "09001", " 7", "0", "16777215"}));
  EXPECT_EQ(Status(), Texts{"Loaded 5 REC GSSIs"});
}

TEST_F(RecOnlyListTest, AFileWithoutAnAcceptedLineIsSilent) {
  files.Put(kRecOnlyPath, "# comment\r\n-1\r\n");
  EXPECT_EQ(run.rec_only.Load(), kNoError);
  EXPECT_TRUE(Status().empty());
}

TEST_F(RecOnlyListTest, AnEmptyBoxDoesNothing) {
  Type("");
  EXPECT_TRUE(Items().empty());
  EXPECT_EQ(files.steps(), 0);
}

TEST_F(RecOnlyListTest, ANewGroupIsAddedLastSelectedAndSaved) {
  Type("9001");
  Type("7");
  EXPECT_EQ(Items(), (Texts{"9001", "7"}));
  EXPECT_EQ(run.form.lstRecOnlyGSSI.list_index(), 1);
  EXPECT_EQ(files.Content(kRecOnlyPath), "9001\r\n7\r\n");
  EXPECT_EQ(run.form.txtRecOnlyGSSI.text.get(), "");
  EXPECT_EQ(run.form.lstRecOnlyGSSI.back_colour.get(), kWindowBackground);
  EXPECT_TRUE(Status().empty());
}

TEST_F(RecOnlyListTest, AGroupThatIsThereIsSelectedAndNotSavedAgain) {
  Type("9001");
  Type("7");
  const int operations = files.steps();
  Type("9001");
  EXPECT_EQ(Items().size(), 2U);
  EXPECT_EQ(run.form.lstRecOnlyGSSI.list_index(), 0);
  EXPECT_EQ(run.form.txtRecOnlyGSSI.text.get(), "");
  EXPECT_EQ(files.steps(), operations);
}

TEST_F(RecOnlyListTest, DifferentTextsAreDifferentItems) {
  Type("7");
  Type("07");
  EXPECT_EQ(Items(), (Texts{"7", "07"}));
}

TEST_F(RecOnlyListTest, TheLowestAndTheHighestGroupAreAccepted) {
  Type("0");
  Type("16777215");
  EXPECT_EQ(Items(), (Texts{"0", "16777215"}));
}

TEST_F(RecOnlyListTest, ARefusedTextClearsTheBoxAndSaysNothing) {
  for (const char* text : {"16777216", "-1", "abc", "1.5", "99999999999999999999", "9001;", " "}) {
    Type(text);
    EXPECT_TRUE(Items().empty()) << text;
    EXPECT_EQ(run.form.txtRecOnlyGSSI.text.get(), "") << text;
  }
  EXPECT_TRUE(Status().empty());
  EXPECT_EQ(files.steps(), 0);
}

TEST_F(RecOnlyListTest, RemovingTakesTheSelectedItemAndSaves) {
  Type("1");
  Type("2");
  Type("3");
  run.form.lstRecOnlyGSSI.SelectFromUser(1);
  run.rec_only.RemoveSelected();
  EXPECT_EQ(Items(), (Texts{"1", "3"}));
  EXPECT_EQ(files.Content(kRecOnlyPath), "1\r\n3\r\n");
}

TEST_F(RecOnlyListTest, RemovingWithNothingSelectedDoesNothing) {
  Type("1");
  run.form.lstRecOnlyGSSI.SelectFromUser(-1);
  const int operations = files.steps();
  run.rec_only.RemoveSelected();
  EXPECT_EQ(Items(), Texts{"1"});
  EXPECT_EQ(files.steps(), operations);
}

TEST_F(RecOnlyListTest, TheLastItemRemovedLeavesAnEmptyFile) {
  Type("1");
  run.rec_only.RemoveSelected();
  ASSERT_TRUE(Has(files, kRecOnlyPath));
  EXPECT_EQ(files.Content(kRecOnlyPath), "");
}

TEST_F(RecOnlyListTest, AFailedSaveKeepsTheChangeAndTheOldFile) {
  Type("1");
  files.SetRoom(0);
  Type("2");
  EXPECT_EQ(Items(), (Texts{"1", "2"}));
  EXPECT_EQ(run.form.txtRecOnlyGSSI.text.get(), "");
  EXPECT_EQ(files.Content(kRecOnlyPath), "1\r\n");
  EXPECT_EQ(Status(), Texts{"Error saving REC GSSI list. - " + kNow});
  EXPECT_TRUE(run.prompts.boxes().empty());
}

TEST_F(RecOnlyListTest, TheControlsAreForTheThirdModeAlone) {
  for (const std::size_t mode : {0U, 1U, 2U}) {
    for (std::size_t i = 0; i < 3; ++i) run.form.optRecordMode[i].value = i == mode;
    EnableRecOnlyControls(run.form);
    EXPECT_EQ(run.form.txtRecOnlyGSSI.enabled.get(), mode == 2);
    EXPECT_EQ(run.form.lstRecOnlyGSSI.enabled.get(), mode == 2);
  }
}

}  // namespace
}  // namespace corvane
