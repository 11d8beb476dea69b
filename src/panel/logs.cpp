// Log conventions.
#include "panel/logs.h"

namespace corvane {

namespace {
constexpr int kRecordingBorderWidth = 3;
}  // namespace

void AddStatusLine(Form1& form, const std::string& text) {
  if (form.lstStatusLog.count() > kStatusLogLimit) form.lstStatusLog.Clear();
  form.lstStatusLog.Add(text);
}

void AddStatusLineInView(Form1& form, const std::string& text) {
  AddStatusLine(form, text);
  ShowLastStatusLine(form);
}

void AddCallLine(Form1& form, const std::string& text) {
  form.lstCallLog.Add(text);
  if (form.lstCallLog.top_index() == form.lstCallLog.count() - kCallLogRows) {
    form.lstCallLog.SelectLast();
  }
}

void ShowLastStatusLine(Form1& form) {
  form.lstStatusLog.SelectLast();
}

void ShowRecording(Form1& form, bool recording) {
  form.ShapeBusy_state.border_colour = recording ? kRed : kWindowText;
  form.ShapeBusy_state.border_width = recording ? kRecordingBorderWidth : 1;
}

}  // namespace corvane
