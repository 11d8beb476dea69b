// The two logs of the main window and what every writer of a line owes them.
#pragma once

#include <string>

#include "panel/form1.h"

namespace corvane {

// The status log is cleared before an addition when it holds more lines than this.
inline constexpr int kStatusLogLimit = 1000;

// Adds one line at the end of the status log as it is given: no time stamp, no selection.
void AddStatusLine(Form1& form, const std::string& text);

// AddStatusLine, then selects the line so that it is in view.
void AddStatusLineInView(Form1& form, const std::string& text);

// Adds one line at the end of the call log as it is given. The log scrolls along only while the
// user has not scrolled up: when, after the addition, the top index equals the count minus 22.
void AddCallLine(Form1& form, const std::string& text);

// Selects the last line of the status log, if there is one.
void ShowLastStatusLine(Form1& form);

// The busy shape's border: red and three wide while a recording runs, else thin window text.
void ShowRecording(Form1& form, bool recording);

}  // namespace corvane
