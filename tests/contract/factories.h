// What the contract cases work on. Two sets of factories implement it: one makes the simulated
// seams, one the real ones, so that both are held to the same cases.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/files.h"
#include "base/loop.h"
#include "base/prompts.h"
#include "base/wall_clock.h"
#include "link/socket.h"
#include "link/window_ops.h"
#include "record/mci.h"

namespace corvane::contract {

// How long a case waits for what must come, on a machine that has much else to do.
inline constexpr int kPatienceMs = 20'000;

class LoopUnderTest {
 public:
  virtual ~LoopUnderTest() = default;
  [[nodiscard]] virtual Loop& loop() = 0;
  // The program is idle for `ms`: its main loop runs.
  virtual void Idle(int ms) = 0;
  virtual void SetErrorReporter(std::function<void(const std::string& what)> reporter) = 0;

  // Idle until `done`; false when that takes longer than kPatienceMs.
  [[nodiscard]] bool IdleUntil(const std::function<bool()>& done) {
    const std::int64_t end = loop().TickMs() + kPatienceMs;
    while (!done()) {
      if (loop().TickMs() > end) return false;
      Idle(10);
    }
    return true;
  }
};
[[nodiscard]] std::unique_ptr<LoopUnderTest> MakeLoop();

struct ClockUnderTest {
  std::string name;  // of the regional settings
  std::unique_ptr<WallClock> clock;
  // 15 November 2026, 14:23:05, as these settings show it; "" where nobody says how that is.
  std::string shown;
};
// The same clock under all the regional settings there are to try. The loop outlives them.
[[nodiscard]] std::vector<ClockUnderTest> MakeClocks(Loop& loop);

class FilesUnderTest {
 public:
  virtual ~FilesUnderTest() = default;
  [[nodiscard]] virtual Files& files() = 0;
  // An empty folder, removed at the end; without "\" at its end.
  [[nodiscard]] virtual std::string folder() = 0;
  enum class Sharing { kNone, kRead, kAll };
  // Another program has the file open until the next Release.
  virtual void Hold(const std::string& path, Sharing sharing) = 0;
  virtual void Release() = 0;
  // The same for `ms` of the loop's clock, whatever the program does meanwhile. Release comes
  // after.
  virtual void HoldFor(Loop& loop, const std::string& path, Sharing sharing, int ms) = 0;
  // The code page is one for Western Europe.
  [[nodiscard]] virtual bool western() = 0;
  // False when the system lets this user write read-only files all the same (wine run by root).
  virtual bool SetReadOnly(const std::string& path, bool read_only) = 0;
};
[[nodiscard]] std::unique_ptr<FilesUnderTest> MakeFiles();

class PromptsUnderTest {
 public:
  struct Seen {
    std::string text;
    std::string title;
    BoxIcon icon = BoxIcon::kNone;
  };
  virtual ~PromptsUnderTest() = default;
  [[nodiscard]] virtual Loop& loop() = 0;
  [[nodiscard]] virtual Prompts& prompts() = 0;
  // The user looks at the next box for so long, then answers it.
  virtual void AnswerAfter(int ms) = 0;
  // What the user saw.
  [[nodiscard]] virtual std::vector<Seen> seen() = 0;
  // A program posts one event that ends it and one more behind that. Gives how many of the events
  // that followed the end were dispatched.
  [[nodiscard]] virtual int EventsAfterEnd() = 0;
};
[[nodiscard]] std::unique_ptr<PromptsUnderTest> MakePrompts();

class SocketUnderTest {
 public:
  virtual ~SocketUnderTest() = default;
  [[nodiscard]] virtual LoopUnderTest& idle() = 0;
  [[nodiscard]] virtual Socket& socket() = 0;
  // The peer: a server on this machine that greets each client with some text ending in CR LF.
  [[nodiscard]] virtual std::uint16_t port() = 0;
  virtual void SetListening(bool listening) = 0;
  // To the client that connected last.
  virtual void PeerSends(const std::string& bytes) = 0;
  virtual void PeerCloses() = 0;
  virtual void PeerResets() = 0;
  // Everything received from all clients so far.
  [[nodiscard]] virtual std::string PeerReceived() = 0;
};
[[nodiscard]] std::unique_ptr<SocketUnderTest> MakeSocket();

class WindowsUnderTest {
 public:
  virtual ~WindowsUnderTest() = default;
  [[nodiscard]] virtual LoopUnderTest& idle() = 0;
  [[nodiscard]] virtual WindowOps& windows() = 0;

  // Another program's visible top-level window and what it holds; its class name begins with
  // top_class(), which may be longer than a class name is read.
  [[nodiscard]] virtual WindowHandle top() = 0;
  [[nodiscard]] virtual std::string top_class() = 0;
  [[nodiscard]] virtual std::string top_text() = 0;
  // A check box somewhere below that window.
  [[nodiscard]] virtual WindowHandle check_box() = 0;
  // An edit box with several lines, and the top-level window above it.
  [[nodiscard]] virtual WindowHandle edit() = 0;
  [[nodiscard]] virtual WindowHandle edit_top() = 0;

  [[nodiscard]] virtual bool Checked() = 0;
  // A button below top() that reacts to the left button going down on it, and whether it has.
  [[nodiscard]] virtual WindowHandle selector() = 0;
  [[nodiscard]] virtual bool SelectorPressed() = 0;
  struct Painted {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t colour = 0;
  };
  // Points of the screen at which the window shows different colours.
  [[nodiscard]] virtual std::vector<Painted> PaintedPoints() = 0;
  [[nodiscard]] virtual bool IsInFront() = 0;
  enum class Cover { kOtherProgram, kOwnProgram };
  // From now on a window lies over the check box that is neither above nor below it in its tree:
  // another program's, or one beside it. It shows the colour that was seen 7 pixels inside the box.
  virtual void CoverCheckBox(Cover by) = 0;
  // The other program answers nothing for `ms`, from now on.
  virtual void Hang(int ms) = 0;
  // The other program ends.
  virtual void End() = 0;
};
[[nodiscard]] std::unique_ptr<WindowsUnderTest> MakeWindows();

class MciUnderTest {
 public:
  virtual ~MciUnderTest() = default;
  [[nodiscard]] virtual Mci& mci() = 0;
  [[nodiscard]] virtual Files& files() = 0;
  // An empty folder with a blank in its name, without "\" at its end.
  [[nodiscard]] virtual std::string folder() = 0;
  // Time passes while the device records.
  virtual void Pass(int ms) = 0;
};
[[nodiscard]] std::unique_ptr<MciUnderTest> MakeMci();

}  // namespace corvane::contract
