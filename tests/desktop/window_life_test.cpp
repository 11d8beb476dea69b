// Windows that are opened, closed and changed a thousand times leave nothing behind.
#include "desktop/ui_window/editor_fixture.h"
#include "desktop/ui_window/window_fixture.h"

namespace corvane::ui_test {

namespace {

TEST(EditorLives, AThousandOpeningsLeaveNothingBehind) {
  LoopWin loop;
  FormWindow window(loop);
  EditorTables tables(30, 12);
  // Filling waits for a timer: some of them are filled, all are made.
  const auto open_and_close = [&](int opening) {
    OpenEditor editor(loop, window, tables);
    ASSERT_TRUE(editor.made);
    loop.DoEvents();
    if (opening % 20 == 0) {
      ASSERT_TRUE(AwaitFilled(loop, editor));
    }
  };
  for (int opening = 0; opening < 40; ++opening) open_and_close(opening);
  const std::size_t lost_kib = KibLostByLabels(10'000);
  std::printf("10000 labels of the system's own leave %zu KiB behind\n", lost_kib);
  const OwnUse before = UseOfThisProgram();
  for (int opening = 0; opening < 1000 && !testing::Test::HasFatalFailure(); ++opening)
    open_and_close(opening);
  const OwnUse after = UseOfThisProgram();
  ASSERT_GT(before.private_kib, 0U);
  ASSERT_GT(before.gdi_objects, 0U);
  EXPECT_EQ(after.windows, before.windows);
  EXPECT_LE(after.gdi_objects, before.gdi_objects + kSpareObjects);
  EXPECT_LE(after.user_objects, before.user_objects + kSpareObjects);
  // Ten bytes a label are more than the fringes of what is measured.
  const std::size_t spare_kib = lost_kib > 100 ? kSpareKibWhereLabelsLose : kSpareKib;
  EXPECT_LE(after.private_kib, before.private_kib + spare_kib);
}

TEST_F(WindowTest, AThousandCompactTogglesLeaveNothingBehind) {
  const auto toggle = [&] {
    main_form_.Click(form_.mnuCompactMode);
    loop_.DoEvents();
  };
  for (int time = 0; time < 20; ++time) toggle();
  const OwnUse before = UseOfThisProgram();
  for (int time = 0; time < 1000; ++time) toggle();
  const OwnUse after = UseOfThisProgram();
  ASSERT_GT(before.private_kib, 0U);
  ASSERT_GT(before.gdi_objects, 0U);
  EXPECT_EQ(after.windows, before.windows);
  EXPECT_LE(after.gdi_objects, before.gdi_objects + kSpareObjects);
  EXPECT_LE(after.user_objects, before.user_objects + kSpareObjects);
  EXPECT_LE(after.private_kib, before.private_kib + kSpareKib);
}

}  // namespace

}  // namespace corvane::ui_test
