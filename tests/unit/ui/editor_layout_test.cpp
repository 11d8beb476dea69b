// The editor's table: every control of the dialog once, with its caption and tool tip, each in a
// place of its own.
#include "ui/editor_layout.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "sim/no_sink.h"
#include "unit/ui/overlap.h"

namespace corvane {

namespace {

class EditorLayoutTest : public testing::Test {
 protected:
  sim::NoSink sink_;
  Dialog dialog_{sink_};
  const WindowTable table_ = EditorWindowTable(dialog_);
};

const std::map<std::string, std::string> kEditorCaptions = {
    {"Frame4", "GSSI/Labels and Lockouts (0)"},
    {"Label2", "Priority"},
    {"cmdUpdateGSSI", "^ Update"},
    {"Label1", "Seen SSI for GSSI (0)"},
    {"lblSsiLabelUpdaterClearFields", "SSI label:"},
    {"lblLastSeenName", "Last seen:"},
};

const std::map<std::string, std::string> kEditorToolTips = {
    {"lstGSSI_Lockouts", "Checked item will ignore lockout"},
    {"lstGssiBlank", "Checked item will ignore lockout"},
    {"cboGSSIPriority", "Not available in this version"},
    {"Label2", "Not available in this version"},
    {"txtSSI_labelEdit", "Add/remove label then press enter. Green OK, Red Fail"},
};

TEST_F(EditorLayoutTest, EveryControlHasItsCaptionAndToolTipAndNoOtherHasOne) {
  EXPECT_EQ(dialog_.caption, "G/SSI Editor (List snapshot)");
  for (const Control* control : table_.AllControls()) {
    const std::string name = control->name();
    const auto caption = kEditorCaptions.find(name);
    EXPECT_EQ(control->caption, caption == kEditorCaptions.end() ? "" : caption->second) << name;
    const auto tip = kEditorToolTips.find(name);
    EXPECT_EQ(control->tool_tip, tip == kEditorToolTips.end() ? "" : tip->second) << name;
  }
}

TEST_F(EditorLayoutTest, TheCoversStandInFrontOfTheirLists) {
  const auto at = [&](ControlId id) {
    std::size_t index = 0;
    while (index < table_.controls.size() && table_.controls[index].id != id) ++index;
    return index;
  };
  const auto placed = ComputeLayout(table_, kDesignDpi, ToPixels(table_.client_width, kDesignDpi),
                                    ToPixels(table_.client_height, kDesignDpi));
  for (const auto& [cover, list] : {std::pair{ControlId::lstGssiBlank, ControlId::lstGSSI_Lockouts},
                                    std::pair{ControlId::lstSsiBlank, ControlId::List1}}) {
    EXPECT_LT(at(cover), at(list));
    EXPECT_EQ(placed.at(at(cover)), placed.at(at(list)));
    EXPECT_TRUE(table_.controls.at(at(cover)).Has(kNoTabStop));
  }
}

TEST_F(EditorLayoutTest, NothingOverlapsAndNothingLeavesItsFrameAtAnyScale) {
  for (const int dpi : {96, 120, 144, 168, 192}) {
    const int width = ToPixels(table_.client_width, dpi);
    const int height = ToPixels(table_.client_height, dpi);
    const auto placed = ComputeLayout(table_, dpi, width, height);
    const PixelRect client{0, 0, width, height};
    for (std::size_t one = 0; one < placed.size(); ++one) {
      const ControlRow& row = table_.controls[one];
      PixelRect inside = client;
      for (std::size_t other = 0; other < placed.size(); ++other) {
        if (&table_.controls[other].control == row.frame) inside = placed[other];
      }
      EXPECT_GE(placed[one].left, inside.left) << row.control.name();
      EXPECT_GE(placed[one].top, inside.top) << row.control.name();
      EXPECT_LE(placed[one].right(), inside.right()) << row.control.name();
      EXPECT_LE(placed[one].bottom(), inside.bottom()) << row.control.name();
      for (std::size_t other = 0; other < one; ++other) {
        const ControlRow& second = table_.controls[other];
        const bool covers = second.Has(kNoTabStop) && placed[one] == placed[other];
        const bool is_frame = &second.control == row.frame || &row.control == second.frame;
        EXPECT_TRUE(covers || is_frame || !Overlap(placed[one], placed[other]))
            << row.control.name() << " and " << second.control.name() << " at " << dpi;
      }
    }
  }
}

}  // namespace

}  // namespace corvane
