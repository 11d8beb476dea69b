// Placing files so that they appear at once, and the notes about it.
#include "tools/share/outbox.h"

#include <fstream>
#include <system_error>
#include <utility>

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
  if (!fs::is_directory(folder_, error)) return folder_.string() + " cannot be made";
  std::string notes;
  if (fs::exists(folder_ / kNotes, error) && !ReadShared(folder_ / kNotes, kLargestNotes, notes)) {
    return (folder_ / kNotes).string() + " cannot be read";
  }
  std::set<std::string> begun;
  LineReader lines(notes);
  for (std::string_view line; lines.Next(line);) {
    if (line.starts_with("begun ")) begun.emplace(line.substr(6));
    if (line.starts_with("done ")) shared_.emplace(line.substr(5));
  }
  // Where a run ended in between, the sidecar has its name or has it not.
  for (const std::string& key : begun) {
    fs::path sidecar = folder_ / fs::path(key);
    sidecar.replace_extension(".json");
    if (!fs::exists(PartOf(sidecar), error)) shared_.insert(key);
  }
  // An end of line that was cut off must not join the next note.
  if (!notes.empty() && notes.back() != '\n') {
    std::ofstream stream(folder_ / kNotes, std::ios::binary | std::ios::app);
    stream << '\n';
  }
  return "";
}

bool Outbox::HasDay(const std::string& day) const {
  const auto next = shared_.lower_bound(day + "/");
  return next != shared_.end() && next->starts_with(day + "/");
}

fs::path Outbox::RecordingOf(const SharedCall& call) const {
  return folder_ / call.day / call.name;
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
  fs::create_hard_link(call.file, target, error);
  if (!error || CopyFile(call.file, target)) return "";
  return target.string() + " cannot be written";
}

bool Outbox::Note(const char* what, const std::string& key) {
  std::ofstream stream(folder_ / kNotes, std::ios::binary | std::ios::app);
  stream << what << ' ' << key << '\n';
  stream.close();
  return !stream.fail();
}

std::string Outbox::Share(const SharedCall& call, const std::string& json) {
  std::string wrong = PlaceRecording(call);
  if (!wrong.empty()) return wrong;
  const std::string key = call.day + "/" + call.name;
  const fs::path sidecar = SidecarOf(call);
  if (!WriteFile(PartOf(sidecar), json)) return sidecar.string() + " cannot be written";
  if (!Note("begun", key)) return (folder_ / kNotes).string() + " cannot be written";
  std::error_code error;
  fs::rename(PartOf(sidecar), sidecar, error);
  if (error) return sidecar.string() + " cannot be written";
  shared_.insert(key);
  return Note("done", key) ? "" : (folder_ / kNotes).string() + " cannot be written";
}

}  // namespace corvane::tools
