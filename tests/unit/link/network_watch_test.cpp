#include "link/network_watch.h"

#include "link_fixture.h"
#include "panel/logs.h"

namespace corvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class NetworkWatchTest : public LinkTest {
 protected:
  NetworkWatchTest() {
    Discover();
    form.lstStatusLog.Clear();
    ShowNetwork("262", "1", "100");
    sim().ForgetMessages();
  }
  void Steps(int count) {
    for (int i = 0; i < count; ++i) watch.Step();
  }
  void AddGroup(std::int32_t gssi, std::int16_t mcc, std::int16_t mnc) {
    GssiRecord group;
    group.Gssi = gssi;
    group.Mcc = mcc;
    group.Mnc = mnc;
    groups.Append(group);
  }
  // What has to be done before the `number`th text is asked for, counted from 1.
  void BeforeText(const std::function<void(int number)>& action) {
    on_message = [this, action](const Message& message) {
      if (message.sent == Kind::kText) action(++texts);
    };
  }
  std::string Info() { return form.lblNetworkInfo.caption.get(); }
  std::string Tip() { return form.lblNetworkInfo.tool_tip.get(); }
  std::string Country() { return form.mnuMCClabel.caption.get(); }

  NetworkWatch& watch = network;
  int texts = 0;
};

TEST(IdentityNumberTest, TakesPlainDigitsBehindThePrefix) {
  EXPECT_EQ(IdentityNumber("MCC:262", "MCC:"), "262");
  EXPECT_EQ(IdentityNumber("MCC: 262 ", "MCC:"), "262");
  EXPECT_EQ(IdentityNumber("MCC:007", "MCC:"), "7");
  EXPECT_EQ(IdentityNumber("LA:32767", "LA:"), "32767");
  EXPECT_EQ(IdentityNumber("262", "MCC:"), "262");
}

TEST(IdentityNumberTest, AnythingElseIsZero) {
  for (const char* text :
       {"MCC:?", "MCC:", "", ">No text for this class<", "MCC:32768", "MCC:-5", "MCC:+5", "MCC:1.5",
        "MCC:2 6", "MNC:5", "MCC:0", "MCC:0x1", "MCC:99999999999999999999"}) {
    EXPECT_EQ(IdentityNumber(text, "MCC:"), "0") << text;
  }
}

TEST_F(NetworkWatchTest, TheKeyIsThePlainConcatenation) {
  ShowNetwork("234", "10", "21");
  watch.Step();
  EXPECT_EQ(watch.NetworkKey, "2341021");
  EXPECT_EQ(identity.CurrentMcc, "234");
  EXPECT_EQ(identity.CurrentMnc, "10");
  EXPECT_EQ(identity.CurrentLa, "21");
}

TEST_F(NetworkWatchTest, ReadsThreeTimesAndTheLastCounts) {
  BeforeText([this](int number) { ShowNetwork(number > 6 ? "262" : "999", "1", "100"); });
  watch.Step();
  EXPECT_EQ(texts, 9);
  EXPECT_EQ(identity.CurrentMcc, "262");
}

TEST_F(NetworkWatchTest, ANewNetworkIsReported) {
  names.CountryLabels.loaded = names.NetworkLabels.loaded = true;
  names.LocationAreaLabels.loaded = true;
  names.CountryLabels.Append("262;Germany");
  names.NetworkLabels.Append("262;1;Police");
  names.LocationAreaLabels.Append("262;1;100;North");
  AddGroup(9001, 262, 1);
  AddGroup(9002, 262, 1);
  AddGroup(9003, 262, 2);
  AddGroup(9004, 263, 1);
  AddGroup(0, 262, 1);
  watch.Step();
  EXPECT_EQ(Info(), "MNC:1  LA:100");
  EXPECT_EQ(Country(), "MCC: Germany");
  EXPECT_EQ(Tip(), "Police [North]");
  EXPECT_THAT(CallLog(), ElementsAre(Now() + " - MCC:262  MNC:1  LA:100 [North]", ""));
  EXPECT_THAT(StatusLog(), ElementsAre("GSSI for this MNC network: 2"));
  EXPECT_TRUE(LastStatusLineShown());
  EXPECT_EQ(scans, 1) << "the poll step runs in the same cycle";
}

TEST_F(NetworkWatchTest, TheSameNetworkIsScannedEveryCycleAndNotReported) {
  Steps(10);
  EXPECT_EQ(scans, 10);
  EXPECT_EQ(CallLog().size(), 2u);
  EXPECT_EQ(StatusLog().size(), 1u);
}

TEST_F(NetworkWatchTest, AChangeOfTheLocationAreaAloneIsAChange) {
  watch.Step();
  ShowNetwork("262", "1", "101");
  watch.Step();
  EXPECT_EQ(CallLog().size(), 4u);
  EXPECT_EQ(Info(), "MNC:1  LA:101");
}

TEST_F(NetworkWatchTest, ANetworkWithoutLocationAreaIsANetwork) {
  ShowNetwork("262", "1", "?");
  watch.Step();
  EXPECT_EQ(watch.NetworkKey, "26210");
  EXPECT_EQ(scans, 1);
}

TEST_F(NetworkWatchTest, APartOfAnIdentityIsNeitherANetworkNorItsAbsence) {
  watch.NoNetworkCount = 7;
  for (const auto& [mcc, mnc, la] :
       {std::tuple{"?", "?", "100"}, {"262", "?", "?"}, {"?", "1", "?"}, {"262", "0", "5"}}) {
    ShowNetwork(mcc, mnc, la);
    watch.Step();
  }
  EXPECT_EQ(scans, 0);
  EXPECT_EQ(watch.NoNetworkCount, 7);
  EXPECT_THAT(CallLog(), IsEmpty());
  EXPECT_EQ(watch.NetworkKey, "");
}

TEST_F(NetworkWatchTest, ASeenNetworkResetsTheCount) {
  watch.NoNetworkCount = 150;
  watch.Step();
  EXPECT_EQ(watch.NoNetworkCount, 0);
}

TEST_F(NetworkWatchTest, WithoutLabelFilesNothingIsLookedUp) {
  names.CountryLabels.Append("262;Germany");
  names.NetworkLabels.Append("262;1;Police");
  names.LocationAreaLabels.Append("262;1;100;North");
  form.mnuMCClabel.caption = std::string("MCC: before");
  watch.Step();
  EXPECT_EQ(Country(), "MCC: before");
  EXPECT_EQ(Tip(), "Current MNC,LA");
  EXPECT_EQ(CallLog()[0], Now() + " - MCC:262  MNC:1  LA:100");
}

TEST_F(NetworkWatchTest, ANetworkWithoutLabelsDropsThoseOfTheOneBefore) {
  names.CountryLabels.loaded = names.NetworkLabels.loaded = true;
  names.CountryLabels.Append("262;Germany");
  names.CountryLabels.Append("264;");
  names.NetworkLabels.Append("262;1;Police");
  watch.Step();
  EXPECT_EQ(Tip(), "Police");
  ShowNetwork("263", "1", "100");
  watch.Step();
  EXPECT_EQ(Country(), "");
  EXPECT_EQ(Tip(), "Current MNC,LA");
  form.mnuMCClabel.caption = std::string("x");
  ShowNetwork("264", "1", "100");
  watch.Step();
  EXPECT_EQ(Country(), "") << "an empty label";
}

TEST_F(NetworkWatchTest, AnAreaWithAnEmptyOrMissingLabelGivesNoSuffix) {
  names.LocationAreaLabels.loaded = names.NetworkLabels.loaded = true;
  names.NetworkLabels.Append("262;1;Police");
  names.LocationAreaLabels.Append("262;1;100");
  names.LocationAreaLabels.Append("262;1;101;");
  for (const char* la : {"100", "101", "102"}) {
    ShowNetwork("262", "1", la);
    watch.Step();
    EXPECT_EQ(Tip(), "Police") << la;
    EXPECT_EQ(CallLog()[CallLog().size() - 2], Now() + " - MCC:262  MNC:1  LA:" + la);
  }
}

TEST_F(NetworkWatchTest, LabelsAreComparedAsTextWithPlainNumbers) {
  names.CountryLabels.loaded = true;
  names.CountryLabels.Append("0262;Wrong");
  ShowNetwork("0262", "1", "100");
  watch.Step();
  EXPECT_EQ(Country(), "");
  names.CountryLabels.Append("262;Right");
  watch.Forget();
  watch.Step();
  EXPECT_EQ(Country(), "MCC: Right");
}

TEST_F(NetworkWatchTest, TheCallLogScrollsAfterEachLineOnlyWhenItWasAtItsEnd) {
  for (int i = 0; i < 30; ++i) AddCallLine(form, "x");
  ASSERT_EQ(form.lstCallLog.top_index(), 30 - kCallLogFullRows);
  watch.Step();
  EXPECT_EQ(form.lstCallLog.list_index(), 31);
  EXPECT_EQ(form.lstCallLog.top_index(), 32 - kCallLogFullRows);
  form.lstCallLog.ReportTopIndex(3);
  watch.Forget();
  watch.Step();
  EXPECT_EQ(form.lstCallLog.list_index(), 31);
  EXPECT_EQ(form.lstCallLog.top_index(), 3);
}

TEST_F(NetworkWatchTest, TheLossOfANetworkIsToleratedFor200CyclesAndReportedOnce) {
  watch.Step();
  const auto lines = CallLog().size();
  form.lstStatusLog.Clear();
  ShowNetwork("?", "?", "?");
  Steps(200);
  EXPECT_EQ(CallLog().size(), lines);
  EXPECT_THAT(StatusLog(), IsEmpty());
  EXPECT_EQ(Info(), "MNC:1  LA:100");
  watch.Step();
  ASSERT_EQ(CallLog().size(), lines + 2);
  EXPECT_EQ(CallLog()[lines], Now() + " - No MCC/MNC/LA seen");
  EXPECT_EQ(CallLog()[lines + 1], "");
  EXPECT_THAT(StatusLog(), ElementsAre("GSSI loaded for this MNC network: 0"));
  EXPECT_EQ(Info(), "");
  EXPECT_EQ(Tip(), "Current MNC,LA");
  EXPECT_EQ(Country(), "MCC: ?");
  EXPECT_EQ(watch.NoNetworkCount, 0);
  EXPECT_EQ(watch.NetworkKey, "000");
  Steps(1000);
  EXPECT_EQ(CallLog().size(), lines + 2);
  EXPECT_EQ(scans, 1) << "without a network nothing is scanned";
}

TEST_F(NetworkWatchTest, AFollowedCallEndsWithItsNetwork) {
  ASSERT_TRUE(StartAndSettle());
  ASSERT_TRUE(FollowsCall(1207));
  desktop.Do("network none");
  ASSERT_TRUE(loop.RunUntil([&] { return watch.NoNetworkCount == 200; }, 20000));
  EXPECT_TRUE(Following());
  EXPECT_EQ(CallLines("No MCC/MNC/LA seen"), 0);
  ASSERT_TRUE(loop.RunUntil([&] { return watch.NoNetworkCount == 0; }, 200));
  EXPECT_FALSE(Following());
  EXPECT_EQ(CallLines("No MCC/MNC/LA seen"), 1);
}

TEST_F(NetworkWatchTest, WithoutACallTheLossSendsNothing) {
  Connect();
  ShowNetwork("262", "1", "100");
  watch.Step();
  ShowNetwork("?", "?", "?");
  Steps(201);
  EXPECT_EQ(CallLines("No MCC/MNC/LA seen"), 1);
  EXPECT_TRUE(sent().empty());
}

TEST_F(NetworkWatchTest, AfterAResetTheAbsenceIsReportedAgain) {
  ShowNetwork("?", "?", "?");
  Steps(201);
  EXPECT_EQ(CallLog().size(), 2u);
  watch.Forget();
  Steps(200);
  EXPECT_EQ(CallLog().size(), 2u);
  watch.Step();
  EXPECT_EQ(CallLog().size(), 4u);
}

TEST_F(NetworkWatchTest, AReadingThatTimedOutIsNeitherANetworkNorItsAbsence) {
  watch.Step();
  for (const auto label : {ids().mcc, ids().mnc, ids().la}) {
    sim().SetSilent(Handle(label), true);
    Steps(300);
    sim().SetSilent(Handle(label), false);
  }
  EXPECT_EQ(identity.CurrentMcc, "262");
  EXPECT_EQ(identity.CurrentLa, "100");
  EXPECT_EQ(watch.NoNetworkCount, 0);
  EXPECT_EQ(CallLog().size(), 2u);
  EXPECT_EQ(scans, 1);
  watch.Step();
  EXPECT_EQ(scans, 2);
  EXPECT_EQ(CallLog().size(), 2u);
}

TEST_F(NetworkWatchTest, ATimeOutOfAnEarlierReadingDoesNotMatter) {
  BeforeText([this](int number) { sim().SetSilent(Handle(ids().la), number <= 6); });
  watch.Step();
  EXPECT_EQ(identity.CurrentLa, "100");
  EXPECT_EQ(scans, 1);
}

TEST_F(NetworkWatchTest, ALabelThatIsGoneReadsAsZero) {
  watch.Step();
  tree().Destroy(ids().la);
  watch.Step();
  EXPECT_EQ(identity.CurrentLa, "0");
}

TEST_F(NetworkWatchTest, LabelsThatAppearLateAreFound) {
  for (const auto label : {ids().mcc, ids().mnc, ids().la}) tree().SetText(label, "");
  Discover();
  form.lstStatusLog.Clear();
  watch.Step();
  EXPECT_EQ(scans, 0);
  EXPECT_EQ(watch.NoNetworkCount, 1);
  ShowNetwork("262", "1", "100");
  watch.Step();
  EXPECT_EQ(scans, 1);
  EXPECT_EQ(Info(), "MNC:1  LA:100");
}

TEST_F(NetworkWatchTest, ShuttingDownTheNetworkIsReportedButNotScanned) {
  flags.mblnShuttingDown = true;
  Steps(2);
  EXPECT_EQ(CallLog().size(), 2u);
  EXPECT_EQ(scans, 0);
}

}  // namespace
}  // namespace corvane::test
