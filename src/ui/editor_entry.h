// The ways into the G/SSI editor: what each of them hands over.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "panel/form1.h"
#include "ui/actions.h"

namespace corvane {

// What the main window tells the G/SSI editor when it shows it.
struct EditorHandOver {
  std::int32_t EditorMcc = 0;
  std::int32_t EditorMnc = 0;
  std::int32_t EditorGssi = 0;   // 0: none
  std::int32_t EditorSsi = 0;    // 0: none
  bool EditorPreselect = false;  // the editor is to select EditorGssi and EditorSsi
};

// What a call-log line names; the other one is 0.
struct LineParty {
  std::int32_t gssi = 0;
  std::int32_t ssi = 0;
  bool operator==(const LineParty&) const = default;
};

// The group or subscriber of a call-log line; nullopt when it names none that can be read.
[[nodiscard]] std::optional<LineParty> FindParty(std::string_view line);

// Each shows the editor, or does nothing or only adds a status line when there is nothing to show.
void ShowEditorFromMenu(EditorHandOver& hand_over, Actions& actions);
void ShowEditorFromCallLog(Form1& form, EditorHandOver& hand_over, Actions& actions);
// On the group on screen and the subscriber in lblCurrentSSI, if any.
void QuickEditShown(Form1& form, EditorHandOver& hand_over, Actions& actions);
// On the group on screen and the selected line of lstCurrentSSI_Users.
void QuickEditListed(Form1& form, EditorHandOver& hand_over, Actions& actions);

}  // namespace corvane
