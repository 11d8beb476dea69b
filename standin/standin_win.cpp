// SdrStandin.exe: the model behind real windows, sockets and sound, on one thread.
#include <windows.h>
// mmsystem.h needs windows.h before it.
#include <mmsystem.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "standin/cover_win.h"
#include "standin/mirror_win.h"
#include "standin/model.h"
#include "standin/sound_win.h"
#include "standin/tcp_wire_win.h"

namespace corvane::standin {
namespace {

constexpr char kTitle[] = "SdrStandin";
constexpr int kExitDied = 3;
constexpr DWORD kLongestWaitMs = 1000;
constexpr DWORD kListDelayMs = 150;
// While a window is dragged or a menu is open only timer messages come.
constexpr UINT kTimerMs = 20;

std::string ReadFile(const std::string& path, std::string& content) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) return "cannot open the file";
  char buffer[65536];
  for (;;) {
    const std::size_t got = std::fread(buffer, 1, sizeof buffer, file);
    content.append(buffer, got);
    if (got < sizeof buffer || content.size() > kMaxScenarioBytes) break;
  }
  const bool failed = std::ferror(file) != 0;
  std::fclose(file);
  return failed ? "cannot read the file" : "";
}

// Entries as they come, each written through to the file at once.
class LogFile {
 public:
  ~LogFile() {
    if (file_ != nullptr) std::fclose(file_);
  }
  [[nodiscard]] bool Open(const std::string& path) {
    file_ = std::fopen(path.c_str(), "wb");
    return file_ != nullptr;
  }
  void Write(const LogEntry& entry) {
    if (file_ == nullptr) return;
    const std::string line = LogLine(entry) + "\r\n";
    std::fwrite(line.data(), 1, line.size(), file_);
    std::fflush(file_);
  }

 private:
  std::FILE* file_ = nullptr;
};

class Program {
 public:
  Program(const Options& options, Scenario scenario, LogFile& log)
      : start_ms_(timeGetTime()), model_(options, std::move(scenario)) {
    for (const LogEntry& entry : model_.log().entries()) log.Write(entry);
    model_.log().SetListener([&log](const LogEntry& entry) { log.Write(entry); });
    model_.SetListeners({[] {}, [this](std::int64_t ms) { hang_ms_ = ms; },
                         [this](const std::optional<Tone>& tone) { OnTone(tone); }});
    const auto before_input = [this] { Advance(); };
    wire_ = std::make_unique<TcpWire>(model_.server(), before_input);
    model_.server().SetWire(wire_.get());
    mirror_ = std::make_unique<Mirror>(
        model_.tree(), Mirror::Hooks{before_input, [this](WindowId id) { OnClose(id); },
                                     [this](std::string_view text) { return OnCommand(text); }});
  }

  ~Program() { model_.server().SetWire(nullptr); }

  int Run() {
    const UINT_PTR timer = SetTimer(nullptr, 0, kTimerMs, nullptr);
    while (!closed_) {
      Advance();
      if (!model_.running()) TerminateProcess(GetCurrentProcess(), kExitDied);
      if (model_.finished() && model_.options().exit_when_done) break;
      HangIfAsked();
      MSG message;
      while (!closed_ && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        Dispatch(message);
        Advance();
        HangIfAsked();
      }
      Wait();
    }
    KillTimer(nullptr, timer);
    return 0;
  }

 private:
  [[nodiscard]] std::int64_t NowMs() const {
    return std::int64_t{timeGetTime() - start_ms_} * model_.options().speed;
  }

  // Windows that are changed meanwhile may let messages in; time does not move on for them.
  void Advance() {
    if (advancing_) return;
    advancing_ = true;
    model_.Advance(NowMs());
    if (mirror_ != nullptr) mirror_->Flush();
    advancing_ = false;
  }

  // Not inside a message of another program, which is to be answered first.
  void HangIfAsked() {
    if (hang_ms_ == 0 || InSendMessage()) return;
    const std::int64_t left = model_.hung_until_ms() - NowMs();
    hang_ms_ = 0;
    if (left > 0) Sleep(static_cast<DWORD>(left / model_.options().speed));
  }

  void Dispatch(MSG& message) {
    const HWND main = mirror_->Handle(model_.ids().main);
    if (main != nullptr && IsDialogMessageA(main, &message)) return;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }

  // How long until the list boxes are to be shown; they are when that is now.
  std::int64_t ShowListsWhenDue() {
    if (closed_ || !mirror_->lists_wait()) {
      lists_wait_since_ms_.reset();
      return kLongestWaitMs;
    }
    const DWORD now_ms = timeGetTime();
    if (!lists_wait_since_ms_) lists_wait_since_ms_ = now_ms;
    const DWORD waited_ms = now_ms - *lists_wait_since_ms_;
    if (waited_ms < kListDelayMs) return kListDelayMs - waited_ms;
    mirror_->ShowLists();
    lists_wait_since_ms_.reset();
    return kLongestWaitMs;
  }

  void Wait() {
    std::int64_t wait = ShowListsWhenDue();
    if (const std::optional<std::int64_t> due = model_.NextDueMs()) {
      const int speed = model_.options().speed;
      wait = std::clamp<std::int64_t>((*due - NowMs() + speed - 1) / speed, 0, wait);
    }
    if (closed_ || hang_ms_ > 0 || !model_.running()) return;
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(wait), QS_ALLINPUT,
                                MWMO_INPUTAVAILABLE);
  }

  void OnClose(WindowId id) {
    if (id == model_.ids().info_window) {
      model_.windows().CloseInfo();
    } else {
      closed_ = true;
    }
  }

  bool OnCommand(std::string_view text) {
    model_.log().Add(model_.now_ms(), "control", text);
    const std::string fault = model_.Do(text);
    if (!fault.empty()) model_.log().Add(model_.now_ms(), "error", fault);
    return fault.empty();
  }

  void OnTone(const std::optional<Tone>& tone) {
    if (sound_.Play(tone) || sound_failed_) return;
    sound_failed_ = true;
    model_.log().Add(model_.now_ms(), "error", "there is no sound device");
  }

  DWORD start_ms_;
  bool advancing_ = false;
  std::optional<DWORD> lists_wait_since_ms_;
  bool closed_ = false;
  bool sound_failed_ = false;
  std::int64_t hang_ms_ = 0;
  Sound sound_;
  Model model_;
  std::unique_ptr<TcpWire> wire_;
  std::unique_ptr<Mirror> mirror_;
};

int Complain(const std::string& text) {
  std::fprintf(stderr, "%s: %s\n", kTitle, text.c_str());
  MessageBoxA(nullptr, text.c_str(), kTitle, MB_OK | MB_ICONERROR);
  return kExitUsage;
}

int Main(const std::vector<std::string>& arguments) {
  if (!arguments.empty() && arguments[0] == kCoverSwitch) return RunCover(arguments);
  Options options;
  if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
    MessageBoxA(nullptr, OptionsHelp().c_str(), kTitle, MB_OK | MB_ICONINFORMATION);
    return 0;
  }
  const std::string fault = ParseOptions(arguments, options);
  if (!fault.empty()) return Complain(fault + "\r\n\r\n" + OptionsHelp());
  Scenario scenario;
  if (!options.scenario_file.empty()) {
    std::string content;
    std::string problem = ReadFile(options.scenario_file, content);
    if (problem.empty()) problem = ParseScenario(content, scenario);
    if (!problem.empty()) return Complain(options.scenario_file + ": " + problem);
  }
  LogFile log;
  if (!options.log_file.empty() && !log.Open(options.log_file)) {
    return Complain(options.log_file + ": cannot be written");
  }
  timeBeginPeriod(1);
  const int code = Program(options, std::move(scenario), log).Run();
  timeEndPeriod(1);
  return code;
}

}  // namespace
}  // namespace corvane::standin

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  return corvane::standin::Main({__argv + 1, __argv + __argc});
}
