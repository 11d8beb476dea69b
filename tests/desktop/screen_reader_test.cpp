// What a screen reader is told of the real windows.
#include "desktop/ui_window/editor_fixture.h"
#include "desktop/ui_window/screen_reader_win.h"
#include "desktop/ui_window/window_fixture.h"
#include "ui/spoken_names.h"

namespace corvane::ui_test {

namespace {

using enum ControlId;

TEST_F(WindowTest, AScreenReaderHearsTheNameOfEveryControl) {
  for (const ControlRow& row : MainWindowTable(form_).controls) {
    const char* spoken = SpokenName(row.id);
    const std::string expected = spoken != nullptr ? spoken : row.control.caption.get();
    EXPECT_EQ(SpokenOf(Child(row.id)).name, expected) << row.control.name();
  }
}

TEST_F(WindowTest, ANameStaysWhileTheValueChanges) {
  for (const char* group : {" 9001", " 9002", ""}) {
    form_.lblGroupNumber.caption = group;
    const Spoken spoken = SpokenOf(Child(lblGroupNumber));
    EXPECT_EQ(spoken.name, "Group number");
    EXPECT_EQ(spoken.value, group);
  }
  form_.lstCallLog.Add("a line");
  const Spoken log = SpokenOf(Child(lstCallLog));
  EXPECT_EQ(log.name, "Call log");
  ASSERT_EQ(log.lines.size(), 1U);
  EXPECT_EQ(log.lines[0].name, "a line");
}

TEST(EditorForAScreenReader, SaysWhichGroupsAreTicked) {
  LoopWin loop;
  FormWindow window(loop);
  EditorTables tables(3, 1);
  OpenEditor editor(loop, window, tables);
  ASSERT_TRUE(editor.made);
  ASSERT_TRUE(AwaitFilled(loop, editor));
  const Spoken groups = SpokenOf(ChildOf(window.handle(), lstGSSI_Lockouts));
  EXPECT_EQ(groups.name, "Groups, ticked when followed");
  using Line = Spoken::Line;
  EXPECT_EQ(groups.lines, (std::vector<Line>{{"9001 - 0 - Group 1", true, true},
                                             {"9002 - 0 - Group 2", false, false},
                                             {"9003 - 0 - Group 3", true, false}}));
}

}  // namespace

}  // namespace corvane::ui_test
