#include "store/list_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kMark = "\xEF\xBB\xBF";

class ListFileTest : public ::testing::Test {
 protected:
  ListFileTest() { PutGoodFiles(files_); }
  [[nodiscard]] const std::vector<std::string>& Status() { return run_.form.lstStatusLog.items(); }

  sim::SimFiles files_;
  StoreRun run_{files_};
};

TEST_F(ListFileTest, EveryListThatWasSavedAsUtf8IsReadWithoutItsMark) {
  files_.Put(kRecOnlyPath, kMark + "9001\r\n");
  files_.Put(kNetworkPath, kMark + "262;1;Netz f\xC3\xBCr\r\n");
  files_.Put(kAreaPath, kMark + "262;1;100;B\xC3\xA4r\r\n");
  files_.Put(kCountryPath, kMark + "262;\xC3\x96land\r\n");
  files_.Put(kGroupPath, kMark + "9001;262;1;L\xC3\xB6scher \xE4\xB8\xAD;0;True\r\n");
  files_.Put(kSubscriberPath, kMark + "5010;9001;262;1;J\xC3\xBCrgen;15/11/2026 14:23:05\r\n");
  ASSERT_TRUE(run_.Start());
  EXPECT_EQ(run_.form.lstRecOnlyGSSI.Item(0), "9001");
  EXPECT_EQ(run_.names.NetworkLabels.Find("262;1"), "Netz f\xFCr");
  EXPECT_EQ(run_.names.LocationAreaLabels.Find("262;1;100"), "B\xE4r");
  EXPECT_EQ(run_.names.CountryLabels.Find("262"), "\xD6land");
  EXPECT_EQ(run_.group_table[0].Gssi, 9001);
  EXPECT_EQ(Trim(run_.group_table[0].Label.padded()), "L\xF6scher ?");
  EXPECT_EQ(Trim(run_.subscriber_table[0].Label.padded()), "J\xFCrgen");
  for (const char* name : {"TETRA_rec_gssi.txt", "TETRA_mnc.txt", "TETRA_la.txt", "TETRA_mcc.txt",
                           "TETRA_GSSI.txt", "TETRA_SSI.txt"}) {
    EXPECT_THAT(Status(),
                Contains(std::string(name) + " is saved as UTF-8: save it as ANSI").Times(1));
  }
  ASSERT_EQ(run_.groups.SaveGssiList(), 0);
  EXPECT_EQ(files_.Content(kGroupPath), "9001;262;1;L\xF6scher ?;0;True\r\n") << "ANSI, no mark";
}

TEST_F(ListFileTest, WithoutTheMarkAFileIsAnsiWhateverItHolds) {
  files_.Put(kCountryPath, "262;\xC3\x96land\r\n");
  ASSERT_TRUE(run_.Start());
  EXPECT_EQ(run_.names.CountryLabels.Find("262"), "\xC3\x96land");
  EXPECT_THAT(Status(), Not(Contains(HasSubstr("UTF-8"))));
}

TEST_F(ListFileTest, AnOldListSavedAsUtf8ThatHoldsAMistakeStillEndsTheStart) {
  files_.Put(kGroupPath, kMark + "x;262;1;Fire;0;True\r\n");
  EXPECT_FALSE(run_.Start());
  EXPECT_EQ(run_.prompts.boxes(), std::vector{FileAccessBox(13)});
}

// The five files that the program writes, whole, and each cut off somewhere.
struct Cut {
  std::string path;
  std::string whole;
  std::string cut;
};
std::vector<Cut> Cuts() {
  const std::string settings = EncodeSettings({.PositionSdrSharpCC = "1, 2, 3, 4"});
  const std::string call_activity = "GSSI;Call Activity\r\n9001;7\r\n";
  const std::string groups = "9001;262;1;Fire;0;True\r\n9002;262;1;Water;0;True\r\n";
  const std::string seen = "5010;9001;262;1;Car;15/11/2026 14:23:05\r\n";
  return {{kSettingsPath, settings, settings.substr(0, settings.size() - 1)},
          {kRecOnlyPath, "9001\r\n9002\r\n", "9001\r\n90"},
          {kGroupPath, groups, groups.substr(0, 40)},
          {kSubscriberPath, seen, seen.substr(0, 30) + "\r\n"},
          {kActivityPath, call_activity, call_activity.substr(0, 22)}};
}

TEST_F(ListFileTest, AWholeReplacementTakesThePlaceOfAMissingOrEmptyFile) {
  for (const auto& [path, whole, cut] : Cuts()) {
    for (const bool missing : {true, false}) {
      SCOPED_TRACE(path + (missing ? " missing" : " empty"));
      sim::SimFiles files;
      PutGoodFiles(files);
      files.Remove(path);
      if (!missing) files.Put(path, "");
      files.Put(path + ".new", whole);
      StoreRun run(files);
      EXPECT_TRUE(run.Start());
      run.folders.CreateDayFolders(run.clock.Now());
      run.activity.LoadCallActivity();
      EXPECT_EQ(files.Content(path), whole);
      EXPECT_FALSE(Has(files, path + ".new"));
      EXPECT_THAT(run.form.lstStatusLog.items(),
                  Contains("Restored " + path.substr(path.rfind('\\') + 1) +
                           " - its last save was cut short"));
    }
  }
}

TEST_F(ListFileTest, NeitherACutOffReplacementNorOneBesideAGoodFileIsTaken) {
  for (const auto& [path, whole, cut] : Cuts()) {
    SCOPED_TRACE(path);
    for (const std::string& left : {cut, std::string()}) {
      sim::SimFiles files;
      PutGoodFiles(files);
      files.Remove(path);
      files.Put(path + ".new", left);
      StoreRun run(files);
      EXPECT_TRUE(run.Start());
      run.folders.CreateDayFolders(run.clock.Now());
      run.activity.LoadCallActivity();
      EXPECT_FALSE(Has(files, path));
    }
    sim::SimFiles files;
    PutGoodFiles(files);
    files.Put(kActivityPath, "GSSI;Call Activity\r\n1;1\r\n");
    const Contents before = AllFiles(files);
    files.Put(path + ".new", whole);
    StoreRun run(files);
    EXPECT_TRUE(run.Start());
    run.folders.CreateDayFolders(run.clock.Now());
    run.activity.LoadCallActivity();
    EXPECT_EQ(files.Content(path), before.at(path));
  }
}

TEST_F(ListFileTest, AnEmptySettingsFileWithNothingBesideItIsStillReported) {
  files_.Put(kSettingsPath, "");
  files_.Put(kSettingsPath + ".new", "short");
  EXPECT_FALSE(run_.Start());
  EXPECT_EQ(run_.prompts.boxes(), std::vector{CorruptBox()});
}

TEST_F(ListFileTest, AReplacementThatIsNotWhatTheProgramWritesIsNotTaken) {
  const std::string counts = "9001;7\r\n";
  const std::string header = "GSSI;Call Activity\r\n";
  const std::string zeros = header + "900" + std::string(2, '\0') + "\r\n";
  for (const std::string& left : {counts, zeros}) {
    files_.Put(kActivityPath + ".new", left);
    StoreRun run(files_);
    ASSERT_TRUE(run.Start());
    run.folders.CreateDayFolders(run.clock.Now());
    run.activity.LoadCallActivity();
    EXPECT_FALSE(Has(files_, kActivityPath));
    EXPECT_EQ(files_.Content(kActivityPath + ".new"), left);
  }
}

TEST_F(ListFileTest, AReplacementThatSomebodyHoldsIsLeftWhereItIs) {
  const std::string groups = "9001;262;1;Fire;0;True\r\n";
  files_.Remove(kGroupPath);
  files_.Put(kGroupPath + ".new", groups);
  files_.SetWriteLocked(kGroupPath + ".new", true);
  EXPECT_TRUE(run_.Start());
  files_.SetWriteLocked(kGroupPath + ".new", false);
  files_.FailPath(".new", kPathAccess);
  StoreRun second(files_);
  EXPECT_TRUE(second.Start());
  files_.FailPath(".new", kFileOk);
  EXPECT_FALSE(Has(files_, kGroupPath));
  StoreRun third(files_);
  EXPECT_TRUE(third.Start());
  EXPECT_EQ(files_.Content(kGroupPath), groups);
}

}  // namespace
}  // namespace corvane
