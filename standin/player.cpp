// One overload per command.
#include "standin/player.h"

#include <variant>

#include "base/number_text.h"
#include "standin/model.h"
#include "standin/net_remote_dialogue.h"

namespace corvane::standin {

namespace {

constexpr int kFirstHandId = 12001;
constexpr std::int32_t kFirstHandGroup = 9001;
constexpr int kHandGroups = 5;
constexpr std::int32_t kFirstHandParty = 5010;
constexpr int kHandParties = 20;

}  // namespace

void Player::Load() {
  for (const TimedCommand& timed : model_.scenario_.commands) {
    model_.agenda_.Add(timed.ms, [this, &timed] {
      const std::string fault = Do(timed.command);
      if (!fault.empty()) {
        model_.Log("error", "scenario line " + Decimal(timed.line) + ": " + fault);
      }
    });
  }
}

std::string Player::Do(const Command& command) {
  return std::visit([this](const auto& given) { return Run(given); }, command);
}

std::string Player::Run(const CallCommand& command) {
  const std::string fault = model_.air_.Start(command.call);
  const Call* call = model_.air_.Find(command.call.id);
  if (!fault.empty() || call == nullptr) return fault;
  const int id = call->id;
  const std::uint64_t serial = call->serial;
  if (command.for_ms > 0) {
    model_.agenda_.Add(model_.now_ms_ + command.for_ms, [this, id, serial, command] {
      if (model_.air_.IsOn(id, serial)) {
        (void)model_.air_.Release(id, "User_requested", command.missed);
      }
    });
  }
  if (command.repeat_ms > 0) RepeatSetup(id, serial, command.repeat_ms);
  return {};
}

void Player::RepeatSetup(int id, std::uint64_t serial, std::int64_t every_ms) {
  model_.agenda_.Add(model_.now_ms_ + every_ms, [this, id, serial, every_ms] {
    if (!model_.air_.IsOn(id, serial)) return;
    (void)model_.air_.RepeatSetup(id);
    RepeatSetup(id, serial, every_ms);
  });
}

std::string Player::Run(const SpeakCommand& command) {
  return model_.air_.Speak(command.id, command.party);
}

std::string Player::Run(const PauseCommand& command) {
  return model_.air_.Pause(command.id);
}

std::string Player::Run(const EndCommand& command) {
  if (command.disconnect) return model_.air_.Disconnect(command.id, command.missed);
  return model_.air_.Release(command.id, command.cause, command.missed);
}

std::string Player::Run(const LineCommand& command) {
  for (int i = 0; i < command.count; ++i) {
    if (command.everywhere) {
      if (model_.running_) model_.WriteInfo(command.text + (command.ended ? "\r\n" : ""));
      continue;
    }
    Pdu pdu;
    pdu.on_control = command.carrier < 0;
    if (command.carrier >= 0) pdu.carrier = command.carrier;
    pdu.line = command.text;
    pdu.ended = command.ended;
    model_.air_.Send(pdu);
  }
  return {};
}

std::string Player::Run(const DuplicateCommand& command) {
  if (model_.last_line_.empty()) return "there is no line yet";
  const std::string line = model_.last_line_;
  for (int i = 0; i < command.count; ++i) model_.WriteInfo(line);
  return {};
}

std::string Player::Run(const BurstCommand& command) {
  Call call = command.first;
  for (int i = 0; i < command.count; ++i) {
    Pdu pdu;
    pdu.on_control = true;
    pdu.line = call.encrypted ? EncryptedLine(call) : SetupLine(call);
    model_.air_.Send(pdu);
    ++call.id;
  }
  return {};
}

std::string Player::Run(const NetworkCommand& command) {
  model_.air_.SetIdentity(command.none ? std::nullopt : std::optional(command.identity));
  return {};
}

std::string Player::Run(const TrafficCommand& command) {
  model_.traffic_->SetTraffic(command.settings);
  return {};
}

std::string Player::Run(const NoiseCommand& command) {
  model_.traffic_->SetNoise(command.per_hour);
  return {};
}

std::string Player::Run(const HangCommand& command) {
  const std::string fault = CheckRunning();
  if (fault.empty()) model_.Hang(command.ms);
  return fault;
}

std::string Player::Run(const DieCommand&) {
  const std::string fault = CheckRunning();
  if (fault.empty()) model_.Die();
  return fault;
}

std::string Player::Run(const ReviveCommand&) {
  if (model_.running_) return "it runs already";
  model_.BeginRunning();
  return {};
}

std::string Player::Run(const WindowCommand& command) {
  const SdrWindows::Ids& ids = model_.ids();
  const WindowId id = command.info ? ids.info_window : ids.main;
  if (command.action == WindowAction::kOpen) {
    const std::string fault = CheckRunning();
    if (fault.empty()) model_.windows_->OpenInfo();
    return fault;
  }
  if (id == 0) return "there is no such window now";
  switch (command.action) {
    case WindowAction::kClose:
      model_.windows_->CloseInfo();
      break;
    case WindowAction::kHide:
    case WindowAction::kShow:
      model_.tree_.SetVisible(id, command.action == WindowAction::kShow);
      break;
    default:
      model_.tree_.SetShowState(id, command.action == WindowAction::kMinimise
                                        ? ShowState::kMinimised
                                        : ShowState::kNormal);
      break;
  }
  return {};
}

std::string Player::Run(const MoveCommand& command) {
  const WindowId id = command.info ? model_.ids().info_window : model_.ids().main;
  const Window* window = model_.tree_.Find(id);
  if (window == nullptr) return "there is no such window now";
  Box box = window->box;
  box.left = command.left;
  box.top = command.top;
  model_.tree_.SetBox(id, box);
  return {};
}

std::string Player::Run(const ClearBoxCommand&) {
  const WindowId id = model_.ids().info_box;
  if (id == 0) return "there is no such window now";
  model_.tree_.SetText(id, "");
  return {};
}

std::string Player::Run(const PanelCommand& command) {
  const std::string fault = CheckRunning();
  if (fault.empty()) model_.windows_->SetExpanded(command.tetra, command.expand);
  return fault;
}

std::string Player::Run(const ListenCommand& command) {
  const std::string fault = CheckRunning();
  if (fault.empty()) model_.SetNetwork(command.on);
  return fault;
}

std::string Player::Run(const RefuseCommand& command) {
  model_.server_->SetRefusing(command.on);
  return {};
}

std::string Player::Run(const CutCommand& command) {
  model_.server_->Cut(command.reset);
  return {};
}

std::string Player::Run(const FaultCommand& command) {
  if (command.greeting) {
    model_.server_->SetGreetingFault(command.fault);
  } else {
    model_.server_->SetReplyFault(command.fault);
  }
  return {};
}

std::string Player::Run(const HandlingCommand& command) {
  model_.server_->SetHandlingMs(command.ms);
  return {};
}

std::string Player::Run(const SourceCommand& command) {
  model_.receiver_->Change([&](ReceiverState& state) { state.source_works = command.works; });
  return {};
}

std::string Player::Run(const CheckCommand& command) {
  const WindowId id = command.automatic ? model_.ids().automatic : model_.ids().demodulator;
  const Window* box = model_.tree_.Find(id);
  if (box == nullptr) return CheckRunning();
  if (box->checked != command.on) model_.tree_.Press(id);
  return {};
}

std::string Player::Run(const PaintCommand& command) {
  const WindowId id = command.automatic ? model_.ids().automatic : model_.ids().demodulator;
  model_.tree_.SetPaint(id, command.other ? Paint::kOther : Paint::kNormal);
  return CheckRunning();
}

std::string Player::Run(const PressCommand& command) {
  for (const WindowId id : model_.tree_.Descendants(model_.ids().main)) {
    const Window* window = model_.tree_.Find(id);
    if (window == nullptr || window->text != command.text) continue;
    if (window->kind == Kind::kSelector) {
      model_.tree_.MouseDown(id, window->box.width / 2, window->box.height / 2);
      return {};
    }
    if (model_.tree_.Press(id)) return {};
  }
  return "there is no button \"" + command.text + "\"";
}

std::string Player::Run(const SetCommand& command) {
  return SetByHand(*model_.receiver_, command.method, command.value);
}

std::string Player::Run(const PlayCommand& command) {
  const std::string fault = CheckRunning();
  if (!fault.empty()) return fault;
  model_.receiver_->Change([&](ReceiverState& state) { state.playing = command.on; });
  return {};
}

std::string Player::Run(const LockCommand& command) {
  model_.receiver_->SetLockTimeMs(command.ms);
  return {};
}

std::string Player::Run(const SignallingCommand& command) {
  model_.air_.signalling_on_control = command.on_control;
  return {};
}

std::string Player::Run(const HistoryCommand& command) {
  model_.windows_->SetKeepHistory(command.keep);
  return {};
}

std::string Player::Run(const NoteCommand& command) {
  model_.Log("note", command.text);
  return {};
}

std::string Player::Run(const EndScenarioCommand&) {
  model_.finished_ = true;
  model_.Log("end", "");
  return {};
}

void Player::StartByHand() {
  Call call;
  call.id = kFirstHandId + hand_count_;
  call.group = kFirstHandGroup + hand_count_ % kHandGroups;
  call.party = kFirstHandParty + hand_count_ % kHandParties;
  call.carrier = model_.air_.control_carrier + 6;
  call.slot = 1;
  while (call.slot < 4 && !model_.air_.IsFree(call.carrier, call.slot)) ++call.slot;
  if (!model_.air_.IsFree(call.carrier, call.slot)) {
    model_.Log("error", "all four timeslots of the carrier are taken: end a call first");
    return;
  }
  ++hand_count_;
  hand_id_ = call.id;
  (void)Do(CallCommand{call});
}

void Player::NextSpeakerByHand() {
  const Call* call = model_.air_.Find(hand_id_);
  if (call == nullptr) return;
  const std::int32_t next = (call->party - kFirstHandParty + 1) % kHandParties;
  (void)Do(SpeakCommand{hand_id_, kFirstHandParty + next});
}

void Player::PauseByHand() {
  (void)Do(PauseCommand{hand_id_});
}

// Afterwards the buttons act on the call started before, if it goes on.
void Player::EndByHand() {
  (void)Do(EndCommand{hand_id_});
  hand_id_ = 0;
  for (const auto& [id, call] : model_.air_.calls()) {
    if (id >= kFirstHandId && id < kFirstHandId + hand_count_) hand_id_ = id;
  }
}

std::string Player::CheckRunning() const {
  return model_.running_ ? "" : "SDR# does not run now";
}

}  // namespace corvane::standin
