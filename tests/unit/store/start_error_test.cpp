#include "store/start_error.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

TEST(StartErrors, NoErrorGoesOn) {
  MemoryFiles files;
  StoreRun run(files);
  EXPECT_EQ(run.errors.Handle(kNoError), Load::kOk);
  EXPECT_TRUE(run.prompts.boxes.empty());
  EXPECT_EQ(run.prompts.ended, 0);
}

TEST(StartErrors, EveryOtherNumberIsShownAndEndsTheProgram) {
  for (const int number : {6, 9, 13, 53, 58, 61, 70, 75, 76}) {
    MemoryFiles files;
    StoreRun run(files);
    files.content[kSettingsPath] = "kept";
    run.numbers.Open(1, "one");
    run.numbers.Open(2, "two");
    EXPECT_EQ(run.errors.Handle(number), Load::kEnded);
    EXPECT_EQ(run.prompts.boxes, std::vector{FileAccessBox(number)});
    EXPECT_EQ(run.prompts.ended, 1);
    EXPECT_EQ(run.numbers.PathOf(1), "");
    EXPECT_EQ(run.numbers.PathOf(2), "two");
    EXPECT_EQ(files.content[kSettingsPath], "kept");
  }
}

TEST(StartErrors, AnInvalidValueDeletesTheSettings) {
  MemoryFiles files;
  StoreRun run(files);
  files.content[kSettingsPath] = "old";
  EXPECT_EQ(run.errors.Handle(kInvalidPropertyValue), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes, std::vector{VersionChangeBox()});
  EXPECT_TRUE(files.content.empty());
}

TEST(StartErrors, AFileExistsWhateverItIs) {
  MemoryFiles files;
  files.content["C:\\file"] = "";
  files.directories.insert("C:\\folder");
  EXPECT_TRUE(FileExists(files, "C:\\file"));
  EXPECT_TRUE(FileExists(files, "C:\\folder"));
  EXPECT_FALSE(FileExists(files, "C:\\nothing"));
}

}  // namespace
}  // namespace corvane
