#include "store/start_load.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

void PutGoodFiles(MemoryFiles& files) {
  files.content[kSettingsPath] = EncodeSettings(SettingsRecord());
  files.content[kRecOnlyPath] = "9001\r\n";
  files.content[kNetworkPath] = "262;1;Net\r\n";
  files.content[kAreaPath] = "262;1;100;Area\r\n";
  files.content[kCountryPath] = "262;Land\r\n";
  files.content[kGroupPath] = "9001;262;1;Fire;0;True\r\n";
  files.content[kSubscriberPath] = "5010;9001;262;1;Car;15/11/2026 14:23:05\r\n";
}

TEST(LoadAllLists, ReadsEverythingInItsOrder) {
  MemoryFiles files;
  PutGoodFiles(files);
  StoreRun run(files);
  EXPECT_TRUE(run.Start());
  EXPECT_EQ(run.form.lstStatusLog.items(),
            (Texts{"Loaded 1 REC GSSIs", "Loaded 1 network labels", "Loaded 1 location area labels",
                   "Loaded 1 country code labels", "Loaded 1 saved GSSIs", "Loaded 1 saved SSIs"}));
  EXPECT_TRUE(run.prompts.boxes.empty());
}

TEST(LoadAllLists, AFirstStartHasNothingToRead) {
  MemoryFiles files;
  StoreRun run(files);
  EXPECT_TRUE(run.Start());
  EXPECT_EQ(run.form.lstStatusLog.items(),
            (Texts{"No saved GSSIs to loaded", "No saved SSIs to loaded"}));
  EXPECT_TRUE(files.content.empty());
}

TEST(LoadAllLists, TheOldNetworkFileIsRenamedAndThenRead) {
  MemoryFiles files;
  files.content[kOldNetworkPath] = "262;1;Net\r\n";
  StoreRun run(files);
  EXPECT_TRUE(run.Start());
  EXPECT_EQ(run.names.NetworkLabels.size(), 1U);
  EXPECT_EQ(run.prompts.boxes.size(), 1U);
  EXPECT_EQ(run.prompts.boxes[0].title, "Notice");
}

TEST(LoadAllLists, TheFirstErrorEndsTheProgramAfterOneBox) {
  const struct {
    std::string path;
    std::string content;
    int number;
    std::size_t lines_before;
  } cases[] = {
      {kOldNetworkPath, "262;1;Old\r\n", 58, 1},
      {kNetworkPath, "262\r\n", 9, 1},
      {kAreaPath, "262;1\r\n", 9, 2},
      {kGroupPath, "#9001;262;1;Fire;0;True\r\n", 13, 4},
      {kSubscriberPath, "99999999999;9001;262;1;Car;15/11/2026 14:23:05\r\n", 6, 5},
  };
  for (const auto& c : cases) {
    MemoryFiles files;
    PutGoodFiles(files);
    files.content[c.path] = c.content;
    const auto before = files.content;
    StoreRun run(files);
    EXPECT_FALSE(run.Start());
    EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(c.number)}) << c.path;
    EXPECT_EQ(run.prompts.ended, 1);
    EXPECT_EQ(run.form.lstStatusLog.items().size(), c.lines_before) << c.path;
    EXPECT_EQ(files.content, before) << "nothing is changed by a failed start";
  }
}

TEST(LoadAllLists, ABadSettingsFileEndsTheProgramBeforeTheLists) {
  MemoryFiles files;
  PutGoodFiles(files);
  files.content[kSettingsPath] = "";
  StoreRun run(files);
  EXPECT_FALSE(run.Start());
  EXPECT_TRUE(run.form.lstStatusLog.items().empty());
  EXPECT_EQ(run.prompts.ended, 1);
  StoreRun next(files);
  EXPECT_TRUE(next.Start()) << "the next start begins from the defaults";
}

}  // namespace
}  // namespace corvane
