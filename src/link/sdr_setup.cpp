// The set-up sequence. Every pause lets events run, so that each answer is read by itself.
#include "link/sdr_setup.h"

#include <array>
#include <cstdint>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "link/checkbox_detection.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr int kSettleMs = 100;
constexpr int kStepMs = 50;
constexpr int kShowSteps = 30;  // of kStepMs, for SDR# to come to the front and start playing

// SDR#'s placement while it is shown normally, neither minimised nor maximised.
std::optional<Placement> NormalPlacement(LinkContext& context) {
  Placement placement;
  const WindowHandle window = context.handles[SdrRole::kMainWindow];
  if (window == 0 || !context.windows.GetPlacement(window, placement)) return std::nullopt;
  if (placement.show_state != kShowNormal) return std::nullopt;
  return placement;
}

}  // namespace

std::optional<ScreenRect> ParsePosition(std::string_view text) {
  const std::vector<std::string> parts = Split(text, ',');
  if (parts.size() != 4) return std::nullopt;
  std::array<std::int32_t, 4> edges{};
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const auto edge = ParseShown<std::int32_t>(parts[i]);
    if (!edge) return std::nullopt;
    edges[i] = *edge;
  }
  return ScreenRect{edges[0], edges[1], edges[2], edges[3]};
}

void TakeSdrPosition(LinkContext& context) {
  const auto placement = NormalPlacement(context);
  if (!placement) return;
  const ScreenRect& rect = placement->normal_position;
  context.form.lblPositionSdrSharpCC.caption = Decimal(rect.left) + "," + Decimal(rect.top) + "," +
                                               Decimal(rect.right) + "," + Decimal(rect.bottom);
}

void SdrSetup::Position() {
  if (!context_.form.chkPositionSDRsharps.checked()) return;
  const auto position = ParsePosition(context_.form.lblPositionSdrSharpCC.caption.get());
  if (!position) return;
  auto placement = NormalPlacement(context_);
  if (!placement) return;
  placement->normal_position = *position;
  context_.windows.SetPlacement(context_.handles[SdrRole::kMainWindow], *placement);
}

bool SdrSetup::MustStop() const {
  return context_.flags.mblnShuttingDown || !net_remote_.SocketConnected();
}

bool SdrSetup::Pause(int ms) {
  return SleepAndYield(context_.loop, ms, [this] { return MustStop(); });
}

bool SdrSetup::Set(const std::string& method, const std::string& value) {
  net_remote_.SendNetRemoteSet(method, value);
  return !MustStop() && Pause(kStepMs);
}

bool SdrSetup::Run() {
  press_unanswered_ = false;
  Position();
  if (!Pause(kSettleMs) || !Tune() || !Play() || !ShowSdr() || !SetCheckBoxes()) return false;
  context_.windows.SetForeground(context_.windows.OwnMainWindow());
  context_.flags.mblnSetupDone = true;
  return true;
}

bool SdrSetup::Tune() {
  return Set("Frequency", Decimal(CarrierFrequency(presets_, presets_.ParkCarrier))) &&
         Set("DetectorType", "\"WFM\"") && Set("FilterBandwidth", "26000") &&
         Set("AudioGain", "25");
}

bool SdrSetup::Play() {
  // An SDR# that was started anew is not playing, whatever the one before it last reported.
  context_.flags.mblnIsPlaying = false;
  net_remote_.SendNetRemoteGet("IsPlaying");
  if (MustStop() || !Pause(kStepMs)) return false;
  context_.loop.DoEvents();
  if (MustStop()) return false;
  if (context_.flags.mblnIsPlaying) return true;
  net_remote_.SendNetRemoteExe("Start");
  if (MustStop()) return false;
  context_.loop.DoEvents();
  return Pause(kStepMs);
}

bool SdrSetup::ShowSdr() {
  context_.windows.SetForeground(context_.handles[SdrRole::kMainWindow]);
  for (int step = 0; step < kShowSteps; ++step) {
    if (!Pause(kStepMs)) return false;
  }
  network_info_.Minimise();
  return Pause(kStepMs);
}

bool SdrSetup::SetCheckBoxes() {
  const auto colour_of = [this](SdrRole box) {
    return ReadCheckboxColour(context_.windows, context_.handles[box]);
  };
  if (!context_.windows.IsVisible(context_.handles[SdrRole::kDemodulatorBox])) {
    AddStatusLineInView(context_.form, "*** You need to expand TETRA Demodulator panel ***");
    return true;
  }
  if (colour_of(SdrRole::kDemodulatorBox) == presets_.UnCheckedColour) {
    Press(SdrRole::kDemodulatorBox);
  }
  if (!Pause(kStepMs)) return false;
  if (colour_of(SdrRole::kAutoBox) == presets_.CheckedColour) {
    Press(SdrRole::kAutoBox);
  }
  return true;
}

void SdrSetup::Press(SdrRole box) {
  if (context_.windows.Press(context_.handles[box]) == Reply::kNoAnswer) press_unanswered_ = true;
}

bool SdrSetup::FinishCheckBoxes() {
  if (!press_unanswered_) return true;
  // Whoever answers a question has dealt with what was sent before, the press included.
  const WindowHandle box = context_.handles[SdrRole::kDemodulatorBox];
  if (context_.windows.Text(box).reply == Reply::kNoAnswer) return true;
  press_unanswered_ = false;
  context_.windows.SetForeground(context_.handles[SdrRole::kMainWindow]);
  if (!Pause(kSettleMs) || !SetCheckBoxes()) return false;
  context_.windows.SetForeground(context_.windows.OwnMainWindow());
  return true;
}

}  // namespace corvane
