// The options of the program in "\corvane_simple.dat": read once at start, written at saves.
#pragma once

#include <string>

#include "base/files.h"
#include "base/prompts.h"
#include "base/wall_clock.h"
#include "panel/form1.h"
#include "panel/presets.h"
#include "store/settings_record.h"
#include "store/start_error.h"

namespace corvane {

class SettingsFile {
 public:
  // `program_folder` without a "\" at its end.
  SettingsFile(Files& files, Prompts& prompts, const WallClock& clock, Form1& form,
               Presets& presets, StartErrors& errors, std::string program_folder);

  // Sets controls and presets from the file, or to the defaults when there is none. Also enables
  // the record-only controls if their mode is selected. No handler runs: the caller lets a restored
  // LOG mode, the compact layout and a window position off all screens take effect.
  // A file that cannot be used ends the program after its box. Lets events run.
  [[nodiscard]] Load ReadSettings();

  // Replaces the file in one step; bytes of an older, longer record stay behind the new one. A
  // failure leaves the old file and adds one status line. Lets no events run.
  void SaveSettings();

 private:
  void ApplyDefaults();
  void ApplyColours(const SettingsRecord& record);
  [[nodiscard]] ErrorNumber ApplyCheckBoxes(const SettingsRecord& record);
  [[nodiscard]] ErrorNumber Apply(const SettingsRecord& record);
  [[nodiscard]] SettingsRecord Collect() const;
  [[nodiscard]] FileError Write();

  Files& files_;
  Prompts& prompts_;
  const WallClock& clock_;
  Form1& form_;
  Presets& presets_;
  StartErrors& errors_;
  std::string path_;
};

}  // namespace corvane
