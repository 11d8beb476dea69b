// The G/SSI editor's behaviour: fills its lists from the tables of groups and subscribers, and
// writes labels, priorities and lockouts back to them at once. Knows no window system.
//
// The lists are a snapshot: what call following adds meanwhile shows after the next filling. A line
// is tied to its record by number and network, never by a place in a table.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/loop.h"
#include "base/wall_clock.h"
#include "core/group_locks.h"
#include "core/ports.h"
#include "panel/dialog.h"
#include "panel/program_flags.h"
#include "store/labels.h"
#include "store/tables.h"
#include "ui/editor_entry.h"
#include "ui/user_events.h"

namespace corvane {

// What an editor works on; everything outlives it.
struct EditorParts {
  Loop& loop;
  const WallClock& clock;
  const ProgramFlags& flags;
  const Window& main_window;
  EditorHandOver& hand_over;
  GssiTable& groups;
  SsiTable& subscribers;
  const NetworkNames& names;
  const NetworkIdentity& network;
  GroupLocks& locks;
  // Ends the editor, not before the event under way is over.
  std::function<void()> unload;
};

class EditorForm final : public UserEvents {
 public:
  EditorForm(Dialog& dialog, const EditorParts& parts);
  EditorForm(const EditorForm&) = delete;
  EditorForm& operator=(const EditorForm&) = delete;

  // Places the editor by the main window and starts its timers; the lists are filled a moment
  // later. To be called once, before the window is shown.
  void Load();
  // From here on nothing happens by itself.
  void Unload();

  // -- What the user does. All of these do nothing once mblnShuttingDown is set, and nothing for a
  // disabled control.
  void Click(Control& control) override;
  void DoubleClick(Control&) override {}
  void TextEdited(TextBox& box, const std::string& text) override;
  [[nodiscard]] bool KeyPress(Control& control, int code) override;
  void KeyUp(Control& control, int key_code) override;
  void LostFocus(Control&) override {}
  void ListSelected(ListBox& list, int index, bool by_mouse) override;
  void ComboSelected(ComboBox& combo, int index) override;
  void MouseUp(Control& control, int button, int line) override;
  void MouseMove(Control&, bool) override {}
  void AnyInput() override { idle_ticks_ = 0; }
  void Escape() override { CloseRequested(); }
  void CloseRequested() override;
  void SessionEnding() override {}

 private:
  [[nodiscard]] bool Accepts(const Control& control) const;

  // Filling.
  void OnGetListTick();
  void FillFromHandOver();
  void FillCountries();
  void FillNetworks();
  void FillGssiList();
  void FillSeenSsiList();
  void ClearLists();
  void ShowCovers(bool shown);
  void ShowGroup(const GssiRecord& record);
  void ShowSubscriber(const SsiRecord& record);
  void ClearGroupFields();
  void ClearSubscriberFields();

  // Selecting.
  void CountryChosen();
  void NetworkChosen();
  void GroupSelected();
  void SubscriberSelected();
  [[nodiscard]] std::optional<std::size_t> FindGroup(std::int32_t gssi) const;
  [[nodiscard]] std::optional<std::size_t> FindSubscriber(std::int32_t ssi) const;

  // Editing.
  void UpdateGroup();
  void UpdateSsiLabel();
  void ToggleGssiLockout(int line);

  void OnIdleTick();
  void EndBoxFlash();
  void EndButtonFlash();

  Dialog& dialog_;
  EditorParts parts_;
  std::unique_ptr<Timer> tmrGetList_;
  std::unique_ptr<Timer> tmrIdleTimeout_;
  std::unique_ptr<Timer> Timer1_;
  std::unique_ptr<Timer> Timer2_;
  bool filled_ = false;
  int idle_ticks_ = 0;
  // The group that List1 was filled for: a quick edit may hand over another one meanwhile.
  std::int32_t listed_gssi_ = 0;
  // Whose record the fields show.
  std::optional<std::int32_t> shown_gssi_;
  std::optional<std::int32_t> shown_ssi_;
};

}  // namespace corvane
