// corvane-tools report: from the command line to the exit code.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "archive/call_text.h"
#include "archive/day_folder.h"
#include "archive/day_reader.h"
#include "archive/path_text.h"
#include "archive/user_files.h"
#include "base/number_text.h"
#include "tools/command.h"
#include "tools/progress.h"
#include "tools/report/report_options.h"
#include "tools/report/report_page.h"
#include "tools/report/report_sound.h"

namespace corvane::tools {

namespace {

constexpr const char* kReport = "report";

class ReportRun {
 public:
  ReportRun(const ReportOptions& options, Console& console)
      : options_(options), console_(console) {}

  ExitCode Run() {
    std::string wrong = OpenDays();
    if (wrong.empty()) LoadLists();
    if (wrong.empty()) wrong = OpenOutput();
    if (!wrong.empty()) return Fail(console_, kReport, wrong);
    Read();
    const SoundWork sound(options_, console_, result_.calls);
    if (options_.form == ReportForm::kHtml) {
      page_.sound = sound.Look();
      WritePage();
    } else {
      WriteRecords();
    }
    const bool written = out_->Flush() && (file_ == nullptr || file_->Close());
    if (!written) return Fail(console_, kReport, "the results could not be written");
    wrong = sound.Merge(result_.notices);
    if (!wrong.empty()) return Fail(console_, kReport, wrong);
    if (!options_.quiet) WriteSummary();
    return ExitCode::kDone;
  }

 private:
  std::string OpenDays() {
    for (const std::string& name : options_.days) {
      auto day = OpenDayFolder(PathOfNarrow(name));
      if (!day) return name + ": there is no such folder";
      const auto same = [&](const DayFolder& known) { return known.path == day->path; };
      if (std::none_of(request_.days.begin(), request_.days.end(), same)) {
        request_.days.push_back(std::move(*day));
      }
    }
    std::stable_sort(request_.days.begin(), request_.days.end(),
                     [](const DayFolder& a, const DayFolder& b) { return a.name < b.name; });
    return "";
  }

  // What is wrong with a list is no reason to have no report.
  void LoadLists() {
    const std::string folder = options_.lists.empty()
                                   ? NarrowName(ProgramFolderOf(request_.days.front()))
                                   : options_.lists;
    if (folder.empty()) {
      notes_.push_back("no lists: names are those of the logs");
      return;
    }
    const auto take = [this](const std::string& wrong) {
      if (!wrong.empty()) notes_.push_back(wrong);
    };
    bool found = false;
    take(LoadGroups(folder, lists_.groups, found));
    take(LoadSubscribers(folder, lists_.subscribers, found));
    const std::filesystem::path settings = PathOfNarrow(folder) / "corvane_simple.dat";
    std::error_code error;
    if (std::filesystem::exists(settings, error)) {
      take(LoadSettings(NarrowName(settings), request_.start));
    }
    request_.lists = &lists_;
  }

  std::string OpenOutput() {
    output_ = options_.output;
    if (output_.empty() && options_.form == ReportForm::kHtml) {
      const std::string& first = request_.days.front().name;
      const std::string& last = request_.days.back().name;
      output_ = "report-" + first + (first == last ? "" : "-" + last) + ".html";
    }
    if (output_.empty()) {
      out_ = &console_.out;
      return "";
    }
    for (const DayFolder& day : request_.days) {
      for (const std::filesystem::path& used : {day.event_log, day.cc_log, day.daily_calls}) {
        std::error_code error;
        if (!used.empty() && std::filesystem::equivalent(used, PathOfNarrow(output_), error)) {
          return output_ + " would be overwritten";
        }
      }
    }
    file_ = std::make_unique<FileOutput>(output_);
    if (!file_->is_open()) return output_ + " cannot be written";
    out_ = file_.get();
    return "";
  }

  void Read() {
    const bool in_the_way = output_.empty() && console_.out_is_terminal;
    Progress progress(console_, !options_.quiet && !in_the_way, request_.log_bytes());
    request_.on_progress = [&](std::uint64_t done) { progress.Show(done); };
    if (options_.form == ReportForm::kHtml) {
      request_.on_setup = [this](std::size_t, const SetupRecord& setup) { page_.Take(setup); };
    }
    result_ = ReadDays(request_);
    result_.notices.insert(result_.notices.begin(), notes_.begin(), notes_.end());
    progress.Clear();
  }

  void WriteRecords() {
    if (options_.form == ReportForm::kCsv) out_->Write(CallCsvHeader() + "\n");
    for (const CallRecord& call : result_.calls) {
      out_->Write((options_.form == ReportForm::kJson ? CallJson(call) : CallCsv(call)) + "\n");
    }
  }

  void WritePage() {
    page_.days = &request_.days;
    page_.result = &result_;
    page_.lists = request_.lists;
    page_.known = ReadEarlierDays(request_.days, static_cast<std::size_t>(options_.earlier));
    page_.folder = PathOfNarrow(output_).parent_path();
    page_.Write(*out_);
  }

  void WriteSummary() {
    const auto count = [this](auto wanted) {
      return Decimal(std::count_if(result_.calls.begin(), result_.calls.end(), wanted));
    };
    std::string text = Decimal(result_.calls.size()) + " calls, " +
                       count([](const CallRecord& call) { return call.followed; }) + " followed, " +
                       count([](const CallRecord& call) { return call.recording.has_value(); }) +
                       " recorded\n";
    for (const std::string& notice : result_.notices) text += notice + "\n";
    if (result_.contradictions > 0) {
      text += Decimal(result_.contradictions) + " setups that the event log shows otherwise\n";
    }
    if (options_.form == ReportForm::kHtml) text += "the report is " + output_ + "\n";
    console_.err.Write(text);
  }

  const ReportOptions& options_;
  Console& console_;
  UserLists lists_;
  std::vector<std::string> notes_;
  DayRequest request_;
  DayResult result_;
  ReportPage page_;
  std::string output_;
  std::unique_ptr<FileOutput> file_;
  Output* out_ = nullptr;
};

ExitCode RunReport(const Arguments& arguments, Console& console) {
  ReportOptions options;
  const std::string wrong = ParseReportOptions(arguments, options);
  if (!wrong.empty()) {
    return Fail(console, kReport, wrong + "\ncorvane-tools report --help tells more");
  }
  return ReportRun(options, console).Run();
}

}  // namespace

const Command kReportCommand = {"report", "what happened on a day, as a page or as records",
                                kReportHelp, RunReport};

}  // namespace corvane::tools
