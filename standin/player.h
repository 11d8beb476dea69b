// Carries out commands on a model: those of the scenario at their time, those given at run time,
// and the practice buttons.
#pragma once

#include <string>

#include "standin/commands.h"

namespace corvane::standin {

class Model;

class Player {
 public:
  explicit Player(Model& model) : model_(model) {}

  // Puts the scenario's commands on the agenda.
  void Load();
  // "" or why it was not done.
  std::string Do(const Command& command);

  // The practice buttons act on the call that was started last by the first of them.
  void StartByHand();
  void NextSpeakerByHand();
  void PauseByHand();
  void EndByHand();

 private:
  std::string Run(const CallCommand& command);
  std::string Run(const SpeakCommand& command);
  std::string Run(const PauseCommand& command);
  std::string Run(const EndCommand& command);
  std::string Run(const LineCommand& command);
  std::string Run(const DuplicateCommand& command);
  std::string Run(const BurstCommand& command);
  std::string Run(const NetworkCommand& command);
  std::string Run(const TrafficCommand& command);
  std::string Run(const NoiseCommand& command);
  std::string Run(const HangCommand& command);
  std::string Run(const DieCommand& command);
  std::string Run(const ReviveCommand& command);
  std::string Run(const WindowCommand& command);
  std::string Run(const MoveCommand& command);
  std::string Run(const ClearBoxCommand& command);
  std::string Run(const PanelCommand& command);
  std::string Run(const ListenCommand& command);
  std::string Run(const RefuseCommand& command);
  std::string Run(const CutCommand& command);
  std::string Run(const FaultCommand& command);
  std::string Run(const HandlingCommand& command);
  std::string Run(const SourceCommand& command);
  std::string Run(const CheckCommand& command);
  std::string Run(const PaintCommand& command);
  std::string Run(const PressCommand& command);
  std::string Run(const SetCommand& command);
  std::string Run(const PlayCommand& command);
  std::string Run(const LockCommand& command);
  std::string Run(const SignallingCommand& command);
  std::string Run(const HistoryCommand& command);
  std::string Run(const NoteCommand& command);
  std::string Run(const EndScenarioCommand& command);

  void RepeatSetup(int id, std::uint64_t serial, std::int64_t every_ms);
  [[nodiscard]] std::string CheckRunning() const;

  Model& model_;
  int hand_id_ = 0;
  int hand_count_ = 0;
};

}  // namespace corvane::standin
