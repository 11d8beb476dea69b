#include "store/start_error.h"

#include <gtest/gtest.h>

#include "tests/unit/store/store_world.h"

namespace corvane {
namespace {

TEST(StartErrors, NoErrorGoesOn) {
  sim::SimFiles files;
  StoreRun run(files);
  EXPECT_EQ(run.errors.Handle(kNoError), Load::kOk);
  EXPECT_TRUE(run.prompts.boxes().empty());
  EXPECT_EQ(run.prompts.times_ended(), 0);
}

TEST(StartErrors, EveryOtherNumberIsShownAndEndsTheProgram) {
  for (const int number : {6, 9, 13, 53, 58, 61, 70, 75, 76}) {
    sim::SimFiles files;
    StoreRun run(files);
    files.Put(kSettingsPath, "kept");
    EXPECT_EQ(run.errors.Handle(number), Load::kEnded);
    EXPECT_EQ(run.prompts.boxes(), std::vector{FileAccessBox(number)});
    EXPECT_EQ(run.prompts.times_ended(), 1);
    EXPECT_EQ(files.Content(kSettingsPath), "kept");
  }
}

TEST(StartErrors, AnInvalidValueDeletesTheSettings) {
  sim::SimFiles files;
  StoreRun run(files);
  files.Put(kSettingsPath, "old");
  EXPECT_EQ(run.errors.Handle(kInvalidPropertyValue), Load::kEnded);
  EXPECT_EQ(run.prompts.boxes(), std::vector{VersionChangeBox()});
  EXPECT_TRUE(files.List(kFolder).empty());
}

}  // namespace
}  // namespace corvane
