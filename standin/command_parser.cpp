// One function per command word, found by the table at the end.
#include <array>
#include <utility>

#include "standin/commands.h"
#include "standin/word_reader.h"

namespace corvane::standin {

namespace {

constexpr std::int64_t kMaxCallId = 65535;
constexpr std::int64_t kMaxSsi = 16777215;
constexpr std::int64_t kMaxCarrier = 99999;
constexpr std::int64_t kMaxSlot = 15;  // those above 4 do not exist: nobody ever hears them
constexpr std::int64_t kMaxCount = 100000;
constexpr std::int64_t kMaxMs = 3600000;
constexpr std::int64_t kMaxScreen = 32000;

int ReadId(WordReader& words) {
  return static_cast<int>(words.Number("id", 0, kMaxCallId));
}

bool ReadOnOff(WordReader& words) {
  return words.NextChoice("the state", {"on", "off"}) == 0;
}

Call ReadCall(WordReader& words) {
  Call call;
  call.id = ReadId(words);
  call.group = static_cast<std::int32_t>(words.Number("group", 0, kMaxSsi));
  call.party = static_cast<std::int32_t>(words.Number("party", 0, kMaxSsi));
  call.carrier = static_cast<int>(words.Number("carrier", 0, kMaxCarrier));
  call.slot = static_cast<int>(words.Number("slot", 0, kMaxSlot));
  call.status = words.Text("status", "Granted");
  if (call.status != "Granted" && call.status != "Request_queued" && call.status != "Not_granted") {
    words.Fail("status= is one of Granted, Request_queued, Not_granted");
  }
  call.service = words.Text("service", "Point_to_multipoint");
  if (call.service.find(' ') != std::string::npos) words.Fail("service= is a word without blanks");
  call.encrypted = words.Flag("encrypted");
  return call;
}

Command ReadCallCommand(WordReader& words) {
  CallCommand command;
  command.missed = words.Flag("missed");
  command.for_ms = words.Seconds("for");
  command.repeat_ms = words.Seconds("repeat");
  if (words.Has("repeat") && command.repeat_ms < 10) words.Fail("repeat= is 0.01 or more");
  command.call = ReadCall(words);
  return command;
}

Command ReadSpeak(WordReader& words) {
  return SpeakCommand{ReadId(words), static_cast<std::int32_t>(words.Number("party", 0, kMaxSsi))};
}

Command ReadPause(WordReader& words) {
  return PauseCommand{ReadId(words)};
}

Command ReadRelease(WordReader& words) {
  EndCommand command;
  command.id = ReadId(words);
  command.missed = words.Flag("missed");
  command.cause = words.Text("cause", command.cause);
  return command;
}

Command ReadDisconnect(WordReader& words) {
  EndCommand command;
  command.id = ReadId(words);
  command.disconnect = true;
  command.missed = words.Flag("missed");
  return command;
}

Command ReadLineLike(WordReader& words, bool ended) {
  LineCommand command;
  command.ended = ended;
  command.text = words.Next("the text");
  command.count = static_cast<int>(words.Number("count", 1, kMaxCount, 1));
  const std::string on = words.Text("on", "any");
  command.everywhere = on == "any";
  if (on == "carrier") {
    command.carrier = static_cast<std::int32_t>(words.Number("carrier", 0, kMaxCarrier));
  } else if (on != "any" && on != "control") {
    words.Fail("on= is one of any, control, carrier");
  }
  return command;
}

Command ReadLine(WordReader& words) {
  return ReadLineLike(words, true);
}
Command ReadPartial(WordReader& words) {
  return ReadLineLike(words, false);
}

Command ReadDuplicate(WordReader& words) {
  return DuplicateCommand{static_cast<int>(words.Number("count", 1, kMaxCount, 1))};
}

Command ReadBurst(WordReader& words) {
  BurstCommand command;
  command.count = static_cast<int>(words.Number("count", 1, kMaxCount));
  command.first = ReadCall(words);
  return command;
}

Command ReadNetwork(WordReader& words) {
  NetworkCommand command;
  command.none = words.Flag("none");
  if (!command.none) {
    command.identity.mcc = words.Next("the MCC");
    command.identity.mnc = words.Next("the MNC");
    command.identity.la = words.Next("the LA");
  }
  return command;
}

Command ReadTraffic(WordReader& words) {
  TrafficSettings t;
  if (words.Flag("off")) return TrafficCommand{t};
  t.calls_per_hour = static_cast<int>(words.Number("calls-per-hour", 1, 36000));
  t.groups = words.Numbers("groups", 0, kMaxSsi, t.groups);
  t.carriers = words.Numbers("carriers", 0, kMaxCarrier, t.carriers);
  const auto parties = words.Numbers("parties", 0, kMaxSsi, {t.first_party, t.last_party});
  if (!parties.empty()) {
    t.first_party = parties.front();
    t.last_party = parties.back();
  }
  if (t.last_party < t.first_party) words.Fail("parties= is a range like 5010-5040");
  const auto length = words.Numbers("length", 1, 3600, {5, 40});
  if (!length.empty()) {
    t.shortest_ms = length.front() * 1000;
    t.longest_ms = length.back() * 1000;
  }
  if (t.longest_ms < t.shortest_ms) words.Fail("length= is a range of seconds like 5-40");
  const auto percent = [&](std::string_view name) {
    return static_cast<int>(words.Number(name, 0, 100, 0));
  };
  t.individual = percent("individual");
  t.encrypted = percent("encrypted");
  t.queued = percent("queued");
  t.not_granted = percent("not-granted");
  t.missed = percent("missed");
  t.disconnected = percent("disconnected");
  t.first_id = static_cast<int>(words.Number("first-id", 1, 16383, 1));
  return TrafficCommand{t};
}

Command ReadNoise(WordReader& words) {
  return NoiseCommand{static_cast<int>(words.Number("per-hour", 0, 360000))};
}

Command ReadHang(WordReader& words) {
  return HangCommand{words.NextNumber("ms", 1, kMaxMs)};
}
Command ReadDie(WordReader&) {
  return DieCommand{};
}
Command ReadRevive(WordReader&) {
  return ReviveCommand{};
}

Command ReadWindow(WordReader& words) {
  WindowCommand command;
  command.info = words.NextChoice("the window", {"main", "network-info"}) == 1;
  command.action = static_cast<WindowAction>(
      words.NextChoice("the action", {"close", "open", "hide", "show", "minimise", "restore"}));
  if (!command.info && command.action <= WindowAction::kOpen) {
    words.Fail("the main window is neither closed nor opened: use die and revive");
  }
  return command;
}

Command ReadMove(WordReader& words) {
  MoveCommand command;
  command.info = words.NextChoice("the window", {"main", "network-info"}) == 1;
  command.left = static_cast<int>(words.NextNumber("x", -kMaxScreen, kMaxScreen));
  command.top = static_cast<int>(words.NextNumber("y", -kMaxScreen, kMaxScreen));
  return command;
}

Command ReadClear(WordReader&) {
  return ClearBoxCommand{};
}

Command ReadPanel(WordReader& words) {
  PanelCommand command;
  command.tetra = words.NextChoice("the panel", {"net-remote", "tetra"}) == 1;
  command.expand = words.NextChoice("the action", {"collapse", "expand"}) == 1;
  return command;
}

Command ReadListen(WordReader& words) {
  return ListenCommand{ReadOnOff(words)};
}
Command ReadRefuse(WordReader& words) {
  return RefuseCommand{ReadOnOff(words)};
}
Command ReadCut(WordReader& words) {
  return CutCommand{words.Flag("reset")};
}

Command ReadFault(WordReader& words, bool greeting) {
  FaultCommand command;
  command.greeting = greeting;
  Fault& fault = command.fault;
  fault.kind = static_cast<FaultKind>(words.NextChoice(
      "the fault", {"normal", "split", "join", "delay", "garble", "drop", "text"}));
  if (fault.kind == FaultKind::kSplit || fault.kind == FaultKind::kDelay) {
    fault.ms = static_cast<int>(words.NextNumber("ms", 0, kMaxMs));
  }
  if (fault.kind == FaultKind::kText) fault.text = words.Next("the text");
  fault.count = static_cast<int>(words.NumberOrAll("count", 1, kMaxCount, 1, kForAll));
  return command;
}

Command ReadReply(WordReader& words) {
  return ReadFault(words, false);
}
Command ReadGreeting(WordReader& words) {
  return ReadFault(words, true);
}

Command ReadHandling(WordReader& words) {
  return HandlingCommand{static_cast<int>(words.NextNumber("ms", 0, kMaxMs))};
}

Command ReadSource(WordReader& words) {
  return SourceCommand{words.NextChoice("the state", {"ok", "error"}) == 0};
}

Command ReadCheck(WordReader& words) {
  CheckCommand command;
  command.automatic = words.NextChoice("the box", {"demodulator", "auto"}) == 1;
  command.on = ReadOnOff(words);
  return command;
}

Command ReadPaint(WordReader& words) {
  PaintCommand command;
  command.automatic = words.NextChoice("the box", {"demodulator", "auto"}) == 1;
  command.other = words.NextChoice("the colours", {"normal", "other"}) == 1;
  return command;
}

Command ReadPress(WordReader& words) {
  return PressCommand{words.Next("the caption")};
}

Command ReadSet(WordReader& words) {
  SetCommand command;
  command.method = words.Next("the setting");
  command.value = words.Next("the value");
  return command;
}

Command ReadPlay(WordReader&) {
  return PlayCommand{true};
}
Command ReadStop(WordReader&) {
  return PlayCommand{false};
}
Command ReadLock(WordReader& words) {
  return LockCommand{words.NextNumber("ms", 0, kMaxMs)};
}

Command ReadSignalling(WordReader& words) {
  return SignallingCommand{words.NextChoice("where", {"voice", "both"}) == 1};
}

Command ReadHistory(WordReader& words) {
  return HistoryCommand{words.NextChoice("the history", {"empty", "keep"}) == 1};
}

Command ReadNote(WordReader& words) {
  return NoteCommand{words.Next("the text")};
}
Command ReadEnd(WordReader&) {
  return EndScenarioCommand{};
}

struct Verb {
  std::string_view word;
  Command (*read)(WordReader&);
};

constexpr std::array kVerbs = {
    Verb{"call", ReadCallCommand},
    Verb{"speak", ReadSpeak},
    Verb{"pause", ReadPause},
    Verb{"release", ReadRelease},
    Verb{"disconnect", ReadDisconnect},
    Verb{"line", ReadLine},
    Verb{"partial", ReadPartial},
    Verb{"duplicate", ReadDuplicate},
    Verb{"burst", ReadBurst},
    Verb{"network", ReadNetwork},
    Verb{"traffic", ReadTraffic},
    Verb{"noise", ReadNoise},
    Verb{"hang", ReadHang},
    Verb{"die", ReadDie},
    Verb{"revive", ReadRevive},
    Verb{"window", ReadWindow},
    Verb{"move", ReadMove},
    Verb{"clear-box", ReadClear},
    Verb{"panel", ReadPanel},
    Verb{"listen", ReadListen},
    Verb{"refuse", ReadRefuse},
    Verb{"cut", ReadCut},
    Verb{"reply", ReadReply},
    Verb{"greeting", ReadGreeting},
    Verb{"handling", ReadHandling},
    Verb{"source", ReadSource},
    Verb{"check", ReadCheck},
    Verb{"paint", ReadPaint},
    Verb{"press", ReadPress},
    Verb{"set", ReadSet},
    Verb{"play", ReadPlay},
    Verb{"stop", ReadStop},
    Verb{"lock", ReadLock},
    Verb{"signalling", ReadSignalling},
    Verb{"history", ReadHistory},
    Verb{"note", ReadNote},
    Verb{"end", ReadEnd},
};

}  // namespace

std::string ParseCommand(const std::vector<Word>& words, Command& command) {
  WordReader reader(words);
  const std::string word = reader.Next("a command");
  for (const Verb& verb : kVerbs) {
    if (verb.word != word) continue;
    command = verb.read(reader);
    return reader.Finish();
  }
  return word.empty() ? reader.Finish() : "unknown command \"" + word + "\"";
}

}  // namespace corvane::standin
