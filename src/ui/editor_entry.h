// The ways into the G/SSI editor: what each of them hands over.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "panel/form1.h"
#include "ui/actions.h"
#include "ui/editor_hand_over.h"

namespace corvane {

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
