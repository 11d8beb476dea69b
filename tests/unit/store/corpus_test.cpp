// Every content of the corpus, put in place of its file before a start, ends as laid down: the
// right box and a file left alone, or the right records, which a save and a next start keep.
#include "tests/unit/store/corpus.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

// What one kind of file needs to be judged.
struct Kind {
  std::string corpus;
  std::string path;
  std::size_t least;  // cases that must be there
  std::function<std::size_t(StoreRun&)> loaded;
  std::function<std::string(StoreRun&)> after;  // compared with the last field of the case
};

std::string Lines(const LabelLines& labels) {
  std::string text;
  for (std::size_t i = 0; i < labels.size(); ++i) text += labels[i] + "\n";
  return text;
}

// The start ended with the box of this number and left the file as it was.
void ExpectError(const Kind& kind, const CorpusCase& one, int number) {
  sim::SimFiles files;
  files.Put(kind.path, one.content);
  StoreRun run(files);
  EXPECT_FALSE(run.Start());
  EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(number)});
  EXPECT_EQ(run.prompts.times_ended(), 1);
  EXPECT_EQ(files.List(kFolder).size(), 1U);
  EXPECT_TRUE(files.Content(kind.path) == one.content) << "the file was changed";
}

void ExpectLoads(const Kind& kind, const CorpusCase& one, std::size_t count) {
  sim::SimFiles files;
  files.Put(kind.path, one.content);
  StoreRun run(files);
  ASSERT_TRUE(run.Start());
  EXPECT_TRUE(run.prompts.boxes().empty());
  EXPECT_EQ(kind.loaded(run), count);
  ASSERT_TRUE(one.after.has_value()) << "the case does not say what is saved";
  const std::string saved = kind.after(run);
  EXPECT_TRUE(saved == *one.after) << "saved: " << saved.substr(0, 300);
  StoreRun next(files);
  ASSERT_TRUE(next.Start());
  EXPECT_EQ(kind.loaded(next), count);
  EXPECT_TRUE(kind.after(next) == saved) << "a second save differs";
}

void RunCorpus(const Kind& kind) {
  const std::vector<CorpusCase> cases = ReadCorpus(kind.corpus);
  EXPECT_GE(cases.size(), kind.least);
  for (const CorpusCase& one : cases) {
    SCOPED_TRACE(kind.corpus + ": " + one.name);
    std::istringstream outcome(one.outcome);
    std::string word;
    int number = -1;
    outcome >> word >> number;
    ASSERT_GE(number, 0) << one.outcome;
    if (word == "error") {
      ExpectError(kind, one, number);
    } else {
      ASSERT_EQ(word, "loads");
      ExpectLoads(kind, one, static_cast<std::size_t>(number));
    }
  }
}

TEST(Corpus, GroupLists) {
  RunCorpus({"group_list", kGroupPath, 80, [](StoreRun& run) { return run.group_table.size(); },
             [](StoreRun& run) {
               EXPECT_NE(run.groups.SaveGssiList(), -1);
               return run.files.Content(kGroupPath).value();
             }});
}

TEST(Corpus, SubscriberLists) {
  RunCorpus({"subscriber_list", kSubscriberPath, 35,
             [](StoreRun& run) { return run.subscriber_table.size(); },
             [](StoreRun& run) {
               EXPECT_NE(run.subscribers.SaveSsiList(), -1);
               return run.files.Content(kSubscriberPath).value();
             }});
}

TEST(Corpus, RecordOnlyLists) {
  RunCorpus(
      {"rec_only_list", kRecOnlyPath, 20,
       [](StoreRun& run) { return static_cast<std::size_t>(run.form.lstRecOnlyGSSI.count()); },
       [](StoreRun& run) {
         run.rec_only.SaveRecOnlyGssiList();
         return run.files.Content(kRecOnlyPath).value();
       }});
}

TEST(Corpus, CountryLabels) {
  RunCorpus({"country_labels", kCountryPath, 15,
             [](StoreRun& run) { return run.names.CountryLabels.size(); },
             [](StoreRun& run) { return Lines(run.names.CountryLabels); }});
}

TEST(Corpus, NetworkLabels) {
  RunCorpus({"network_labels", kNetworkPath, 20,
             [](StoreRun& run) { return run.names.NetworkLabels.size(); },
             [](StoreRun& run) { return Lines(run.names.NetworkLabels); }});
}

TEST(Corpus, LocationAreaLabels) {
  RunCorpus({"location_area_labels", kAreaPath, 15,
             [](StoreRun& run) { return run.names.LocationAreaLabels.size(); },
             [](StoreRun& run) { return Lines(run.names.LocationAreaLabels); }});
}

TEST(Corpus, OldNetworkLabelsBehaveAsTheNewOnesAfterTheNotice) {
  for (const CorpusCase& one : ReadCorpus("network_labels")) {
    SCOPED_TRACE(one.name);
    sim::SimFiles files;
    files.Put(kOldNetworkPath, one.content);
    StoreRun run(files);
    const bool error = one.outcome.starts_with("error");
    EXPECT_EQ(run.Start(), !error);
    ASSERT_EQ(run.prompts.boxes().size(), error ? 2U : 1U);
    EXPECT_EQ(run.prompts.boxes()[0].title, "Notice");
    if (error) {
      EXPECT_EQ(run.prompts.boxes()[1], FileAccessBox(9));
    }
    EXPECT_EQ(files.List(kFolder).size(), 1U);
    EXPECT_TRUE(files.Content(kNetworkPath) == one.content);
  }
}

void ExpectSettings(const CorpusCase& one) {
  sim::SimFiles files;
  files.Put(kSettingsPath, one.content);
  StoreRun run(files);
  const bool applied = one.outcome == "applied";
  EXPECT_EQ(run.Start(), applied);
  if (!applied) {
    EXPECT_EQ(run.prompts.boxes(),
              std::vector{one.outcome == "corrupt" ? CorruptBox() : VersionChangeBox()});
    EXPECT_EQ(run.prompts.times_ended(), 1);
    EXPECT_TRUE(files.List(kFolder).empty());
    return;
  }
  EXPECT_TRUE(run.prompts.boxes().empty());
  EXPECT_TRUE(files.Content(kSettingsPath) == one.content) << "reading changed the file";
  run.settings.SaveSettings();
  ASSERT_TRUE(one.after.has_value());
  EXPECT_EQ(files.Content(kSettingsPath), *one.after);
  StoreRun next(files);
  EXPECT_TRUE(next.Start());
  next.settings.SaveSettings();
  EXPECT_EQ(files.Content(kSettingsPath), *one.after) << "a second save differs";
}

TEST(Corpus, Settings) {
  const std::vector<CorpusCase> cases = ReadCorpus("settings");
  EXPECT_GE(cases.size(), 75U);
  for (const CorpusCase& one : cases) {
    SCOPED_TRACE(one.name);
    ASSERT_TRUE(one.outcome == "applied" || one.outcome == "corrupt" || one.outcome == "refused");
    ExpectSettings(one);
  }
}

struct ActivityOutcome {
  std::size_t groups = 0;
  int error = 0;
  int line = 0;
};

ActivityOutcome ParseOutcome(const std::string& text) {
  std::istringstream words(text);
  std::string word;
  ActivityOutcome outcome;
  words >> word >> outcome.groups >> word >> outcome.error >> word >> outcome.line;
  return outcome;
}

void ExpectActivity(const CorpusCase& one) {
  sim::SimFiles files;
  files.Put(kActivityPath, one.content);
  StoreRun run(files);
  run.folders.CreateDayFolders(run.clock.Now());
  run.activity.LoadCallActivity();
  const ActivityOutcome outcome = ParseOutcome(one.outcome);
  EXPECT_TRUE(run.activity.CallActivityLoaded);
  EXPECT_EQ(run.activity.CallActivityTable.size(), outcome.groups);
  std::vector<std::string> status;
  if (outcome.error != 0) {
    status.push_back("Error in line " + Decimal(outcome.line) +
                     " of Call_Activity_15-11-2026.csv [" + Decimal(outcome.error) + "] - " + kNow);
    EXPECT_TRUE(files.Content(kActivityPath + ".bad") == one.content);
  }
  status.push_back("Loaded call activity for " + Decimal(outcome.groups) + " saved GSSIs");
  EXPECT_EQ(run.form.lstStatusLog.items(), status);
  EXPECT_EQ(files.List(kFolder).size(), outcome.error != 0 ? 2U : 1U);
  EXPECT_TRUE(run.prompts.boxes().empty());
  EXPECT_NE(run.activity.SaveCallActivity(), -1);
  ASSERT_TRUE(one.after.has_value());
  EXPECT_EQ(files.Content(kActivityPath), *one.after);
}

TEST(Corpus, CallActivity) {
  const std::vector<CorpusCase> cases = ReadCorpus("call_activity");
  EXPECT_GE(cases.size(), 25U);
  for (const CorpusCase& one : cases) {
    SCOPED_TRACE(one.name);
    ExpectActivity(one);
  }
}

}  // namespace
}  // namespace corvane
