// The file system in memory: files that can be refused, run out of room, stay half written, or see
// the program killed at any step.
//
// Knows paths as the program writes them ("C:\Corvane\Daily"), without regard to case.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "sim/memory_disk.h"

namespace corvane::sim {

// Thrown at the step that the program is to be killed at. Not a std::exception: nobody handles it.
struct ProgramKilled {};
// Thrown at the step that the computer loses its power at.
struct PowerCut {};

class SimFiles : public Files {
 public:
  // An empty file system with the folder C:\Corvane.
  SimFiles();
  SimFiles(const SimFiles&) = delete;
  SimFiles& operator=(const SimFiles&) = delete;

  [[nodiscard]] bool Exists(const std::string& path) override;
  [[nodiscard]] bool IsDirectory(const std::string& path) override;
  [[nodiscard]] bool IsReadOnly(const std::string& path) override;
  [[nodiscard]] FileError MakeDirectory(const std::string& path) override;
  [[nodiscard]] FileError Delete(const std::string& path) override;
  [[nodiscard]] FileError Rename(const std::string& from, const std::string& to) override;
  [[nodiscard]] FileError MoveOver(const std::string& from, const std::string& to) override;
  [[nodiscard]] FileError ReadAll(const std::string& path, std::string& content) override;
  [[nodiscard]] FileError ReadPart(const std::string& path, std::uint64_t offset, std::size_t size,
                                   std::string& content) override;
  [[nodiscard]] FileError WriteAll(const std::string& path, std::string_view content) override;
  [[nodiscard]] FileError Append(const std::string& path, std::string_view content) override;
  [[nodiscard]] FileError Patch(const std::string& path, std::uint32_t offset,
                                std::string_view bytes) override;
  // The code page is ISO 8859-1.
  [[nodiscard]] std::string FromUtf8(std::string_view text) override;

  // Steps are what the system does one after the other: open, write, flush, delete, move, read.
  // Counted from 1 since the last ResetSteps, failed ones included.
  [[nodiscard]] int steps() const { return steps_; }
  void ResetSteps();
  // Step `step` fails with `error`; a write then leaves a half behind, as far as the operation does
  // not take it back. 0: none.
  void FailAtStep(int step, FileError error);
  // The program is killed before step `step`, in the middle of it when it writes. 0: never.
  void KillAtStep(int step) { kill_at_ = step; }
  // The power fails before step `step`: of files that were not flushed since they were written,
  // only what they held before is left, of new ones an empty file. 0: never.
  void CutPowerAtStep(int step) { cut_at_ = step; }
  // Is called at each step, before it has any effect.
  void SetOnStep(std::function<void()> hook) { on_step_ = std::move(hook); }
  // How often Exists and IsDirectory were asked since the last ResetSteps.
  [[nodiscard]] int questions() const { return questions_; }
  // Every step on a path that contains `part` fails; kFileOk ends that.
  void FailPath(const std::string& part, FileError error);
  // So many more bytes can be written; nullopt: any number.
  void SetRoom(std::optional<std::uint64_t> bytes) { room_ = bytes; }
  // Another program has the file open and lets nobody in.
  void SetLocked(const std::string& path, bool locked);
  // Another program has the file open and lets others read it.
  void SetWriteLocked(const std::string& path, bool locked);
  void SetReadOnly(const std::string& path, bool read_only);
  // From now on until `held` answers false another program has the file open and lets nobody in.
  void HoldWhile(const std::string& path, std::function<bool()> held);
  // A scanner opens each file that was written or got a new name, for `hold_ms` of the clock that
  // `now_ms` reads. It lets others read if `reading_allowed`, and nothing else. 0: no scanner.
  void SetScanner(std::function<std::int64_t()> now_ms, int hold_ms, bool reading_allowed);
  // As on FAT: the old file goes in a step of its own before the new one gets its name, so that
  // who is cut off between the two finds neither.
  void SetMovesInTwoSteps(bool two) { moves_in_two_steps_ = two; }

  // From here on every call that is no test's own is a fault, counted in operations_after_end().
  void NoteProgramEnd() { ended_ = true; }
  // A new program starts on the same files: no faults, no steps.
  void Restart();
  [[nodiscard]] int operations_after_end() const { return operations_after_end_; }

  // The test's own access, outside of all faults and counts.
  // nullopt when there is no such file.
  [[nodiscard]] std::optional<std::string> Content(const std::string& path) const;
  // Makes the folders above it as well.
  void Put(const std::string& path, std::string_view content);
  void PutDirectory(const std::string& path);
  void Remove(const std::string& path);
  // The names of all files under a folder, sorted, "\" between the parts.
  [[nodiscard]] std::vector<std::string> List(const std::string& folder) const;

 private:
  enum class Use { kRead, kWrite };
  FileError Step(const std::string& path, Use use);
  FileError Write(const std::string& path, std::string_view content, std::uint64_t offset);
  void Move(const std::string& from, const std::string& to);
  FileError OpenForReading(const std::string& path, const std::string*& content);
  FileError OpenForWriting(const std::string& path, bool truncate, std::uint64_t& size);
  void CountStep();
  void LoseUnflushed();
  void NoteOperation();
  [[nodiscard]] static std::string Key(std::string_view path);
  [[nodiscard]] bool IsHeld(const std::string& key, Use use);
  void Scan(const std::string& path);

  MemoryDisk disk_;
  int steps_ = 0;
  int fail_at_ = 0;
  FileError fail_with_ = kPathAccess;
  int kill_at_ = 0;
  int cut_at_ = 0;
  int questions_ = 0;
  std::function<void()> on_step_;
  std::map<std::string, std::string> unflushed_;  // what a power cut leaves of a file
  std::map<std::string, FileError> failing_parts_;
  std::optional<std::uint64_t> room_;
  std::set<std::string> locked_;
  std::set<std::string> write_locked_;
  std::set<std::string> read_only_;
  std::map<std::string, std::function<bool()>> held_while_;
  std::function<std::int64_t()> scanner_clock_;
  int scan_ms_ = 0;
  bool scanner_lets_read_ = false;
  std::map<std::string, std::int64_t> scanned_until_ms_;
  bool moves_in_two_steps_ = false;
  bool ended_ = false;
  int operations_after_end_ = 0;
};

}  // namespace corvane::sim
