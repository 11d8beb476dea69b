// The options of a report, and its page of help.
#include "tools/report/report_options.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/number_text.h"
#include "tools/arguments.h"

namespace corvane::tools {

const char* const kReportHelp =
    R"(usage: corvane-tools report DAY... [OPTION]...

Makes one page of what happened on one day or many: which calls were followed, who spoke, what was
missed and why, with the recordings to listen to. DAY is a folder of Corvane's, as Daily\20261115.
The page is one file that is opened with a double click; it needs no network. It finds the
recordings by their place, so it is kept near the day folder.

Corvane may run meanwhile. Nothing is written into a day folder unless -o says so.

  -o FILE              write to FILE; default: report-20261115.html in the current folder for a
                       page, the standard output for records
  -F html|json|csv     the form: a page, or a record for each call; default: html
  --lists DIR          the folder with TETRA_GSSI.txt, TETRA_SSI.txt and corvane_simple.dat;
                       default: the program folder, when the day lies in one
  --earlier DAYS       groups and radios count as new when so many earlier day folders beside DAY
                       do not have them, 0 to 3660; default: 7
  --merge OUT.wav      join the recordings, in the order of their calls
  --no-waveforms       do not look into the recordings: faster; no pictures of the sound, and
                       pauses cannot be skipped
  -q                   no summary and no progress bar
  --help               this page

With -F json each call is one object on a line of its own, with the keys start, length_s, mcc,
mnc, gssi, label, call_id, carrier, slot, talkers (a list of ssi, label and pos_s), recording
(relative to the folder of the call's day) and end: released, disconnected, timed_out, forced or
unknown. What the day folder does not tell is null. -F csv has the same columns; text in it that a
spreadsheet would take for a formula has an apostrophe in front. Both are UTF-8. The summary, and
what was missing, goes to the error output.

exit status: 0 done, 2 failed: wrong usage, a folder that is not there, or results that could not be
written.
)";

namespace {

bool ReadForm(std::string_view text, ReportForm& form) {
  constexpr std::array<std::string_view, 3> kNames = {"html", "json", "csv"};
  const auto* found = std::find(kNames.begin(), kNames.end(), text);
  if (found == kNames.end()) return false;
  form = static_cast<ReportForm>(found - kNames.begin());
  return true;
}

bool ReadEarlier(std::string_view text, int& days) {
  const auto number = ParseDecimal<int>(text);
  if (!number || *number < 0 || *number > ReportOptions::kMostEarlierDays) return false;
  days = *number;
  return true;
}

bool ReadOption(std::string_view name, const std::string& value, ReportOptions& options) {
  if (name == "-q") {
    options.quiet = true;
    return true;
  }
  if (name == "--no-waveforms") {
    options.waveforms = false;
    return true;
  }
  if (name == "-F") return ReadForm(value, options.form);
  if (name == "--earlier") return ReadEarlier(value, options.earlier);
  std::string& file = name == "-o"        ? options.output
                      : name == "--lists" ? options.lists
                                          : options.merge;
  file = value;
  return !value.empty();
}

}  // namespace

std::string ParseReportOptions(const Arguments& arguments, ReportOptions& options) {
  ArgumentRules rules;
  rules.with_value = {"-o", "-F", "--lists", "--earlier", "--merge"};
  rules.flags = {"-q", "--no-waveforms"};
  rules.take_word = [&](const std::string& word) {
    options.days.push_back(word);
    return word.empty() ? "the name of a day folder is empty" : "";
  };
  rules.take_option = [&](std::string_view name, const std::string& value) {
    return ReadOption(name, value, options);
  };
  const std::string wrong = ReadArguments(arguments, rules);
  if (!wrong.empty()) return wrong;
  return options.days.empty() ? "which day folder?" : "";
}

}  // namespace corvane::tools
