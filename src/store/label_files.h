// The readers of the three label files. The program never writes them.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "base/files.h"
#include "base/prompts.h"
#include "panel/form1.h"
#include "store/labels.h"
#include "store/start_error.h"

namespace corvane {

class LabelFiles {
 public:
  // `program_folder` without a "\" at its end.
  LabelFiles(Files& files, Prompts& prompts, Form1& form, NetworkNames& names,
             std::string program_folder);

  // Gives the network labels' file of earlier versions its present name, with a notice.
  // Lets events run.
  [[nodiscard]] ErrorNumber RenameOldNetworkFile();

  // Each fills its labels and its loaded flag. A missing file is no error.
  [[nodiscard]] ErrorNumber LoadNetworkLabels();
  [[nodiscard]] ErrorNumber LoadLocationAreaLabels();
  [[nodiscard]] ErrorNumber LoadCountryLabels();

 private:
  [[nodiscard]] ErrorNumber Load(const char* name, std::span<const std::int64_t> limits,
                                 const char* what, LabelLines& labels);

  Files& files_;
  Prompts& prompts_;
  Form1& form_;
  NetworkNames& names_;
  std::string program_folder_;
};

// Each leading field must be numeric and below its limit.
inline constexpr std::int64_t kCountryLimits[] = {999};
inline constexpr std::int64_t kNetworkLimits[] = {1024, 16384};
inline constexpr std::int64_t kLocationAreaLimits[] = {1024, 16384, 16384};

// Fills `labels` with the lines of the content whose leading fields keep to `limits`; others,
// comments and empty lines are passed over. kTooFewFields ends the reading.
[[nodiscard]] ErrorNumber ParseLabelFile(std::string_view content,
                                         std::span<const std::int64_t> limits, LabelLines& labels);

}  // namespace corvane
