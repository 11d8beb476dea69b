// Placing files so that they appear at once, and the notes about it.
#include "tools/share/outbox.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <system_error>
#include <utility>

#include "archive/path_text.h"
#include "archive/recordings.h"
#include "archive/shared_file.h"
#include "base/text.h"

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

constexpr const char* kNotes = "shared.txt";
constexpr const char* kPart = ".part";
constexpr std::size_t kLargestNotes = 1U << 28U;

fs::path PartOf(fs::path path) {
  path += kPart;
  return path;
}

// What the user has put behind the name that the program gave, taken off.
std::string OwnName(std::string_view name) {
  const auto said = ParseRecordingName(name);
  if (!said || !said->renamed) return std::string(name);
  return std::string(name.substr(0, said->size)) + ".wav";
}

// "20261115/142305_1207_9001.wav"
bool IsKey(std::string_view text) {
  const std::size_t at = text.find('/');
  const bool parts = at != std::string_view::npos && at > 0 && at + 1 < text.size();
  return parts && text.find_first_of(std::string_view("\0\r", 2)) == std::string_view::npos;
}

bool WriteFile(const fs::path& path, const std::string& text) {
  std::ofstream stream(path, std::ios::binary | std::ios::trunc);
  stream << text;
  stream.close();
  return !stream.fail();
}

// Where files cannot be linked. Reads as who holds nothing.
bool CopyFile(const fs::path& from, const fs::path& to) {
  SharedFile file;
  if (!file.Open(from)) return false;
  std::ofstream stream(PartOf(to), std::ios::binary | std::ios::trunc);
  std::string piece(1U << 16U, '\0');
  while (const std::size_t got = file.Read(piece.data(), piece.size())) {
    stream.write(piece.data(), static_cast<std::streamsize>(got));
  }
  stream.close();
  std::error_code error;
  if (stream.fail() || file.failed()) {
    fs::remove(PartOf(to), error);
    return false;
  }
  fs::rename(PartOf(to), to, error);
  return !error;
}

}  // namespace

std::string Outbox::Open() {
  std::error_code error;
  fs::create_directories(folder_, error);
  if (!fs::is_directory(folder_, error)) return NarrowName(folder_) + " cannot be made";
  claim_ = FileClaim::Take(notes());
  if (!claim_) return NarrowName(folder_) + " is the outbox of another run of share";
  std::string said;
  if (fs::exists(notes(), error) && !ReadShared(notes(), kLargestNotes, said)) {
    return NarrowName(notes()) + " cannot be read";
  }
  std::set<std::string> begun;
  LineReader lines(said);
  for (std::string_view line; lines.Next(line);) {
    const std::string_view key = line.substr(std::min(line.find(' '), line.size() - 1) + 1);
    if (line.empty()) continue;
    if (line.starts_with("begun ") && IsKey(key)) {
      begun.emplace(key);
    } else if (line.starts_with("done ") && IsKey(key)) {
      Remember(key);
    } else {
      ++damaged_notes_;
    }
  }
  // Where a run ended in between, the sidecar has its name or has it not.
  for (const std::string& key : begun) {
    fs::path sidecar = folder_ / PathOfUtf8(key);
    sidecar.replace_extension(".json");
    if (!fs::exists(PartOf(sidecar), error)) Remember(key);
  }
  // An end of line that was cut off must not join the next note.
  if (!said.empty() && said.back() != '\n') {
    std::ofstream stream(notes(), std::ios::binary | std::ios::app);
    stream << '\n';
  }
  return "";
}

void Outbox::Remember(std::string_view key) {
  const std::size_t at = key.find('/');
  shared_[std::string(key.substr(0, at))].insert(OwnName(key.substr(at + 1)));
}

bool Outbox::HasShared(const std::string& day, const std::string& name) const {
  const auto of_day = shared_.find(day);
  if (of_day != shared_.end() && of_day->second.contains(OwnName(name))) return true;
  std::error_code error;
  return fs::exists((folder_ / day / PathOfUtf8(name)).replace_extension(".json"), error);
}

void Outbox::ForgetDaysBefore(const std::string& day) {
  shared_.erase(shared_.begin(), shared_.lower_bound(day));
}

fs::path Outbox::notes() const {
  return folder_ / kNotes;
}

bool Outbox::HardLink(const fs::path& file, const fs::path& name) {
  std::error_code error;
  fs::create_hard_link(file, name, error);
  return !error;
}

fs::path Outbox::RecordingOf(const SharedCall& call) const {
  return folder_ / call.day / PathOfUtf8(call.name);
}

fs::path Outbox::SidecarOf(const SharedCall& call) const {
  return RecordingOf(call).replace_extension(".json");
}

std::string Outbox::PlaceRecording(const SharedCall& call) const {
  std::error_code error;
  const fs::path target = RecordingOf(call);
  fs::create_directories(target.parent_path(), error);
  if (fs::equivalent(call.file, target, error)) return "";
  fs::remove(target, error);
  if (link_(call.file, target) || CopyFile(call.file, target)) return "";
  return NarrowName(target) + " cannot be written";
}

bool Outbox::Note(const char* what, const std::string& key) {
  std::ofstream stream(notes(), std::ios::binary | std::ios::app);
  stream << what << ' ' << key << '\n';
  stream.close();
  return !stream.fail();
}

std::string Outbox::Share(const SharedCall& call, const std::string& json) {
  std::string wrong = PlaceRecording(call);
  if (!wrong.empty()) return wrong;
  const std::string key = call.day + "/" + call.name;
  const fs::path sidecar = SidecarOf(call);
  if (!WriteFile(PartOf(sidecar), json)) return NarrowName(sidecar) + " cannot be written";
  if (!Note("begun", key)) return NarrowName(notes()) + " cannot be written";
  std::error_code error;
  fs::rename(PartOf(sidecar), sidecar, error);
  if (error) return NarrowName(sidecar) + " cannot be written";
  Remember(key);
  return Note("done", key) ? "" : NarrowName(notes()) + " cannot be written";
}

}  // namespace corvane::tools
