// Labels of countries, networks and location areas: accepted lines of the label files, verbatim.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/spare_table.h"

namespace corvane {

// One label file in memory. Lookups compare the number fields as text, so "0262" never matches 262.
class LabelLines {
 public:
  // `key_fields`: how many leading ";" fields name the thing (1 country, 2 network, 3 area).
  explicit LabelLines(std::size_t key_fields) : key_fields_(key_fields) {}

  bool loaded = false;  // the file was there at start-up, even if no line was accepted

  [[nodiscard]] std::size_t size() const { return lines_.size(); }
  [[nodiscard]] const std::string& operator[](std::size_t index) const { return lines_[index]; }
  [[nodiscard]] std::size_t key_fields() const { return key_fields_; }

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

}  // namespace corvane
