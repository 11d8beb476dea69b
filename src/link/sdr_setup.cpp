// The set-up sequence. Every pause lets events run, so that each answer is read by itself.
#include "link/sdr_setup.h"

#include "base/number_text.h"
#include "link/checkbox_detection.h"
#include "link/sdr_position.h"
#include "panel/logs.h"

namespace corvane {

namespace {

constexpr int kSettleMs = 100;
constexpr int kStepMs = 50;
constexpr int kShowSteps = 30;  // of kStepMs, for SDR# to come to the front and start playing

}  // namespace

bool SdrSetup::MustStop() const {
  return context_.flags.mblnShuttingDown || !net_remote_.SocketConnected();
}

bool SdrSetup::Pause(int ms) {
  return SleepAndYield(context_.loop, ms, [this] { return MustStop(); });
}

bool SdrSetup::AwaitReply() {
  return !MustStop();
}

bool SdrSetup::Set(const std::string& method, const std::string& value) {
  net_remote_.SendNetRemoteSet(method, value);
  return AwaitReply() && Pause(kStepMs);
}

bool SdrSetup::Run() {
  ApplySdrPosition(context_);
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
  if (!AwaitReply() || !Pause(kStepMs)) return false;
  context_.loop.DoEvents();
  if (MustStop()) return false;
  if (context_.flags.mblnIsPlaying) return true;
  net_remote_.SendNetRemoteExe("Start");
  if (!AwaitReply()) return false;
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
    return ReadCheckboxColour(context_.windows, context_.handles[box], presets_);
  };
  if (!context_.windows.IsVisible(context_.handles[SdrRole::kDemodulatorBox])) {
    AddStatusLineInView(context_.form, "*** You need to expand TETRA Demodulator panel ***");
    return true;
  }
  if (colour_of(SdrRole::kDemodulatorBox) == presets_.UnCheckedColour) {
    PressButton(context_, SdrRole::kDemodulatorBox);
  }
  if (!Pause(kStepMs)) return false;
  if (colour_of(SdrRole::kAutoBox) == presets_.CheckedColour) {
    PressButton(context_, SdrRole::kAutoBox);
  }
  return true;
}

}  // namespace corvane
