#include "app/start_load.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "scenarios/world.h"
#include "store/settings.h"

namespace corvane::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using GivenFiles = std::vector<std::pair<std::string, std::string>>;

GivenFiles GoodFiles() {
  return {{"\\corvane_simple.dat", EncodeSettings(SettingsRecord())},
          {"\\TETRA_rec_gssi.txt", "9001\r\n"},
          {"\\TETRA_mnc.txt", "262;1;Net\r\n"},
          {"\\TETRA_la.txt", "262;1;100;Area\r\n"},
          {"\\TETRA_mcc.txt", "262;Land\r\n"},
          {"\\TETRA_GSSI.txt", "9001;262;1;Fire;0;True\r\n"},
          {"\\TETRA_SSI.txt", "5010;9001;262;1;Car;15/11/2026 14:23:05\r\n"}};
}

// What the status log says about files; SDR# is not there.
std::vector<std::string> Loaded(World& world) {
  std::vector<std::string> lines;
  for (const std::string& line : world.form().lstStatusLog.items()) {
    if (line.starts_with("Loaded ") || line.starts_with("No saved ")) lines.push_back(line);
  }
  return lines;
}

SimPrompts::Box FileAccessBox(int number) {
  return {
      "Possible file access error.\r\nMake sure any required files are not opened.\r\nError: [" +
          std::to_string(number) + "]\r\nAborting.",
      "Error", BoxIcon::kCritical};
}

WorldOptions With(GivenFiles files) {
  WorldOptions options;
  options.sdr_running = false;
  options.files = std::move(files);
  return options;
}

TEST(StartLoad, ReadsEverythingInItsOrder) {
  World world(With(GoodFiles()));
  EXPECT_TRUE(world.Load());
  EXPECT_THAT(
      Loaded(world),
      ElementsAre("Loaded 1 REC GSSIs", "Loaded 1 network labels", "Loaded 1 location area labels",
                  "Loaded 1 country code labels", "Loaded 1 saved GSSIs", "Loaded 1 saved SSIs"));
  EXPECT_THAT(world.prompts.boxes(), IsEmpty());
}

TEST(StartLoad, AFirstStartHasNothingToReadAndWritesNothing) {
  World world(With({}));
  EXPECT_TRUE(world.Load());
  EXPECT_THAT(Loaded(world), ElementsAre("No saved GSSIs to loaded", "No saved SSIs to loaded"));
  EXPECT_THAT(world.files.List(World::kProgramFolder), IsEmpty());
}

TEST(StartLoad, TheOldNetworkFileIsRenamedAndThenRead) {
  World world(With({{"\\TETRA_network.txt", "262;1;Net\r\n"}}));
  EXPECT_TRUE(world.Load());
  EXPECT_EQ(Loaded(world).front(), "Loaded 1 network labels");
  ASSERT_EQ(world.prompts.boxes().size(), 1U);
  EXPECT_EQ(world.prompts.boxes()[0].title, "Notice");
}

TEST(StartLoad, TheFirstErrorEndsTheProgramAfterOneBox) {
  const struct {
    const char* name;
    const char* content;
    int number;
    std::size_t lines_before;
  } cases[] = {
      {"\\TETRA_network.txt", "262;1;Old\r\n", 58, 1},
      {"\\TETRA_mnc.txt", "262\r\n", 9, 1},
      {"\\TETRA_la.txt", "262;1\r\n", 9, 2},
      {"\\TETRA_GSSI.txt", "#9001;262;1;Fire;0;True\r\n", 13, 4},
      {"\\TETRA_SSI.txt", "99999999999;9001;262;1;Car;15/11/2026 14:23:05\r\n", 6, 5},
  };
  for (const auto& c : cases) {
    GivenFiles files = GoodFiles();
    std::erase_if(files, [&](const auto& file) { return file.first == c.name; });
    files.emplace_back(c.name, c.content);
    World world(With(files));
    EXPECT_FALSE(world.Load());
    EXPECT_THAT(world.prompts.boxes(), ElementsAre(FileAccessBox(c.number))) << c.name;
    EXPECT_EQ(world.prompts.times_ended(), 1);
    EXPECT_EQ(Loaded(world).size(), c.lines_before) << c.name;
    for (const auto& [name, content] : files) {
      EXPECT_EQ(world.FileText(name), content) << "nothing is changed by a failed start";
    }
  }
}

TEST(StartLoad, ABadSettingsFileEndsTheProgramBeforeTheLists) {
  GivenFiles files = GoodFiles();
  files.front().second = "";
  World world(With(files));
  EXPECT_FALSE(world.Load());
  EXPECT_THAT(Loaded(world), IsEmpty());
  EXPECT_EQ(world.prompts.times_ended(), 1);
  EXPECT_FALSE(world.files.Content("C:\\Corvane\\corvane_simple.dat"))
      << "the next start begins from the defaults";
}

}  // namespace
}  // namespace corvane::sim
