// What the stored labels and counts are for, with the stand-in on the air: labels in the window and
// in the logs, and call counts that go on after a restart. These cases need the port.
#include <fstream>

#include "desktop/call_test.h"
#include "desktop/harness/held_file.h"
#include "desktop/harness/menu_picture.h"
#include "desktop/persistence_fixture.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

class StoredLabelsTest : public CallTest {
 protected:
  // The menu bar once a network is decoded, with this content of the file of countries; both
  // programs are closed again.
  std::string MenuBarWithCountries(std::string_view file) {
    Folder().Write("TETRA_mcc.txt", file);
    Begin();
    std::string picture;
    int same = 0;
    // It is drawn some time after it was changed, and only then goes on looking the same.
    Await("the menu bar to be drawn", [&] {
      std::string now = PictureOfMenuBar(Corvane().Window());
      same = !now.empty() && now == picture ? same + 1 : 0;
      picture = std::move(now);
      return same == kLooksAlike;
    });
    Corvane().Kill();
    Sdr().Kill();
    return picture;
  }

 private:
  static constexpr int kLooksAlike = 60;
};

TEST_F(StoredLabelsTest, CountryIsShownInTheMenuBarWithItsAmpersand) {
  const std::string other_country = MenuBarWithCountries("999;Nowhere\r\n261;Land & Sea\r\n");
  const std::string with_ampersand = MenuBarWithCountries("262;Land & Sea\r\n");
  const std::string without = MenuBarWithCountries("262;Land  Sea\r\n");
  EXPECT_EQ(MenuBarWithCountries("262;Land & Sea\r\n"), with_ampersand);
  EXPECT_NE(other_country, with_ampersand);
  EXPECT_NE(with_ampersand, without);
}

TEST_F(StoredLabelsTest, LocationAreaStandsBehindTheNetworkInTheCallLog) {
  Folder().Write("TETRA_la.txt", "262;42;100;Other\r\n262;42;101;North & South\r\n");
  Begin();
  EXPECT_TRUE(Corvane().InCallLog(" - MCC:262  MNC:42  LA:101 [North & South]"));
  EXPECT_EQ(Corvane().Caption(lblNetworkInfo), "MNC:42  LA:101");
}

TEST_F(StoredLabelsTest, GroupsAndSubscribersAreShownOnlyUnderTheirOwnNetworkAndGroup) {
  Folder().Write("TETRA_GSSI.txt",
                 "9001;262;41;Other network;0;True\r\n9001;262;42;Fire & rescue;0;True\r\n");
  Folder().Write("TETRA_SSI.txt",
                 "5010;9002;262;42;Other group;2026-11-15 14:23:05\r\n"
                 "5010;9001;262;42;Engine & crew;2026-11-15 14:23:05\r\n");
  Begin();
  Do("call id=9 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(9);
  // A label draws "&&" as "&"; a list box draws what it holds.
  EXPECT_EQ(Corvane().Caption(lblGSSI_label), "Fire && rescue");
  EXPECT_EQ(Corvane().Caption(lblSSI_label), "Engine && crew");
  EXPECT_TRUE(Corvane().InCallLog("Group: 9001 [Fire & rescue]"));
  EXPECT_TRUE(Corvane().InCallLog("Calling SSI: 5010 [Engine & crew]"));
}

// A call that the closing ends leaves its group in the list, but not its subscribers.
TEST_F(StoredLabelsTest, GroupsAndSubscribersHeardAreInTheListsAfterTheClosing) {
  Begin();
  Do("call id=9 group=9001 party=5010 carrier=2610 slot=2");
  AwaitFollowing(9);
  Do("release id=9");
  AwaitParked();
  Do("call id=10 group=9002 party=5011 carrier=2610 slot=2");
  AwaitFollowing(10);
  AwaitInCallLog("Calling SSI: 5011");
  Close(Corvane().Window());
  Await("the end", [this] { return !Corvane().Running(); });
  const ReadFiles read = ReadAsAStartDoes(Folder().Path());
  ASSERT_EQ(read.groups.size(), 2U);
  EXPECT_EQ(read.groups[0].Gssi, 9001);
  EXPECT_EQ(read.groups[0].Mnc, 42);
  EXPECT_TRUE(read.groups[0].Follow);
  EXPECT_EQ(read.groups[1].Gssi, 9002);
  ASSERT_EQ(read.subscribers.size(), 1U);
  EXPECT_EQ(read.subscribers[0].Ssi, 5010);
  EXPECT_EQ(read.subscribers[0].LastGssi, 9001);
}

class LogModeTest : public CallTest {
 protected:
  static Settings LogModeOn() {
    Settings settings;
    settings.log_mode = true;
    return settings;
  }
  // The one Call_Activity file; empty when there is none.
  std::filesystem::path CountsFile() {
    for (const auto& file : Folder().Find(".csv")) {
      if (file.filename().string().starts_with("Call_Activity_")) return file;
    }
    return {};
  }
  std::string Counts() { return ReadWholeFile(CountsFile()); }
  void CountACall(int id, int group) {
    const std::string part = ";" + std::to_string(group) + ";" + std::to_string(id) + ";D-Setup ";
    Do("call id=" + std::to_string(id) + " group=" + std::to_string(group) +
       " party=5010 carrier=2610 slot=2");
    Await("the call to be counted", [&] {
      for (const auto& file : Folder().Find(".csv")) {
        if (ReadWholeFile(file).find(part) != std::string::npos) return true;
      }
      return false;
    });
    Do("release id=" + std::to_string(id));
  }
  void CloseBoth() {
    Close(Corvane().Window());
    Await("the end", [this] { return !Corvane().Running(); });
    Sdr().Kill();
  }
};

TEST_F(LogModeTest, CountsGoOnAfterARestartOnTheSameDay) {
  Begin(LogModeOn());
  CountACall(10, 9002);
  CountACall(11, 9001);
  CountACall(12, 9002);
  CloseBoth();
  EXPECT_EQ(Counts(), "GSSI;Call Activity\r\n9001;1\r\n9002;2\r\n");

  Begin(LogModeOn());
  AwaitInStatusLog("Loaded call activity for 2 saved GSSIs");
  CountACall(13, 9001);
  CloseBoth();
  EXPECT_EQ(Counts(), "GSSI;Call Activity\r\n9001;2\r\n9002;2\r\n");
}

TEST_F(LogModeTest, DayFolderHasItsPlaces) {
  Begin(LogModeOn());
  CountACall(10, 9002);
  CloseBoth();
  std::vector<std::string> days;
  for (const auto& day : std::filesystem::directory_iterator(Folder().Path() / "Daily")) {
    days.push_back(day.path().filename().string());
    EXPECT_EQ(days.back().size(), 8U);
    EXPECT_EQ(days.back().find_first_not_of("0123456789"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_directory(day.path() / "Record"));
    const std::string date =
        days.back().substr(6, 2) + "-" + days.back().substr(4, 2) + "-" + days.back().substr(0, 4);
    EXPECT_TRUE(std::filesystem::exists(day.path() / ("Call_Activity_" + date + ".csv")));
    EXPECT_TRUE(std::filesystem::exists(day.path() / ("DailyCallActivity_" + date + ".csv")));
  }
  EXPECT_EQ(days.size(), 1U);
}

TEST_F(LogModeTest, SpoiltLineOfTheCountsIsReportedAndTheFileKeptAside) {
  Begin(LogModeOn());
  CountACall(10, 9002);
  CloseBoth();
  const std::filesystem::path file = CountsFile();
  const std::string spoilt = "GSSI;Call Activity\r\n9001;many\r\n9002;1\r\n";
  std::ofstream(file, std::ios::binary | std::ios::trunc) << spoilt;
  Begin(LogModeOn());
  AwaitInStatusLog("Loaded call activity for 1 saved GSSIs");
  AwaitInStatusLog("Error in line 2 of " + file.filename().string() + " [13] - ");
  EXPECT_EQ(ReadWholeFile(file.string() + ".bad"), spoilt);
  CountACall(11, 9002);
  CloseBoth();
  EXPECT_EQ(Counts(), "GSSI;Call Activity\r\n9002;2\r\n");
}

TEST_F(LogModeTest, CountsThatCannotBeSavedAreReportedAtTheClosing) {
  Begin(LogModeOn());
  CountACall(10, 9002);
  CloseBoth();
  const std::string before = Counts();
  Begin(LogModeOn());
  AwaitInStatusLog("Loaded call activity for 1 saved GSSIs");
  CountACall(11, 9002);
  {
    const HeldFile held(CountsFile(), HeldFile::Sharing::kReadOnly);
    Close(Corvane().Window());
    Await("the box", [this] { return !Corvane().OpenMessageBox().empty(); });
    EXPECT_EQ(Corvane().OpenMessageBox(), "Error: Error saving call activity log.");
    AnswerBox(FindMessageBox(Corvane().TheProcess().Id()));
    Await("the end", [this] { return !Corvane().Running(); });
  }
  EXPECT_EQ(Counts(), before);
}

TEST_F(LogModeTest, ClosingWithoutLogModeLeavesTheCountsAlone) {
  Begin(LogModeOn());
  CountACall(10, 9002);
  CloseBoth();
  const std::string before = Counts();
  Begin(LogModeOn());
  CountACall(11, 9002);
  Click(Corvane().Control(chkCreateCallActivityCvsFile));
  AwaitInCallLog(" - LOG mode de-activated - Calls can now be heard");
  CloseBoth();
  EXPECT_EQ(Counts(), before);
}

}  // namespace
}  // namespace corvane::desktop
