// Properties and lists: what reaches the sink, and how a list's selection and scrolling behave.
#include "panel/controls.h"

#include <gtest/gtest.h>

#include "sim/no_sink.h"
#include "sim/trace_sink.h"

namespace corvane {

namespace {

using Lines = std::vector<std::string>;

class ListTest : public testing::Test {
 protected:
  void Fill(int lines) {
    for (int line = 0; line < lines; ++line) list_.Add(std::to_string(line));
    (void)sink_.Take();
  }
  sim::TraceSink sink_;
  ListBox list_{sink_, "list", 4};
};

// The trace has what the sink could read when it was told.
TEST(Property, TellsTheSinkOfANewValueAloneAndHasItByThen) {
  sim::TraceSink sink;
  Label label(sink, "lblTest", "old");
  label.caption = "old";
  EXPECT_TRUE(sink.Take().empty());
  label.caption = "new";
  EXPECT_EQ(sink.Take(), Lines{"lblTest.caption = \"new\""});
  EXPECT_EQ(label.caption, "new");
}

TEST(Property, TakesTheUsersValueWithoutTellingTheSink) {
  sim::TraceSink sink;
  TextBox box(sink, "txtTest");
  box.text.TakeFromUser("typed");
  EXPECT_EQ(box.text, "typed");
  EXPECT_TRUE(sink.Take().empty());
}

TEST(Control, StartsVisibleEnabledAndInTheSystemsColours) {
  sim::TraceSink sink;
  const Label label(sink, "lblTest");
  EXPECT_TRUE(label.visible);
  EXPECT_TRUE(label.enabled);
  EXPECT_FALSE(label.bold);
  EXPECT_EQ(label.fore_colour, kButtonText);
  EXPECT_EQ(label.back_colour, kButtonFace);
  EXPECT_EQ(TextBox(sink, "txtTest").back_colour.get(), kWindowBackground);
  EXPECT_EQ(ListBox(sink, "lstTest", 1).back_colour.get(), kWindowBackground);
  EXPECT_EQ(ComboBox(sink, "cboTest").back_colour.get(), kWindowBackground);
}

TEST(CheckBox, IsCheckedWithTheValueOneAlone) {
  sim::TraceSink sink;
  CheckBox box(sink, "chkTest", "");
  EXPECT_FALSE(box.checked());
  box.value = 1;
  EXPECT_TRUE(box.checked());
  box.value = 2;
  EXPECT_FALSE(box.checked());
}

TEST(SelectedOption, IsTheFirstThatIsSelectedOrNone) {
  sim::NoSink sink;
  OptionButton options[] = {{sink, "opt_0", ""}, {sink, "opt_1", ""}, {sink, "opt_2", ""}};
  EXPECT_EQ(SelectedOption(options), -1);
  options[2].value = true;
  EXPECT_EQ(SelectedOption(options), 2);
  options[1].value = true;
  EXPECT_EQ(SelectedOption(options), 1);
}

TEST(Window, TellsTheSinkOnceOfANewPlaceOrSize) {
  sim::TraceSink sink;
  Window window(sink, "Form", "");
  window.Resize(400, 300);
  window.MoveTo(20, 10);
  window.MoveTo(20, 10);
  EXPECT_EQ(sink.Take(), (Lines{"Form.bounds = 0, 0, 400, 300", "Form.bounds = 20, 10, 400, 300"}));
}

TEST(Control, IsWhatItsKindSays) {
  sim::NoSink sink;
  CheckBox box(sink, "chkTest", "Test");
  const Control& control = box;
  ASSERT_EQ(control.kind(), ControlKind::kCheckBox);
  EXPECT_EQ(&As<CheckBox>(control), &box);
  EXPECT_EQ(control.caption, "Test");
}

TEST_F(ListTest, AddsAtTheEndWithoutSelectingOrScrolling) {
  Fill(10);
  list_.Add("last");
  EXPECT_EQ(list_.count(), 11);
  EXPECT_EQ(list_.Item(10), "last");
  EXPECT_EQ(list_.list_index(), -1);
  EXPECT_EQ(list_.top_index(), 0);
  EXPECT_EQ(sink_.Take(), Lines{"list.add 10 \"last\""});
}

TEST_F(ListTest, ItemThatIsNotThereReadsEmpty) {
  Fill(2);
  EXPECT_EQ(list_.Item(-1), "");
  EXPECT_EQ(list_.Item(2), "");
  EXPECT_EQ(list_.Item(1), "1");
}

TEST_F(ListTest, SelectingScrollsTheLineIntoViewAndNoFurther) {
  Fill(10);
  list_.Select(3);
  EXPECT_EQ(list_.top_index(), 0);
  list_.Select(4);
  EXPECT_EQ(list_.top_index(), 1);
  list_.Select(9);
  EXPECT_EQ(list_.top_index(), 6);
  list_.Select(7);
  EXPECT_EQ(list_.top_index(), 6);
  list_.Select(2);
  EXPECT_EQ(list_.top_index(), 2);
  list_.Select(-1);
  EXPECT_EQ(list_.list_index(), -1);
  EXPECT_EQ(list_.top_index(), 2);
}

TEST_F(ListTest, SelectingWhatIsNotThereChangesNothing) {
  Fill(3);
  list_.Select(1);
  list_.Select(3);
  list_.Select(-2);
  EXPECT_EQ(list_.list_index(), 1);
}

TEST_F(ListTest, SelectLastOfAnEmptyListDoesNothing) {
  list_.SelectLast();
  EXPECT_EQ(list_.list_index(), -1);
  EXPECT_TRUE(sink_.Take().empty());
  Fill(2);
  list_.SelectLast();
  EXPECT_EQ(list_.list_index(), 1);
}

TEST_F(ListTest, RemovingMovesTheSelectionWithItsLine) {
  Fill(5);
  list_.Select(3);
  list_.Remove(1);
  EXPECT_EQ(list_.list_index(), 2);
  EXPECT_EQ(list_.Item(2), "3");
  list_.Remove(4);
  EXPECT_EQ(list_.list_index(), 2);
  list_.Remove(2);
  EXPECT_EQ(list_.list_index(), -1);
  list_.Remove(7);
  list_.Remove(-1);
  EXPECT_EQ(list_.count(), 3);
}

TEST_F(ListTest, RemovingALineBelowTheSelectionLeavesItWhereItIs) {
  Fill(5);
  list_.Select(1);
  (void)sink_.Take();
  list_.Remove(3);
  EXPECT_EQ(list_.list_index(), 1);
  EXPECT_EQ(list_.count(), 4);
  EXPECT_EQ(sink_.Take().size(), 1U) << "the window is told";
}

TEST_F(ListTest, RemovingDoesNotLeaveTheViewBehindTheEnd) {
  Fill(6);
  list_.Select(5);
  EXPECT_EQ(list_.top_index(), 2);
  list_.Remove(0);
  EXPECT_EQ(list_.top_index(), 1);
  list_.Remove(0);
  EXPECT_EQ(list_.top_index(), 0);
}

TEST_F(ListTest, ReplacingKeepsSelectionAndPlace) {
  Fill(6);
  list_.Select(5);
  list_.Replace(5, "new");
  EXPECT_EQ(list_.Item(5), "new");
  EXPECT_EQ(list_.list_index(), 5);
  EXPECT_EQ(list_.top_index(), 2);
  list_.Replace(6, "nowhere");
  EXPECT_EQ(list_.count(), 6);
}

TEST_F(ListTest, ClearingForgetsEverythingAndTellsTheSinkOnce) {
  Fill(6);
  list_.Select(5);
  (void)sink_.Take();
  list_.Clear();
  EXPECT_EQ(list_.count(), 0);
  EXPECT_EQ(list_.list_index(), -1);
  EXPECT_EQ(list_.top_index(), 0);
  list_.Clear();
  EXPECT_EQ(sink_.Take(), Lines{"list.clear"});
}

TEST_F(ListTest, UsersSelectionAndScrollingAreTakenWithoutEcho) {
  Fill(10);
  list_.SelectFromUser(6);
  list_.ReportTopIndex(5);
  EXPECT_EQ(list_.list_index(), 6);
  EXPECT_EQ(list_.top_index(), 5);
  EXPECT_TRUE(sink_.Take().empty());
}

TEST(CheckList, ALineThatIsNotThereHasNoTickAndTakesNone) {
  sim::TraceSink sink;
  CheckList list(sink, "list", 4);
  list.Add("a", true);
  (void)sink.Take();
  for (const int line : {-1, 1}) {
    EXPECT_FALSE(list.ticked(line));
    list.Tick(line, true);
  }
  list.Tick(0, true);
  EXPECT_TRUE(sink.Take().empty()) << "nor is there anything to tell of a tick that stays";
  list.Tick(0, false);
  EXPECT_FALSE(list.ticked(0));
  EXPECT_EQ(sink.Take().size(), 1U);
}

TEST(ControlKind, OfListsThoseWithTicksAreListsToo) {
  EXPECT_TRUE(Is(ControlKind::kCheckList, ControlKind::kListBox));
  EXPECT_FALSE(Is(ControlKind::kListBox, ControlKind::kCheckList));
  EXPECT_FALSE(Is(ControlKind::kLabel, ControlKind::kListBox));
}

}  // namespace

}  // namespace corvane
