// The simulated seams behind the contract cases.
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "contract/factories.h"
#include "sim/sim_clock.h"
#include "sim/sim_files.h"
#include "sim/sim_loop.h"
#include "sim/sim_mci.h"
#include "sim/sim_prompts.h"
#include "sim_desktop/sim_desktop.h"

namespace corvane::contract {

namespace {

class SimLoopUnderTest : public LoopUnderTest {
 public:
  Loop& loop() override { return sim_; }
  void Idle(int ms) override { sim_.AdvanceMs(ms); }
  void SetErrorReporter(std::function<void(const std::string&)> reporter) override {
    sim_.SetErrorReporter(std::move(reporter));
  }
  [[nodiscard]] sim::SimLoop& sim() { return sim_; }

 private:
  sim::SimLoop sim_;
};

class SimFilesUnderTest : public FilesUnderTest {
 public:
  SimFilesUnderTest() { sim_.PutDirectory(folder()); }
  Files& files() override { return sim_; }
  std::string folder() override { return "C:\\Corvane\\Contract"; }
  void Hold(const std::string& path, Sharing sharing) override {
    held_ = path;
    if (sharing == Sharing::kNone) sim_.SetLocked(path, true);
    if (sharing == Sharing::kRead) sim_.SetWriteLocked(path, true);
  }
  void HoldFor(Loop& loop, const std::string& path, Sharing, int ms) override {
    const std::int64_t until_ms = loop.TickMs() + ms;
    sim_.HoldWhile(path, [&loop, until_ms] { return loop.TickMs() < until_ms; });
  }
  bool western() override { return true; }
  void Release() override {
    sim_.SetLocked(held_, false);
    sim_.SetWriteLocked(held_, false);
  }
  bool SetReadOnly(const std::string& path, bool read_only) override {
    sim_.SetReadOnly(path, read_only);
    return true;
  }

 private:
  sim::SimFiles sim_;
  std::string held_;
};

class SimPromptsUnderTest : public PromptsUnderTest {
 public:
  Loop& loop() override { return loop_; }
  Prompts& prompts() override { return sim_; }
  void AnswerAfter(int ms) override { sim_.SetOpenMs(ms); }
  std::vector<Seen> seen() override {
    std::vector<Seen> seen;
    for (const auto& box : sim_.boxes()) seen.push_back({box.text, box.title, box.icon});
    return seen;
  }
  int EventsAfterEnd() override {
    int after = 0;
    const auto timer = loop_.MakeTimer(10, [&] { ++after; });
    timer->SetEnabled(true);
    loop_.Post(EventSource::kUser, [&] { sim_.EndProgram(); });
    loop_.Post(EventSource::kUser, [&] { ++after; });
    loop_.Post(EventSource::kSocket, [&] { ++after; });
    loop_.AdvanceMs(1000);
    loop_.DoEvents();
    loop_.WaitForSocketEvents(100);
    return sim_.ended() ? after : -1;
  }

 private:
  sim::SimLoop loop_;
  sim::SimPrompts sim_{loop_};
};

// The stand-in's desktop, which moves with the loop's clock.
struct Desktop {
  explicit Desktop(standin::Options options) : sim(idle.sim(), std::move(options)) {
    idle.sim().SetOutside([this] { sim.CatchUp(); }, [this] { return sim.NextDueMs(); });
  }
  SimLoopUnderTest idle;
  sim::SimDesktop sim;
};

constexpr std::uint16_t kPort = 3383;

class SimSocketUnderTest : public SocketUnderTest {
 public:
  LoopUnderTest& idle() override { return desktop_.idle; }
  Socket& socket() override { return desktop_.sim.socket(); }
  std::uint16_t port() override { return kPort; }
  void SetListening(bool listening) override { server().SetListening(listening, kPort); }
  void PeerSends(const std::string& bytes) override { desktop_.sim.wire().SendToAll(bytes); }
  void PeerCloses() override { server().Cut(false); }
  void PeerResets() override { server().Cut(true); }
  std::string PeerReceived() override {
    std::string all;
    for (const std::string& sent : desktop_.sim.socket().sent()) all += sent;
    return all;
  }

 private:
  standin::NetRemoteServer& server() { return desktop_.sim.model().server(); }
  Desktop desktop_{{}};
};

class SimWindowsUnderTest : public WindowsUnderTest {
 public:
  LoopUnderTest& idle() override { return desktop_.idle; }
  WindowOps& windows() override { return desktop_.sim.windows(); }
  WindowHandle top() override { return Handle(ids().main); }
  std::string top_class() override { return tree().Find(ids().main)->class_name; }
  std::string top_text() override { return tree().Find(ids().main)->text; }
  WindowHandle check_box() override { return Handle(ids().demodulator); }
  WindowHandle edit() override { return Handle(ids().info_box); }
  WindowHandle edit_top() override { return Handle(ids().info_window); }
  bool Checked() override { return tree().Find(ids().demodulator)->checked; }
  WindowHandle selector() override { return Handle(ids().timeslots[1]); }
  bool SelectorPressed() override { return desktop_.sim.model().receiver().state().slot == 2; }
  // The glyph of "Demodulator", which is off, and that of "Auto", which is on.
  std::vector<Painted> PaintedPoints() override {
    tree().Raise(ids().main);
    const auto off = tree().ScreenBox(ids().demodulator);
    const auto on = tree().ScreenBox(ids().automatic);
    return {{off.left + kInGlyph, off.top + kInGlyph, standin::kUncheckedColour},
            {on.left + kInGlyph, on.top + kInGlyph, standin::kCheckedColour}};
  }
  bool IsInFront() override { return tree().top_level().front() == ids().main; }
  // The header comes before the panel that holds the box.
  void CoverCheckBox(Cover by) override {
    if (by == Cover::kOtherProgram) return desktop_.sim.Do("cover demodulator unchecked");
    const standin::WindowId header = ids().tetra_header;
    const auto box = tree().ScreenBox(ids().demodulator);
    auto place = tree().Find(header)->box;
    place.left += box.left - tree().ScreenBox(header).left;
    place.top += box.top - tree().ScreenBox(header).top;
    tree().SetBox(header, place);
    tree().Add(header, {standin::Kind::kDrawnCheckBox, "Cover", "", {0, 0, 20, 20}});
  }
  void Hang(int ms) override { desktop_.sim.Do("hang " + std::to_string(ms)); }
  void End() override { desktop_.sim.Do("die"); }

 private:
  static constexpr int kInGlyph = 7;
  static standin::Options WithInfo() {
    standin::Options options;
    options.info_open = true;
    return options;
  }
  standin::WindowTree& tree() { return desktop_.sim.model().tree(); }
  [[nodiscard]] const standin::SdrWindows::Ids& ids() { return desktop_.sim.ids(); }
  WindowHandle Handle(standin::WindowId id) { return desktop_.sim.Handle(id); }

  Desktop desktop_{WithInfo()};
};

class SimMciUnderTest : public MciUnderTest {
 public:
  SimMciUnderTest() { files_.PutDirectory(folder()); }
  Mci& mci() override { return sim_; }
  Files& files() override { return files_; }
  std::string folder() override { return "C:\\Corvane\\Sound files"; }
  void Pass(int ms) override { loop_.AdvanceMs(ms); }

 private:
  sim::SimLoop loop_;
  sim::SimFiles files_;
  sim::SimMci sim_{loop_, files_};
};

}  // namespace

std::unique_ptr<LoopUnderTest> MakeLoop() {
  return std::make_unique<SimLoopUnderTest>();
}

std::vector<ClockUnderTest> MakeClocks(Loop& loop) {
  std::vector<ClockUnderTest> clocks;
  clocks.push_back({"simulated", std::make_unique<sim::SimClock>(loop), "15/11/2026 14:23:05"});
  auto set = std::make_unique<sim::SimClock>(loop);
  // The fixed form with full stops, as some settings have it.
  const auto write = [](const DateTime& time) {
    return ReplaceAll(FixedGeneralDate(time), "/", ".");
  };
  const auto read = [](std::string_view text) -> std::optional<DateTime> {
    if (Contains(text, "/")) return std::nullopt;
    return ParseFixedGeneralDate(ReplaceAll(text, ".", "/"));
  };
  set->SetFormat(write, read);
  clocks.push_back({"simulated, set by the test", std::move(set), "15.11.2026 14:23:05"});
  return clocks;
}

std::unique_ptr<FilesUnderTest> MakeFiles() {
  return std::make_unique<SimFilesUnderTest>();
}

std::unique_ptr<PromptsUnderTest> MakePrompts() {
  return std::make_unique<SimPromptsUnderTest>();
}

std::unique_ptr<SocketUnderTest> MakeSocket() {
  return std::make_unique<SimSocketUnderTest>();
}

std::unique_ptr<WindowsUnderTest> MakeWindows() {
  return std::make_unique<SimWindowsUnderTest>();
}

std::unique_ptr<MciUnderTest> MakeMci() {
  return std::make_unique<SimMciUnderTest>();
}

}  // namespace corvane::contract
