// Small stand-ins for the seams that the store works on: a file system in memory that can fail or
// die at a chosen step, and boxes, clock, timers and loop that are under the test's control.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/loop.h"
#include "base/prompts.h"
#include "base/wall_clock.h"
#include "panel/control_sink.h"

namespace corvane {

inline const std::string kFolder = "C:\\Corvane";

// Thrown when the simulated computer loses its power. The files stay as they are at that moment.
struct PowerCut {};

class MemoryFiles : public Files {
 public:
  std::map<std::string, std::string> content;
  std::set<std::string> directories = {kFolder};
  std::map<std::string, FileError> locked;  // every use of the path fails with the number
  std::optional<std::size_t> room;          // bytes that can still be written
  int operations = 0;                       // calls that could fail
  int fail_at = 0;                          // this operation fails, from 1; 0 never
  FileError fail_with = kPathAccess;
  int steps = 0;   // indivisible changes of the disk
  int cut_at = 0;  // the power fails before this step; 0 never

  bool Exists(const std::string& path) override {
    return content.contains(path) || directories.contains(path);
  }
  bool IsDirectory(const std::string& path) override { return directories.contains(path); }

  FileError MakeDirectory(const std::string& path) override {
    if (const FileError error = Begin(path)) return error;
    if (Exists(path)) return kPathAccess;
    if (!directories.contains(path.substr(0, path.rfind('\\')))) return kPathNotFound;
    Step();
    directories.insert(path);
    return kFileOk;
  }
  FileError Delete(const std::string& path) override {
    if (const FileError error = Begin(path)) return error;
    if (!content.contains(path)) return kFileNotFound;
    Step();
    content.erase(path);
    return kFileOk;
  }
  FileError Rename(const std::string& from, const std::string& to) override {
    if (const FileError error = Begin(from)) return error;
    if (Exists(to)) return kFileExists;
    return Move(from, to);
  }
  FileError MoveOver(const std::string& from, const std::string& to) override {
    if (const FileError error = Begin(to)) return error;
    if (directories.contains(to)) return kPathAccess;
    return Move(from, to);
  }
  FileError ReadAll(const std::string& path, std::string& text) override {
    if (const FileError error = Begin(path)) return error;
    if (directories.contains(path)) return kPathAccess;
    if (!content.contains(path)) return kFileNotFound;
    text = content[path];
    return kFileOk;
  }
  FileError WriteAll(const std::string& path, std::string_view text) override {
    if (const FileError error = BeginWriting(path)) return error;
    Step();
    content[path].clear();
    return Write(path, text);
  }
  FileError Append(const std::string& path, std::string_view text) override {
    if (const FileError error = BeginWriting(path)) return error;
    const std::string before = content[path];
    const FileError error = Write(path, text);
    if (error != kFileOk) content[path] = before;
    return error;
  }
  FileError Patch(const std::string& path, std::uint32_t offset, std::string_view bytes) override {
    if (const FileError error = BeginWriting(path)) return error;
    Step();
    std::string& file = content[path];
    if (file.size() < offset + bytes.size()) file.resize(offset + bytes.size());
    file.replace(offset, bytes.size(), bytes);
    return kFileOk;
  }

 private:
  FileError Begin(const std::string& path) {
    ++operations;
    if (operations == fail_at) return fail_with;
    const auto lock = locked.find(path);
    return lock == locked.end() ? kFileOk : lock->second;
  }
  FileError BeginWriting(const std::string& path) {
    if (const FileError error = Begin(path)) return error;
    if (directories.contains(path)) return kPathAccess;
    return directories.contains(path.substr(0, path.rfind('\\'))) ? kFileOk : kPathNotFound;
  }
  // Two halves, so that the power can fail with a part written.
  FileError Write(const std::string& path, std::string_view text) {
    for (const std::string_view half :
         {text.substr(0, text.size() / 2), text.substr(text.size() / 2)}) {
      Step();
      const std::string_view fits = half.substr(0, room.value_or(half.size()));
      content[path] += fits;
      if (room) *room -= fits.size();
      if (fits.size() < half.size()) return kDiskFull;
    }
    return kFileOk;
  }
  FileError Move(const std::string& from, const std::string& to) {
    if (!content.contains(from)) return kFileNotFound;
    Step();
    content[to] = content[from];
    content.erase(from);
    return kFileOk;
  }
  void Step() {
    if (++steps == cut_at) throw PowerCut();
  }
};

class FakePrompts : public Prompts {
 public:
  struct Box {
    std::string text;
    std::string title;
    BoxIcon icon;
    bool operator==(const Box&) const = default;
  };
  std::vector<Box> boxes;
  int ended = 0;
  std::function<void()> while_open;

  void ShowBox(const std::string& text, const std::string& title, BoxIcon icon) override {
    boxes.push_back({text, title, icon});
    if (while_open) while_open();
  }
  void EndProgram() override { ++ended; }
};

inline FakePrompts::Box FileAccessBox(int number) {
  return {
      "Possible file access error.\r\nMake sure any required files are not opened.\r\n"
      "Error: [" +
          std::to_string(number) + "]\r\nAborting.",
      "Error", BoxIcon::kCritical};
}

inline FakePrompts::Box VersionChangeBox() {
  return {
      "Settings file version change.\r\nPlease restart to re-create\r\n"
      "You will need to reconfigure options\r\nAborting.",
      "Error", BoxIcon::kCritical};
}

inline FakePrompts::Box CorruptBox() {
  return {"Settings file appears corrupt, has been deleted. Please restart.", "Corvane",
          BoxIcon::kNone};
}

class FakeClock : public WallClock {
 public:
  DateTime now = {2026, 11, 15, 14, 23, 5};
  std::function<std::string(const DateTime&)> general_date = FixedGeneralDate;

  DateTime Now() const override { return now; }
  std::string GeneralDate(const DateTime& time) const override { return general_date(time); }
  std::optional<DateTime> ParseGeneralDate(std::string_view text) const override {
    const auto fixed = ParseFixedGeneralDate(text);
    return fixed ? fixed : ParseIsoDate(text);
  }
};

inline const std::string kNow = "15/11/2026 14:23:05";

class QuietSink : public ControlSink {
 public:
  void Changed(const Control& control, Field) override { changed.emplace_back(control.name()); }
  void ListChanged(ListBox&, ListChange, std::size_t) override {}
  void FocusWanted(const Control&) override {}
  std::vector<std::string> changed;
};

class FakeTimer : public Timer {
 public:
  void SetEnabled(bool enabled) override {
    switched.push_back(enabled);
    if (!enabled && withhold_disabled) return;
    enabled_ = enabled;
  }
  bool enabled() const override { return enabled_; }
  int interval_ms() const override { return 0; }

  bool withhold_disabled = false;  // still reads as enabled
  bool enabled_ = false;
  std::vector<bool> switched;
};

class FakeLoop : public Loop {
 public:
  std::function<void()> events;  // what DoEvents dispatches
  std::int64_t now_ms = 0;

  std::int64_t TickMs() const override { return now_ms; }
  std::unique_ptr<Timer> MakeTimer(int, std::function<void()>) override { return nullptr; }
  void Post(EventSource, std::function<void()>) override {}
  void Sleep(int ms) override { now_ms += ms; }
  void DoEvents() override {
    if (events) events();
  }
  void WaitForSocketEvents(int) override {}
};

}  // namespace corvane
