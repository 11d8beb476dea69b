// SDR#'s windows as discovery looks for them.
#include "standin/sdr_windows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "standin/model.h"

namespace corvane::standin {
namespace {

class SdrWindowsTest : public ::testing::Test {
 protected:
  [[nodiscard]] const Window& At(WindowId id) { return *model_.tree().Find(id); }
  [[nodiscard]] const SdrWindows::Ids& ids() const { return model_.ids(); }
  [[nodiscard]] bool IsUnder(WindowId id, WindowId ancestor) {
    const auto below = model_.tree().Descendants(ancestor);
    return std::find(below.begin(), below.end(), id) != below.end();
  }
  Model model_{[] {
    Options options;
    options.class_tail = "33c0d9d_r3_ad1";
    return options;
  }()};
};

TEST_F(SdrWindowsTest, HasTheNamesThatAreLookedFor) {
  EXPECT_EQ(At(ids().main).class_name, "WindowsForms10.Window.8.app.0.33c0d9d_r3_ad1");
  EXPECT_TRUE(At(ids().main).text.starts_with("SDR# v1.0.0.1919"));
  EXPECT_EQ(At(ids().net_remote_header).text, "Net Remote *");
  EXPECT_EQ(At(ids().net_remote_header).class_name, "WindowsForms10.STATIC.app.0.33c0d9d_r3_ad1");
  EXPECT_EQ(At(ids().network).class_name, "WindowsForms10.BUTTON.app.0.33c0d9d_r3_ad1");
  EXPECT_EQ(At(ids().port).class_name, "WindowsForms10.EDIT.app.0.33c0d9d_r3_ad1");
  EXPECT_EQ(At(ids().tetra_header).text, "TETRA Demodulator *");
}

TEST_F(SdrWindowsTest, HoldsEachPluginInTheParentOfItsHeader) {
  EXPECT_EQ(At(ids().net_remote_header).parent, ids().net_remote_panel);
  EXPECT_EQ(At(ids().tetra_header).parent, ids().tetra_panel);
  for (const WindowId id : {ids().network, ids().port}) {
    EXPECT_TRUE(IsUnder(id, ids().net_remote_panel));
    EXPECT_NE(At(id).parent, ids().net_remote_panel);
  }
  for (const WindowId id : {ids().demodulator, ids().automatic, ids().timeslots[3], ids().net_info,
                            ids().mcc, ids().mnc, ids().la}) {
    EXPECT_TRUE(IsUnder(id, ids().tetra_panel));
    EXPECT_FALSE(IsUnder(id, ids().net_remote_panel));
  }
}

TEST_F(SdrWindowsTest, HasOneEditBoxInTheNetRemotePanel) {
  int edits = 0;
  for (const WindowId id : model_.tree().Descendants(ids().net_remote_panel)) {
    edits += At(id).kind == Kind::kTextBox ? 1 : 0;
  }
  EXPECT_EQ(edits, 1);
}

TEST_F(SdrWindowsTest, CollapsesAPanelAndClosesTheGap) {
  EXPECT_TRUE(model_.tree().IsVisible(ids().demodulator));
  const int before = At(ids().tetra_panel).box.top;
  model_.windows().SetExpanded(false, false);
  EXPECT_FALSE(model_.tree().IsVisible(ids().network));
  EXPECT_LT(At(ids().tetra_panel).box.top, before);
  model_.windows().SetExpanded(true, false);
  EXPECT_FALSE(model_.tree().IsVisible(ids().demodulator));
  EXPECT_TRUE(model_.tree().IsVisible(ids().tetra_header));
  model_.windows().SetExpanded(false, true);
  model_.windows().SetExpanded(true, true);
  EXPECT_EQ(At(ids().tetra_panel).box.top, before);
}

TEST_F(SdrWindowsTest, OpensHidesAndReopensNetworkInfo) {
  EXPECT_EQ(ids().info_window, 0u);
  model_.tree().Press(ids().net_info);
  const WindowId first = ids().info_window;
  const WindowId box = ids().info_box;
  ASSERT_NE(first, 0u);
  EXPECT_EQ(At(first).text, "Network Info");
  EXPECT_EQ(At(box).parent, first);
  model_.tree().SetVisible(first, false);
  model_.tree().SetShowState(first, ShowState::kMinimised);
  model_.tree().Press(ids().net_info);
  EXPECT_EQ(ids().info_window, first);
  EXPECT_TRUE(model_.tree().IsVisible(first));
  EXPECT_EQ(At(first).show_state, ShowState::kNormal);
  model_.windows().CloseInfo();
  EXPECT_EQ(ids().info_box, 0u);
  model_.tree().Press(ids().net_info);
  EXPECT_NE(ids().info_box, box);
}

TEST_F(SdrWindowsTest, FillsANewBoxWithHistoryIfItIsKept) {
  model_.windows().OpenInfo();
  model_.windows().AddInfo("one\r\n");
  model_.windows().CloseInfo();
  model_.windows().AddInfo("two\r\n");
  model_.windows().OpenInfo();
  EXPECT_EQ(At(ids().info_box).lines.text(), "one\r\ntwo\r\n");
  model_.windows().CloseInfo();
  model_.windows().SetKeepHistory(false);
  model_.windows().OpenInfo();
  EXPECT_EQ(At(ids().info_box).lines.text(), "");
}

TEST_F(SdrWindowsTest, KeepsABoundedHistoryOfWholeLines) {
  for (std::size_t i = 0; i < SdrWindows::kHistoryBytes; ++i) model_.windows().AddInfo("12345\r\n");
  model_.windows().OpenInfo();
  const std::string& text = At(ids().info_box).lines.text();
  EXPECT_LE(text.size(), 2 * SdrWindows::kHistoryBytes);
  EXPECT_TRUE(text.starts_with("12345\r\n"));
}

TEST_F(SdrWindowsTest, KeepsEveryControlInsideItsParent) {
  model_.windows().OpenInfo();
  for (const WindowId top : {ids().main, ids().info_window}) {
    for (const WindowId id : model_.tree().Descendants(top)) {
      const Box& box = At(id).box;
      Box outer = At(At(id).parent).box;
      if (At(id).parent == top) {
        outer.width -= 2 * WindowTree::kFrameLeft;
        outer.height -= WindowTree::kFrameTop + WindowTree::kFrameLeft;
      }
      EXPECT_GE(box.left, 0) << At(id).text;
      EXPECT_GE(box.top, 0) << At(id).text;
      EXPECT_LE(box.left + box.width, outer.width) << At(id).text << id;
      if (model_.tree().IsVisible(id)) {
        EXPECT_LE(box.top + box.height, outer.height) << At(id).text << id;
      }
    }
  }
}

}  // namespace
}  // namespace corvane::standin
