// Flags that the whole program shares.
#pragma once

#include <cstdint>

namespace corvane {

// A 16-bit boolean whose True is all ones.
class Flag {
 public:
  constexpr Flag() = default;
  constexpr Flag& operator=(bool value) {
    bits_ = value ? std::int16_t{-1} : std::int16_t{0};
    return *this;
  }
  constexpr operator bool() const { return bits_ != 0; }  // NOLINT: reads as the plain value

 private:
  std::int16_t bits_ = 0;
};

struct ProgramFlags {
  Flag mblnFormLoaded;               // the main window is loaded; set last, never cleared
  Flag mblnShuttingDown;             // set once when the main window starts to close, never cleared
  Flag NetRemoteLinkUp;              // every SDR# window was found and Net Remote was switched on
  Flag NetRemoteConnected;           // the last state check saw the socket connected
  Flag mblnSending;                  // a command is being built and sent
  Flag mblnReceiving;                // the reply handler runs
  Flag mblnSetupDone;                // the one-time set-up of this connection is complete
  Flag mblnIsPlaying;                // last "IsPlaying" that SDR# reported
  Flag mblnAudioMuted;               // last "AudioIsMuted" that SDR# reported
  Flag mblnNetRemoteResetRequested;  // an error reply asks for a reset of the link

  // Another name by which parts of the program know the same cell.
  [[nodiscard]] bool AudioIsMuted() const { return mblnAudioMuted; }
};

}  // namespace corvane
