// Programs started by a test or a driver, and what becomes of them.
//
// Knows nothing of windows. A program that is still running when its Process goes is killed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane::desktop {

class Process {
 public:
  // Starts `program` with `folder` as its current folder. Null when it could not be started. What
  // it prints is added to `output`, when there is one.
  [[nodiscard]] static std::unique_ptr<Process> Start(const std::filesystem::path& program,
                                                      const std::vector<std::string>& arguments,
                                                      const std::filesystem::path& folder,
                                                      const std::filesystem::path& output = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  [[nodiscard]] unsigned Id() const;
  [[nodiscard]] bool Running() const;
  // nullopt while the program runs.
  [[nodiscard]] std::optional<unsigned> ExitCode() const;
  // Waits for the end of the program: its exit code, nullopt when it still runs after `limit_ms`.
  [[nodiscard]] std::optional<unsigned> WaitForExit(int limit_ms) const;

  // Ends the program at once, as a crash or the task manager would, and waits until it is gone.
  void Kill();
  // Stops all of its threads, as a program that hangs; Resume lets it go on. False when the system
  // refuses.
  [[nodiscard]] bool Suspend();
  [[nodiscard]] bool Resume();

  // What the program has of the system at the moment; of USER objects only the windows, where the
  // system does not count them.
  struct Use {
    unsigned handles = 0;
    unsigned gdi_objects = 0;
    unsigned user_objects = 0;
    std::size_t private_kib = 0;
    std::int64_t processor_us = 0;  // used by its threads since they began
  };
  [[nodiscard]] Use TheUse() const;

 private:
  struct Handles;
  explicit Process(std::unique_ptr<Handles> handles);
  std::unique_ptr<Handles> handles_;
};

// The folder of the running program.
[[nodiscard]] std::filesystem::path OwnFolder();
// A number that no other program running at the moment has: names temporary folders.
[[nodiscard]] unsigned OwnProcessId();

}  // namespace corvane::desktop
