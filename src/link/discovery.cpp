// Walks over the desktop's windows; class names first, so that foreign windows get no messages.
#include "link/discovery.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "base/text.h"
#include "panel/logs.h"

namespace corvane {

namespace {

// What follows in a class name differs from one build of SDR# to the next.
constexpr std::string_view kWindowClass = "WindowsForms10.Window.8.app.0.";
constexpr std::string_view kButtonClass = "WindowsForms10.BUTTON.app.0.";
constexpr std::string_view kStaticClass = "WindowsForms10.STATIC.app.0.";
constexpr std::string_view kEditClass = "WindowsForms10.EDIT.app.0.";

constexpr std::string_view kMainTitle = "SDR# v";  // how it begins
constexpr std::string_view kNetworkInfoTitle = "Network Info";

struct Caption {
  std::string_view text;
  SdrRole role;
};

constexpr Caption kHeaders[] = {
    {"Net Remote *", SdrRole::kNetRemoteHeader},
    {"TETRA Demodulator *", SdrRole::kTetraHeader},
};
constexpr Caption kTetraButtons[] = {
    {"Demodulator", SdrRole::kDemodulatorBox}, {"Auto", SdrRole::kAutoBox},
    {"Timeslot 1", SdrRole::kTimeslot1},       {"Timeslot 2", SdrRole::kTimeslot2},
    {"Timeslot 3", SdrRole::kTimeslot3},       {"Timeslot 4", SdrRole::kTimeslot4},
    {"Net Info", SdrRole::kNetInfoButton},
};
constexpr Caption kIdentityPrefixes[] = {
    {"MCC:", SdrRole::kMccLabel},
    {"MNC:", SdrRole::kMncLabel},
    {"LA:", SdrRole::kLaLabel},
};
constexpr SdrRole kNeeded[] = {
    SdrRole::kMainWindow,      SdrRole::kNetRemoteHeader, SdrRole::kTetraHeader,
    SdrRole::kNetworkButton,   SdrRole::kPortBox,         SdrRole::kNetworkInfoWindow,
    SdrRole::kNetworkInfoEdit,
};

bool HasClass(WindowOps& windows, WindowHandle window, std::string_view prefix) {
  return windows.ClassName(window).starts_with(prefix);
}

// Whether the last lines of `list` are `lines`.
bool EndsWith(const ListBox& list, const std::vector<std::string>& lines) {
  const std::vector<std::string>& shown = list.items();
  return shown.size() >= lines.size() && std::equal(lines.rbegin(), lines.rend(), shown.rbegin());
}

}  // namespace

void Discovery::DiscoverSdrWindows(Log log) {
  lines_.clear();
  context_.flags.NetRemoteLinkUp = false;
  context_.handles.Clear();

  FindMainWindow();
  FindHeaders();
  FindNetRemoteControls();
  FindTetraControls();
  OpenNetworkInfo();
  FindNetworkInfoEdit();
  if (FoundAllNeeded()) {
    Say("All hwnd found - Ready to start");
    Say("");
    context_.network_box.SwitchOnWhenFound(context_.handles[SdrRole::kPortBox],
                                           context_.handles[SdrRole::kNetworkButton]);
    context_.flags.NetRemoteLinkUp = true;
  } else if (context_.handles[SdrRole::kNetworkInfoEdit] == 0) {
    Say("No 'Network Info' editbox found. This not good.");
  }
  WriteLog(log);
  first_run_ = false;
}

void Discovery::Say(std::string line) {
  lines_.push_back(std::move(line));
}

void Discovery::WriteLog(Log log) {
  const bool repeats = lines_ == previous_ && EndsWith(context_.form.lstStatusLog, lines_);
  if (log == Log::kWhole || !repeats) {
    for (const std::string& line : lines_) AddStatusLine(context_.form, line);
  }
  previous_.swap(lines_);
}

// "" for a window that does not answer. Windows whose titles the system knows for those of SDR# are
// asked whenever they are met: SDR# is to be found as soon as it answers.
std::string Discovery::TextOfTopLevel(WindowHandle window) {
  WindowOps& windows = context_.windows;
  const std::string title = windows.Title(window);
  const bool is_main = title.starts_with(kMainTitle);
  const bool wanted = is_main || title == kNetworkInfoTitle;
  const ProgramId program = windows.Program(window);
  const std::int64_t now_ms = context_.loop.TickMs();
  if (const auto found = passed_over_until_ms_.find(program);
      !wanted && found != passed_over_until_ms_.end()) {
    if (now_ms < found->second) return {};
    passed_over_until_ms_.erase(found);
  }
  Answer<std::string> text = windows.Text(window);
  if (text.reply == Reply::kNoAnswer && !wanted) {
    passed_over_until_ms_[program] = now_ms + kSecondLookMs;
  }
  // The user has waited for SDR# once already and is to know what keeps it.
  if (!text.answered() && is_main && !first_run_) context_.answers.SetSdr(window);
  return std::move(text.value);
}

void Discovery::FindMainWindow() {
  WindowOps& windows = context_.windows;
  windows.EnumTopLevel([&](WindowHandle window) {
    if (!Contains(windows.ClassName(window), kWindowClass)) return true;
    if (!TextOfTopLevel(window).starts_with(kMainTitle)) return true;
    context_.handles.At(SdrRole::kMainWindow) = window;
    context_.answers.SetSdr(window);
    return false;
  });
  if (context_.handles[SdrRole::kMainWindow] != 0) Say("SDR# is running");
}

void Discovery::FindHeaders() {
  WindowOps& windows = context_.windows;
  SdrHandles& handles = context_.handles;
  const auto both_found = [&] {
    return handles[SdrRole::kNetRemoteHeader] != 0 && handles[SdrRole::kTetraHeader] != 0;
  };
  if (handles[SdrRole::kMainWindow] != 0) {
    windows.EnumChildren(handles[SdrRole::kMainWindow], [&](WindowHandle child) {
      if (!HasClass(windows, child, kStaticClass)) return true;
      const std::string text = windows.Text(child).value;
      for (const Caption& header : kHeaders) {
        if (text == header.text && handles[header.role] == 0) handles.At(header.role) = child;
      }
      return !both_found();
    });
  }
  Say(both_found() ? "SDR# is running with the two required plug-ins"
                   : "SDR# is NOT running with the two required plug-ins");
}

// The panel is the window that holds its header label.
WindowHandle Discovery::PanelOf(SdrRole header) {
  const WindowHandle label = context_.handles[header];
  return label == 0 ? 0 : context_.windows.Parent(label);
}

void Discovery::FindNetRemoteControls() {
  WindowOps& windows = context_.windows;
  WindowHandle& button = context_.handles.At(SdrRole::kNetworkButton);
  WindowHandle& port_box = context_.handles.At(SdrRole::kPortBox);
  const WindowHandle panel = PanelOf(SdrRole::kNetRemoteHeader);
  if (panel != 0) {
    windows.EnumChildren(panel, [&](WindowHandle child) {
      if (HasClass(windows, child, kEditClass)) {
        port_box = child;
      } else if (button == 0 && HasClass(windows, child, kButtonClass) &&
                 windows.Text(child).value == "Network") {
        button = child;
      }
      return true;
    });
  }
  Say(button != 0 && port_box != 0 ? "Found all 'Net Remote' buttons and editboxes."
                                   : "Did not find 'Net Remote' buttons and/or or editboxes.");
}

void Discovery::FindTetraControls() {
  WindowOps& windows = context_.windows;
  SdrHandles& handles = context_.handles;
  WindowHandle after_demodulator = 0;
  const WindowHandle panel = PanelOf(SdrRole::kTetraHeader);
  if (panel != 0) {
    windows.EnumChildren(panel, [&](WindowHandle child) {
      if (!HasClass(windows, child, kButtonClass)) return true;
      const Answer<std::string> caption = windows.Text(child);
      if (!caption.answered()) return true;  // it may be any of them
      for (const Caption& button : kTetraButtons) {
        if (caption.value != button.text) continue;
        if (handles[button.role] == 0) handles.At(button.role) = child;
        return true;
      }
      if (handles[SdrRole::kDemodulatorBox] != 0 && after_demodulator == 0) {
        after_demodulator = child;
      }
      return true;
    });
  }
  // Builds that give the second box another caption still show it behind the first.
  if (handles[SdrRole::kAutoBox] == 0) handles.At(SdrRole::kAutoBox) = after_demodulator;
  FindMissingIdentityLabels();

  const int found = handles.CountSet(SdrRole::kDemodulatorBox, SdrRole::kTimeslot4);
  Say(found == 6 ? "Found all 'TETRA Demodulator' buttons."
                 : "Not all 'TETRA Demodulator' buttons found. [" + Decimal(found) + "]");
}

void Discovery::FindMissingIdentityLabels() {
  WindowOps& windows = context_.windows;
  SdrHandles& handles = context_.handles;
  int missing = 0;
  for (const Caption& prefix : kIdentityPrefixes) {
    WindowHandle& label = handles.At(prefix.role);
    if (label != 0 && !windows.IsAlive(label)) label = 0;
    if (label == 0) ++missing;
  }
  if (missing == 0) return;
  const WindowHandle panel = PanelOf(SdrRole::kTetraHeader);
  if (panel == 0) return;
  windows.EnumChildren(panel, [&](WindowHandle child) {
    for (const Caption& prefix : kIdentityPrefixes) {
      if (handles[prefix.role] == child) return true;
    }
    if (!HasClass(windows, child, kStaticClass)) return true;
    const std::string text = windows.Text(child).value;
    for (const Caption& prefix : kIdentityPrefixes) {
      if (handles[prefix.role] != 0 || !text.starts_with(prefix.text)) continue;
      handles.At(prefix.role) = child;
      --missing;
      break;
    }
    return missing > 0;
  });
}

WindowHandle Discovery::FindNetworkInfoWindow() {
  WindowOps& windows = context_.windows;
  WindowHandle found = 0;
  windows.EnumTopLevel([&](WindowHandle window) {
    if (!HasClass(windows, window, kWindowClass)) return true;
    if (TextOfTopLevel(window) != kNetworkInfoTitle) return true;
    found = window;
    return false;
  });
  return found;
}

void Discovery::OpenNetworkInfo() {
  WindowHandle window = FindNetworkInfoWindow();
  if (window == 0) {
    Say("Opening 'Network Info' window, then rescanning.");
    context_.windows.Press(context_.handles[SdrRole::kNetInfoButton]);
    window = FindNetworkInfoWindow();
  }
  context_.handles.At(SdrRole::kNetworkInfoWindow) = window;
  if (window != 0) Say("'Network Info' window open");
}

void Discovery::FindNetworkInfoEdit() {
  WindowOps& windows = context_.windows;
  WindowHandle& edit = context_.handles.At(SdrRole::kNetworkInfoEdit);
  const WindowHandle window = context_.handles[SdrRole::kNetworkInfoWindow];
  edit = 0;
  if (window == 0) return;
  windows.EnumChildren(window, [&](WindowHandle child) {
    if (HasClass(windows, child, kEditClass)) edit = child;
    return true;
  });
}

bool Discovery::FindNetworkInfo() {
  context_.handles.At(SdrRole::kNetworkInfoWindow) = FindNetworkInfoWindow();
  FindNetworkInfoEdit();
  return context_.handles[SdrRole::kNetworkInfoEdit] != 0;
}

bool Discovery::FoundAllNeeded() const {
  for (const SdrRole role : kNeeded) {
    if (context_.handles[role] == 0) return false;
  }
  return true;
}

}  // namespace corvane
