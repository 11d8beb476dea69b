// Tells the state of the plug-in's owner-drawn check boxes by the colour of one pixel, and lets the
// user calibrate it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "link/link_context.h"
#include "panel/presets.h"

namespace corvane {

// The colour, as the screen gives it, of the pixel that lies inside the box's glyph. Nothing, which
// is equal to no reference colour there can be, for a box that is not there and for one that
// another window covers at that point: such a window can well have a reference colour by accident.
[[nodiscard]] std::optional<std::int32_t> ReadCheckboxColour(WindowOps& windows, WindowHandle box);

class CheckboxDetection {
 public:
  static constexpr int kTickMs = 500;

  CheckboxDetection(LinkContext& context, Presets& presets);

  // Take the colour of the "Demodulator" box as a reference and show it. Without such a box, and
  // while something covers it, the reference stays as it is.
  void SetCheckedValue();    // cmdSetCheckedValue
  void SetUnCheckedValue();  // cmdSetUnCheckedValue

  // Shows what the box reads as now. Ticks of tmrDetectcheckbox come here.
  void Tick();

  // Enabled while the calibration page is shown.
  Timer& tmrDetectcheckbox() { return *timer_; }

 private:
  [[nodiscard]] std::optional<std::int32_t> Sample();
  void Take(std::int32_t& reference, Label& shown);

  LinkContext& context_;
  Presets& presets_;
  std::unique_ptr<Timer> timer_;
};

}  // namespace corvane
