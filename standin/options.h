// How the stand-in begins: what differs between builds of SDR#, and what the user left it at.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "standin/window_tree.h"

namespace corvane::standin {

struct Options {
  std::string class_tail = "141b42a_r8_ad1";  // what class names end in; differs between builds
  bool network_on = false;     // the server listens from the start, on the port in the port box
  bool network_plain = false;  // "Network" is a button that only switches on, not a check box
  bool labels_after_start = false;   // the identity labels are empty until it plays
  bool playing = false;              // it plays from the start
  bool demodulator_checked = false;  // "Demodulator" at the start
  bool auto_checked = true;          // "Auto" at the start
  bool info_open = false;            // the Network Info window is open from the start
  bool info_owned = false;           // and belongs to the main window
  bool info_toggles = false;         // "Net Info" hides it when it is to be seen
  Wrap info_wrap = Wrap::kNone;      // how its box shows long lines
  bool elevated = false;             // it runs with administrator rights (native tests)
  int scale = 100;                   // of the screen that its check boxes are drawn for, percent
  bool tetra_expanded = true;        // the TETRA Demodulator panel is
  std::string port = "3383";         // what stands in the port box
  int left = 40;                     // of the main window on the screen
  int top = 40;
  std::uint64_t seed = 0;  // 0: the scenario's
  int speed = 1;           // how many times faster than the clock on the wall
  std::string scenario_file;
  std::string log_file;
  bool exit_when_done = false;  // ends at the scenario's end
};

// Reads a command line without the program's name. "" or what is wrong with it.
[[nodiscard]] std::string ParseOptions(const std::vector<std::string>& arguments, Options& options);

// What the options are, for a box or a terminal.
[[nodiscard]] std::string OptionsHelp();

}  // namespace corvane::standin
