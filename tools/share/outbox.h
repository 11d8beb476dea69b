// The folder that readers watch: a recording and its sidecar for each shared call, in a folder for
// each day, and the list of those that were shared. Whatever happens in between, a call is shared
// once, and no reader finds a sidecar before it is whole and its recording is there. One run at a
// time has it open.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>

#include "tools/share/sidecar.h"
#include "tools/system.h"

namespace corvane::tools {

class Outbox {
 public:
  // Gives a file a second name. False where that cannot be; it is copied then.
  using Link = bool (*)(const std::filesystem::path& file, const std::filesystem::path& name);
  static bool HardLink(const std::filesystem::path& file, const std::filesystem::path& name);

  explicit Outbox(std::filesystem::path folder, Link link = HardLink)
      : folder_(std::move(folder)), link_(link) {}

  // Makes the folder and reads what was shared before. "" or what is wrong.
  [[nodiscard]] std::string Open();

  // Under this name or the one that the program gave the recording. A call whose sidecar is there
  // was shared, whatever became of the note about it.
  [[nodiscard]] bool HasShared(const std::string& day, const std::string& name) const;
  // Whether anything of the day was shared.
  [[nodiscard]] bool HasDay(const std::string& day) const { return shared_.contains(day); }
  // Calls of earlier days will not be asked about any more.
  void ForgetDaysBefore(const std::string& day);

  [[nodiscard]] std::filesystem::path notes() const;
  // Lines of the notes that say nothing.
  [[nodiscard]] std::size_t damaged_notes() const { return damaged_notes_; }

  // "" or what is wrong; then nothing was shared.
  [[nodiscard]] std::string Share(const SharedCall& call, const std::string& json);

  // Where the files of a shared call are.
  [[nodiscard]] std::filesystem::path RecordingOf(const SharedCall& call) const;
  [[nodiscard]] std::filesystem::path SidecarOf(const SharedCall& call) const;

 private:
  [[nodiscard]] std::string PlaceRecording(const SharedCall& call) const;
  [[nodiscard]] bool Note(const char* what, const std::string& key);

  void Remember(std::string_view key);

  std::filesystem::path folder_;
  Link link_;
  // What the program called the recordings, by the names of the days.
  std::map<std::string, std::unordered_set<std::string>, std::less<>> shared_;
  std::size_t damaged_notes_ = 0;
  std::unique_ptr<FileClaim> claim_;
};

}  // namespace corvane::tools
