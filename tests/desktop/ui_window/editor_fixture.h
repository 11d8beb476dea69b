// The real editor window over tables of its own.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/loop_win.h"
#include "base/wall_clock_win.h"
#include "desktop/ui_window/real_window_win.h"
#include "sim/no_sink.h"
#include "ui/editor_form.h"
#include "ui/editor_layout.h"
#include "ui/form_window_win.h"

namespace corvane::ui_test {

// One network with so many groups, all its subscribers heard in the first of them.
struct EditorTables {
  explicit EditorTables(int groups_known, int subscribers_known) {
    network.CurrentMcc = "262";
    network.CurrentMnc = "42";
    for (int number = 1; number <= groups_known; ++number) {
      groups.Append({kFirstGroup + number - 1, 262, 42, FixedLabel("Group " + Decimal(number)), 0,
                     number % 2 == 1});
    }
    for (int number = 1; number <= subscribers_known; ++number) {
      subscribers.Append({kFirstSubscriber + number - 1,
                          kFirstGroup,
                          262,
                          42,
                          FixedLabel("Subscriber"),
                          {2026, 11, 15, 14, 23, 5}});
    }
  }
  static constexpr std::int32_t kFirstGroup = 9001;
  static constexpr std::int32_t kFirstSubscriber = 50001;

  GssiTable groups;
  SsiTable subscribers;
  NetworkNames names;
  NetworkIdentity network;
  ProgramFlags flags;
  EditorHandOver hand_over{262, 42, kFirstGroup, kFirstSubscriber, true};
  sim::NoSink nobody;
  Form1 main{nobody};
  GroupLocks locks{main};
};

// One life of the editor.
class OpenEditor {
 public:
  OpenEditor(LoopWin& loop, FormWindow& window, EditorTables& tables)
      : window_(window),
        dialog(window),
        form(dialog, {loop, clock_, tables.flags, tables.main, tables.hand_over, tables.groups,
                      tables.subscribers, tables.names, tables.network, tables.locks,
                      [this] { window_.Destroy(); }}) {
    form.Load();
    made = window_.Create(EditorWindowTable(dialog), form);
    window_.Show();
  }
  ~OpenEditor() {
    form.Unload();
    window_.Destroy();
  }
  OpenEditor(const OpenEditor&) = delete;
  OpenEditor& operator=(const OpenEditor&) = delete;

 private:
  WallClockWin clock_;
  FormWindow& window_;

 public:
  Dialog dialog;
  EditorForm form;
  bool made = false;
};

// Dispatches until the lists are filled and shown, or too long.
inline bool AwaitFilled(LoopWin& loop, OpenEditor& editor) {
  constexpr std::int64_t kLimitMs = 10000;
  const std::int64_t end = loop.TickMs() + kLimitMs;
  while (editor.dialog.lstGssiBlank.visible && loop.TickMs() < end) {
    loop.Sleep(1);
    loop.DoEvents();
  }
  loop.DoEvents();
  return !editor.dialog.lstGssiBlank.visible;
}

}  // namespace corvane::ui_test
