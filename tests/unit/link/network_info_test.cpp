#include "link/network_info.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class NetworkInfoTest : public LinkTest {
 protected:
  NetworkInfoTest() {
    Discover();
    tree().SetText(ids().info_box, "first\r\nsecond\r\n");
    tree().SetShowState(ids().info_window, standin::ShowState::kMinimised);
    form.lstStatusLog.Clear();
    sim().ForgetMessages();
  }
  [[nodiscard]] bool Minimised() {
    return tree().Find(ids().info_window)->show_state == standin::ShowState::kMinimised;
  }
  void Cycle() {
    box.KeepOpen();
    loop.AdvanceMs(60);
  }
  void Cycles(int count) {
    for (int cycle = 0; cycle < count; ++cycle) Cycle();
  }
};

// --- The box ---

TEST_F(NetworkInfoTest, CountsAndReadsLinesOfTheBoxAtIndex14) {
  EXPECT_EQ(box.Identity(), Handle(ids().info_box));
  EXPECT_EQ(box.LineCount(), 3);
  EXPECT_EQ(box.Line(1), "second");
  EXPECT_EQ(box.Line(-1), "");
  EXPECT_EQ(box.Line(2), "");
  EXPECT_EQ(box.Line(3), "");
}

TEST_F(NetworkInfoTest, ABoxThatGivesNoAnswerHasNoLinesAndTakesNone) {
  sim().SetSilent(Handle(ids().info_box), true);
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), std::nullopt);
}

TEST_F(NetworkInfoTest, ABoxThatRefusesHasNoLinesAndTakesNone) {
  sim().SetRefusing(true);
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), std::nullopt);
}

TEST_F(NetworkInfoTest, ABoxThatIsGoneGivesNoAnswer) {
  desktop.Do("window network-info close");
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), std::nullopt);
}

TEST_F(NetworkInfoTest, WithoutABoxNothingIsSent) {
  desktop.Do("die");
  Discover();
  EXPECT_EQ(box.Identity(), 0u);
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), "");
  box.Clear();
  EXPECT_TRUE(sim().messages().empty());
}

TEST_F(NetworkInfoTest, ClearsTheBoxWithAnEmptyText) {
  box.Clear();
  EXPECT_EQ(sim().messages(), (std::vector<Message>{{box.Identity(), Kind::kSetText}}));
  EXPECT_EQ(box.LineCount(), 1);
}

// A box that wraps its lines, read as the poll cycle reads it.
class WrappedNetworkInfo : public ::testing::Test, protected LinkWorld {
 protected:
  WrappedNetworkInfo() : LinkWorld(LinkOptions{Wrapping(), {}, /*loaded=*/false}) {
    flags.mblnFormLoaded = true;
    discovery.DiscoverSdrWindows(Discovery::Log::kWhole);
  }
  void Write(const std::string& text) { desktop.Do("line \"" + text + "\""); }
  // The whole lines since the last time.
  [[nodiscard]] std::vector<std::string> Read() {
    std::vector<std::string> lines;
    box.KeepOpen();
    const std::int32_t count = box.LineCount();
    if (count > 0 && next_ == 0) next_ = count;
    for (; next_ < count; ++next_) {
      const auto line = box.Line(next_ - 1);
      if (!line) break;  // in the next cycle
      if (!line->empty()) lines.push_back(*line);
    }
    return lines;
  }

 private:
  static standin::Options Wrapping() {
    standin::Options options;
    options.info_open = true;
    options.info_wrap = standin::Wrap::kWords;
    return options;
  }
  std::int32_t next_ = 0;
};

TEST_F(WrappedNetworkInfo, LinesThatComeWithAnotherWidthAreReadEachOnce) {
  for (const char* width : {"width 900", "width 200", "width 700", "width 150"}) {
    for (int line = 0; line < 20; ++line) Write("a line that is longer than a narrow box shows");
    (void)Read();
    (void)Read();
    // Between the look at the width and the count.
    box.KeepOpen();
    desktop.Do(width);
    Write("SSI:9001 D_Release Call ID:7 Disconnect_cause:User_requested");
    Write("SSI:9002 D_Setup Transmission Granted Call ID:8 TimeSlot:2 Carrier:2610");
    Write("SSI:9002 D_TX_Ceased Call ID:8 Transmission_request_permission:allowed");
    EXPECT_EQ(box.LineCount(), 0) << width;
    std::vector<std::string> lines = Read();
    const std::vector<std::string> more = Read();
    lines.insert(lines.end(), more.begin(), more.end());
    ASSERT_EQ(lines.size(), 3U) << width;
    EXPECT_EQ(lines[0], "SSI:9001 D_Release Call ID:7 Disconnect_cause:User_requested") << width;
  }
}

TEST_F(WrappedNetworkInfo, WhateverQuestionIsNotAnsweredEveryLineIsReadOnce) {
  for (const bool narrowed : {false, true}) {
    for (int silent = 1; silent <= 40; ++silent) {
      SCOPED_TRACE(std::to_string(silent) + (narrowed ? " narrowed" : " silent"));
      desktop.Do("width 400");
      (void)Read();
      (void)Read();
      std::vector<std::string> written;
      for (int line = 0; line < 3; ++line) {
        written.push_back("line " + std::to_string(silent) + "." + std::to_string(line) +
                          " is longer than a box of this width shows in one");
        Write(written.back());
      }
      int message = 0;
      on_message = [&](const auto&) {
        if (++message != silent) return;
        narrowed ? desktop.Do("width 250") : desktop.windows().FailNextSends(1);
      };
      desktop.Do("width 300");
      std::vector<std::string> read;
      for (int cycle = 0; cycle < 4; ++cycle) {
        for (const std::string& line : Read()) read.push_back(line);
        loop.AdvanceMs(PatientWindows::kPauseMs);
      }
      on_message = nullptr;
      ASSERT_EQ(read, written);
    }
  }
}

TEST_F(WrappedNetworkInfo, HasNoLinesUntilItIsToldWhereTheLastOneBegins) {
  Write("a line");
  box.KeepOpen();
  on_message = [this](const auto& message) {
    if (message.sent == Kind::kLineStart) desktop.windows().FailNextSends(1);
  };
  EXPECT_EQ(box.LineCount(), 0);
  on_message = nullptr;
  EXPECT_EQ(box.LineCount(), 0) << "SDR# is given a pause";
  loop.AdvanceMs(PatientWindows::kPauseMs);
  EXPECT_EQ(box.LineCount(), 2);
}

TEST_F(WrappedNetworkInfo, AWidthThatChangesBeforeTheFirstLookIsTaken) {
  Write("a line that is longer than a narrow box shows in one row of it");
  box.KeepOpen();
  desktop.Do("width 200");
  EXPECT_EQ(box.LineCount(), 0);
  box.KeepOpen();
  EXPECT_GT(box.LineCount(), 0);
}

TEST_F(WrappedNetworkInfo, WhatIsWrittenAfterTheBoxWasClearedWhileItsLinesAreSoughtIsRead) {
  for (int line = 0; line < 20; ++line) Write("a line that is longer than a narrow box shows");
  (void)Read();
  desktop.Do("width 200");
  on_message = [this](const auto& message) {
    if (message.sent != Kind::kLineStart) return;
    on_message = nullptr;
    desktop.model().tree().SetText(desktop.ids().info_box, "");
  };
  EXPECT_TRUE(Read().empty());
  ASSERT_FALSE(on_message) << "nothing was sought";
  Write("the first line of the box as it is now");
  EXPECT_EQ(Read(), std::vector<std::string>{"the first line of the box as it is now"});
}

TEST_F(WrappedNetworkInfo, OfALineInVeryManyPiecesTheLastOnesAreRead) {
  (void)Read();
  std::string text;
  for (int word = 0; word < 5000; ++word) text += "w" + std::to_string(word) + " ";
  desktop.model().tree().SetText(desktop.ids().info_box, "before\r\n" + text + "\r\n");
  const std::vector<std::string> lines = Read();
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_LT(lines[1].size(), text.size() / 2);
  EXPECT_TRUE(text.ends_with(lines[1])) << lines[1];
  EXPECT_NE(lines[1].find("w4999"), std::string::npos);
}

TEST_F(NetworkInfoTest, AnotherBoxHasAnotherIdentity) {
  const auto before = box.Identity();
  desktop.Do("window network-info close");
  Cycle();
  EXPECT_NE(box.Identity(), 0u);
  EXPECT_NE(box.Identity(), before);
}

// --- The window ---

TEST_F(NetworkInfoTest, AWindowShownNormallyIsMinimisedWhereItStands) {
  desktop.Do("window network-info restore");
  const standin::Box place = tree().Find(ids().info_window)->box;
  box.KeepOpen();
  EXPECT_TRUE(Minimised());
  EXPECT_EQ(tree().Find(ids().info_window)->box, place);
  EXPECT_EQ(Presses(ids().net_info), 0);
}

TEST_F(NetworkInfoTest, EveryCycleMinimisesAgainWhatTheUserRestored) {
  Cycles(2);
  EXPECT_EQ(sim().placed().size(), 0u);
  for (std::size_t times = 1; times <= 3; ++times) {
    desktop.Do("window network-info restore");
    Cycles(2);
    EXPECT_TRUE(Minimised());
    EXPECT_EQ(sim().placed().size(), times);
  }
}

TEST_F(NetworkInfoTest, AMaximisedOrHiddenWindowIsLeftInItsState) {
  for (const std::uint32_t state : {0u, 2u, 3u, 6u, 7u}) {
    sim().PretendShowState(state);
    box.KeepOpen();
  }
  EXPECT_TRUE(sim().placed().empty());
}

TEST_F(NetworkInfoTest, AnInvisibleWindowHasItsButtonPressedOnceASecond) {
  tree().OnPress(ids().net_info, nullptr);
  desktop.Do("window network-info hide");
  Cycles(50);  // 3 s
  EXPECT_EQ(Presses(ids().net_info), 3);
}

TEST_F(NetworkInfoTest, AClosedWindowIsOpenedAndFoundAtOnceAndTheLinkStays) {
  desktop.Do("window network-info close");
  Cycle();
  EXPECT_EQ(Presses(ids().net_info), 1);
  EXPECT_NE(ids().info_box, 0u);
  EXPECT_EQ(At(SdrRole::kNetworkInfoWindow), Handle(ids().info_window));
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box));
  EXPECT_TRUE(Minimised());
  EXPECT_TRUE(flags.NetRemoteLinkUp);
  EXPECT_TRUE(StatusLog().empty());
  Cycles(50);
  EXPECT_EQ(Presses(ids().net_info), 1);
  EXPECT_EQ(Presses(ids().network), 0);
}

TEST_F(NetworkInfoTest, AWindowThatTheUserOpenedAgainIsTakenWithoutAPress) {
  desktop.Do("window network-info close");
  desktop.Do("window network-info open");
  Cycle();
  EXPECT_EQ(Presses(ids().net_info), 0);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box));
}

TEST_F(NetworkInfoTest, AReplacedEditBoxOfTheSameWindowIsTaken) {
  tree().Destroy(ids().info_box);
  const auto edit = Add(ids().info_window, kEdit);
  Cycle();
  EXPECT_EQ(Presses(ids().net_info), 0);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(edit));
}

TEST_F(NetworkInfoTest, AWindowThatDoesNotComeBackIsAskedForOnceASecond) {
  tree().OnPress(ids().net_info, nullptr);
  desktop.Do("window network-info close");
  Cycles(50);
  EXPECT_EQ(Presses(ids().net_info), 3);
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), 0u);
  desktop.Do("window network-info open");
  Cycle();
  EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box));
}

TEST_F(NetworkInfoTest, APressThatGotNoAnswerIsNotRepeatedBeforeSomethingWasAnswered) {
  sim().SetActsLate(true);
  desktop.Do("window network-info hide");
  desktop.Do("hang 4500");
  Cycles(150);
  EXPECT_EQ(Presses(ids().net_info), 1);
  EXPECT_TRUE(tree().IsVisible(ids().info_window)) << "it was carried out late";
}

TEST_F(NetworkInfoTest, AWindowThatIsHiddenWithSdrIsNotAskedFor) {
  desktop.Do("window network-info hide");
  tree().SetVisible(ids().main, false);
  Cycles(5);
  EXPECT_EQ(Presses(ids().net_info), 0);
}

TEST_F(NetworkInfoTest, AWindowThatIsNotThereForAMomentIsShownAgainAllTheSame) {
  for (int moment = 1; moment <= 8; ++moment) {
    desktop.Do("window network-info hide");
    int question = 0;
    sim().SetMissing([&] { return ++question == moment; });
    Cycle();
    sim().SetMissing(nullptr);
    loop.AdvanceMs(1000);
    Cycle();
    EXPECT_TRUE(tree().IsVisible(ids().info_window)) << moment;
    EXPECT_EQ(At(SdrRole::kNetworkInfoEdit), Handle(ids().info_box)) << moment;
    loop.AdvanceMs(1000);
  }
}

TEST_F(NetworkInfoTest, SdrThatDoesNotTellWhereItStandsHidesNoWindow) {
  desktop.Do("window network-info hide");
  int question = 0;
  // Behind those about the window, its box, and whether it is seen.
  sim().SetMissing([&] { return ++question == 4; });
  Cycle();
  EXPECT_EQ(Presses(ids().net_info), 1);
}

TEST_F(NetworkInfoTest, NoWindowAndADeadOneAreNotMinimised) {
  desktop.Do("die");
  box.Minimise();
  Discover();
  box.Minimise();
  EXPECT_TRUE(sim().placed().empty());
}

TEST_F(NetworkInfoTest, WithSdrGoneNothingIsSent) {
  desktop.Do("die");
  Cycles(2);
  EXPECT_TRUE(sim().messages().empty());
  EXPECT_TRUE(sim().placed().empty());
}

}  // namespace
}  // namespace corvane::test
