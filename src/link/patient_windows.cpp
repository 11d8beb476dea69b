// Passes everything on except messages to programs that are given a pause.
#include "link/patient_windows.h"

namespace corvane {

bool PatientWindows::Paused(WindowHandle window) const {
  if (silent_.empty()) return false;
  const auto found = silent_.find(windows_.Program(window));
  if (found == silent_.end()) return false;
  return found->second.silent_in_cycle || loop_.TickMs() < found->second.paused_until_ms;
}

void PatientWindows::BeginCycle() {
  in_cycle_ = true;
}

void PatientWindows::EndCycle() {
  in_cycle_ = false;
  const std::int64_t now_ms = loop_.TickMs();
  for (auto& [program, patience] : silent_) patience.silent_in_cycle = false;
  std::erase_if(silent_, [&](const auto& entry) { return entry.second.paused_until_ms <= now_ms; });
}

// The reply of a window that was not asked.
Reply PatientWindows::Unasked(WindowHandle window) {
  return windows_.IsAlive(window) ? Reply::kNoAnswer : Reply::kGone;
}

// A refusal and a window that is gone cost no time: only a time-out begins the pause.
Reply PatientWindows::Note(WindowHandle window, Asked asked, Reply reply) {
  if (reply == Reply::kNoAnswer) {
    silent_[windows_.Program(window)] = {loop_.TickMs() + kPauseMs, in_cycle_};
  }
  if (listener_) listener_(window, asked, reply);
  return reply;
}

void PatientWindows::EnumTopLevel(const std::function<bool(WindowHandle)>& visit) {
  windows_.EnumTopLevel(visit);
}

void PatientWindows::EnumChildren(WindowHandle parent,
                                  const std::function<bool(WindowHandle)>& visit) {
  windows_.EnumChildren(parent, visit);
}

std::string PatientWindows::ClassName(WindowHandle window) {
  return windows_.ClassName(window);
}

WindowHandle PatientWindows::Parent(WindowHandle window) {
  return windows_.Parent(window);
}

ProgramId PatientWindows::Program(WindowHandle window) {
  return windows_.Program(window);
}

std::string PatientWindows::Title(WindowHandle window) {
  return windows_.Title(window);
}

bool PatientWindows::IsAlive(WindowHandle window) {
  return windows_.IsAlive(window);
}

bool PatientWindows::IsVisible(WindowHandle window) {
  return windows_.IsVisible(window);
}

bool PatientWindows::GetPlacement(WindowHandle window, Placement& placement) {
  return windows_.GetPlacement(window, placement);
}

bool PatientWindows::GetRect(WindowHandle window, ScreenRect& rect) {
  return windows_.GetRect(window, rect);
}

std::int32_t PatientWindows::ScreenPixel(WindowHandle control, std::int32_t x, std::int32_t y) {
  return windows_.ScreenPixel(control, x, y);
}

bool PatientWindows::IsSeenAt(WindowHandle window, std::int32_t x, std::int32_t y) {
  return windows_.IsSeenAt(window, x, y);
}

bool PatientWindows::WrapsLines(WindowHandle edit) {
  return windows_.WrapsLines(edit);
}

WindowHandle PatientWindows::Foreground() {
  return windows_.Foreground();
}

WindowHandle PatientWindows::OwnMainWindow() {
  return windows_.OwnMainWindow();
}

Answer<std::string> PatientWindows::Text(WindowHandle window) {
  if (Paused(window)) return {Unasked(window), {}};
  return Note(window, Asked::kText, windows_.Text(window));
}

Answer<std::int32_t> PatientWindows::LineCount(WindowHandle edit) {
  if (Paused(edit)) return {Unasked(edit), 0};
  return Note(edit, Asked::kOther, windows_.LineCount(edit));
}

Answer<std::string> PatientWindows::Line(WindowHandle edit, std::int32_t index) {
  if (Paused(edit)) return {Unasked(edit), {}};
  return Note(edit, Asked::kOther, windows_.Line(edit, index));
}

Answer<std::int32_t> PatientWindows::LineStart(WindowHandle edit, std::int32_t index) {
  if (Paused(edit)) return {Unasked(edit), 0};
  return Note(edit, Asked::kOther, windows_.LineStart(edit, index));
}

Reply PatientWindows::Press(WindowHandle button) {
  return Paused(button) ? Unasked(button) : Note(button, Asked::kOther, windows_.Press(button));
}

Reply PatientWindows::SetText(WindowHandle window, const std::string& text) {
  return Paused(window) ? Unasked(window)
                        : Note(window, Asked::kOther, windows_.SetText(window, text));
}

Reply PatientWindows::PressSelector(WindowHandle selector) {
  return Paused(selector) ? Unasked(selector)
                          : Note(selector, Asked::kOther, windows_.PressSelector(selector));
}

Reply PatientWindows::SetPlacement(WindowHandle window, const Placement& placement) {
  if (Paused(window)) return Unasked(window);
  const Reply reply = windows_.SetPlacement(window, placement);
  // The probe is answered where moving would be refused as well, so an answer shows nothing.
  return reply == Reply::kAnswered ? reply : Note(window, Asked::kOther, reply);
}

WindowHandle PatientWindows::SetForeground(WindowHandle window) {
  if (Paused(window)) return window;
  if (!silent_.empty()) {
    const WindowHandle front = windows_.Foreground();
    if (front != 0 && Paused(front)) return front;
  }
  const WindowHandle silent = windows_.SetForeground(window);
  if (silent != 0) Note(silent, Asked::kOther, Reply::kNoAnswer);
  return silent;
}

}  // namespace corvane
