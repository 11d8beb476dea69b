// Records a followed call into a WAV file through the waveaudio device "recsound".
//
// One temporary file takes the recording while it lasts; at its end it gets its name, or is deleted
// when the call was ended by force and the user asked for that. No failure stops the program: each
// failed command adds one status line. A device that is slow to begin keeps nobody waiting.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "base/files.h"
#include "panel/form1.h"
#include "record/mci.h"

namespace corvane {

class Recorder {
 public:
  // `log_folder` gives the folder of the day, without "\" at its end.
  Recorder(Mci& mci, Files& files, Form1& form, std::function<std::string()> log_folder);

  std::string RecordingName;    // base name of the last start
  std::string ForcedEndSuffix;  // appended to the final name; cleared at each followed call

  // 16 bits, mono, 22050 samples a second.
  void StartRecording(const std::string& name);
  // Only after a start.
  void StopRecording();

  // Called again and again while a call is followed: reports a "record" that has failed meanwhile.
  void Attend();

  // The system is about to end the program: each command gets one second from now on.
  void Hurry() { mci_.Hurry(); }

 private:
  void Step(const MciCommand& command, const char* suffix);
  void Report(const Mci::Reply& reply, const char* suffix);
  void BeginToRecord();
  [[nodiscard]] std::int32_t QueryRecordingFormat();
  void FinaliseRecording(const std::string& folder, std::int32_t bytes_per_second);
  void NoteSilence(const std::string& path);

  Mci& mci_;
  Files& files_;
  Form1& form_;
  std::function<std::string()> log_folder_;
  bool beginning_ = false;  // "record" is under way
  bool silent_ = false;     // the last recording was
};

}  // namespace corvane
