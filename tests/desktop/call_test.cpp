#include "desktop/call_test.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "base/text.h"
#include "desktop/failure_picture.h"
#include "desktop/harness/screen_points.h"
#include "desktop/harness/user_input.h"

namespace corvane::desktop {

namespace {

constexpr int kControlCarrier = 2604;
constexpr std::size_t kReportedLines = 60;
constexpr int kFirstParty = 5100;
constexpr int kNextSetup_ms = 700;
// A line takes a poll: those that only say that Corvane reads must not pile up before the others.
constexpr int kNextSign_ms = 250;
// Pixels of a line of a menu that is dropped down.
constexpr int kMenuLine = 19;

// "client=1 {...}" without the client.
std::string WithoutClient(const std::string& detail) {
  const std::size_t blank = detail.find(' ');
  return detail.starts_with("client=") && blank != std::string::npos ? detail.substr(blank + 1)
                                                                     : detail;
}

bool IsWatchdogTraffic(const std::string& event) {
  return Contains(event, "AudioIsMuted");
}

void Report(std::string_view title, const std::vector<std::string>& lines) {
  std::string text(title);
  const std::size_t first = lines.size() > kReportedLines ? lines.size() - kReportedLines : 0;
  for (std::size_t index = first; index < lines.size(); ++index) text += "\n  " + lines[index];
  ADD_FAILURE() << text;
}

}  // namespace

std::string FrequencyOf(int carrier) {
  return std::to_string(carrier * 25'000LL + 300'000'000 + 12'500);
}

std::string SetCommand(std::string_view method, std::string_view value) {
  return R"({"Command": "Set", "Method": ")" + std::string(method) + R"(", "Value": )" +
         std::string(value) + "}";
}

std::string GetCommand(std::string_view method) {
  return R"({"Command": "Get", "Method": ")" + std::string(method) + R"("})";
}

std::string ExeCommand(std::string_view method) {
  return R"({"Command": "Exe", "Method": ")" + std::string(method) + R"("})";
}

std::vector<std::string> TuneTo(int carrier, std::string_view gain) {
  return {SetCommand("Frequency", FrequencyOf(carrier)), SetCommand("AudioGain", gain)};
}

std::vector<std::string> SetUpCommands() {
  return {SetCommand("Frequency", FrequencyOf(kControlCarrier)),
          SetCommand("DetectorType", "\"WFM\""),
          SetCommand("FilterBandwidth", "26000"),
          SetCommand("AudioGain", kParkedGain),
          GetCommand("IsPlaying"),
          ExeCommand("Start")};
}

CallTest::CallTest(const std::filesystem::path& folder_name,
                   const std::filesystem::path& standin_folder)
    : folder_(folder_name),
      corvane_(folder_.Path()),
      sdr_(standin_folder.empty() ? folder_.Outer() : standin_folder) {}

void CallTest::TearDown() {
  if (!HasFailure()) return;
  Report("Corvane's status log:", corvane_.StatusLog());
  Report("Corvane's call log:", corvane_.CallLogAsShown());
  std::vector<std::string> events;
  for (const LogLine& line : sdr_.Log()) {
    events.push_back(std::to_string(line.ms) + " " + line.kind + " " + line.detail);
  }
  events.erase(std::remove_if(events.begin(), events.end(), IsWatchdogTraffic), events.end());
  Report("The stand-in's log:", events);
  const std::string box = corvane_.OpenMessageBox();
  if (!box.empty()) ADD_FAILURE() << "Message box: " << box;
  if (!corvane_.Running()) ADD_FAILURE() << "Corvane does not run";
  SaveFailurePicture();
}

void CallTest::StartCorvane(const Settings& settings) {
  folder_.Write("corvane_simple.dat", SettingsFile(settings));
  if (!corvane_.Start()) throw std::runtime_error("Corvane did not start");
}

void CallTest::StartSdr(const std::vector<std::string>& options) {
  if (!sdr_.Start(options)) throw std::runtime_error("the stand-in did not start");
}

void CallTest::Begin(const Settings& settings, const std::vector<std::string>& options) {
  StartSdr(options);
  StartCorvane(settings);
  PressStart();
  AwaitScanning();
}

void CallTest::PressStart() {
  Click(corvane_.Control(ControlId::cmdStartAll));
  Await("\"Start\" to be pressed",
        [this] { return !Enabled(corvane_.Control(ControlId::cmdStartAll)); });
}

void CallTest::Do(std::string_view command) {
  if (!sdr_.Do(command)) {
    throw std::runtime_error("the stand-in refused: " + std::string(command));
  }
}

void CallTest::Line(std::string_view text) {
  Do("line \"" + ReplaceAll(ReplaceAll(text, "\\", "\\\\"), "\"", "\\\"") + "\"");
}

void CallTest::Await(std::string_view what, const std::function<bool()>& state, int limit_ms) {
  if (WaitFor(state, limit_ms)) return;
  throw std::runtime_error("waited in vain for " + std::string(what));
}

void CallTest::AwaitScanning() {
  // The network is shown right before the cycle's first look at the Network Info box; the second
  // look at it is certain once a line that came after that was listed.
  Await("the network to be shown",
        [this] { return !corvane_.Caption(ControlId::lblNetworkInfo).empty(); });
  static int number = 0;
  const std::string sign = "D_Status sign " + std::to_string(++number) + " ";
  int line = 0;
  Await("the box to be read", [&] {
    Line(sign + std::to_string(++line));
    return WaitFor([&] { return corvane_.InCallLog(sign); }, kNextSign_ms);
  });
}

void CallTest::AwaitFollowing(int call_id) {
  Await("call " + std::to_string(call_id) + " to be followed", [&] { return Follows(call_id); });
}

bool CallTest::Follows(int call_id) const {
  if (corvane_.Caption(ControlId::lblCallID) != std::to_string(call_id)) return false;
  const std::vector<std::string> commands = Commands();
  return !commands.empty() && commands.back() != SetCommand("AudioGain", kParkedGain) &&
         Contains(commands.back(), "\"AudioGain\"");
}

void CallTest::SetUpUntilFollowed(int call_id, int group, int carrier, int slot, int limit_ms) {
  const std::string id = std::to_string(call_id);
  int party = kFirstParty;
  Await(
      "call " + id + " to be followed",
      [&] {
        if (party > kFirstParty) Do("release id=" + id + " missed");
        Do("call id=" + id + " group=" + std::to_string(group) +
           " party=" + std::to_string(party++) + " carrier=" + std::to_string(carrier) +
           " slot=" + std::to_string(slot));
        return WaitFor([&] { return Follows(call_id); }, kNextSetup_ms);
      },
      limit_ms);
}

void CallTest::AwaitParked() {
  Await("the control channel", [this] {
    const std::vector<std::string> commands = Commands();
    return corvane_.Caption(ControlId::lblCallID).empty() && !commands.empty() &&
           commands.back() == SetCommand("AudioGain", kParkedGain);
  });
}

void CallTest::AwaitClicksHandled() {
  const bool options = Visible(corvane_.Control(ControlId::fraOptions));
  Click(corvane_.Control(options ? ControlId::cmdSettingTab_0 : ControlId::cmdSettingTab_2));
  Await("the other page",
        [&] { return Visible(corvane_.Control(ControlId::fraOptions)) != options; });
}

void CallTest::AwaitHandsHandled() {
  const bool options = Visible(corvane_.Control(ControlId::fraOptions));
  HandClick(corvane_.Control(options ? ControlId::cmdSettingTab_0 : ControlId::cmdSettingTab_2));
  Await("the other page after the hand's click",
        [&] { return Visible(corvane_.Control(ControlId::fraOptions)) != options; });
}

void CallTest::TakeTheFront() {
  const WindowHandle window = corvane_.Window();
  // It has the keyboard before it lies above the others.
  const auto in_front = [window] {
    return ForegroundWindow() == window && SeenInside(window) == window;
  };
  if (in_front()) return;
  // Without a window manager Wine gives the front up when the display's word of an earlier loss
  // comes after the window has it again. Asked for at once again and again, each would undo the
  // other for ever.
  constexpr int kComes_ms = 2'000;
  constexpr int kStays_ms = 250;
  Await("Corvane in front", [&] {
    BringToFront(window);
    return WaitFor(in_front, kComes_ms) && !WaitFor([&] { return !in_front(); }, kStays_ms);
  });
}

void CallTest::ChooseFromTools(int line) {
  constexpr int kInTools = 21;
  constexpr int kInTheMenuBar = 33;
  constexpr int kInTheText = 30;
  constexpr int kFrame = 3;
  HandClickAt(corvane_.Window(), kInTools, kInTheMenuBar);
  Await("the menu", [this] { return OpenMenu(corvane_.TheProcess().Id()) != 0; });
  const WindowHandle menu = OpenMenu(corvane_.TheProcess().Id());
  HandClickAt(menu, kInTheText, kFrame + line * kMenuLine + kMenuLine / 2);
  Await("the menu's end", [this] { return OpenMenu(corvane_.TheProcess().Id()) == 0; });
}

// A cycle shows another location area right before it looks at the box. When the second one is
// shown, the look of the cycle that showed the first is over.
void CallTest::AwaitBoxLookedAt() {
  for (const std::string area : {"102", "101"}) {
    Do("network 262 42 " + area);
    Await("location area " + area,
          [&] { return corvane_.Caption(ControlId::lblNetworkInfo) == "MNC:42  LA:" + area; });
  }
}

void CallTest::AwaitConnectionEnded() {
  Await("the end of the connection",
        [this] { return sdr_.Count("close") == sdr_.Count("accept"); });
}

void CallTest::AwaitInCallLog(std::string_view part, int limit_ms) {
  Await(
      "\"" + std::string(part) + "\" in the call log", [&] { return corvane_.InCallLog(part); },
      limit_ms);
}

void CallTest::AwaitInStatusLog(std::string_view part) {
  Await("\"" + std::string(part) + "\" in the status log",
        [&] { return corvane_.InStatusLog(part); });
}

void CallTest::ExpectFollowsACall(int call_id) {
  const std::string id = std::to_string(call_id);
  SetUpUntilFollowed(call_id, 9055, 2615, 3);
  Do("release id=" + id);
  AwaitInCallLog("Call ID: " + id + " - VC D-Released");
  AwaitParked();
}

std::vector<std::string> CallTest::Commands(std::size_t since) const {
  std::vector<std::string> commands;
  for (const std::string& detail : sdr_.Details("command")) {
    std::string command = WithoutClient(detail);
    if (command != GetCommand("AudioIsMuted")) commands.push_back(std::move(command));
  }
  commands.erase(commands.begin(),
                 commands.begin() + static_cast<std::ptrdiff_t>(std::min(since, commands.size())));
  return commands;
}

void CallTest::ExpectCommands(std::size_t since, const std::vector<std::string>& expected) {
  const bool arrived =
      WaitFor([&] { return Commands(since).size() >= expected.size(); }, kGenerousLimit_ms);
  EXPECT_TRUE(arrived) << "fewer commands than expected";
  EXPECT_EQ(Commands(since), expected);
}

void CallTest::ExpectNothingFollowed(std::size_t since) {
  AwaitLinesRead();
  EXPECT_EQ(Commands(since), std::vector<std::string>{});
  EXPECT_EQ(corvane_.Caption(ControlId::lblCallID), "");
}

void CallTest::AwaitLinesRead() {
  static int number = 0;
  const std::string line = "D_Status read up to here " + std::to_string(++number) + " ";
  Line(line);
  AwaitInCallLog(line);
}

}  // namespace corvane::desktop
