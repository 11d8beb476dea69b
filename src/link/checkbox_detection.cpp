// One pixel of the box against two reference colours.
#include "link/checkbox_detection.h"

#include "base/number_text.h"

namespace corvane {

namespace {

constexpr std::int32_t kGlyphInset = 7;  // from the control's left top corner, pixels

bool Shows(const Label& label, std::optional<std::int32_t> colour) {
  return colour && ParseShown<std::int32_t>(label.caption.get()) == colour;
}

}  // namespace

std::optional<std::int32_t> ReadCheckboxColour(WindowOps& windows, WindowHandle box) {
  ScreenRect rect;
  if (box == 0 || !windows.GetRect(box, rect)) return std::nullopt;
  const std::int32_t x = rect.left + kGlyphInset;
  const std::int32_t y = rect.top + kGlyphInset;
  if (!windows.IsSeenAt(box, x, y)) return std::nullopt;
  return windows.ScreenPixel(box, x, y);
}

CheckboxDetection::CheckboxDetection(LinkContext& context, Presets& presets)
    : context_(context),
      presets_(presets),
      timer_(context.loop.MakeTimer(kTickMs, [this] { Tick(); })) {}

std::optional<std::int32_t> CheckboxDetection::Sample() {
  return ReadCheckboxColour(context_.windows, context_.handles[SdrRole::kDemodulatorBox]);
}

void CheckboxDetection::Take(std::int32_t& reference, Label& shown) {
  const std::optional<std::int32_t> colour = Sample();
  if (!colour) return;
  reference = *colour;
  shown.caption = Decimal(reference);
}

void CheckboxDetection::SetCheckedValue() {
  Take(presets_.CheckedColour, context_.form.lblCheckedValue);
}

void CheckboxDetection::SetUnCheckedValue() {
  Take(presets_.UnCheckedColour, context_.form.lblUnCheckedValue);
}

void CheckboxDetection::Tick() {
  Form1& form = context_.form;
  if (!context_.flags.NetRemoteLinkUp) {
    form.lblTetraPanelExpanded.caption = "Is SDR# started?";
    return;
  }
  const bool visible = context_.windows.IsVisible(context_.handles[SdrRole::kDemodulatorBox]);
  form.lblTetraPanelExpanded.caption = visible
                                           ? "'Demodulator and Auto' are Visible"
                                           : "NOT Visible - Is TETRA Demodulator panel expanded?";
  form.cmdSetCheckedValue.enabled = visible;
  form.cmdSetUnCheckedValue.enabled = visible;

  std::string state;
  if (Shows(form.lblCheckedValue, Sample())) state = "Demodulator is Checked?";
  if (Shows(form.lblUnCheckedValue, Sample())) state = "Demodulator is UnChecked?";
  form.lblValidateState.caption = state;
}

}  // namespace corvane
