// corvane-tools lists as it is called: what it prints, what it writes, and when it refuses.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>

#include "base/text.h"
#include "tools/lists/foreign_list.h"
#include "unit/tools/tools_fixture.h"

namespace corvane::tools {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

const char* const kKnownGroups =
    "9001;262;42;Kept;3;False\r\n"
    "9002;262;42;;0;True\r\n";
const char* const kKnownRadios =
    "5010;9001;262;42;;2026-11-15 14:23:05\r\n"
    "5010;9002;262;42;Own name;2026-11-15 14:23:05\r\n";

class ListsCommandTest : public ToolsTest {
 protected:
  ListsCommandTest() {
    Put("corvane/TETRA_GSSI.txt", kKnownGroups);
    Put("corvane/TETRA_SSI.txt", kKnownRadios);
  }
  Run Import(const std::string& format, const std::string& content, Arguments options = {}) {
    Arguments arguments = {"lists",    "import",       format, Put("list", content),
                           "--folder", Path("corvane")};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Tools(arguments);
  }
  [[nodiscard]] std::vector<std::string> FilesIn(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path(folder))) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
  [[nodiscard]] std::string Groups() const { return Content("corvane/TETRA_GSSI.txt"); }
  [[nodiscard]] std::string Radios() const { return Content("corvane/TETRA_SSI.txt"); }
};

TEST_F(ListsCommandTest, TellsWhatItWouldDoAndDoesNothing) {
  const Run run = Import("op25", "9001\tFire north\n9002\tFire south\nx\ty\n9003\tNew\n9003\tz\n");
  EXPECT_EQ(run.code, ExitCode::kDone);
  EXPECT_EQ(run.out,
            "3 groups (1 new), 2 rows skipped\n"
            "line 3: \"x\" is no number\n"
            "line 5: group 9003 was named before, in line 4\n");
  EXPECT_THAT(run.err, HasSubstr("names: 2 given, 1 stay as they were\n"));
  EXPECT_THAT(run.err, HasSubstr("nothing was written"));
  EXPECT_EQ(Groups(), kKnownGroups);
  EXPECT_THAT(FilesIn("corvane"), UnorderedElementsAre("TETRA_GSSI.txt", "TETRA_SSI.txt"));
}

TEST_F(ListsCommandTest, WritesNamesWhereThereAreNoneAndKeepsTheOldList) {
  const Run run = Import("op25", "9001\tFire north\n9002\tFire; south\n9003\tNew\n", {"--write"});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_EQ(run.out, "3 groups (1 new), 0 rows skipped\n");
  EXPECT_EQ(Groups(),
            "9001;262;42;Kept;3;False\r\n"
            "9002;262;42;Fire, south;0;True\r\n"
            "9003;262;42;New;0;True\r\n");
  EXPECT_EQ(Radios(), kKnownRadios);
  std::string copy;
  for (const std::string& name : FilesIn("corvane")) {
    if (name.starts_with("TETRA_GSSI_")) copy = name;
  }
  EXPECT_EQ(Content("corvane/" + copy), kKnownGroups) << copy;
  EXPECT_EQ(copy.size(), std::string("TETRA_GSSI_20261115_142305.txt").size());
  EXPECT_EQ(FilesIn("corvane").size(), 3U) << "nothing else is left behind";
  EXPECT_THAT(run.err, HasSubstr("written: " + copy + "\n"));
  EXPECT_THAT(run.err, HasSubstr("written: TETRA_GSSI.txt\n"));
}

TEST_F(ListsCommandTest, ReplacesNamesWhenItIsTold) {
  const Run run = Import("op25", "9001\tFire north\n", {"--write", "--replace-labels"});
  EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  EXPECT_THAT(Groups(), StartsWith("9001;262;42;Fire north;3;False\r\n"))
      << "priority and lock-out are the program's";
}

TEST_F(ListsCommandTest, WritesNothingWhenNothingChanges) {
  const Run run = Import("op25", "9001\tFire north\n", {"--write"});
  EXPECT_EQ(run.code, ExitCode::kDone);
  EXPECT_THAT(run.err, HasSubstr("nothing had to be written"));
  EXPECT_EQ(FilesIn("corvane").size(), 2U);
}

TEST_F(ListsCommandTest, EachWriteKeepsACopyOfItsOwn) {
  for (const char* name : {"a", "b", "c"}) {
    const Run run = Import("op25", std::string("9001\t") + name, {"--write", "--replace-labels"});
    EXPECT_EQ(run.code, ExitCode::kDone) << run.err;
  }
  EXPECT_EQ(FilesIn("corvane").size(), 5U);
}

TEST_F(ListsCommandTest, RadiosGetTheirNamesUnderEveryGroup) {
  const Run run = Import("trunk-recorder-units", "5010,Control\n5011,Engine 1\n", {"--write"});
  EXPECT_EQ(run.out, "2 radios (1 new), 0 rows skipped\n") << run.err;
  EXPECT_EQ(Radios(),
            "5010;9001;262;42;Control;2026-11-15 14:23:05\r\n"
            "5010;9002;262;42;Own name;2026-11-15 14:23:05\r\n"
            "5011;0;262;42;Engine 1;1899-12-30 00:00:00\r\n");
  EXPECT_EQ(Groups(), kKnownGroups);
}

TEST_F(ListsCommandTest, RadiosWithAGroupGetTheirNamesThereFirst) {
  Put("corvane/TETRA_SSI.txt",
      std::string(kKnownRadios) + "5010;9003;262;42;;2026-11-15 14:23:05\r\n");
  const Run run = Import("dsdplus-radios",
                         "TETRA, 1, 9002, 5010, 50, Normal, 0, x, \"Second\"\n"
                         "TETRA, 1, 9001, 5010, 50, Normal, 0, x, \"First\"\n"
                         "TETRA, 1, 9004, 5012, 50, Normal, 0, x, \"New\"\n",
                         {"--write"});
  EXPECT_EQ(run.out, "2 radios (1 new), 0 rows skipped\n") << run.err;
  EXPECT_THAT(Split(ReplaceAll(Radios(), "\r\n", "\n"), '\n'),
              ElementsAre("5010;9001;262;42;First;2026-11-15 14:23:05",
                          "5010;9002;262;42;Own name;2026-11-15 14:23:05",
                          "5010;9003;262;42;Second;2026-11-15 14:23:05",
                          "5012;9004;262;42;New;1899-12-30 00:00:00", ""));
}

TEST_F(ListsCommandTest, AMixedListGoesWhereItsNumbersAreKnown) {
  const Run run = Import("telive", "5010 Control\n9002 South\n7000 Unknown\n", {"--write"});
  EXPECT_EQ(run.out, "2 groups (1 new), 1 radios (0 new), 0 rows skipped\n") << run.err;
  EXPECT_THAT(Groups(), HasSubstr("7000;262;42;Unknown;0;True\r\n"));
  EXPECT_THAT(Groups(), HasSubstr("9002;262;42;South;0;True\r\n"));
  EXPECT_THAT(Radios(), HasSubstr("5010;9001;262;42;Control;"));
}

TEST_F(ListsCommandTest, RowsOfSeveralFilesHaveTheirFile) {
  const std::string second = Put("second", "9001\tz\n");
  const Run run = Import("op25", "x\ty\n9001\ta\n", {second});
  EXPECT_EQ(run.out, "1 groups (0 new), 2 rows skipped\n" + Path("list") +
                         ", line 1: \"x\" is no number\n" + second +
                         ", line 1: group 9001 was named before, in line 2\n");
}

TEST_F(ListsCommandTest, TheNetworkIsTheOnlyOneOrChosen) {
  EXPECT_EQ(Import("op25", "7\ta\n", {"--network", "901/9999", "--write"}).code, ExitCode::kDone);
  EXPECT_THAT(Groups(), HasSubstr("7;901;9999;a;0;True\r\n"));
  const Run two = Import("op25", "8\ta\n");
  EXPECT_EQ(two.code, ExitCode::kFailed);
  EXPECT_THAT(two.err, HasSubstr("choose one with --network: 262/42 901/9999\n"));
  std::filesystem::create_directories(Path("empty"));
  EXPECT_EQ(
      Tools({"lists", "import", "op25", Put("list", "8\ta\n"), "--folder", Path("empty")}).code,
      ExitCode::kFailed);
  EXPECT_EQ(Tools({"lists", "export", "op25", "--folder", Path("empty")}).code, ExitCode::kFailed);
}

// The file of a running program is mapped, as Wine does it.
TEST_F(ListsCommandTest, RefusesWhileCorvaneRunsThere) {
  const std::string program = Put("corvane/Corvane.exe", std::string(4096, 'x'));
  const Arguments options = {"--write"};
  const int file = open(program.c_str(), O_RDONLY);
  void* const mapped = mmap(nullptr, 4096, PROT_READ, MAP_PRIVATE, file, 0);
  close(file);
  ASSERT_NE(mapped, MAP_FAILED);
  const Run refused = Import("op25", "9002\tSouth\n", options);
  EXPECT_EQ(refused.code, ExitCode::kFailed);
  EXPECT_EQ(refused.out, "");
  EXPECT_THAT(refused.err, HasSubstr("Corvane runs in " + Path("corvane")));
  EXPECT_EQ(Groups(), kKnownGroups);
  EXPECT_EQ(Import("op25", "9002\tSouth\n").code, ExitCode::kDone) << "who only looks may";
  munmap(mapped, 4096);
  EXPECT_EQ(Import("op25", "9002\tSouth\n", options).code, ExitCode::kDone);
  EXPECT_THAT(Groups(), HasSubstr("South"));
}

TEST_F(ListsCommandTest, WrongUsageAndFilesThatCannotBeUsedAreTold) {
  const std::string list = Put("list", "1\ta\n");
  const std::string folder = Path("corvane");
  Put("bad/TETRA_GSSI.txt", "9001;262\r\n");
  Put("undecided/TETRA_SSI.txt", "5010;9001;262;42;;03/04/2020 14:23:05\r\n");
  const Arguments wrong[] = {
      {"lists"},
      {"lists", "import"},
      {"lists", "exchange", "op25"},
      {"lists", "import", "op25"},
      {"lists", "import", "nothing", list, "--folder", folder},
      {"lists", "import", "rdio-scanner", list, "--folder", folder},
      {"lists", "import", "op25", list, "--folder", folder, "--network", "262"},
      {"lists", "import", "op25", list, "--folder", folder, "-o", "x"},
      {"lists", "import", "op25", list, "--folder", Path("none")},
      {"lists", "import", "op25", Path("none"), "--folder", folder},
      {"lists", "import", "op25", folder, "--folder", folder},
      {"lists", "import", "op25", Put("wide", "\xFF\xFE\x31"), "--folder", folder},
      {"lists", "import", "op25", list, "--folder", Path("bad")},
      {"lists", "import", "telive", list, "--folder", Path("undecided")},
      {"lists", "export", "op25", list, "--folder", folder},
      {"lists", "export", "op25", "--write", "--folder", folder},
      {"lists", "export", "op25", "--folder", folder, "-o", Path("none/out")},
      {"lists", "export", "op25", "--folder", folder, "-o", folder + "/TETRA_GSSI.txt"},
      {"lists", "export", "op25", "--folder", folder, "-o", "/dev/full"}};
  for (const Arguments& arguments : wrong) {
    const Run run = Tools(arguments);
    EXPECT_EQ(run.code, ExitCode::kFailed) << arguments.back();
    EXPECT_EQ(run.out, "") << arguments.back();
    EXPECT_THAT(run.err, HasSubstr("corvane-tools lists: ")) << arguments.back();
  }
  EXPECT_EQ(Groups(), kKnownGroups);
}

TEST_F(ListsCommandTest, AListThatCannotBeWrittenStaysWhole) {
  // A folder takes the name that the new list is written under first.
  std::filesystem::create_directories(Path("corvane/TETRA_GSSI.txt.new/x"));
  const Run run = Import("op25", "9002\tSouth\n", {"--write"});
  EXPECT_EQ(run.code, ExitCode::kFailed);
  EXPECT_EQ(run.out, "");
  EXPECT_THAT(run.err, HasSubstr("TETRA_GSSI.txt could not be written"));
  EXPECT_EQ(Groups(), kKnownGroups);
}

TEST_F(ListsCommandTest, HelpNamesEveryFormatAndOption) {
  const std::string help = Tools({"lists", "--help"}).out;
  for (int index = 0; index < kListFormats; ++index) {
    EXPECT_THAT(help, HasSubstr(NameOf(static_cast<ListFormat>(index))));
  }
  for (const char* option : {"--network", "--folder", "--write", "--replace-labels", "-o "}) {
    EXPECT_THAT(help, HasSubstr(option));
  }
}

}  // namespace
}  // namespace corvane::tools
