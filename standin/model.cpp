// Where the parts meet: what is on the air reaches the receiver, what the receiver hears reaches
// the windows, what is pressed or commanded reaches the receiver.
#include "standin/model.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/text.h"
#include "standin/commands.h"
#include "standin/net_remote_dialogue.h"

namespace corvane::standin {

namespace {

constexpr std::string_view kStrangerClass = "WindowsForms10.Window.8.app.0.";
constexpr Box kStrangerBox{1200, 600, 240, 120};

// "365.112.500 Hz"
std::string Grouped(std::int64_t hz) {
  std::string text = Decimal(hz);
  for (int at = static_cast<int>(text.size()) - 3; at > 0; at -= 3) {
    text.insert(static_cast<std::size_t>(at), ".");
  }
  return text + " Hz";
}

std::string CallText(const Call& call, bool heard) {
  std::string text = heard ? "> " : "   ";
  text += "Group " + Decimal(call.group) + "  Call ID " + Decimal(call.id) + "  carrier " +
          Decimal(call.carrier) + " timeslot " + Decimal(call.slot) + "  " +
          (call.speaking ? "speaking: " + Decimal(call.party) : std::string("silent"));
  if (call.encrypted) text += "  encrypted";
  if (call.service == "Individual") text += "  individual";
  return text;
}

std::string ToneText(const std::optional<Tone>& tone) {
  if (!tone) return "off";
  return "group=" + Decimal(tone->group) + " hz=" + Decimal(tone->hz) +
         " gain=" + Decimal(tone->gain);
}

// "   1:02:03  " in front of a line of the practice list.
std::string Elapsed(std::int64_t ms) {
  const std::int64_t seconds = ms / 1000;
  return Decimal(seconds / 3600) + ":" + ZeroPadded(seconds / 60 % 60, 2) + ":" +
         ZeroPadded(seconds % 60, 2) + "  ";
}

}  // namespace

Model::Model(Options options, Scenario scenario)
    : options_(std::move(options)), scenario_(std::move(scenario)) {
  air_.base_hz = scenario_.base_hz;
  air_.offset_hz = scenario_.offset_hz;
  air_.control_carrier = scenario_.control_carrier;
  const auto now = [this] { return now_ms_; };
  receiver_ = std::make_unique<Receiver>(air_, now, [this] { OnChange(); });
  server_ = std::make_unique<NetRemoteServer>(
      agenda_, NetRemoteServer::Hooks{
                   now, [this](std::string_view text) { return AnswerCommand(*receiver_, text); },
                   [this](std::string_view kind, std::string_view detail) { Log(kind, detail); }});
  elevated_ = options_.elevated;
  windows_ = std::make_unique<SdrWindows>(tree_, options_, MakeActions());
  traffic_ = std::make_unique<Traffic>(air_, agenda_, now,
                                       options_.seed != 0 ? options_.seed : scenario_.seed);
  air_.SetEvents({[this](const Pdu& pdu) { OnPdu(pdu); }, [this] { OnChange(); }});
  Revive();
  for (const TimedCommand& timed : scenario_.commands) {
    agenda_.Add(timed.ms, [this, &timed] {
      const std::string fault = timed.command(*this);
      if (!fault.empty()) Log("error", "scenario line " + Decimal(timed.line) + ": " + fault);
    });
  }
}

Model::~Model() = default;

void Model::Advance(std::int64_t now_ms) {
  for (;;) {
    const std::optional<std::int64_t> due = NextDueMs();
    if (!due || *due > now_ms) break;
    now_ms_ = std::max(now_ms_, *due);
    if (const std::function<void()> action = agenda_.TakeDue(now_ms_)) action();
  }
  now_ms_ = std::max(now_ms_, now_ms);
}

std::string Model::Do(std::string_view text) {
  std::vector<Word> words;
  std::string fault = SplitWords(text, words);
  Command command;
  if (fault.empty()) fault = ReadCommand(words, command);
  return fault.empty() ? command(*this) : fault;
}

SdrWindows::Actions Model::MakeActions() {
  SdrWindows::Actions actions;
  actions.network = [this] {
    Listen(options_.network_plain || tree_.Find(ids().network)->checked);
  };
  actions.demodulator = [this] {
    const bool on = tree_.Find(ids().demodulator)->checked;
    receiver_->Change([&](ReceiverState& state) { state.demodulator_on = on; });
  };
  actions.automatic = [this] {
    const bool on = tree_.Find(ids().automatic)->checked;
    receiver_->Change([&](ReceiverState& state) { state.auto_on = on; });
  };
  actions.timeslot = [this](int slot) {
    receiver_->Change([&](ReceiverState& state) { state.slot = slot; });
  };
  actions.play = [this] {
    receiver_->Change([](ReceiverState& state) { state.playing = !state.playing; });
  };
  actions.start_call = [this] {
    const std::string fault = hand_calls_.Start();
    if (!fault.empty()) Log("error", fault);
  };
  actions.next_speaker = [this] { hand_calls_.NextSpeaker(); };
  actions.pause = [this] { hand_calls_.Pause(); };
  actions.end_call = [this] { hand_calls_.End(); };
  actions.log = [this](std::string_view kind, std::string_view detail) { Log(kind, detail); };
  return actions;
}

void Model::Revive() {
  identity_seen_ = false;
  running_ = true;
  windows_->Open();
  Log("start", scenario_.name);
  receiver_->Change([this](ReceiverState& state) {
    const bool works = state.source_works;
    state = ReceiverState{};
    state.source_works = works;
    state.playing = options_.playing;
    state.demodulator_on = options_.demodulator_checked;
    state.auto_on = options_.auto_checked;
    state.frequency_hz = air_.FrequencyOf(air_.control_carrier);
    state.center_frequency_hz = state.frequency_hz;
  });
  if (options_.info_open) windows_->OpenInfo();
  if (options_.network_on) Listen(true);
}

void Model::Die() {
  Log("die", "");
  running_ = false;
  hung_until_ms_ = now_ms_;
  server_->Die();
  windows_->Close();
  receiver_->Change([](ReceiverState& state) { state.playing = false; });
  if (listeners_.died) listeners_.died();
}

void Model::Hang(std::int64_t ms) {
  Log("hang", Decimal(ms));
  hung_since_ms_ = now_ms_;
  hung_until_ms_ = now_ms_ + ms;
  if (listeners_.hung) listeners_.hung(ms);
}

void Model::ShowStranger(std::int64_t ms) {
  WindowSpec window{Kind::kStranger, std::string(kStrangerClass) + options_.class_tail,
                    kStrangerTitle, kStrangerBox};
  window.hang_ms = ms;
  strangers_until_ms_[tree_.Add(0, std::move(window))] = now_ms_ + ms;
}

std::int64_t Model::stranger_hung_until_ms(WindowId id) const {
  const auto found = strangers_until_ms_.find(id);
  return found == strangers_until_ms_.end() ? 0 : found->second;
}

void Model::Listen(bool on) {
  const std::string text(Trim(tree_.Find(ids().port)->text));
  const std::optional<std::uint16_t> port = ParseDecimal<std::uint16_t>(text);
  std::string shown = "Switched off";
  bool done = true;
  if (!on) {
    server_->SetListening(false, 0);
    Log("listen", "off");
  } else if (!port || *port == 0) {
    shown = "Not a port: " + text;
    done = false;
  } else {
    done = server_->SetListening(true, *port);
    shown = done ? "Listening on port " + text : "Port " + text + " is taken";
    if (done) Log("listen", "port=" + text);
  }
  if (!done) {
    Log("error", shown);
    on = server_->listening();
  }
  if (!options_.network_plain) tree_.SetChecked(ids().network, on);
  tree_.SetText(ids().server, shown);
}

void Model::Finish() {
  finished_ = true;
  Log("end", "");
}

void Model::OnPdu(const Pdu& pdu) {
  Log("air", pdu.line);
  if (running_ && receiver_->Hears(pdu)) WriteInfo(pdu.line + (pdu.ended ? "\r\n" : ""));
}

void Model::OnChange() {
  PlanLock();
  ShowIdentity();
  ShowState();
  ShowCalls();
  const std::optional<Tone> tone = running_ ? receiver_->CurrentTone() : std::nullopt;
  if (tone == last_tone_) return;
  last_tone_ = tone;
  Log("tone", ToneText(tone));
  if (listeners_.tone) listeners_.tone(tone);
}

void Model::ShowIdentity() {
  if (!running_) return;
  Identity shown{"?", "?", "?"};
  if (receiver_->LockedCarrier()) {
    identity_seen_ = true;
    if (air_.identity()) shown = *air_.identity();
  } else if (identity_seen_) {
    return;  // what was seen last stays
  }
  const bool empty = !identity_seen_ && options_.labels_after_start;
  tree_.SetText(ids().mcc, empty ? "" : "MCC:" + shown.mcc);
  tree_.SetText(ids().mnc, empty ? "" : "MNC:" + shown.mnc);
  tree_.SetText(ids().la, empty ? "" : "LA:" + shown.la);
}

void Model::ShowState() {
  if (!running_) return;
  const ReceiverState& state = receiver_->state();
  const std::optional<int> carrier = receiver_->LockedCarrier();
  const std::string tuned =
      "frequency=" + Decimal(state.frequency_hz) +
      " carrier=" + (carrier ? Decimal(*carrier) : std::string("none")) +
      " slot=" + Decimal(state.slot) + " gain=" + Decimal(state.audio_gain) +
      " detector=" + state.detector + " bandwidth=" + Decimal(state.filter_bandwidth_hz) +
      " playing=" + (state.playing ? "1" : "0") +
      " demodulator=" + (state.demodulator_on ? "1" : "0") + " auto=" + (state.auto_on ? "1" : "0");
  if (tuned != last_tuned_) {
    last_tuned_ = tuned;
    Log("tune", tuned);
  }
  tree_.SetText(ids().play, state.playing ? "Stop" : "Play");
  tree_.SetText(ids().frequency, Grouped(state.frequency_hz) + "     " + state.detector + ", " +
                                     Decimal(state.filter_bandwidth_hz) + " Hz wide, audio gain " +
                                     Decimal(state.audio_gain) +
                                     (state.playing ? ", playing" : ", stopped"));
  std::string where = "Not on any carrier";
  if (carrier) {
    where = "Carrier " + Decimal(*carrier) + ", timeslot " + Decimal(state.slot);
    if (*carrier == air_.control_carrier) where += " - control channel";
  }
  tree_.SetText(ids().tuned, where);
  for (std::size_t i = 0; i < ids().timeslots.size(); ++i) {
    tree_.SetChecked(ids().timeslots[i], static_cast<int>(i) + 1 == state.slot);
  }
  const Call* heard = receiver_->HeardCall();
  const std::optional<Tone> tone = receiver_->CurrentTone();
  std::string sound = "Silence";
  if (tone) {
    sound = "Group " + Decimal(tone->group) + " sounds, " + Decimal(tone->hz) + " Hz";
  } else if (heard != nullptr) {
    sound = "Group " + Decimal(heard->group) + " speaks, but the gain is turned down";
  }
  tree_.SetText(ids().sound, sound);
}

void Model::ShowCalls() {
  if (!running_) return;
  const Call* heard = receiver_->HeardCall();
  std::vector<std::string> items;
  for (const auto& [id, call] : air_.calls()) items.push_back(CallText(call, &call == heard));
  tree_.SetItems(ids().on_air, std::move(items));
}

void Model::PlanLock() {
  agenda_.Cancel(lock_ticket_);
  const std::optional<std::int64_t> due = receiver_->LockDueMs();
  lock_ticket_ = due ? agenda_.Add(*due, [this] { OnChange(); }) : 0;
}

void Model::WriteInfo(std::string_view text) {
  last_line_ = text;
  Log("pdu", text.ends_with("\r\n") ? text.substr(0, text.size() - 2) : text);
  windows_->AddInfo(text);
}

void Model::Log(std::string_view kind, std::string_view detail) {
  log_.Add(now_ms_, kind, detail);
  // The practice list shows what a person can follow; questions come several times a second.
  const bool question = kind == "command" && detail.find("\"Get\"") != std::string_view::npos;
  if (running_ && kind != "air" && kind != "tune" && kind != "reply" && !question) {
    windows_->AddHistory(Elapsed(now_ms_) + std::string(kind) + "  " + Escaped(detail));
  }
}

}  // namespace corvane::standin
