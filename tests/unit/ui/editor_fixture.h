// An editor over tables of its own: two networks of one country, one of another.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "sim/no_sink.h"
#include "sim/sim_clock.h"
#include "sim/sim_loop.h"
#include "sim/trace_sink.h"
#include "ui/editor_form.h"

namespace corvane {

class EditorTest : public testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  EditorTest() {
    network_.CurrentMcc = "262";
    network_.CurrentMnc = "42";
    AddGroup(9001, "North", 3, true);
    AddGroup(9002, "South", 0, false);
    AddGroup(9003, "", 12, true);
    AddGroup(7001, "Other network", 1, true, 262, 7);
    AddGroup(8001, "Other country", 1, true, 204, 42);
    AddSubscriber(5010, 9001, "Alpha");
    AddSubscriber(5011, 9001, "Beta");
    AddSubscriber(5010, 9002, "Alpha in the south");
    AddSubscriber(5020, 7001, "Stranger", 262, 7);
    main_.MoveTo(3000, 1500);
  }

  void AddGroup(std::int32_t gssi, const char* label, std::int16_t priority, bool follow,
                std::int16_t mcc = 262, std::int16_t mnc = 42) {
    groups_.Append({gssi, mcc, mnc, FixedLabel(label), priority, follow});
  }
  void AddSubscriber(std::int32_t ssi, std::int32_t gssi, const char* label, std::int16_t mcc = 262,
                     std::int16_t mnc = 42) {
    subscribers_.Append({ssi, gssi, mcc, mnc, FixedLabel(label), {2026, 11, 15, 14, 23, 5}});
  }
  [[nodiscard]] const GssiRecord& Group(std::int32_t gssi, std::int16_t mnc = 42) const {
    return groups_[groups_.Find(262, mnc, gssi).value()];
  }
  [[nodiscard]] const SsiRecord& Subscriber(std::int32_t gssi, std::int32_t ssi) const {
    return subscribers_[subscribers_.Find(262, 42, gssi, ssi).value()];
  }

  // Opens the editor on the network in reach, and on a group and a subscriber if they are given.
  void Open(std::int32_t gssi = 0, std::int32_t ssi = 0) {
    hand_over_.EditorMcc = network_.mcc();
    hand_over_.EditorMnc = network_.mnc();
    HandOver(gssi, ssi);
    form_ = std::make_unique<EditorForm>(
        dialog_, EditorParts{loop_, clock_, flags_, main_, hand_over_, groups_, subscribers_,
                             names_, network_, locks_, [this] { ++unloaded_; }});
    form_->Load();
    Fill();
  }
  // What a quick edit in the main window leaves behind.
  void HandOver(std::int32_t gssi, std::int32_t ssi) {
    hand_over_.EditorGssi = gssi;
    hand_over_.EditorSsi = ssi;
    hand_over_.EditorPreselect = gssi != 0 || ssi != 0;
  }
  void Fill() { loop_.AdvanceMs(150); }

  // As the window tells it: the line is selected before the button is up.
  void ClickLine(ListBox& list, int line) {
    form_->ListSelected(list, line, true);
    form_->MouseUp(list, kLeftButton, line);
  }
  void RightClick(int line) { form_->MouseUp(dialog_.lstGSSI_Lockouts, kRightButton, line); }
  void ArrowTo(ListBox& list, int line, int key = kDownArrowCode) {
    form_->ListSelected(list, line, false);
    form_->KeyUp(list, key);
  }
  void ChooseCode(ComboBox& combo, int code) {
    const auto& entries = combo.entries.get();
    for (std::size_t at = 0; at < entries.size(); ++at) {
      if (entries[at].item_data == code) form_->ComboSelected(combo, static_cast<int>(at));
    }
  }
  // Types Enter into the box, with that text in it.
  void Enter(TextBox& box, const std::string& text) {
    form_->TextEdited(box, text);
    EXPECT_FALSE(form_->KeyPress(box, kEnterCode));
  }
  [[nodiscard]] static Lines Texts(const ComboBox& combo) {
    Lines texts;
    for (const ComboBox::Entry& entry : combo.entries.get()) texts.push_back(entry.text);
    return texts;
  }
  [[nodiscard]] static std::string Shown(const ComboBox& combo) {
    const int index = combo.list_index;
    return index < 0 ? combo.text.get() : combo.entries.get()[static_cast<std::size_t>(index)].text;
  }

  sim::SimLoop loop_;
  sim::SimClock clock_{loop_};
  sim::NoSink nobody_;
  Form1 main_{nobody_};
  sim::TraceSink sink_;
  Dialog dialog_{sink_};
  ProgramFlags flags_;
  EditorHandOver hand_over_;
  GssiTable groups_;
  SsiTable subscribers_;
  NetworkNames names_;
  NetworkIdentity network_;
  GroupLocks locks_{main_};
  std::unique_ptr<EditorForm> form_;
  int unloaded_ = 0;
};

}  // namespace corvane
