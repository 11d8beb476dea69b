// One pixel of the box against two reference colours.
#include "link/checkbox_detection.h"

#include "base/number_text.h"

namespace corvane {

namespace {

constexpr std::int32_t kGlyphInset = 7;  // from the control's left top corner, pixels
// No screen shows these; one of the three is always free of both references.
constexpr std::int32_t kNoColours[] = {-2, -3, -4};

bool Shows(const Label& label, std::int32_t colour) {
  return ParseShown<std::int32_t>(label.caption.get()) == colour;
}

}  // namespace

std::int32_t ReadCheckboxColour(WindowOps& windows, WindowHandle box, const Presets& presets) {
  ScreenRect rect;
  if (box != 0 && windows.GetRect(box, rect)) {
    return windows.ScreenPixel(box, rect.left + kGlyphInset, rect.top + kGlyphInset);
  }
  std::int32_t colour = kNoColours[0];
  for (const std::int32_t candidate : kNoColours) {
    colour = candidate;
    if (colour != presets.CheckedColour && colour != presets.UnCheckedColour) break;
  }
  return colour;
}

CheckboxDetection::CheckboxDetection(LinkContext& context, Presets& presets)
    : context_(context),
      presets_(presets),
      timer_(context.loop.MakeTimer(kTickMs, [this] { Tick(); })) {}

std::int32_t CheckboxDetection::Sample() {
  return ReadCheckboxColour(context_.windows, context_.handles[SdrRole::kDemodulatorBox], presets_);
}

bool CheckboxDetection::BoxIsThere() {
  ScreenRect rect;
  const WindowHandle box = context_.handles[SdrRole::kDemodulatorBox];
  return box != 0 && context_.windows.GetRect(box, rect);
}

void CheckboxDetection::SetCheckedValue() {
  if (!BoxIsThere()) return;
  presets_.CheckedColour = Sample();
  context_.form.lblCheckedValue.caption = Decimal(presets_.CheckedColour);
}

void CheckboxDetection::SetUnCheckedValue() {
  if (!BoxIsThere()) return;
  presets_.UnCheckedColour = Sample();
  context_.form.lblUnCheckedValue.caption = Decimal(presets_.UnCheckedColour);
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
