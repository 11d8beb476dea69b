// Names of countries, networks and location areas: the accepted lines of the three label files, and
// their readers. The program never writes these files.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/files.h"
#include "base/prompts.h"
#include "base/spare_table.h"
#include "panel/form1.h"
#include "store/start_error.h"

namespace corvane {

// One label file in memory. Lookups compare the number fields as text, so "0262" never matches 262.
class LabelLines {
 public:
  // `key_fields`: how many leading ";" fields name the thing (1 country, 2 network, 3 area).
  explicit LabelLines(std::size_t key_fields) : key_fields_(key_fields) {}

  bool loaded = false;  // the file was there at start-up, even if no line was accepted

  [[nodiscard]] std::size_t size() const { return lines_.size(); }
  [[nodiscard]] const std::string& operator[](std::size_t index) const { return lines_[index]; }

  void Reset();
  void Append(std::string line);

  // The label of the first line whose leading fields are `key`, joined by ";" ("262;1"): the field
  // behind them, "" when the line has none; nullopt when no line matches.
  [[nodiscard]] std::optional<std::string> Find(std::string_view key) const;

 private:
  std::size_t key_fields_;
  SpareTable<std::string> lines_;
  std::unordered_map<std::string, std::size_t> first_;
};

struct NetworkNames {
  LabelLines CountryLabels{1};
  LabelLines NetworkLabels{2};
  LabelLines LocationAreaLabels{3};
};

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
