// corvane-tools report as it is called.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <utility>

#include "archive/instant.h"
#include "base/text.h"
#include "tools/report/report_files.h"
#include "unit/archive/wav_bytes.h"
#include "unit/tools/tools_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

const char* const kHour = "tests/scenarios/busy_hour/following/";

// What stands between `begin` and `end`.
std::string Between(const std::string& text, const std::string& begin, const std::string& end) {
  const std::size_t from = text.find(begin) + begin.size();
  return text.substr(from, text.find(end, from) - from);
}

class ReportCommandTest : public ToolsTest {
 protected:
  std::string Day(const std::string& label) {
    Put("Daily/20261115/TETRA_event.log",
        "15/11/2026 14:23:05 - Call ID: 7 - On carrier: 2610 - Group: 9001 [" + label +
            "]\r\n15/11/2026 14:23:05 - Call ID: 7 - Calling SSI: 5010 [" + label +
            "]\r\n15/11/2026 14:23:09 - Call ID: 7 - VC D-Released\r\n");
    return Path("Daily/20261115");
  }
};

TEST_F(ReportCommandTest, RecordsOfTheBusyHour) {
  for (const char* form : {"json", "csv"}) {
    const Run run = Tools({"report", std::string(kHour) + "20261115",
                           std::string(kHour) + "20261116", "-F", form, "-q"});
    EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
    std::ifstream golden(std::string("tests/golden/report/following.") + form, std::ios::binary);
    EXPECT_EQ(run.out, std::string(std::istreambuf_iterator<char>(golden), {})) << form;
  }
}

TEST_F(ReportCommandTest, ACsvCellIsNeverAFormula) {
  for (const char* label : {"=1+1", "+1", "-1", "@SUM(1)", "\t=1", " =1"}) {
    const Run run = Tools({"report", Day(label), "-F", "csv", "-q"});
    ASSERT_THAT(Lines(run.out), SizeIs(2)) << label;
    EXPECT_THAT(Split(Lines(run.out)[1], ',')[5], StartsWith("'")) << label;
  }
  EXPECT_THAT(Tools({"report", Day("a, \"b\""), "-F", "csv", "-q"}).out,
              HasSubstr(",\"a, \"\"b\"\"\","));
}

TEST_F(ReportCommandTest, ALabelEndsNoElementOfThePage) {
  const std::string evil = "</script><!--<script>alert(1)&\"'\x01\x7F\xE4";
  const std::string page = Path("page.html");
  ASSERT_EQ(Tools({"report", Day(evil), "-o", page, "-q"}).code, ExitCode::kDone);
  const std::string data =
      Between(Content("page.html"), "<script type=\"application/json\" id=\"data\">", "</script>");
  EXPECT_THAT(data, HasSubstr("\\u003c/script\\u003e\\u003c!--\\u003cscript\\u003ealert(1)\\u0026"
                              "\\\"'\\u0001\\u007f\xC3\xA4"));
  EXPECT_THAT(data, HasSubstr("\"version\""));
  EXPECT_THAT(data, Not(HasSubstr("<")));
  const Run json = Tools({"report", Path("Daily/20261115"), "-F", "json", "-q"});
  EXPECT_THAT(json.out, HasSubstr("\"label\":\"</script><!--<script>alert(1)&\\\"'\\u0001"));
}

TEST_F(ReportCommandTest, ThePageAsksForNothing) {
  ASSERT_EQ(Tools({"report", Day("a"), "-o", Path("page.html"), "-q"}).code, ExitCode::kDone);
  std::string page = Content("page.html");
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
  // A licence names where it comes from, and nothing is asked for by naming it.
  for (const std::string_view foreign : {kReportLibrary, kReportLicence}) {
    const std::size_t at = page.find(foreign);
    ASSERT_NE(at, std::string::npos);
    page.erase(at, foreign.size());
  }
  for (const char* request : {"http:", "https:", "src=\"", "@import", "url("}) {
    EXPECT_THAT(page, Not(HasSubstr(request))) << request;
  }
}

TEST_F(ReportCommandTest, RecordingsAreFoundFromWhereThePageLies) {
  Day("a");
  Put("Daily/20261115/Record/142306_7_9001.wav", WavBytes(std::vector<int>(3000, 9000), 1000));
  Put("Daily/20261115/Record/142306_7_9001.txt", "Engine 1 is <there>");
  Put("pages/x", "");
  const Run run = Tools({"report", Path("Daily/20261115"), "-o", Path("pages/page.html")});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_THAT(run.err, HasSubstr("1 calls, 1 followed, 1 recorded\n"));
  EXPECT_THAT(run.err, HasSubstr("the report is " + Path("pages/page.html")));
  const std::string page = Content("pages/page.html");
  EXPECT_THAT(page, HasSubstr("\"place\":\"../Daily/20261115\""));
  EXPECT_THAT(page, HasSubstr("\"file\":[\"Record/142306_7_9001.wav\"]"));
  EXPECT_THAT(page, HasSubstr("\"transcript\":[[0,\"Engine 1 is \\u003cthere\\u003e\"]]"));
}

TEST_F(ReportCommandTest, GroupsAndRadiosOfEarlierDaysAreNotNew) {
  const std::string day = Day("a");
  const auto names = [&] {
    EXPECT_EQ(Tools({"report", day, "-o", Path("p.html"), "-q"}).code, ExitCode::kDone);
    return Between(Content("p.html"), "\"groups\":", "\"gaps\"");
  };
  EXPECT_EQ(names(), "[[9001,\"a\",0]],\n\"radios\":[[5010,\"a\",0]],\n") << "nothing to compare";
  Put("Daily/20261114/TETRA_event.log",
      "14/11/2026 14:23:05 - Call ID: 7 - On carrier: 2610 - Group: 9001 \r\n"
      "14/11/2026 14:23:05 - Call ID: 7 - Calling SSI: 5011\r\n");
  EXPECT_EQ(names(), "[[9001,\"a\",0]],\n\"radios\":[[5010,\"a\",1]],\n");
}

TEST_F(ReportCommandTest, JoinsTheRecordingsInTheirOrder) {
  Put("20261115/Record/150000_8_9001.wav", WavBytes({3, 4}, 1000));
  Put("20261115/Record/140000_7_9001.wav", WavBytes({1, 2}, 1000));
  Put("20261115/Record/160000_9_9001.wav", WavBytes({5}, 2000));
  const Run run = Tools({"report", Path("20261115"), "-F", "json", "--merge", Path("all.wav")});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_EQ(Content("all.wav"), WavBytes({1, 2, 3, 4}, 1000));
  EXPECT_THAT(run.err, HasSubstr("1 recordings are of another form"));
  EXPECT_EQ(Tools({"report", Path("20261115"), "-F", "json", "--merge",
                   Path("20261115/Record/150000_8_9001.wav")})
                .code,
            ExitCode::kFailed);
  EXPECT_EQ(Content("20261115/Record/150000_8_9001.wav"), WavBytes({3, 4}, 1000));
}

TEST_F(ReportCommandTest, AnEmptyDayIsAPageThatSaysSo) {
  Put("20261115/x", "");
  const Run run = Tools({"report", Path("20261115"), "-o", Path("p.html")});
  EXPECT_EQ(run.code, ExitCode::kDone);
  EXPECT_THAT(run.err, HasSubstr("0 calls"));
  EXPECT_THAT(Content("p.html"), HasSubstr("\"notices\":[\"no lists"));
  EXPECT_THAT(Content("p.html"), HasSubstr("There are no calls in what was read."));
}

TEST_F(ReportCommandTest, ADayWithoutEventLogIsToldFromOneWithoutGaps) {
  Put("20261114/x", "");
  ASSERT_EQ(Tools({"report", Path("20261114"), Day("a"), "-o", Path("p.html")}).code,
            ExitCode::kDone);
  const std::string days = Between(Content("p.html"), "\"days\":[", "]");
  EXPECT_THAT(days, HasSubstr("\"name\":\"20261114\",\"start\":1794614400,\"logged\":false"));
  EXPECT_THAT(days, HasSubstr("\"name\":\"20261115\",\"start\":1794700800,\"logged\":true"));
}

// What a night leaves behind: recordings cut off, renamed, without sound, too many to look at, no
// control channel log, a half line at the end.
TEST_F(ReportCommandTest, ADayInAnyStateIsReadAndNothingInItChanges) {
  constexpr int kMany = 10'000;
  const std::string day = Day("a");
  const std::string log = "Daily/20261115/TETRA_event.log";
  Put(log, Content(log) + "15/11/2026 14:30:00 - Call ID: 8 - On car");
  const std::string whole = WavBytes(std::vector<int>(300, 9000), 1000);
  const std::string first = Put("Daily/20261115/Record/000000_1_9001.wav", whole);
  for (int i = 1; i < kMany; ++i) {
    const std::string name = IsoDate(TimeAt(i)).substr(11) + "_" + std::to_string(i) + "_9001.wav";
    std::filesystem::create_hard_link(first,
                                      Path("Daily/20261115/Record/" + ReplaceAll(name, ":", "")));
  }
  Put("Daily/20261115/Record/142306_7_9001.wav", whole.substr(0, whole.size() / 2));
  Put("Daily/20261115/Record/150000_9_9001 kept.wav", whole);
  Put("Daily/20261115/Record/the best one.wav", whole.substr(0, 20));
  Put("Daily/20261115/Record/newTmp.wav", whole);
  const auto state = [&] {
    std::map<std::string, std::pair<std::uintmax_t, std::filesystem::file_time_type>> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Path("Daily"))) {
      files[entry.path().string()] = {entry.is_directory() ? 0 : entry.file_size(),
                                      entry.last_write_time()};
    }
    return files;
  };
  const auto before = state();
  const std::string text = Content(log);
  const Run run = Tools({"report", day, "-o", Path("page.html")});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_THAT(run.err, HasSubstr("10003 calls, 10003 followed, 10003 recorded\n"));
  EXPECT_EQ(state(), before);
  EXPECT_EQ(Content(log), text);
  const std::string notices = Between(Content("page.html"), "\"notices\":[", "]");
  for (const char* notice : {"2 recordings were renamed", "1 recordings hold no sound",
                             "newTmp.wav is a recording under way", "no TETRA_cc.log"}) {
    EXPECT_THAT(notices, HasSubstr(notice));
  }
}

TEST_F(ReportCommandTest, OnATerminalTheWorkHasABar) {
  Day("a");
  for (int i = 0; i < 5; ++i) {
    Put("Daily/20261115/Record/14000" + std::to_string(i) + "_7_9001.wav",
        WavBytes(std::vector<int>(300, 9000), 1000));
  }
  StringOutput out;
  StringOutput err;
  Console console{out, err, false, true};
  ASSERT_EQ(RunTools({"report", Path("Daily/20261115"), "-o", Path("p.html")}, console),
            ExitCode::kDone);
  EXPECT_THAT(err.text(), HasSubstr("\r[##########"));
  EXPECT_THAT(err.text(), HasSubstr("] 100 %"));
}

TEST_F(ReportCommandTest, WhatFailsIsNeverDone) {
  const std::string day = Day("a");
  const Arguments wrong[] = {{"report"},
                             {"report", Path("nothing")},
                             {"report", day, Path("nothing"), "-F", "json"},
                             {"report", day, "-F", "text"},
                             {"report", day, "--nothing"},
                             {"report", day, "-o"},
                             {"report", day, "-o", Path("nowhere/page.html")},
                             {"report", day, "-o", day + "/TETRA_event.log"},
                             {"report", day, "--earlier", "-1"},
                             {"report", day, "-F", "json", "--merge", Path("a.wav")},
                             {"report", Path("Daily/20261115/TETRA_event.log"), "-F", "json"}};
  for (const Arguments& arguments : wrong) {
    const Run run = Tools(arguments);
    EXPECT_EQ(run.code, ExitCode::kFailed) << arguments.back();
    EXPECT_NE(run.err, "") << arguments.back();
  }
  EXPECT_THAT(Content("Daily/20261115/TETRA_event.log"), HasSubstr("Call ID: 7"));
}

}  // namespace
}  // namespace corvane::tools
