// Also here: the commands about SDR# and its faults, in the order of docs/standin.md.
#include "standin/commands.h"

#include <cstdint>
#include <string_view>

#include "standin/model.h"
#include "standin/net_remote_dialogue.h"

namespace corvane::standin {

namespace {

constexpr std::int64_t kMaxMs = 3600000;
constexpr std::int64_t kMaxScreen = 32000;
constexpr std::int64_t kMinWidth = 100;

// A command that only a running SDR# carries out.
template <typename Act>
Command WhileRunning(Act act) {
  return [act](Model& model) {
    if (!model.running()) return std::string("SDR# does not run now");
    act(model);
    return std::string();
  };
}

bool ReadOnOff(WordReader& words) {
  return words.NextChoice("the state", {"on", "off"}) == 0;
}

Command SetPlaying(bool on) {
  return WhileRunning([on](Model& model) {
    model.receiver().Change([on](ReceiverState& state) { state.playing = on; });
  });
}

Command Play(WordReader&) {
  return SetPlaying(true);
}

Command Stop(WordReader&) {
  return SetPlaying(false);
}

Command Set(WordReader& words) {
  const std::string method = words.Next("the setting");
  const std::string value = words.Next("the value");
  return [=](Model& model) { return SetByHand(model.receiver(), method, value); };
}

Command Press(WordReader& words) {
  const std::string caption = words.Next("the caption");
  return [=](Model& model) {
    WindowTree& tree = model.tree();
    for (const WindowId id : tree.Descendants(model.ids().main)) {
      const Window* window = tree.Find(id);
      if (window == nullptr || window->text != caption) continue;
      const bool pressed = window->kind == Kind::kSelector
                               ? tree.MouseDown(id, window->box.width / 2, window->box.height / 2)
                               : tree.Press(id);
      if (pressed) return std::string();
    }
    return "there is no button \"" + caption + "\"";
  };
}

// One of the two check boxes that draw themselves.
bool ReadIsAuto(WordReader& words) {
  return words.NextChoice("the box", {"demodulator", "auto"}) == 1;
}

WindowId BoxOf(const Model& model, bool is_auto) {
  return is_auto ? model.ids().automatic : model.ids().demodulator;
}

Command Check(WordReader& words) {
  const bool is_auto = ReadIsAuto(words);
  const bool on = ReadOnOff(words);
  return WhileRunning([=](Model& model) {
    const WindowId box = BoxOf(model, is_auto);
    if (model.tree().Find(box)->checked != on) model.tree().Press(box);
  });
}

Command Listen(WordReader& words) {
  const bool on = ReadOnOff(words);
  return WhileRunning([=](Model& model) { model.Listen(on); });
}

Command Lock(WordReader& words) {
  const std::int64_t ms = words.NextNumber("ms", 0, kMaxMs);
  return Always([=](Model& model) { model.receiver().SetLockTimeMs(ms); });
}

Command Handling(WordReader& words) {
  const int ms = static_cast<int>(words.NextNumber("ms", 0, kMaxMs));
  return Always([=](Model& model) { model.server().SetHandlingMs(ms); });
}

Command History(WordReader& words) {
  const bool keep = words.NextChoice("the history", {"empty", "keep"}) == 1;
  return Always([=](Model& model) { model.windows().SetKeepHistory(keep); });
}

Command Note(WordReader& words) {
  const std::string text = words.Next("the text");
  return Always([=](Model& model) { model.Log("note", text); });
}

Command End(WordReader&) {
  return Always([](Model& model) { model.Finish(); });
}

// --- Faults

Command Hang(WordReader& words) {
  const std::int64_t ms = words.NextNumber("ms", 1, kMaxMs);
  return WhileRunning([=](Model& model) { model.Hang(ms); });
}

Command Die(WordReader&) {
  return WhileRunning([](Model& model) { model.Die(); });
}

Command Revive(WordReader&) {
  return [](Model& model) {
    if (model.running()) return std::string("it runs already");
    model.Revive();
    return std::string();
  };
}

// The Network Info window, else the main window.
bool ReadIsInfo(WordReader& words) {
  return words.NextChoice("the window", {"main", "network-info"}) == 1;
}

// Acts on that window while it is there.
template <typename Act>
Command OnWindow(bool info, Act act) {
  return [=](Model& model) {
    const WindowId id = info ? model.ids().info_window : model.ids().main;
    if (id == 0) return std::string("there is no such window now");
    act(model, id);
    return std::string();
  };
}

Command ChangeWindow(WordReader& words) {
  const bool info = ReadIsInfo(words);
  enum { kClose, kOpen, kHide, kShow, kMinimise, kRestore };
  const std::size_t action =
      words.NextChoice("the action", {"close", "open", "hide", "show", "minimise", "restore"});
  if (!info && action <= kOpen) {
    words.Fail("the main window is neither closed nor opened: use die and revive");
  }
  if (action == kOpen) return WhileRunning([](Model& model) { model.windows().OpenInfo(); });
  return OnWindow(info, [action](Model& model, WindowId id) {
    if (action == kClose) model.windows().CloseInfo();
    if (action == kHide || action == kShow) model.tree().SetVisible(id, action == kShow);
    if (action == kMinimise) model.tree().SetShowState(id, ShowState::kMinimised);
    if (action == kRestore) model.tree().SetShowState(id, ShowState::kNormal);
  });
}

Command Move(WordReader& words) {
  const bool info = ReadIsInfo(words);
  const int left = static_cast<int>(words.NextNumber("x", -kMaxScreen, kMaxScreen));
  const int top = static_cast<int>(words.NextNumber("y", -kMaxScreen, kMaxScreen));
  return OnWindow(info, [=](Model& model, WindowId id) {
    const Box box = model.tree().Find(id)->box;
    model.tree().SetBox(id, {left, top, box.width, box.height});
  });
}

Command ClearBox(WordReader&) {
  return OnWindow(true,
                  [](Model& model, WindowId) { model.tree().SetText(model.ids().info_box, ""); });
}

Command Panel(WordReader& words) {
  const bool tetra = words.NextChoice("the panel", {"net-remote", "tetra"}) == 1;
  const bool expand = words.NextChoice("the action", {"collapse", "expand"}) == 1;
  return WhileRunning([=](Model& model) { model.windows().SetExpanded(tetra, expand); });
}

Command PaintBox(WordReader& words) {
  const bool is_auto = ReadIsAuto(words);
  const bool other = words.NextChoice("the colours", {"normal", "other"}) == 1;
  return WhileRunning([=](Model& model) {
    model.tree().SetPaint(BoxOf(model, is_auto), other ? Paint::kOther : Paint::kNormal);
  });
}

Command Cover(WordReader& words) {
  const std::size_t box = words.NextChoice("the box", {"demodulator", "auto", "none"});
  if (box == 2) return Always([](Model& model) { model.tree().Uncover(); });
  const bool checked = words.NextChoice("the colour", {"unchecked", "checked"}) == 1;
  return WhileRunning([=](Model& model) {
    model.tree().Cover(BoxOf(model, box == 1), checked ? kCheckedColour : kUncheckedColour);
  });
}

Command Stranger(WordReader& words) {
  if (words.NextChoice("what it does", {"hang", "none"}) == 1) {
    return Always([](Model& model) { model.tree().RemoveStrangers(); });
  }
  const std::int64_t ms = words.NextNumber("ms", 1, kMaxMs);
  return Always([=](Model& model) { model.ShowStranger(ms); });
}

Command Width(WordReader& words) {
  const int width = static_cast<int>(words.NextNumber("pixels", kMinWidth, kMaxScreen));
  return OnWindow(true, [=](Model& model, WindowId) { model.windows().SetInfoWidth(width); });
}

Command Elevated(WordReader& words) {
  const bool on = ReadOnOff(words);
  return Always([=](Model& model) { model.SetElevated(on); });
}

Command Front(WordReader& words) {
  const bool kept = words.NextChoice("the front", {"given", "kept"}) == 1;
  return Always([=](Model& model) { model.SetFrontKept(kept); });
}

Command Refusal(WordReader& words) {
  const std::int64_t ms = words.NextNumber("ms", 0, kMaxMs);
  return Always([=](Model& model) { model.SetRefusalMs(ms); });
}

Command Refuse(WordReader& words) {
  const bool on = ReadOnOff(words);
  return Always([=](Model& model) { model.server().SetRefusing(on); });
}

Command Cut(WordReader& words) {
  const bool reset = words.Flag("reset");
  return Always([=](Model& model) { model.server().Cut(reset); });
}

Fault ReadFault(WordReader& words) {
  Fault fault;
  fault.kind = static_cast<FaultKind>(words.NextChoice(
      "the fault", {"normal", "split", "join", "delay", "garble", "drop", "text"}));
  if (fault.kind == FaultKind::kSplit || fault.kind == FaultKind::kDelay) {
    fault.ms = static_cast<int>(words.NextNumber("ms", 0, kMaxMs));
  }
  if (fault.kind == FaultKind::kText) fault.text = words.Next("the text");
  fault.count = static_cast<int>(words.NumberOrAll("count", 1, kMaxCount, 1, kForAll));
  return fault;
}

Command Reply(WordReader& words) {
  const Fault fault = ReadFault(words);
  return Always([=](Model& model) { model.server().SetReplyFault(fault); });
}

Command Greeting(WordReader& words) {
  const Fault fault = ReadFault(words);
  return Always([=](Model& model) { model.server().SetGreetingFault(fault); });
}

Command Source(WordReader& words) {
  const bool works = words.NextChoice("the state", {"ok", "error"}) == 0;
  return Always([=](Model& model) {
    model.receiver().Change([=](ReceiverState& state) { state.source_works = works; });
  });
}

constexpr Verb kSdrVerbs[] = {
    {"play", Play},
    {"stop", Stop},
    {"set", Set},
    {"press", Press},
    {"check", Check},
    {"listen", Listen},
    {"lock", Lock},
    {"handling", Handling},
    {"history", History},
    {"note", Note},
    {"end", End},
    {"hang", Hang},
    {"die", Die},
    {"revive", Revive},
    {"window", ChangeWindow},
    {"move", Move},
    {"clear-box", ClearBox},
    {"panel", Panel},
    {"paint", PaintBox},
    {"cover", Cover},
    {"stranger", Stranger},
    {"width", Width},
    {"elevated", Elevated},
    {"front", Front},
    {"refusal", Refusal},
    {"refuse", Refuse},
    {"cut", Cut},
    {"reply", Reply},
    {"greeting", Greeting},
    {"source", Source},
};

}  // namespace

std::string ReadCommand(const std::vector<Word>& words, Command& command) {
  WordReader reader(words);
  const std::string word = reader.Next("a command");
  for (const std::span<const Verb> verbs : {AirVerbs(), std::span<const Verb>(kSdrVerbs)}) {
    for (const Verb& verb : verbs) {
      if (verb.word != word) continue;
      command = verb.read(reader);
      return reader.Finish();
    }
  }
  return word.empty() ? reader.Finish() : "unknown command \"" + word + "\"";
}

}  // namespace corvane::standin
