// What the desktop cases share: both programs in a folder of the case's own, commands to the
// stand-in, and waiting for what Corvane shows and sends.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/harness/corvane_program.h"
#include "desktop/harness/program_folder.h"
#include "desktop/harness/standin_program.h"
#include "desktop/harness/wait.h"
#include "ui/control_ids.h"

namespace corvane::desktop {

// The stand-in's network: base 300 MHz, offset 12.5 kHz, control channel 2604.
[[nodiscard]] std::string FrequencyOf(int carrier);

// AudioGain while a call is followed and while parked, with the usual settings.
inline constexpr std::string_view kVoiceGain = "47";
inline constexpr std::string_view kParkedGain = "25";

// Lines of "Tools".
inline constexpr int kToolsEditor = 0;
inline constexpr int kToolsCompact = 1;

// The commands as they stand on the wire.
[[nodiscard]] std::string SetCommand(std::string_view method, std::string_view value);
[[nodiscard]] std::string GetCommand(std::string_view method);
[[nodiscard]] std::string ExeCommand(std::string_view method);
// What tunes to a carrier.
[[nodiscard]] std::vector<std::string> TuneTo(int carrier, std::string_view gain);
// What the one-time set-up of a connection sends, to an SDR# that does not play yet.
[[nodiscard]] std::vector<std::string> SetUpCommands();

class CallTest : public ::testing::Test {
 protected:
  // With a name, the programs lie in a folder of that name; with a folder for the stand-in, its log
  // lies there.
  explicit CallTest(const std::filesystem::path& folder_name = {},
                    const std::filesystem::path& standin_folder = {});
  // On failure: what both programs show, and a picture of the screen.
  void TearDown() override;

  [[nodiscard]] CorvaneProgram& Corvane() { return corvane_; }
  [[nodiscard]] StandinProgram& Sdr() { return sdr_; }
  [[nodiscard]] ProgramFolder& Folder() { return folder_; }

  // -- Each of these ends the case when what it is for does not come about.

  void StartCorvane(const Settings& settings = {});
  void StartSdr(const std::vector<std::string>& options = {});
  // Both programs, "Start" pressed, set up and reading the control channel.
  void Begin(const Settings& settings = {}, const std::vector<std::string>& options = {});
  void PressStart();
  // A command of the stand-in's scenario language.
  void Do(std::string_view command);
  // A line in the Network Info box, whatever is tuned.
  void Line(std::string_view text);
  // Waits for a state; `what` says in the report what did not come.
  void Await(std::string_view what, const std::function<bool()>& state,
             int limit_ms = kGenerousLimit_ms);
  void AwaitScanning();
  // The call is followed, and all that goes with that was sent.
  void AwaitFollowing(int call_id);
  // Sets a call up again and again until it is followed. Each setup has another calling party,
  // because a line that repeats one of the two before it does not count.
  void SetUpUntilFollowed(int call_id, int group, int carrier, int slot,
                          int limit_ms = kGenerousLimit_ms);
  void AwaitParked();
  // All that was clicked before was handled: a click that came behind it was.
  void AwaitClicksHandled();
  // The same for pointer and keys (harness/user_input.h), which come another way than messages.
  void AwaitHandsHandled();
  // Corvane's main window is in front, so that pointer and keys reach it.
  void TakeTheFront();
  // Chooses a line of "Tools", counted from 0, as the pointer does it.
  void ChooseFromTools(int line);
  // Corvane has looked at the Network Info box with all that is in it now.
  void AwaitBoxLookedAt();
  // The server has seen the end of Corvane's connection, and so all that came before it.
  void AwaitConnectionEnded();
  void AwaitInCallLog(std::string_view part, int limit_ms = kGenerousLimit_ms);
  void AwaitInStatusLog(std::string_view part);
  // A call is set up until it is followed, then released: the program is well.
  void ExpectFollowsACall(int call_id = 3000);

  // The commands that arrived since the mark, "AudioIsMuted" questions left out.
  [[nodiscard]] std::size_t Mark() const { return Commands().size(); }
  [[nodiscard]] std::vector<std::string> Commands(std::size_t since = 0) const;
  // Waits until as many as `expected` have arrived since the mark, and compares.
  void ExpectCommands(std::size_t since, const std::vector<std::string>& expected);
  // Nothing is followed and nothing was sent since the mark. A further line proves that those
  // before it were read.
  void ExpectNothingFollowed(std::size_t since);
  // The lines that were written before were read and acted on.
  void AwaitLinesRead();

 private:
  [[nodiscard]] bool Follows(int call_id) const;

  ProgramFolder folder_;
  CorvaneProgram corvane_;
  StandinProgram sdr_;
};

}  // namespace corvane::desktop
