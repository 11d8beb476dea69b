// The simulated file system on a real temporary folder.
#include "sim/sim_files.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/text.h"

namespace corvane::sim {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kForbidden = "<>\"/|?*:";

bool NameAllowed(const std::string& name) {
  return name != "." && name != ".." && std::ranges::none_of(name, [](char c) {
           return static_cast<unsigned char>(c) < 32 ||
                  kForbidden.find(c) != std::string_view::npos;
         });
}

// The entry of `folder` with that name in whatever case; the name itself when there is none.
fs::path Entry(const fs::path& folder, const std::string& name) {
  std::error_code error;
  if (fs::exists(folder / name, error)) return folder / name;
  const std::string wanted = Lowered(name);
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (Lowered(entry.path().filename().string()) == wanted) return entry.path();
  }
  return folder / name;
}

std::optional<std::string> ReadHost(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

void WriteHost(const fs::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) throw std::runtime_error("the test's own file cannot be written: " + path.string());
}

}  // namespace

SimFiles::SimFiles() {
  std::string name = (fs::temp_directory_path() / "corvane-files-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  root_ = name;
  PutDirectory("C:\\Corvane");
}

SimFiles::~SimFiles() {
  std::error_code ignored;
  fs::remove_all(root_, ignored);
}

fs::path SimFiles::HostPath(const std::string& path) const {
  fs::path host = root_;
  for (const std::string& part : Split(path, '\\')) {
    if (part.empty()) continue;
    const bool drive = host == root_ && part.size() == 2 && part[1] == ':';
    const std::string name = drive ? Lowered(part.substr(0, 1)) : part;
    // A name that the system would refuse leads nowhere.
    if (!NameAllowed(name)) return root_ / "no such folder" / "name";
    host = Entry(host, name);
  }
  return host;
}

std::string SimFiles::Key(std::string_view path) {
  return Lowered(path);
}

void SimFiles::CountStep() {
  ++steps_;
}

void SimFiles::LoseUnflushed() {
  for (const auto& [host, left] : unflushed_) WriteHost(host, left);
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
  const auto scanned = scanned_until_ms_.find(HostPath(key));
  return scanned != scanned_until_ms_.end() && scanner_clock_() < scanned->second &&
         (use == Use::kWrite || !scanner_lets_read_);
}

void SimFiles::Scan(const std::string& path) {
  if (scan_ms_ > 0) scanned_until_ms_[HostPath(path)] = scanner_clock_() + scan_ms_;
}

bool SimFiles::Exists(const std::string& path) {
  NoteOperation();
  ++questions_;
  std::error_code error;
  return fs::exists(HostPath(path), error);
}

bool SimFiles::IsDirectory(const std::string& path) {
  NoteOperation();
  ++questions_;
  std::error_code error;
  return fs::is_directory(HostPath(path), error);
}

bool SimFiles::IsReadOnly(const std::string& path) {
  NoteOperation();
  return read_only_.contains(Key(path));
}

FileError SimFiles::MakeDirectory(const std::string& path) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kWrite)) return error;
  const fs::path host = HostPath(path);
  std::error_code error;
  if (fs::exists(host, error)) return kPathAccess;
  if (!fs::is_directory(host.parent_path(), error)) return kPathNotFound;
  return fs::create_directory(host, error) ? kFileOk : kPathAccess;
}

FileError SimFiles::Delete(const std::string& path) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kWrite)) return error;
  const fs::path host = HostPath(path);
  std::error_code error;
  if (fs::is_directory(host, error)) return kPathAccess;
  if (!fs::is_directory(host.parent_path(), error)) return kPathNotFound;
  unflushed_.erase(host);
  return fs::remove(host, error) ? kFileOk : kFileNotFound;
}

FileError SimFiles::Move(const fs::path& from, const fs::path& to) {
  std::error_code error;
  fs::rename(from, to, error);
  if (error) return kPathAccess;
  unflushed_.erase(to);
  if (auto entry = unflushed_.extract(from)) {
    entry.key() = to;
    unflushed_.insert(std::move(entry));
  }
  return kFileOk;
}

FileError SimFiles::Rename(const std::string& from, const std::string& to) {
  NoteOperation();
  if (const FileError error = Step(from, Use::kWrite)) return error;
  std::error_code error;
  const fs::path source = HostPath(from);
  const fs::path target = HostPath(to);
  if (!fs::exists(source, error)) {
    return fs::is_directory(source.parent_path(), error) ? kFileNotFound : kPathNotFound;
  }
  if (fs::exists(target, error)) return kFileExists;
  if (!fs::is_directory(target.parent_path(), error)) return kPathNotFound;
  const FileError moved = Move(source, target);
  if (moved == kFileOk) Scan(to);
  return moved;
}

FileError SimFiles::MoveOver(const std::string& from, const std::string& to) {
  NoteOperation();
  if (const FileError error = Step(to, Use::kWrite)) return error;
  const std::string key = Key(from);
  if (locked_.contains(key) || write_locked_.contains(key) || IsHeld(key, Use::kWrite)) {
    return kPermissionDenied;
  }
  std::error_code error;
  const fs::path source = HostPath(from);
  const fs::path target = HostPath(to);
  if (!fs::exists(source, error)) {
    return fs::is_directory(source.parent_path(), error) ? kFileNotFound : kPathNotFound;
  }
  if (fs::is_directory(target, error)) return kPathAccess;
  if (!fs::is_directory(target.parent_path(), error)) return kPathNotFound;
  if (moves_in_two_steps_ && fs::remove(target, error)) {
    if (const FileError failed = Step(to, Use::kWrite)) return failed;
  }
  const FileError moved = Move(source, target);
  if (moved == kFileOk) Scan(to);
  return moved;
}

FileError SimFiles::ReadAll(const std::string& path, std::string& content) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kRead)) return error;
  const fs::path host = HostPath(path);
  std::error_code error;
  if (fs::is_directory(host, error)) return kPathAccess;
  std::optional<std::string> read = ReadHost(host);
  if (!read) return fs::is_directory(host.parent_path(), error) ? kFileNotFound : kPathNotFound;
  content = std::move(*read);
  return kFileOk;
}

FileError SimFiles::ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                             std::string& content) {
  NoteOperation();
  if (const FileError error = Step(path, Use::kRead)) return error;
  const fs::path host = HostPath(path);
  std::error_code error;
  if (fs::is_directory(host, error)) return kPathAccess;
  if (!fs::exists(host, error)) {
    return fs::is_directory(host.parent_path(), error) ? kFileNotFound : kPathNotFound;
  }
  std::ifstream file(host, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(offset));
  content.resize(size);
  file.read(content.data(), static_cast<std::streamsize>(size));
  content.resize(static_cast<std::size_t>(file.gcount()));
  return kFileOk;
}

FileError SimFiles::OpenForWriting(const std::string& path, bool truncate, std::uint64_t& size) {
  if (const FileError error = Step(path, Use::kWrite)) return error;
  const fs::path host = HostPath(path);
  std::error_code error;
  if (fs::is_directory(host, error)) return kPathAccess;
  if (!fs::is_directory(host.parent_path(), error)) return kPathNotFound;
  if (truncate || !fs::exists(host, error)) {
    WriteHost(host, {});
    unflushed_[host] = "";
  } else if (!unflushed_.contains(host)) {
    unflushed_[host] = ReadHost(host).value_or("");
  }
  size = fs::file_size(host);
  return kFileOk;
}

FileError SimFiles::Write(const std::string& path, std::string_view content, std::uint64_t offset) {
  const fs::path host = HostPath(path);
  const auto write = [&](std::string_view bytes) {
    std::fstream file(host, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(offset));
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error("cannot be written: " + host.string());
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
    unflushed_.erase(HostPath(path));
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
    fs::resize_file(HostPath(path), size);
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
  return ReadHost(HostPath(path));
}

void SimFiles::Put(const std::string& path, std::string_view content) {
  const fs::path host = HostPath(path);
  fs::create_directories(host.parent_path());
  WriteHost(host, content);
  unflushed_.erase(host);
}

void SimFiles::PutDirectory(const std::string& path) {
  fs::create_directories(HostPath(path));
}

void SimFiles::Remove(const std::string& path) {
  fs::remove_all(HostPath(path));
}

std::vector<std::string> SimFiles::List(const std::string& folder) const {
  const fs::path host = HostPath(folder);
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : fs::recursive_directory_iterator(host, error)) {
    if (!entry.is_regular_file(error)) continue;
    std::string name = entry.path().lexically_relative(host).string();
    std::ranges::replace(name, '/', '\\');
    names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace corvane::sim
