// The golden files through the real program: read at a start and written again at the closing, byte
// for byte, and the settings file of a first start. What reads and writes the same files without
// Windows are the tests under tests/unit/store.
#include <algorithm>

#include "base/date_time.h"
#include "base/text.h"
#include "base/wall_clock_win.h"
#include "desktop/persistence_fixture.h"

namespace corvane::desktop {
namespace {

// The dates of the subscriber list are written as the machine's user has set.
std::string WithDatesOfThisMachine(const std::string& list) {
  const WallClockWin clock;
  std::string result;
  for (const std::string& line : FileLines(list)) {
    const std::size_t date = line.rfind(';') + 1;
    const auto time = ParseFixedGeneralDate(line.substr(date));
    EXPECT_TRUE(time.has_value()) << line;
    result += line.substr(0, date) + clock.GeneralDate(time.value_or(DateTime{})) + "\r\n";
  }
  return result;
}

std::string WithIsoDates(const std::string& list) {
  std::string result;
  for (const std::string& line : FileLines(list)) {
    const std::size_t date = line.rfind(';') + 1;
    const std::string day = line.substr(date, 10);
    result += line.substr(0, date) + day.substr(6, 4) + "-" + day.substr(3, 2) + "-" +
              day.substr(0, 2) + line.substr(date + 10) + "\r\n";
  }
  return result;
}

// Bytes 2 to 9 are the window's place.
std::string WithoutPlace(std::string settings) {
  return settings.size() < 10 ? settings : settings.erase(2, 8);
}

class GoldenFilesTest : public PersistenceTest {};

TEST_F(GoldenFilesTest, ListsAreWrittenAsTheyWereRead) {
  const std::string groups = CheckoutFile("golden/TETRA_GSSI.txt");
  const std::string rec_only = CheckoutFile("golden/TETRA_rec_gssi.txt");
  const std::string subscribers = WithDatesOfThisMachine(CheckoutFile("golden/TETRA_SSI.txt"));
  Folder().Write("TETRA_GSSI.txt", groups);
  Folder().Write("TETRA_rec_gssi.txt", rec_only);
  Folder().Write("TETRA_SSI.txt", subscribers);
  Start();
  const auto lines = Program().StatusLog();
  for (const char* line : {"Loaded 4 REC GSSIs", "Loaded 5 saved GSSIs", "Loaded 4 saved SSIs"}) {
    EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1) << line;
  }
  CloseAndWait();
  EXPECT_EQ(Folder().Read("TETRA_GSSI.txt"), groups);
  EXPECT_EQ(Folder().Read("TETRA_rec_gssi.txt"), rec_only);
  EXPECT_EQ(Folder().Read("TETRA_SSI.txt"), subscribers);
}

TEST_F(GoldenFilesTest, SubscribersWithDatesOfAnyMachineAreReadAndWrittenAsThisOneDoes) {
  const std::string golden = CheckoutFile("golden/TETRA_SSI.txt");
  Folder().Write("TETRA_SSI.txt", WithIsoDates(golden));
  StartAndClose();
  EXPECT_EQ(Folder().Read("TETRA_SSI.txt"), WithDatesOfThisMachine(golden));
}

TEST_F(GoldenFilesTest, WrittenFilesAreReadByTheSameReadersOutsideTheProgram) {
  Folder().Write("TETRA_GSSI.txt", CheckoutFile("golden/TETRA_GSSI.txt"));
  Folder().Write("TETRA_SSI.txt", WithIsoDates(CheckoutFile("golden/TETRA_SSI.txt")));
  Folder().Write("TETRA_rec_gssi.txt", CheckoutFile("golden/TETRA_rec_gssi.txt"));
  StartAndClose();
  const ReadFiles read = ReadAsAStartDoes(Folder().Path());
  EXPECT_TRUE(read.boxes.empty());
  ASSERT_EQ(read.groups.size(), 5U);
  EXPECT_EQ(read.groups[4].Gssi, 9001);
  EXPECT_EQ(read.groups[4].Priority, 32767);
  EXPECT_FALSE(read.groups[4].Follow);
  ASSERT_EQ(read.subscribers.size(), 4U);
  EXPECT_EQ(read.subscribers[2].LastSeen, (DateTime{2028, 2, 29, 23, 59, 59}));
  EXPECT_EQ(read.rec_only, (std::vector<std::string>{"9001", "07", "7", "16777215"}));
}

TEST_F(GoldenFilesTest, FirstStartWritesTheDefaultsWhenItEndsAndNothingElse) {
  Start();
  AwaitHandled();
  EXPECT_EQ(ContentOf(Folder()), FolderContent{}) << "written before the first save";
  CloseAndWait();
  const FolderContent content = ContentOf(Folder());
  ASSERT_EQ(content.size(), 1U);
  EXPECT_EQ(content[0].first, "corvane_simple.dat");
  EXPECT_EQ(WithoutPlace(content[0].second),
            WithoutPlace(CheckoutFile("golden/corvane_simple_defaults.dat")));
}

// The golden record stands off every screen and asks for a deletion that always starts off.
TEST_F(GoldenFilesTest, FullSettingsRecordIsWrittenAsItWasReadButForItsTwoExceptions) {
  const std::string golden = CheckoutFile("golden/corvane_simple_full.dat");
  constexpr std::size_t kDeleteOption = 26;
  ASSERT_EQ(golden.at(kDeleteOption), 1);
  Folder().Write("corvane_simple.dat", golden);
  StartAndClose();
  std::string expected = golden;
  expected[kDeleteOption] = 0;
  EXPECT_EQ(WithoutPlace(Folder().Read("corvane_simple.dat")), WithoutPlace(expected));
}

TEST_F(GoldenFilesTest, SettingsWithAPlaceOnTheScreenAreWrittenByteForByte) {
  Settings settings;
  settings.main_window_top = 1'500;
  settings.main_window_left = 3'000;
  settings.sdr_position = "10,20,1034,788";
  const std::string bytes = SettingsFile(settings) + "the tail of a longer record";
  Folder().Write("corvane_simple.dat", bytes);
  StartAndClose();
  EXPECT_EQ(Folder().Read("corvane_simple.dat"), bytes);
}

TEST_F(GoldenFilesTest, SampleListsOfTheReleaseLoad) {
  for (const char* name : {"TETRA_GSSI.txt", "TETRA_SSI.txt", "TETRA_la.txt", "TETRA_mcc.txt",
                           "TETRA_mnc.txt", "TETRA_rec_gssi.txt"}) {
    Folder().Write(name, CheckoutFile(std::string("../samples/") + name));
  }
  Start();
  for (const char* part : {" REC GSSIs", " network labels", " location area labels",
                           " country code labels", " saved GSSIs", " saved SSIs"}) {
    EXPECT_TRUE(Program().InStatusLog(part)) << part;
  }
  CloseAndWait();
}

}  // namespace
}  // namespace corvane::desktop
