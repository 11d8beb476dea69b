// The commands about what is on the air, in the order of docs/standin.md.
#include <cstdint>
#include <optional>
#include <string_view>

#include "standin/commands.h"
#include "standin/model.h"

namespace corvane::standin {

namespace {

constexpr std::int64_t kMaxCallId = 65535;
constexpr std::int64_t kMaxSsi = 16777215;
constexpr std::int64_t kMaxCarrier = 99999;
constexpr std::int64_t kMaxSlot = 15;  // those above 4 do not exist: nobody ever hears them

int ReadId(WordReader& words) {
  return static_cast<int>(words.Number("id", 0, kMaxCallId));
}

std::int32_t ReadParty(WordReader& words) {
  return static_cast<std::int32_t>(words.Number("party", 0, kMaxSsi));
}

Call ReadCall(WordReader& words) {
  Call call;
  call.id = ReadId(words);
  call.group = static_cast<std::int32_t>(words.Number("group", 0, kMaxSsi));
  call.party = ReadParty(words);
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

Command Network(WordReader& words) {
  if (words.Flag("none")) {
    return Always([](Model& model) { model.air().SetIdentity(std::nullopt); });
  }
  Identity identity;
  identity.mcc = words.Next("the MCC");
  identity.mnc = words.Next("the MNC");
  identity.la = words.Next("the LA");
  return Always([identity](Model& model) { model.air().SetIdentity(identity); });
}

void RepeatSetup(Model& model, int id, std::uint64_t serial, std::int64_t every_ms) {
  model.agenda().Add(model.now_ms() + every_ms, [&model, id, serial, every_ms] {
    if (!model.air().IsOn(id, serial)) return;
    (void)model.air().RepeatSetup(id);
    RepeatSetup(model, id, serial, every_ms);
  });
}

Command StartCall(WordReader& words) {
  const bool missed = words.Flag("missed");
  const std::int64_t for_ms = words.Seconds("for");
  const std::int64_t repeat_ms = words.Seconds("repeat");
  if (words.Has("repeat") && repeat_ms < 10) words.Fail("repeat= is 0.01 or more");
  const Call call = ReadCall(words);
  return [=](Model& model) {
    std::string fault = model.air().Start(call);
    const Call* started = model.air().Find(call.id);
    if (!fault.empty() || started == nullptr) return fault;
    const int id = started->id;
    const std::uint64_t serial = started->serial;
    if (for_ms > 0) {
      model.agenda().Add(model.now_ms() + for_ms, [&model, id, serial, missed] {
        if (model.air().IsOn(id, serial)) (void)model.air().Release(id, "User_requested", missed);
      });
    }
    if (repeat_ms > 0) RepeatSetup(model, id, serial, repeat_ms);
    return fault;
  };
}

Command Speak(WordReader& words) {
  const int id = ReadId(words);
  const std::int32_t party = ReadParty(words);
  return [=](Model& model) { return model.air().Speak(id, party); };
}

Command Pause(WordReader& words) {
  const int id = ReadId(words);
  return [=](Model& model) { return model.air().Pause(id); };
}

Command Release(WordReader& words) {
  const int id = ReadId(words);
  const bool missed = words.Flag("missed");
  const std::string cause = words.Text("cause", "User_requested");
  return [=](Model& model) { return model.air().Release(id, cause, missed); };
}

Command Disconnect(WordReader& words) {
  const int id = ReadId(words);
  const bool missed = words.Flag("missed");
  return [=](Model& model) { return model.air().Disconnect(id, missed); };
}

Command WriteText(WordReader& words, bool ended) {
  Pdu pdu;
  pdu.ended = ended;
  pdu.line = words.Next("the text");
  const std::int64_t count = words.Number("count", 1, kMaxCount, 1);
  const std::string on = words.Text("on", "any");
  pdu.on_control = on == "control";
  if (on == "carrier") {
    pdu.carrier = static_cast<int>(words.Number("carrier", 0, kMaxCarrier));
  } else if (on != "any" && on != "control") {
    words.Fail("on= is one of any, control, carrier");
  }
  const bool everywhere = on == "any";
  return Always([=](Model& model) {
    for (std::int64_t i = 0; i < count; ++i) {
      if (!everywhere) {
        model.air().Send(pdu);
      } else if (model.running()) {
        model.WriteInfo(pdu.line + (pdu.ended ? "\r\n" : ""));
      }
    }
  });
}

Command Line(WordReader& words) {
  return WriteText(words, true);
}

Command Partial(WordReader& words) {
  return WriteText(words, false);
}

Command Duplicate(WordReader& words) {
  const std::int64_t count = words.Number("count", 1, kMaxCount, 1);
  return [=](Model& model) {
    const std::string line = model.last_line();
    if (line.empty()) return std::string("there is no line yet");
    for (std::int64_t i = 0; i < count; ++i) model.WriteInfo(line);
    return std::string();
  };
}

Command Burst(WordReader& words) {
  const std::int64_t count = words.Number("count", 1, kMaxCount);
  const Call first = ReadCall(words);
  return Always([=](Model& model) {
    Call call = first;
    for (std::int64_t i = 0; i < count; ++i, ++call.id) {
      Pdu pdu;
      pdu.on_control = true;
      pdu.line = call.encrypted ? EncryptedLine(call) : SetupLine(call);
      model.air().Send(pdu);
    }
  });
}

TrafficSettings ReadTraffic(WordReader& words) {
  TrafficSettings t;
  if (words.Flag("off")) return t;
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
  return t;
}

Command StartTraffic(WordReader& words) {
  const TrafficSettings settings = ReadTraffic(words);
  return Always([settings](Model& model) { model.traffic().SetTraffic(settings); });
}

Command Noise(WordReader& words) {
  const int per_hour = static_cast<int>(words.Number("per-hour", 0, 360000));
  return Always([=](Model& model) { model.traffic().SetNoise(per_hour); });
}

Command Signalling(WordReader& words) {
  const bool both = words.NextChoice("where", {"voice", "both"}) == 1;
  return Always([=](Model& model) { model.air().signalling_on_control = both; });
}

constexpr Verb kVerbs[] = {
    {"network", Network},
    {"call", StartCall},
    {"speak", Speak},
    {"pause", Pause},
    {"release", Release},
    {"disconnect", Disconnect},
    {"line", Line},
    {"partial", Partial},
    {"duplicate", Duplicate},
    {"burst", Burst},
    {"traffic", StartTraffic},
    {"noise", Noise},
    {"signalling", Signalling},
};

}  // namespace

std::span<const Verb> AirVerbs() {
  return kVerbs;
}

}  // namespace corvane::standin
