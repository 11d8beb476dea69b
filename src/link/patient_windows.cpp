// Passes everything on except messages during the pause.
#include "link/patient_windows.h"

namespace corvane {

bool PatientWindows::Paused() const {
  return loop_.TickMs() < paused_until_ms_;
}

// The reply of a window that was not asked.
Reply PatientWindows::Unasked(WindowHandle window) {
  return windows_.IsAlive(window) ? Reply::kNoAnswer : Reply::kGone;
}

// A refusal and a window that is gone cost no time: only a time-out begins the pause.
Reply PatientWindows::Note(Reply reply) {
  if (reply == Reply::kNoAnswer) paused_until_ms_ = loop_.TickMs() + kPauseMs;
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

WindowHandle PatientWindows::OwnMainWindow() {
  return windows_.OwnMainWindow();
}

Answer<std::string> PatientWindows::Text(WindowHandle window) {
  if (Paused()) return {Unasked(window), {}};
  return Note(windows_.Text(window));
}

Answer<std::int32_t> PatientWindows::LineCount(WindowHandle edit) {
  if (Paused()) return {Unasked(edit), 0};
  return Note(windows_.LineCount(edit));
}

Answer<std::string> PatientWindows::Line(WindowHandle edit, std::int32_t index) {
  if (Paused()) return {Unasked(edit), {}};
  return Note(windows_.Line(edit, index));
}

Reply PatientWindows::Press(WindowHandle button) {
  return Paused() ? Unasked(button) : Note(windows_.Press(button));
}

Reply PatientWindows::SetText(WindowHandle window, const std::string& text) {
  return Paused() ? Unasked(window) : Note(windows_.SetText(window, text));
}

Reply PatientWindows::PressSelector(WindowHandle selector) {
  return Paused() ? Unasked(selector) : Note(windows_.PressSelector(selector));
}

void PatientWindows::SetPlacement(WindowHandle window, const Placement& placement) {
  if (!Paused()) windows_.SetPlacement(window, placement);
}

void PatientWindows::SetForeground(WindowHandle window) {
  windows_.SetForeground(window);
}

}  // namespace corvane
