// Passes everything on except messages during the pause.
#include "link/patient_windows.h"

namespace corvane {

bool PatientWindows::Paused() const {
  return loop_.TickMs() < paused_until_ms_;
}

void PatientWindows::NoteAnswer(WindowHandle window, bool answered) {
  if (answered || !windows_.IsAlive(window)) return;
  paused_until_ms_ = loop_.TickMs() + kPauseMs;
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

Answer PatientWindows::Send(WindowHandle window, unsigned message, std::uintptr_t w_param,
                            std::intptr_t l_param) {
  if (Paused()) return {};
  const Answer answer = windows_.Send(window, message, w_param, l_param);
  NoteAnswer(window, answer.answered);
  return answer;
}

Answer PatientWindows::SetText(WindowHandle window, const std::string& text) {
  if (Paused()) return {};
  const Answer answer = windows_.SetText(window, text);
  NoteAnswer(window, answer.answered);
  return answer;
}

TextAnswer PatientWindows::GetText(WindowHandle window, std::size_t size) {
  if (Paused()) return {};
  TextAnswer answer = windows_.GetText(window, size);
  NoteAnswer(window, answer.answered);
  return answer;
}

TextAnswer PatientWindows::GetLine(WindowHandle window, std::int32_t line, std::size_t size) {
  if (Paused()) return {};
  TextAnswer answer = windows_.GetLine(window, line, size);
  NoteAnswer(window, answer.answered);
  return answer;
}

bool PatientWindows::GetPlacement(WindowHandle window, Placement& placement) {
  return windows_.GetPlacement(window, placement);
}

void PatientWindows::SetPlacement(WindowHandle window, const Placement& placement) {
  if (Paused()) return;
  windows_.SetPlacement(window, placement);
}

bool PatientWindows::GetRect(WindowHandle window, ScreenRect& rect) {
  return windows_.GetRect(window, rect);
}

void PatientWindows::SetForeground(WindowHandle window) {
  windows_.SetForeground(window);
}

std::int32_t PatientWindows::ScreenPixel(WindowHandle control, std::int32_t x, std::int32_t y) {
  return windows_.ScreenPixel(control, x, y);
}

WindowHandle PatientWindows::OwnMainWindow() {
  return windows_.OwnMainWindow();
}

}  // namespace corvane
