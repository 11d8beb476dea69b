// Wiring of the simulated world.
#include "scenarios/world.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "base/text.h"

namespace corvane::sim {

namespace {

constexpr std::int64_t kBringUpLimitMs = 10000;

// What of a control belongs into a trace: what a user of the window follows with their eyes.
std::string Describe(const Control& control, Field field) {
  const std::string name = control.name();
  if (field == Field::kCaption) {
    if (name == "lblTimeoutCountdown") return {};
    if (control.kind() == ControlKind::kLabel || control.kind() == ControlKind::kMenuItem) {
      return name + " = \"" + control.caption.get() + "\"";
    }
  }
  if (control.kind() == ControlKind::kShape) {
    const auto& shape = As<Shape>(control);
    char text[64];
    std::snprintf(text, sizeof text, " fill %08X border %08X width %d", shape.fill_colour.get(),
                  shape.border_colour.get(), shape.border_width.get());
    return name + text;
  }
  return {};
}

}  // namespace

void ScreenTrace::Changed(const Control& control, Field field) {
  if (!writes) return;
  const std::string text = Describe(control, field);
  if (!text.empty()) write_(text);
}

void ScreenTrace::ListChanged(ListBox& list, ListChange change, std::size_t index) {
  if (!writes) return;
  const std::string name = list.name();
  switch (change) {
    case ListChange::kAdded:
    case ListChange::kReplaced:
      write_(name + " + \"" + list.Item(static_cast<int>(index)) + "\"");
      break;
    case ListChange::kRemoved:
      write_(name + " - line " + std::to_string(index));
      break;
    case ListChange::kCleared:
      write_(name + " cleared");
      break;
    case ListChange::kTicked:
      break;
  }
}

void ScreenTrace::FocusWanted(const Control& control) {
  focus = &control;
}

World::World(WorldOptions options)
    : clock(loop),
      prompts(loop),
      mci(loop, files),
      screen([this](const std::string& what) { Trace(what); }),
      desktop(std::make_unique<SimDesktop>(loop, options.sdr, options.scenario)),
      started_ms_(loop.TickMs()),
      traced_(options.traced) {
  screen.writes = traced_;
  desktop->windows().SetKeepsMessages(traced_);
  clock.Set(options.now);
  loop.SetOutside([this] { desktop->CatchUp(); }, [this] { return desktop->NextDueMs(); });
  if (!options.sdr_running) desktop->Do("die");
  for (const auto& [name, content] : options.files) {
    files.Put(kProgramFolder + name, content);
  }
  app = std::make_unique<App>(Platform{loop, clock, screen, desktop->windows(), desktop->socket(),
                                       files, mci, prompts, kProgramFolder},
                              *this);
  loop.SetErrorReporter([this](const std::string& what) { app->ReportException(what.c_str()); });
}

World::~World() = default;

bool World::Load() {
  return app->Load();
}

void World::Start() {
  user().Click(form().cmdStartAll);
}

void World::BringUp() {
  ASSERT_TRUE(Load());
  Start();
  ASSERT_TRUE(RunUntil([this] { return app->flags().mblnSetupDone && view().scanner.ScanPrimed; },
                       kBringUpLimitMs))
      << TraceText();
}

bool World::OpenEditor(Dialog&, UserEvents& handlers) {
  if (refuse_editor) return false;
  editor = &handlers;
  ++editors_opened;
  return true;
}

void World::CloseEditor() {
  if (editor == nullptr) return;
  editor = nullptr;
  windows_closed.push_back("editor");
}

void World::HoldSession(bool held) {
  session_held = held;
  session_was_held = true;
}

void World::CloseMainWindow() {
  closed = true;
  windows_closed.push_back("main window");
  Trace("main window closed");
  loop.Stop();
}

bool World::Parked() {
  const standin::ReceiverState& receiver = desktop->model().receiver().state();
  return receiver.frequency_hz == CarrierFrequency(view().presets, view().presets.ParkCarrier) &&
         receiver.audio_gain == standin::kMinAudioGain;
}

std::string World::FileText(const std::string& name) {
  return files.Content(kProgramFolder + name).value_or("");
}

int World::CountCallLog(std::string_view part) {
  int count = 0;
  for (const std::string& line : form().lstCallLog.items()) count += Contains(line, part) ? 1 : 0;
  return count;
}

int World::CountStatusLog(std::string_view part) {
  int count = 0;
  for (const std::string& line : form().lstStatusLog.items()) {
    count += Contains(line, part) ? 1 : 0;
  }
  return count;
}

std::string World::TraceText() const {
  std::string text;
  for (const std::string& line : trace) text += line + "\n";
  return text;
}

void World::Trace(const std::string& what) {
  if (desktop == nullptr || !traced_) return;
  TraceWire();
  char time[32];
  std::snprintf(time, sizeof time, "%9.3f ",
                static_cast<double>(loop.TickMs() - started_ms_) / 1000.0);
  trace.push_back(time + what);
}

// Commands that went out since the last line; their own times are those of the line they precede.
// The same command several times running is one line with their number.
void World::TraceWire() {
  const std::vector<std::string>& sent = desktop->socket().sent();
  while (wire_seen_ < sent.size()) {
    const std::string& command = sent[wire_seen_];
    std::size_t times = 1;
    while (wire_seen_ + times < sent.size() && sent[wire_seen_ + times] == command) ++times;
    trace.push_back("          > " + command +
                    (times > 1 ? "  " + std::to_string(times) + " times" : ""));
    wire_seen_ += times;
  }
}

}  // namespace corvane::sim
