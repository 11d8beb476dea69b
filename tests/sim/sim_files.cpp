// What each operation of the seam does step by step, and what can go wrong at a step.
#include "sim/sim_files.h"

#include <utility>

#include "base/text.h"

namespace corvane::sim {

SimFiles::SimFiles() {
  disk_.MakeDirectories("C:\\Corvane");
}

std::string SimFiles::Key(std::string_view path) {
  return Lowered(path);
}

void SimFiles::CountStep() {
  ++steps_;
}

void SimFiles::LoseUnflushed() {
  for (const auto& [key, left] : unflushed_) disk_.Create(key) = left;
  unflushed_.clear();
}

void SimFiles::NoteOperation() {
  if (ended_) ++operations_after_end_;
}

FileError SimFiles::Step(const std::string& path, Use use) {
  CountStep();
  if (steps_ == kill_at_) throw ProgramKilled();
  if (steps_ == cut_at_) {
    LoseUnflushed();
    throw PowerCut();
  }
  if (const auto hook = on_step_) hook();  // which may set another one
  if (steps_ == fail_at_) return fail_with_;
  const std::string key = Key(path);
  for (const auto& [part, error] : failing_parts_) {
    if (key.find(part) != std::string::npos) return error;
  }
  if (locked_.contains(key) || IsHeld(key, use)) return kPermissionDenied;
  if (use == Use::kWrite && (write_locked_.contains(key) || read_only_.contains(key))) {
    return kPermissionDenied;
  }
  return kFileOk;
}

bool SimFiles::IsHeld(const std::string& key, Use use) {
  const auto held = held_while_.find(key);
  if (held != held_while_.end() && held->second()) return true;
  if (scanned_until_ms_.empty()) return false;
  const auto scanned = scanned_until_ms_.find(key);
  return scanned != scanned_until_ms_.end() && scanner_clock_() < scanned->second &&
         (use == Use::kWrite || !scanner_lets_read_);
}

void SimFiles::Scan(const std::string& path) {
  if (scan_ms_ > 0) scanned_until_ms_[Key(path)] = scanner_clock_() + scan_ms_;
}

bool SimFiles::Exists(const std::string& path) {
  NoteOperation();
  ++questions_;
  return disk_.Exists(path);
}

bool SimFiles::IsDirectory(const std::string& path) {
  NoteOperation();
  ++questions_;
  return disk_.IsDirectory(path);
}

bool SimFiles::IsReadOnly(const std::string& path) {
  NoteOperation();
  return read_only_.contains(Key(path));
}

FileError SimFiles::MakeDirectory(const std::string& path) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kWrite)) return error;
  if (disk_.Exists(path)) return kPathAccess;
  if (!disk_.HasParent(path)) return kPathNotFound;
  disk_.MakeDirectory(path);
  return kFileOk;
}

FileError SimFiles::Delete(const std::string& path) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kWrite)) return error;
  if (disk_.IsDirectory(path)) return kPathAccess;
  if (!disk_.HasParent(path)) return kPathNotFound;
  unflushed_.erase(Key(path));
  return disk_.Remove(path) ? kFileOk : kFileNotFound;
}

void SimFiles::Move(const std::string& from, const std::string& to) {
  disk_.Move(from, to);
  unflushed_.erase(Key(to));
  if (auto entry = unflushed_.extract(Key(from))) {
    entry.key() = Key(to);
    unflushed_.insert(std::move(entry));
  }
  Scan(to);
}

FileError SimFiles::Rename(const std::string& from, const std::string& to) {
  NoteOperation();
  if (const FileError error = Step(from, Use::kWrite)) return error;
  if (!disk_.Exists(from)) return disk_.HasParent(from) ? kFileNotFound : kPathNotFound;
  if (disk_.Exists(to)) return kFileExists;
  if (!disk_.HasParent(to)) return kPathNotFound;
  Move(from, to);
  return kFileOk;
}

FileError SimFiles::MoveOver(const std::string& from, const std::string& to) {
  NoteOperation();
  if (const FileError error = Step(to, Use::kWrite)) return error;
  const std::string key = Key(from);
  if (locked_.contains(key) || write_locked_.contains(key) || IsHeld(key, Use::kWrite)) {
    return kPermissionDenied;
  }
  if (!disk_.Exists(from)) return disk_.HasParent(from) ? kFileNotFound : kPathNotFound;
  if (disk_.IsDirectory(to)) return kPathAccess;
  if (!disk_.HasParent(to)) return kPathNotFound;
  if (moves_in_two_steps_ && disk_.Remove(to)) {
    if (const FileError failed = Step(to, Use::kWrite)) return failed;
  }
  Move(from, to);
  return kFileOk;
}

FileError SimFiles::OpenForReading(const std::string& path, const std::string*& content) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kRead)) return error;
  if (disk_.IsDirectory(path)) return kPathAccess;
  content = disk_.Content(path);
  if (content != nullptr) return kFileOk;
  return disk_.HasParent(path) ? kFileNotFound : kPathNotFound;
}

FileError SimFiles::ReadAll(const std::string& path, std::string& content) {
  const std::string* file = nullptr;
  const FileError error = OpenForReading(path, file);
  if (error == kFileOk) content = *file;
  return error;
}

FileError SimFiles::ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                             std::string& content) {
  const std::string* file = nullptr;
  const FileError error = OpenForReading(path, file);
  if (error == kFileOk) {
    content = offset < file->size() ? file->substr(static_cast<std::size_t>(offset), size) : "";
  }
  return error;
}

FileError SimFiles::OpenForWriting(const std::string& path, bool truncate, std::uint64_t& size) {
  if (const FileError error = Step(path, Use::kWrite)) return error;
  if (disk_.IsDirectory(path)) return kPathAccess;
  if (!disk_.HasParent(path)) return kPathNotFound;
  const std::string* before = disk_.Content(path);
  if (truncate || before == nullptr) {
    disk_.Create(path);
    unflushed_[Key(path)] = "";
  } else {
    unflushed_.try_emplace(Key(path), *before);
  }
  size = disk_.Content(path)->size();
  return kFileOk;
}

FileError SimFiles::Write(const std::string& path, std::string_view content, std::uint64_t offset) {
  const auto write = [&](std::string_view bytes) {
    std::string& file = *disk_.Content(path);
    const auto at = static_cast<std::size_t>(offset);
    if (file.size() < at) file.resize(at);
    file.replace(at, bytes.size(), bytes);
  };
  const std::string_view half = content.substr(0, content.size() / 2);
  if (steps_ + 1 == kill_at_) write(half);
  if (const FileError error = Step(path, Use::kWrite)) {
    write(half);
    return error;
  }
  if (room_ && *room_ < content.size()) {
    write(content.substr(0, static_cast<std::size_t>(*room_)));
    room_ = 0;
    return kDiskFull;
  }
  if (room_) *room_ -= content.size();
  write(content);
  return kFileOk;
}

FileError SimFiles::WriteAll(const std::string& path, std::string_view content) {
  NoteOperation();
  std::uint64_t size = 0;
  if (const FileError error = OpenForWriting(path, true, size)) return error;
  if (const FileError error = Write(path, content, 0)) return error;
  const FileError flushed = Step(path, Use::kWrite);
  if (flushed == kFileOk) {
    unflushed_.erase(Key(path));
    Scan(path);
  }
  return flushed;
}

FileError SimFiles::Append(const std::string& path, std::string_view content) {
  NoteOperation();
  std::uint64_t size = 0;
  if (const FileError error = OpenForWriting(path, false, size)) return error;
  const FileError error = Write(path, content, size);
  if (error != kFileOk) {
    disk_.Content(path)->resize(static_cast<std::size_t>(size));
  } else {
    Scan(path);
  }
  return error;
}

FileError SimFiles::Patch(const std::string& path, std::uint32_t offset, std::string_view bytes) {
  NoteOperation();
  std::uint64_t size = 0;
  if (const FileError error = OpenForWriting(path, false, size)) return error;
  const FileError error = Write(path, bytes, offset);
  if (error == kFileOk) Scan(path);
  return error;
}

std::string SimFiles::FromUtf8(std::string_view text) {
  constexpr unsigned kLastOfPage = 0xFF;
  std::string page;
  while (!text.empty()) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t size = lead < 0x80   ? 1
                             : lead < 0xC0 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                                           : 4;
    unsigned letter = size == 1 ? lead : lead & (0x7FU >> size);
    std::size_t read = 1;
    while (read < size && read < text.size() && (text[read] & 0xC0) == 0x80) {
      letter = letter << 6 | (static_cast<unsigned char>(text[read++]) & 0x3FU);
    }
    page += read == size && letter <= kLastOfPage ? static_cast<char>(letter) : '?';
    text.remove_prefix(read);
  }
  return page;
}

void SimFiles::ResetSteps() {
  steps_ = 0;
  questions_ = 0;
}

void SimFiles::FailAtStep(int step, FileError error) {
  fail_at_ = step;
  fail_with_ = error;
}

void SimFiles::FailPath(const std::string& part, FileError error) {
  if (error == kFileOk) {
    failing_parts_.erase(Key(part));
  } else {
    failing_parts_[Key(part)] = error;
  }
}

namespace {
void Put(std::set<std::string>& set, const std::string& key, bool in) {
  if (in) {
    set.insert(key);
  } else {
    set.erase(key);
  }
}
}  // namespace

void SimFiles::SetLocked(const std::string& path, bool locked) {
  sim::Put(locked_, Key(path), locked);
}

void SimFiles::SetWriteLocked(const std::string& path, bool locked) {
  sim::Put(write_locked_, Key(path), locked);
}

void SimFiles::SetReadOnly(const std::string& path, bool read_only) {
  sim::Put(read_only_, Key(path), read_only);
}

void SimFiles::HoldWhile(const std::string& path, std::function<bool()> held) {
  held_while_[Key(path)] = std::move(held);
}

void SimFiles::SetScanner(std::function<std::int64_t()> now_ms, int hold_ms, bool reading_allowed) {
  scanner_clock_ = std::move(now_ms);
  scan_ms_ = hold_ms;
  scanner_lets_read_ = reading_allowed;
  scanned_until_ms_.clear();
}

void SimFiles::Restart() {
  ResetSteps();
  fail_at_ = 0;
  kill_at_ = 0;
  cut_at_ = 0;
  on_step_ = nullptr;
  failing_parts_.clear();
  room_.reset();
  locked_.clear();
  write_locked_.clear();
  held_while_.clear();
  scan_ms_ = 0;
  scanned_until_ms_.clear();
  ended_ = false;
  operations_after_end_ = 0;
}

std::optional<std::string> SimFiles::Content(const std::string& path) const {
  const std::string* content = disk_.Content(path);
  return content == nullptr ? std::nullopt : std::optional(*content);
}

void SimFiles::Put(const std::string& path, std::string_view content) {
  disk_.MakeDirectories(path.substr(0, path.rfind('\\')));
  disk_.Create(path) = content;
  unflushed_.erase(Key(path));
}

void SimFiles::PutDirectory(const std::string& path) {
  disk_.MakeDirectories(path);
}

void SimFiles::Remove(const std::string& path) {
  unflushed_.erase(Key(path));
  disk_.Remove(path);
}

std::vector<std::string> SimFiles::List(const std::string& folder) const {
  return disk_.List(folder);
}

}  // namespace corvane::sim
