// One complete call on its way: its facts made whole, its files in the outbox, the user's program
// started for it, a line on the output.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "archive/path_text.h"
#include "tools/command.h"
#include "tools/share/hooks.h"
#include "tools/share/outbox.h"
#include "tools/share/share_options.h"
#include "tools/share/surroundings.h"

namespace corvane::tools {

class CallSharer {
 public:
  // Options and console outlive it.
  CallSharer(const ShareOptions& options, Console& console, Outbox::Link link = Outbox::HardLink)
      : options_(options),
        console_(console),
        outbox_(PathOfNarrow(options.outbox), link),
        hooks_(options.hook) {}

  // Makes the outbox. "" or what is wrong.
  [[nodiscard]] std::string Open();
  // Whose names and settings are used from now on, once they are loaded.
  void SetFolder(std::filesystem::path program_folder);
  [[nodiscard]] Surroundings& around() { return around_; }
  [[nodiscard]] Outbox& outbox() { return outbox_; }

  // "" or what is wrong; then nothing was shared.
  [[nodiscard]] std::string Share(SharedCall call);
  [[nodiscard]] std::size_t count() const { return count_; }

  void Tell(const std::string& line) { console_.err.Write(line + "\n"); }
  // Each hook that failed since the last time, on the error output.
  void TellFailedHooks();
  void WaitForHooks() { hooks_.WaitForAll(); }
  [[nodiscard]] bool any_hook_failed() const { return hooks_.ever_failed(); }
  // False when anything was lost.
  [[nodiscard]] bool FlushOutput();

 private:
  const ShareOptions& options_;
  Console& console_;
  Outbox outbox_;
  Hooks hooks_;
  Surroundings around_{{}};
  std::size_t count_ = 0;
};

}  // namespace corvane::tools
