// The editor's user, and the account.
#include "simulation/random_editor.h"

#include <cstring>
#include <type_traits>

#include "base/number_text.h"
#include "store/list_text.h"
#include "ui/editor_lines.h"

namespace corvane::sim {

namespace {

// -1 while nothing is selected.
int CodeOf(const ComboBox& combo) {
  const int index = combo.list_index;
  return index < 0 ? -1 : combo.entries.get()[static_cast<std::size_t>(index)].item_data;
}

std::optional<std::int32_t> NumberAt(const ListBox& list, int line) {
  return NumberOfLine(list.Item(line));
}

// The group that the subscribers' list says it is of.
std::int32_t ListedGroup(const Dialog& dialog) {
  const std::string caption = dialog.Label1.caption;
  const std::size_t open = caption.find('(');
  return ParseDecimal<std::int32_t>(caption.substr(open + 1, caption.size() - open - 2))
      .value_or(0);
}

template <typename Table, typename Record>
bool SameBytes(const Table& table, const std::vector<Record>& records) {
  static_assert(std::is_trivially_copyable_v<Record>);
  return table.size() == records.size() &&
         (records.empty() ||
          std::memcmp(&*table.begin(), records.data(), records.size() * sizeof(Record)) == 0);
}

}  // namespace

int RandomEditor::AnyLine(const ListBox& list) {
  return list.count() == 0 ? -1 : pick_(0, list.count() - 1);
}

std::string RandomEditor::AnyLabel() {
  static const char* const kLabels[] = {
      "", "North", "a;b", "x\r\n", "\xC4\xD6 end", "a label longer than thirty letters"};
  return kLabels[pick_(0, 5)];
}

void RandomEditor::Use() {
  Dialog* dialog = world_.view().dialog;
  if (dialog == nullptr || world_.editor == nullptr || pick_(0, 5) == 0) return Open();
  UseOpen(*dialog);
}

void RandomEditor::Open() {
  Form1& form = world_.form();
  MainForm& user = world_.user();
  switch (pick_(0, 4)) {
    case 0:
      return user.Click(form.mnuGSSIEditor);
    case 1:
      return user.MouseUp(form.lblGroupNumber, kLeftButton, -1);
    case 2:
      return user.MouseUp(form.lblCurrentSSI, kRightButton, -1);
    case 3:
      return user.ListSelected(form.lstCurrentSSI_Users, AnyLine(form.lstCurrentSSI_Users), true);
    default:
      user.ListSelected(form.lstCallLog, AnyLine(form.lstCallLog), true);
      return user.DoubleClick(form.lstCallLog);
  }
}

void RandomEditor::UseOpen(Dialog& dialog) {
  UserEvents& user = *world_.editor;
  user.AnyInput();
  switch (pick_(0, 9)) {
    case 0:
    case 1: {
      ListBox& list = dialog.lstGSSI_Lockouts;
      const int line = AnyLine(list);
      user.ListSelected(list, line, true);
      return user.MouseUp(list, kLeftButton, line);
    }
    case 2: {
      const int line = AnyLine(dialog.List1);
      user.ListSelected(dialog.List1, line, false);
      return user.KeyUp(dialog.List1, kDownArrowCode);
    }
    case 3:
      return ToggleLockout(dialog);
    case 4:
    case 5:
      return Update(dialog);
    case 6:
      return NameSubscriber(dialog);
    case 7:
      return user.ComboSelected(dialog.cboCountry,
                                pick_(0, static_cast<int>(dialog.cboCountry.entries.get().size())));
    case 8:
      return user.ComboSelected(
          dialog.cboNetworks, pick_(0, static_cast<int>(dialog.cboNetworks.entries.get().size())));
    default:
      return user.Escape();
  }
}

void RandomEditor::Update(Dialog& dialog) {
  UserEvents& user = *world_.editor;
  user.TextEdited(dialog.txtGssiLabel, AnyLabel());
  user.ComboSelected(dialog.cboGSSIPriority, pick_(0, 9));
  const auto gssi = NumberAt(dialog.lstGSSI_Lockouts, dialog.lstGSSI_Lockouts.list_index());
  if (gssi) {
    const auto group = groups_.find({CodeOf(dialog.cboCountry), CodeOf(dialog.cboNetworks), *gssi});
    if (group != groups_.end()) {
      const FixedLabel label{CleanLabel(dialog.txtGssiLabel.text.get())};
      group->second.label = label.padded();
      group->second.priority = static_cast<std::int16_t>(CodeOf(dialog.cboGSSIPriority));
      NoteEdit();
    }
  }
  user.Click(dialog.cmdUpdateGSSI);
}

void RandomEditor::NameSubscriber(Dialog& dialog) {
  UserEvents& user = *world_.editor;
  user.TextEdited(dialog.txtSSI_labelEdit, AnyLabel());
  const auto ssi = NumberAt(dialog.List1, dialog.List1.list_index());
  if (ssi) {
    const auto subscriber = subscribers_.find(
        {CodeOf(dialog.cboCountry), CodeOf(dialog.cboNetworks), ListedGroup(dialog), *ssi});
    if (subscriber != subscribers_.end()) {
      const FixedLabel label{CleanLabel(dialog.txtSSI_labelEdit.text.get())};
      subscriber->second = label.padded();
      NoteEdit();
    }
  }
  static_cast<void>(user.KeyPress(dialog.txtSSI_labelEdit, kEnterCode));
}

void RandomEditor::ToggleLockout(Dialog& dialog) {
  const int line = AnyLine(dialog.lstGSSI_Lockouts);
  const auto gssi = NumberAt(dialog.lstGSSI_Lockouts, line);
  if (gssi) {
    const auto group = groups_.find({CodeOf(dialog.cboCountry), CodeOf(dialog.cboNetworks), *gssi});
    if (group != groups_.end()) {
      group->second.follow = !group->second.follow;
      NoteEdit();
    }
  }
  world_.editor->MouseUp(dialog.lstGSSI_Lockouts, kRightButton, line);
}

void RandomEditor::NoteEdit() {
  ++edits_;
  found_ = {};
}

std::string RandomEditor::Check() {
  const App::View view = world_.view();
  std::string wrong;
  if (!SameBytes(view.groups, found_.groups)) wrong = CheckGroups(view.groups);
  if (wrong.empty() && !SameBytes(view.subscribers, found_.subscribers)) {
    wrong = CheckSubscribers(view.subscribers);
  }
  if (wrong.empty() && view.dialog != nullptr) wrong = CheckLockouts(*view.dialog);
  return wrong;
}

std::string RandomEditor::CheckGroups(const GssiTable& groups) {
  for (const GssiRecord& record : groups) {
    const Group now{std::string(record.Label.padded()), record.Priority, record.Follow};
    const auto [known, is_new] = groups_.try_emplace({record.Mcc, record.Mnc, record.Gssi}, now);
    if (!is_new && now != known->second) {
      return "group " + std::to_string(record.Gssi) + " is another than it was edited to";
    }
  }
  found_.groups.assign(groups.begin(), groups.end());
  return {};
}

std::string RandomEditor::CheckSubscribers(const SsiTable& subscribers) {
  for (const SsiRecord& record : subscribers) {
    const std::string now(record.Label.padded());
    const auto [known, is_new] =
        subscribers_.try_emplace({record.Mcc, record.Mnc, record.LastGssi, record.Ssi}, now);
    if (!is_new && now != known->second) {
      return "subscriber " + std::to_string(record.Ssi) + " is another than it was edited to";
    }
  }
  found_.subscribers.assign(subscribers.begin(), subscribers.end());
  return {};
}

std::string RandomEditor::CheckLockouts(const Dialog& dialog) {
  const CheckList& list = dialog.lstGSSI_Lockouts;
  const int country = CodeOf(dialog.cboCountry);
  const int network = CodeOf(dialog.cboNetworks);
  const bool same_lines =
      country == found_.country && network == found_.network && list.items() == found_.lines;
  std::vector<bool>& ticks = found_.ticks;
  bool same = same_lines && ticks.size() == found_.lines.size();
  for (int line = 0; same && line < list.count(); ++line) {
    same = list.ticked(line) == ticks[static_cast<std::size_t>(line)];
  }
  if (same) return {};
  ticks.clear();
  for (int line = 0; line < list.count(); ++line) {
    const auto group = groups_.find({country, network, NumberAt(list, line).value_or(-1)});
    if (group == groups_.end() || list.ticked(line) != group->second.follow) {
      return "the editor shows another lockout: " + list.Item(line);
    }
    ticks.push_back(list.ticked(line));
  }
  found_.country = country;
  found_.network = network;
  found_.lines = list.items();
  return {};
}

}  // namespace corvane::sim
