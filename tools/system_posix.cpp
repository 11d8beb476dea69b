// Files, clock and running programs of a system without the program's own: lists are prepared here
// or lie in a folder of Wine.
#include <fcntl.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "archive/replay_ports.h"
#include "base/number_text.h"
#include "base/text.h"
#include "tools/system.h"

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

FileError FromSystem(int error) {
  switch (error) {
    case 0:
      return kFileOk;
    case ENOENT:
      return kFileNotFound;
    case EEXIST:
      return kFileExists;
    case ENOSPC:
    case EDQUOT:
      return kDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
      return kPermissionDenied;
    default:
      return kPathAccess;
  }
}

// As the file is spelt in its folder: names here may differ in small letters and capitals.
fs::path Resolve(const std::string& path) {
  const std::size_t at = path.rfind('\\');
  std::error_code error;
  if (at == std::string::npos || fs::exists(path, error)) return path;
  const fs::path folder = at == 0 ? "." : path.substr(0, at);
  const std::string name = path.substr(at + 1);
  if (fs::exists(folder / name, error)) return folder / name;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (SameWord(entry.path().filename().string(), name)) return entry.path();
  }
  return folder / name;
}

class Descriptor {
 public:
  Descriptor(const fs::path& path, int flags) : number_(open(path.c_str(), flags, 0666)) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int number() const { return number_; }

 private:
  int number_;
};

FileError WriteOut(int file, std::string_view content) {
  while (!content.empty()) {
    const ssize_t size = write(file, content.data(), content.size());
    if (size < 0) return FromSystem(errno);
    content.remove_prefix(static_cast<std::size_t>(size));
  }
  return FromSystem(fsync(file) == 0 ? 0 : errno);
}

class FilesPosix : public NoFiles {
 public:
  [[nodiscard]] bool Exists(const std::string& path) override {
    std::error_code error;
    return fs::exists(Resolve(path), error);
  }
  [[nodiscard]] bool IsDirectory(const std::string& path) override {
    std::error_code error;
    return fs::is_directory(Resolve(path), error);
  }
  [[nodiscard]] FileError MakeDirectory(const std::string& path) override {
    std::error_code error;
    if (!fs::create_directory(Resolve(path), error) && !error) return kPathAccess;
    return FromSystem(error.value());
  }
  [[nodiscard]] FileError Delete(const std::string& path) override {
    std::error_code error;
    if (!fs::remove(Resolve(path), error) && !error) return kFileNotFound;
    return FromSystem(error.value());
  }
  [[nodiscard]] FileError Rename(const std::string& from, const std::string& to) override {
    return Exists(to) ? kFileExists : MoveOver(from, to);
  }
  [[nodiscard]] FileError MoveOver(const std::string& from, const std::string& to) override {
    std::error_code error;
    fs::rename(Resolve(from), Resolve(to), error);
    return FromSystem(error.value());
  }
  [[nodiscard]] FileError ReadAll(const std::string& path, std::string& content) override {
    return ReadPart(path, 0, kLargestFile, content);
  }
  [[nodiscard]] FileError ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                                   std::string& content) override {
    if (IsDirectory(path)) return kPathAccess;
    const Descriptor file(Resolve(path), O_RDONLY | O_CLOEXEC);
    if (file.number() < 0) return FromSystem(errno);
    std::string bytes;
    std::string piece(1U << 16U, '\0');
    while (bytes.size() < size) {
      const ssize_t got = pread(file.number(), piece.data(), std::min(piece.size(), size),
                                static_cast<off_t>(offset + bytes.size()));
      if (got < 0) return FromSystem(errno);
      if (got == 0) break;
      bytes.append(piece, 0, static_cast<std::size_t>(got));
    }
    content = bytes.substr(0, size);
    return kFileOk;
  }
  [[nodiscard]] FileError WriteAll(const std::string& path, std::string_view content) override {
    const Descriptor file(Resolve(path), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC);
    return file.number() < 0 ? FromSystem(errno) : WriteOut(file.number(), content);
  }
  [[nodiscard]] FileError Append(const std::string& path, std::string_view content) override {
    const Descriptor file(Resolve(path), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC);
    return file.number() < 0 ? FromSystem(errno) : WriteOut(file.number(), content);
  }

 private:
  static constexpr std::size_t kLargestFile = std::size_t{1} << 30U;
};

class ClockPosix : public WallClock {
 public:
  [[nodiscard]] DateTime Now() const override {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     std::min(local.tm_sec, 59)};
  }
  [[nodiscard]] std::string GeneralDate(const DateTime& time) const override {
    return IsValid(time) ? IsoDate(time) : "";
  }
  [[nodiscard]] std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    return ParseIsoDate(text);
  }
};

class ProcessPosix : public StartedProgram {
 public:
  explicit ProcessPosix(pid_t process) : process_(process) {}
  [[nodiscard]] std::optional<int> Code() override {
    constexpr int kUnknown = 255;
    int status = 0;
    const pid_t ended = waitpid(process_, &status, WNOHANG);
    if (ended == 0) return std::nullopt;
    return ended == process_ && WIFEXITED(status) ? WEXITSTATUS(status) : kUnknown;
  }

 private:
  pid_t process_;
};

class ClaimPosix : public FileClaim {
 public:
  explicit ClaimPosix(const fs::path& file)
      : file_(file, O_RDWR | O_CREAT | O_CLOEXEC),
        taken_(flock(file_.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {}
  [[nodiscard]] bool taken() const { return taken_; }

 private:
  Descriptor file_;
  bool taken_;
};

// Wine maps the file of a program that it runs, and leaves it mapped.
bool HasMapped(const fs::path& process, const fs::path& program) {
  std::ifstream maps(process / "maps", std::ios::binary);
  for (std::string line; std::getline(maps, line);) {
    const std::size_t at = line.find('/');
    if (at == std::string::npos) continue;
    const fs::path mapped = line.substr(at);
    std::error_code error;
    if (SameWord(mapped.filename().string(), program.filename().string()) &&
        fs::equivalent(mapped, program, error)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::unique_ptr<Files> SystemFiles() {
  return std::make_unique<FilesPosix>();
}

std::unique_ptr<WallClock> SystemClock() {
  return std::make_unique<ClockPosix>();
}

std::int64_t SecondsAheadAt(std::int64_t second) {
  const auto instant = static_cast<time_t>(second);
  tm local{};
  return localtime_r(&instant, &local) == nullptr ? 0 : local.tm_gmtoff;
}

void WaitMs(int ms) {
  const timespec pause = {ms / 1000, ms % 1000 * 1'000'000L};
  nanosleep(&pause, nullptr);
}

std::unique_ptr<StartedProgram> StartedProgram::Start(const std::vector<std::string>& words) {
  std::vector<std::string> copies = words;
  std::vector<char*> pointers;
  pointers.reserve(copies.size() + 1);
  for (std::string& word : copies) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  pid_t process = 0;
  if (posix_spawnp(&process, pointers[0], nullptr, nullptr, pointers.data(), environ) != 0) {
    return nullptr;
  }
  return std::make_unique<ProcessPosix>(process);
}

std::unique_ptr<FileClaim> FileClaim::Take(const fs::path& file) {
  auto claim = std::make_unique<ClaimPosix>(file);
  if (claim->taken()) return nullptr;
  return claim;
}

bool CorvaneRunsIn(const std::string& folder) {
  const fs::path program = Resolve(folder + "\\Corvane.exe");
  std::error_code error;
  if (!fs::exists(program, error)) return false;
  for (const auto& process : fs::directory_iterator("/proc", error)) {
    if (IsDecimal(process.path().filename().string()) && HasMapped(process.path(), program)) {
      return true;
    }
  }
  return false;
}

}  // namespace corvane::tools
