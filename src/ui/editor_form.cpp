// Filling the editor's lists, following its selections, and writing back.
#include "ui/editor_form.h"

#include "base/number_text.h"
#include "store/list_text.h"
#include "ui/editor_lines.h"

namespace corvane {

namespace {

constexpr int kGetListMs = 100;
constexpr int kIdleTickMs = 60000;
constexpr int kIdleTicks = 5;
constexpr int kFlashMs = 1000;
// Where the editor stands from the main window, in twips of 15 to the pixel.
constexpr int kRightOfMain = 1605;
constexpr int kBelowMain = 105;
constexpr int kSemicolon = 59;
constexpr int kLowestLabelCode = 32;
constexpr int kHighestLabelCode = 128;
constexpr int kNoCode = -1;

using Entries = std::vector<ComboBox::Entry>;

void SelectCode(ComboBox& combo, std::int32_t code) {
  const Entries& entries = combo.entries;
  int selected = -1;
  for (std::size_t index = 0; index < entries.size() && selected < 0; ++index) {
    if (entries[index].item_data == code) selected = static_cast<int>(index);
  }
  combo.list_index = selected;
}

// kNoCode when nothing is selected.
std::int32_t SelectedCode(const ComboBox& combo) {
  const int index = combo.list_index;
  return index < 0 ? kNoCode : combo.entries.get()[static_cast<std::size_t>(index)].item_data;
}

std::optional<std::int32_t> SelectedNumber(const ListBox& list) {
  return NumberOfLine(list.Item(list.list_index()));
}

void Restart(Timer& timer) {
  timer.SetEnabled(false);
  timer.SetEnabled(true);
}

}  // namespace

EditorForm::EditorForm(Dialog& dialog, const EditorParts& parts)
    : dialog_(dialog),
      parts_(parts),
      tmrGetList_(parts.loop.MakeTimer(kGetListMs, [this] { OnGetListTick(); })),
      tmrIdleTimeout_(parts.loop.MakeTimer(kIdleTickMs, [this] { OnIdleTick(); })),
      Timer1_(parts.loop.MakeTimer(kFlashMs, [this] { EndBoxFlash(); })),
      Timer2_(parts.loop.MakeTimer(kFlashMs, [this] { EndButtonFlash(); })) {}

void EditorForm::Load() {
  const Window::Bounds& main = parts_.main_window.bounds;
  dialog_.MoveTo(main.left + kRightOfMain, main.top + kBelowMain);
  Entries priorities;
  for (int priority = 0; priority < kPriorities; ++priority) {
    priorities.push_back({Decimal(priority), priority});
  }
  dialog_.cboGSSIPriority.entries = std::move(priorities);
  tmrGetList_->SetEnabled(true);
  tmrIdleTimeout_->SetEnabled(true);
}

void EditorForm::Unload() {
  for (Timer* timer : {tmrGetList_.get(), tmrIdleTimeout_.get(), Timer1_.get(), Timer2_.get()}) {
    timer->SetEnabled(false);
  }
}

bool EditorForm::Accepts(const Control& control) const {
  return !parts_.flags.mblnShuttingDown && control.enabled;
}

// The timer goes on while the editor lives: a quick edit in the main window selects in an open one.
void EditorForm::OnGetListTick() {
  if (parts_.flags.mblnShuttingDown) return;
  if (!filled_ || parts_.hand_over.EditorPreselect) FillFromHandOver();
}

void EditorForm::FillFromHandOver() {
  const EditorHandOver& hand_over = parts_.hand_over;
  FillCountries();
  SelectCode(dialog_.cboCountry, hand_over.EditorMcc == 0 ? kNoCode : hand_over.EditorMcc);
  FillNetworks();
  SelectCode(dialog_.cboNetworks, hand_over.EditorMnc == 0 ? kNoCode : hand_over.EditorMnc);
  FillGssiList();
  FillSeenSsiList();
  ShowCovers(false);
  if (hand_over.EditorPreselect) idle_ticks_ = 0;
  parts_.hand_over.EditorPreselect = false;
  filled_ = true;
}

void EditorForm::FillCountries() {
  dialog_.cboCountry.list_index = -1;
  dialog_.cboCountry.entries =
      CountryEntries(parts_.groups, parts_.subscribers, parts_.network, parts_.names);
}

void EditorForm::FillNetworks() {
  dialog_.cboNetworks.list_index = -1;
  dialog_.cboNetworks.entries = NetworkEntries(SelectedCode(dialog_.cboCountry), parts_.groups,
                                               parts_.subscribers, parts_.network, parts_.names);
}

void EditorForm::FillGssiList() {
  const std::int32_t mcc = SelectedCode(dialog_.cboCountry);
  const std::int32_t mnc = SelectedCode(dialog_.cboNetworks);
  CheckList& list = dialog_.lstGSSI_Lockouts;
  list.Clear();
  ClearGroupFields();
  int selected = -1;
  for (const GssiRecord& record : parts_.groups) {
    if (record.Mcc != mcc || record.Mnc != mnc) continue;
    list.Add(GroupLine(record), record.Follow);
    if (record.Gssi != parts_.hand_over.EditorGssi) continue;
    ShowGroup(record);
    selected = list.count() - 1;
  }
  if (selected >= 0) list.Select(selected);
  dialog_.Frame4.caption = "GSSI/Labels and Lockouts (" + Decimal(list.count()) + ") [" +
                           Decimal(parts_.groups.highest_index()) + "]";
}

void EditorForm::FillSeenSsiList() {
  const std::int32_t mcc = SelectedCode(dialog_.cboCountry);
  const std::int32_t mnc = SelectedCode(dialog_.cboNetworks);
  listed_gssi_ = parts_.hand_over.EditorGssi;
  dialog_.List1.Clear();
  ClearSubscriberFields();
  int selected = -1;
  for (const SsiRecord& record : parts_.subscribers) {
    if (record.LastGssi != listed_gssi_ || record.Mcc != mcc || record.Mnc != mnc) continue;
    dialog_.List1.Add(SubscriberLine(record));
    if (record.Ssi != parts_.hand_over.EditorSsi) continue;
    ShowSubscriber(record);
    selected = dialog_.List1.count() - 1;
  }
  if (selected >= 0) dialog_.List1.Select(selected);
  dialog_.Label1.caption = "Seen SSI for GSSI (" + Decimal(listed_gssi_) + ")";
}

void EditorForm::ClearLists() {
  dialog_.lstGSSI_Lockouts.Clear();
  dialog_.List1.Clear();
  ClearGroupFields();
  ClearSubscriberFields();
  listed_gssi_ = 0;
  dialog_.Frame4.caption = "GSSI/Labels and Lockouts (0)";
  dialog_.Label1.caption = "Seen SSI for GSSI (0)";
}

void EditorForm::ShowCovers(bool shown) {
  dialog_.lstGssiBlank.visible = shown;
  dialog_.lstSsiBlank.visible = shown;
}

// A stored priority that is none of the entries leaves the box without a selection.
void EditorForm::ShowGroup(const GssiRecord& record) {
  shown_gssi_ = record.Gssi;
  dialog_.txtGssiLabel.text = record.Label.trimmed();
  SelectCode(dialog_.cboGSSIPriority, record.Priority);
}

void EditorForm::ShowSubscriber(const SsiRecord& record) {
  shown_ssi_ = record.Ssi;
  dialog_.txtSSI_labelEdit.text = record.Label.trimmed();
  dialog_.lblLastSeen.caption = parts_.clock.GeneralDate(record.LastSeen);
}

void EditorForm::ClearGroupFields() {
  shown_gssi_.reset();
  dialog_.txtGssiLabel.text = "";
  dialog_.cboGSSIPriority.list_index = -1;
}

void EditorForm::ClearSubscriberFields() {
  shown_ssi_.reset();
  dialog_.txtSSI_labelEdit.text = "";
  dialog_.lblLastSeen.caption = "";
}

std::optional<std::size_t> EditorForm::FindGroup(std::int32_t gssi) const {
  return parts_.groups.Find(SelectedCode(dialog_.cboCountry), SelectedCode(dialog_.cboNetworks),
                            gssi);
}

// A subscriber has a record for each group it was heard in; the line is of one of them.
std::optional<std::size_t> EditorForm::FindSubscriber(std::int32_t ssi) const {
  return parts_.subscribers.Find(SelectedCode(dialog_.cboCountry),
                                 SelectedCode(dialog_.cboNetworks), listed_gssi_, ssi);
}

void EditorForm::Click(Control& control) {
  if (!Accepts(control)) return;
  if (&control == &dialog_.cmdUpdateGSSI) UpdateGroup();
}

void EditorForm::TextEdited(TextBox& box, const std::string& text) {
  if (Accepts(box)) box.text.TakeFromUser(text);
}

bool EditorForm::KeyPress(Control& control, int code) {
  if (!Accepts(control)) return false;
  if (code == kEnterCode) {
    if (&control == &dialog_.txtGssiLabel) {
      dialog_.sink().FocusWanted(dialog_.cmdUpdateGSSI);
    } else if (&control == &dialog_.txtSSI_labelEdit) {
      UpdateSsiLabel();
    }
    return false;
  }
  if (code == kBackspaceCode) return true;
  return code != kSemicolon && code >= kLowestLabelCode && code <= kHighestLabelCode;
}

// Other keys can move the selection as well (Page Down, a letter): the fields always belong to the
// line that is selected, or an update would write them to another group.
void EditorForm::KeyUp(Control& control, int key_code) {
  if (!Accepts(control)) return;
  const bool is_arrow = key_code == kUpArrowCode || key_code == kDownArrowCode;
  if (&control == &dialog_.lstGSSI_Lockouts) {
    if (is_arrow || SelectedNumber(dialog_.lstGSSI_Lockouts) != shown_gssi_) GroupSelected();
  } else if (&control == &dialog_.List1) {
    if (is_arrow || SelectedNumber(dialog_.List1) != shown_ssi_) SubscriberSelected();
  }
}

void EditorForm::ListSelected(ListBox& list, int index, bool) {
  if (!Accepts(list)) return;
  list.SelectFromUser(index >= 0 && index < list.count() ? index : -1);
}

void EditorForm::ComboSelected(ComboBox& combo, int index) {
  if (!Accepts(combo)) return;
  if (index < 0 || index >= static_cast<int>(combo.entries.get().size())) return;
  combo.list_index.TakeFromUser(index);
  if (&combo == &dialog_.cboCountry) CountryChosen();
  if (&combo == &dialog_.cboNetworks) NetworkChosen();
}

void EditorForm::MouseUp(Control& control, int button, int line) {
  if (!Accepts(control)) return;
  if (&control == &dialog_.lstGSSI_Lockouts) {
    if (button == kLeftButton) GroupSelected();
    if (button == kRightButton) ToggleGssiLockout(line);
  } else if (&control == &dialog_.List1 && button == kLeftButton) {
    SubscriberSelected();
  }
}

void EditorForm::CloseRequested() {
  if (parts_.flags.mblnShuttingDown) return;
  Unload();
  parts_.unload();
}

void EditorForm::CountryChosen() {
  FillNetworks();
  ClearLists();
  ShowCovers(true);
}

void EditorForm::NetworkChosen() {
  parts_.hand_over.EditorGssi = 0;
  parts_.hand_over.EditorSsi = 0;
  FillGssiList();
  FillSeenSsiList();
  ShowCovers(false);
}

void EditorForm::GroupSelected() {
  const auto gssi = SelectedNumber(dialog_.lstGSSI_Lockouts);
  if (!gssi) return;
  parts_.hand_over.EditorSsi = 0;
  parts_.hand_over.EditorGssi = *gssi;
  ClearGroupFields();
  if (const auto index = FindGroup(*gssi)) ShowGroup(parts_.groups[*index]);
  FillSeenSsiList();
}

void EditorForm::SubscriberSelected() {
  const auto ssi = SelectedNumber(dialog_.List1);
  if (!ssi) return;
  parts_.hand_over.EditorSsi = *ssi;
  if (const auto gssi = SelectedNumber(dialog_.lstGSSI_Lockouts)) {
    parts_.hand_over.EditorGssi = *gssi;
  }
  ClearSubscriberFields();
  if (const auto index = FindSubscriber(*ssi)) ShowSubscriber(parts_.subscribers[*index]);
}

void EditorForm::UpdateGroup() {
  CheckList& list = dialog_.lstGSSI_Lockouts;
  const int line = list.list_index();
  if (line < 0) return;
  const auto gssi = NumberOfLine(list.Item(line));
  const auto index = gssi ? FindGroup(*gssi) : std::nullopt;
  if (index) {
    parts_.groups.SetLabel(*index, CleanLabel(dialog_.txtGssiLabel.text.get()));
    const std::int32_t priority = SelectedCode(dialog_.cboGSSIPriority);
    if (priority != kNoCode) {
      parts_.groups.SetPriority(*index, static_cast<std::int16_t>(priority));
    }
    list.Replace(line, GroupLine(parts_.groups[*index]));
    dialog_.txtGssiLabel.text = parts_.groups[*index].Label.trimmed();
  }
  dialog_.cmdUpdateGSSI.caption = index ? "Updated" : "Failed";
  dialog_.cmdUpdateGSSI.back_colour = index ? kGreen : kRed;
  Restart(*Timer2_);
}

void EditorForm::UpdateSsiLabel() {
  const int line = dialog_.List1.list_index();
  const auto ssi = NumberOfLine(dialog_.List1.Item(line));
  const auto index = ssi ? FindSubscriber(*ssi) : std::nullopt;
  if (index) {
    parts_.subscribers.SetLabel(*index, CleanLabel(dialog_.txtSSI_labelEdit.text.get()));
    dialog_.List1.Replace(line, SubscriberLine(parts_.subscribers[*index]));
    dialog_.txtSSI_labelEdit.text = parts_.subscribers[*index].Label.trimmed();
  }
  dialog_.txtSSI_labelEdit.back_colour = index ? kGreen : kRed;
  Restart(*Timer1_);
}

void EditorForm::ToggleGssiLockout(int line) {
  CheckList& list = dialog_.lstGSSI_Lockouts;
  const auto gssi = NumberOfLine(list.Item(line));
  if (!gssi) return;
  const bool follow = !list.ticked(line);
  list.Tick(line, follow);
  if (const auto index = FindGroup(*gssi)) parts_.groups.SetFollow(*index, follow);
  if (parts_.locks.held() == *gssi) parts_.locks.ReleaseHold();
}

void EditorForm::OnIdleTick() {
  if (++idle_ticks_ >= kIdleTicks) CloseRequested();
}

void EditorForm::EndBoxFlash() {
  Timer1_->SetEnabled(false);
  dialog_.txtSSI_labelEdit.back_colour = kWindowBackground;
}

void EditorForm::EndButtonFlash() {
  Timer2_->SetEnabled(false);
  dialog_.cmdUpdateGSSI.caption = "Update";
  dialog_.cmdUpdateGSSI.back_colour = kButtonFace;
}

}  // namespace corvane
