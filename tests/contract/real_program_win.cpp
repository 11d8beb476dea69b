// Factories of the real loop, clock, files and prompts.
#include "contract/real_program_win.h"

#include <windows.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <thread>
#include <utility>

#include "base/files_win.h"
#include "base/prompts_win.h"
#include "base/wall_clock_win.h"
#include "contract/child_windows.h"

namespace corvane::contract {

// Not with Run, which a wait inside an event would have to outlast.
void RealLoopUnderTest::Idle(int ms) {
  const std::int64_t end = loop_.TickMs() + ms;
  for (std::int64_t left = ms; left > 0; left = end - loop_.TickMs()) {
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(left), QS_ALLINPUT,
                                MWMO_INPUTAVAILABLE);
    loop_.DoEvents();
  }
}

void RealLoopUnderTest::SetErrorReporter(std::function<void(const std::string&)> reporter) {
  loop_.SetErrorReporter(std::move(reporter));
}

TemporaryFolder::TemporaryFolder() {
  static int count = 0;
  std::array<char, MAX_PATH> base{};
  GetTempPathA(MAX_PATH, base.data());
  path_ = std::string(base.data()) + "corvane contract " + std::to_string(GetCurrentProcessId()) +
          "-" + std::to_string(++count);
  if (CreateDirectoryA(path_.c_str(), nullptr) == 0) {
    throw std::runtime_error("no temporary folder " + path_);
  }
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

int RunEndOfProgram(const std::string& marker) {
  LoopWin loop;
  PromptsWin prompts;
  FilesWin files;
  const auto mark = [&] { static_cast<void>(files.WriteAll(marker, "after the end")); };
  const auto timer = loop.MakeTimer(10, mark);
  loop.Post(EventSource::kUser, [&] {
    timer->SetEnabled(true);
    prompts.EndProgram();
    mark();
  });
  loop.Post(EventSource::kUser, mark);
  loop.Run();
  return 3;
}

namespace {

class RealFilesUnderTest : public FilesUnderTest {
 public:
  ~RealFilesUnderTest() override { Release(); }
  Files& files() override { return files_; }
  std::string folder() override { return folder_.path(); }
  void Hold(const std::string& path, Sharing sharing) override {
    DWORD access = GENERIC_READ | GENERIC_WRITE;
    DWORD share = sharing == Sharing::kRead ? FILE_SHARE_READ : 0;
    if (sharing == Sharing::kAll) {
      access |= DELETE;
      share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    }
    held_ = CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr);
    if (held_ == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot hold " + path);
  }
  void HoldFor(Loop&, const std::string& path, Sharing sharing, int ms) override {
    Hold(path, sharing);
    holder_ = std::thread([file = std::exchange(held_, INVALID_HANDLE_VALUE), ms] {
      ::Sleep(static_cast<DWORD>(ms));
      CloseHandle(file);
    });
  }
  bool western() override { return GetACP() == 1252; }
  void Release() override {
    if (holder_.joinable()) holder_.join();
    if (held_ != INVALID_HANDLE_VALUE) CloseHandle(held_);
    held_ = INVALID_HANDLE_VALUE;
  }
  bool SetReadOnly(const std::string& path, bool read_only) override {
    SetFileAttributesA(path.c_str(), read_only ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return true;
    CloseHandle(file);
    return !read_only;
  }

 private:
  TemporaryFolder folder_;
  FilesWin files_;
  HANDLE held_ = INVALID_HANDLE_VALUE;
  std::thread holder_;
};

constexpr int kBoxTextId = 0xFFFF;

BOOL CALLBACK FindBox(HWND window, LPARAM found) {
  std::array<char, 16> name{};
  GetClassNameA(window, name.data(), static_cast<int>(name.size()));
  // The box behind another one is disabled.
  if (std::string(name.data()) != "#32770" || IsWindowEnabled(window) == 0 ||
      IsWindowVisible(window) == 0) {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

std::string WindowText(HWND window) {
  std::string text(2048, '\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool ShowsIcon(HWND box) {
  for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    std::array<char, 16> name{};
    GetClassNameA(child, name.data(), static_cast<int>(name.size()));
    const LONG_PTR kind = GetWindowLongPtrA(child, GWL_STYLE) & SS_TYPEMASK;
    if (std::string(name.data()) != "Static" || kind != SS_ICON) continue;
    if (SendMessageA(child, STM_GETICON, 0, 0) != 0 && IsWindowVisible(child) != 0) return true;
  }
  return false;
}

class RealPromptsUnderTest : public PromptsUnderTest {
 public:
  Loop& loop() override { return loop_; }
  Prompts& prompts() override { return prompts_; }
  // Also without any messages of the box itself: the box's own loop must serve our timers.
  void AnswerAfter(int ms) override {
    answer_ = loop_.MakeTimer(ms, [this] { AnswerTopmost(); });
    answer_->SetEnabled(true);
  }
  std::vector<Seen> seen() override { return seen_; }
  int EventsAfterEnd() override {
    const TemporaryFolder folder;
    const std::string marker = folder.path() + "\\marker";
    ChildProcess child(std::string(kEndSwitch) + " \"" + marker + "\"");
    std::uint32_t code = 1;
    if (!child.WaitForEnd(kPatienceMs, code) || code != 0) return -1;
    return FilesWin().Exists(marker) ? 1 : 0;
  }

 private:
  void AnswerTopmost() {
    HWND box = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), &FindBox, reinterpret_cast<LPARAM>(&box));
    if (box == nullptr) return;  // the next tick finds it
    answer_->SetEnabled(false);
    seen_.push_back({WindowText(GetDlgItem(box, kBoxTextId)), WindowText(box),
                     ShowsIcon(box) ? BoxIcon::kCritical : BoxIcon::kNone});
    PostMessageA(box, WM_COMMAND, IDOK, 0);
  }

  LoopWin loop_;
  PromptsWin prompts_;
  std::unique_ptr<Timer> answer_;
  std::vector<Seen> seen_;
};

struct Locale {
  const char* name;
  LCID id;
  const char* shown = "";  // 15 November 2026, 14:23:05
};

// Twelve and twenty-four hours, every order of the parts, other calendars and digits.
constexpr Locale kLocales[] = {{"user", LOCALE_USER_DEFAULT},
                               {"en-US", 0x0409, "11/15/2026 2:23:05 PM"},
                               {"en-GB", 0x0809, "15/11/2026 14:23:05"},
                               {"de-DE", 0x0407, "15.11.2026 14:23:05"},
                               {"fr-FR", 0x040C, "15/11/2026 14:23:05"},
                               {"nl-NL", 0x0413},
                               {"fi-FI", 0x040B},
                               {"hu-HU", 0x040E},
                               {"pl-PL", 0x0415},
                               {"sv-SE", 0x041D},
                               {"ja-JP", 0x0411},
                               {"ko-KR", 0x0412},
                               {"zh-CN", 0x0804},
                               {"th-TH", 0x041E},
                               {"ar-SA", 0x0401},
                               {"fa-IR", 0x0429},
                               {"he-IL", 0x040D},
                               {"bg-BG", 0x0402}};

}  // namespace

std::unique_ptr<LoopUnderTest> MakeLoop() {
  return std::make_unique<RealLoopUnderTest>();
}

std::vector<ClockUnderTest> MakeClocks(Loop&) {
  std::vector<ClockUnderTest> clocks;
  for (const Locale& locale : kLocales) {
    clocks.push_back({locale.name, std::make_unique<WallClockWin>(locale.id), locale.shown});
  }
  return clocks;
}

std::unique_ptr<FilesUnderTest> MakeFiles() {
  return std::make_unique<RealFilesUnderTest>();
}

std::unique_ptr<PromptsUnderTest> MakePrompts() {
  return std::make_unique<RealPromptsUnderTest>();
}

}  // namespace corvane::contract
