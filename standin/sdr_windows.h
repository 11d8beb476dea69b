// SDR#'s windows with their two plug-ins, as they stand in the window tree. What pressing them does
// is told to SdrWindows::Actions; what they show is set from outside.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/options.h"
#include "standin/window_tree.h"

namespace corvane::standin {

class SdrWindows {
 public:
  struct Actions {
    std::function<void()> network;      // "Network" was pressed (a check box has toggled)
    std::function<void()> demodulator;  // the check box has toggled
    std::function<void()> automatic;    // the check box "Auto" has toggled
    std::function<void(int slot)> timeslot;
    std::function<void()> play;
    std::function<void()> start_call;  // the four buttons of the practice panel
    std::function<void()> next_speaker;
    std::function<void()> pause;
    std::function<void()> end_call;
    std::function<void(std::string_view kind, std::string_view detail)> log;
  };
  // The windows' ids; 0 while there is none.
  struct Ids {
    WindowId main = 0;
    WindowId net_remote_panel = 0;
    WindowId net_remote_header = 0;
    WindowId net_remote_content = 0;
    WindowId network = 0;
    WindowId port = 0;
    WindowId tetra_panel = 0;
    WindowId tetra_header = 0;
    WindowId tetra_content = 0;
    WindowId demodulator = 0;
    WindowId automatic = 0;
    std::array<WindowId, 4> timeslots{};
    WindowId net_info = 0;
    WindowId mcc = 0;
    WindowId mnc = 0;
    WindowId la = 0;
    WindowId info_window = 0;
    WindowId info_box = 0;
    WindowId play = 0;
    WindowId frequency = 0;
    WindowId tuned = 0;
    WindowId sound = 0;
    WindowId server = 0;
    WindowId on_air = 0;
    WindowId history = 0;
  };

  // Most bytes that the Network Info box holds; older lines go.
  static constexpr std::size_t kMaxBoxBytes = 8u << 20;
  // What a box that is opened anew is filled with.
  static constexpr std::size_t kHistoryBytes = 16u << 10;

  SdrWindows(WindowTree& tree, const Options& options, Actions actions);

  // Makes the main window and all in it; Close destroys everything.
  void Open();
  void Close();
  [[nodiscard]] const Ids& ids() const { return ids_; }

  // What "Net Info" does: opens the window, or shows it again.
  void OpenInfo();
  void CloseInfo();
  void SetInfoWidth(int width);  // while it is open; the box is as much narrower
  // A line for the Network Info box; kept as history while the window is closed.
  void AddInfo(std::string_view text);
  void SetKeepHistory(bool keep) { keep_history_ = keep; }

  void SetExpanded(bool tetra, bool expanded);
  void AddHistory(std::string_view line);  // the practice list of what happened

 private:
  WindowId MakeColumnPanel(std::string_view title, int content_height, bool expanded);
  void MakeDecoys();
  void MakeNetRemote();
  void MakeTetra();
  void MakePractice();
  void ConnectActions();
  void Place();
  WindowId Make(WindowId parent, Kind kind, std::string_view text, Box box);
  [[nodiscard]] std::string ClassOf(Kind kind) const;

  WindowTree& tree_;
  const Options& options_;
  Actions actions_;
  Ids ids_;
  WindowId left_column_ = 0;
  // The panels of the left column from top to bottom.
  struct ColumnPanel {
    WindowId panel = 0;
    WindowId header = 0;
    WindowId content = 0;
    int content_height = 0;
  };
  std::vector<ColumnPanel> column_;
  bool keep_history_ = true;
  std::string history_;
};

}  // namespace corvane::standin
