// What is handed to the editor, and how a call-log line is read for it.
#include "ui/editor_entry.h"

#include <string>

#include "base/number_text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

struct Marker {
  std::string_view text;
  std::int32_t LineParty::*party;
};

// In the order of their weight: a line can carry more than one.
constexpr Marker kMarkers[] = {
    {" - Group:", &LineParty::gssi}, {"und GSSI:", &LineParty::gssi}, {" TX SSI:", &LineParty::ssi},
    {"sed SSI:", &LineParty::ssi},   {"upt SSI:", &LineParty::ssi},   {"ing SSI:", &LineParty::ssi},
    {"ted SSI:", &LineParty::ssi},
};
constexpr std::string_view kLabelStart = " [";

// Answers false, with a status line, while no network is known.
bool TakeNetwork(Form1& form, EditorHandOver& hand_over, const Actions& actions) {
  if (actions.mcc() == 0 || actions.mnc() == 0) {
    AddStatusLine(form, "MCC must be valid before showing editor");
    return false;
  }
  hand_over.EditorMcc = actions.mcc();
  hand_over.EditorMnc = actions.mnc();
  return true;
}

void QuickEdit(Form1& form, const std::string& ssi, EditorHandOver& hand_over, Actions& actions) {
  const std::string& group = form.lblGroupNumber.caption;
  if (group.empty() || form.lblNetworkInfo.caption.get().empty()) return;
  if (!TakeNetwork(form, hand_over, actions)) return;
  hand_over.EditorGssi = ParseShown<std::int32_t>(group).value_or(0);
  hand_over.EditorSsi = ParseShown<std::int32_t>(ssi).value_or(0);
  hand_over.EditorPreselect = true;
  actions.ShowEditor();
}

}  // namespace

std::optional<LineParty> FindParty(std::string_view line) {
  for (const Marker& marker : kMarkers) {
    const std::size_t start = line.find(marker.text);
    if (start == std::string_view::npos) continue;
    std::string_view value = line.substr(start + marker.text.size());
    // A call without a number reads "Group:  [label]": the blank is the number's, not the label's.
    if (!value.empty() && value.front() == ' ') value.remove_prefix(1);
    value = value.substr(0, value.find(kLabelStart));
    const auto number = ParseShown<std::int32_t>(value);
    if (!number) return std::nullopt;
    LineParty party;
    party.*marker.party = *number;
    return party;
  }
  return std::nullopt;
}

void ShowEditorFromMenu(EditorHandOver& hand_over, Actions& actions) {
  hand_over.EditorMcc = actions.mcc();
  hand_over.EditorMnc = actions.mnc();
  hand_over.EditorGssi = 0;
  hand_over.EditorSsi = 0;
  actions.ShowEditor();
}

void ShowEditorFromCallLog(Form1& form, EditorHandOver& hand_over, Actions& actions) {
  EditorHandOver next = hand_over;
  if (!TakeNetwork(form, next, actions)) return;
  const auto party = FindParty(form.lstCallLog.Item(form.lstCallLog.list_index()));
  if (!party) return;
  next.EditorGssi = party->gssi;
  next.EditorSsi = party->ssi;
  next.EditorPreselect = true;
  hand_over = next;
  actions.ShowEditor();
}

void QuickEditShown(Form1& form, EditorHandOver& hand_over, Actions& actions) {
  QuickEdit(form, form.lblCurrentSSI.caption, hand_over, actions);
}

void QuickEditListed(Form1& form, EditorHandOver& hand_over, Actions& actions) {
  const int line = form.lstCurrentSSI_Users.list_index();
  if (line < 0) return;
  QuickEdit(form, form.lstCurrentSSI_Users.Item(line), hand_over, actions);
}

}  // namespace corvane
