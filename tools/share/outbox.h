// The folder that readers watch: a recording and its sidecar for each shared call, in a folder for
// each day, and the list of those that were shared. Whatever happens in between, a call is shared
// once, and no reader finds a sidecar before it is whole and its recording is there.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "tools/share/sidecar.h"

namespace corvane::tools {

class Outbox {
 public:
  explicit Outbox(std::filesystem::path folder) : folder_(std::move(folder)) {}

  // Makes the folder and reads what was shared before. "" or what is wrong.
  [[nodiscard]] std::string Open();

  [[nodiscard]] bool HasShared(const std::string& day, const std::string& name) const {
    return shared_.contains(day + "/" + name);
  }
  // Whether anything of the day was shared.
  [[nodiscard]] bool HasDay(const std::string& day) const;

  // "" or what is wrong; then nothing was shared.
  [[nodiscard]] std::string Share(const SharedCall& call, const std::string& json);

  // Where the files of a shared call are.
  [[nodiscard]] std::filesystem::path RecordingOf(const SharedCall& call) const;
  [[nodiscard]] std::filesystem::path SidecarOf(const SharedCall& call) const;

 private:
  [[nodiscard]] std::string PlaceRecording(const SharedCall& call) const;
  [[nodiscard]] bool Note(const char* what, const std::string& key);

  std::filesystem::path folder_;
  std::set<std::string> shared_;  // "20261115/142305_1207_9001.wav"
};

}  // namespace corvane::tools
