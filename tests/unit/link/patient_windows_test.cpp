#include "link/patient_windows.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class PatientWindowsTest : public LinkTest {
 protected:
  PatientWindowsTest() { tree().SetText(ids().info_box, "one\r\ntwo"); }
  WindowHandle Label() { return Handle(ids().tetra_header); }
  WindowHandle Edit() { return Handle(ids().info_box); }
  WindowHandle Button() { return Handle(ids().net_info); }
  void Hang() { desktop.Do("hang 600000"); }
  void PassPause() { loop.AdvanceMs(PatientWindows::kPauseMs); }

  PatientWindows& patient = patience;
};

TEST_F(PatientWindowsTest, PassesAnswersOn) {
  EXPECT_EQ(patient.Text(Label()).value, "TETRA Demodulator *");
  EXPECT_EQ(patient.LineCount(Edit()).value, 2);
  EXPECT_EQ(patient.Line(Edit(), 1).value, "two");
  EXPECT_EQ(patient.SetText(Handle(ids().port), "x"), Reply::kAnswered);
  EXPECT_EQ(tree().Find(ids().port)->text, "x");
  EXPECT_EQ(patient.Press(Button()), Reply::kAnswered);
  EXPECT_EQ(patient.PressSelector(Handle(ids().timeslots[2])), Reply::kAnswered);
  EXPECT_EQ(desktop.model().receiver().state().slot, 3);
  EXPECT_FALSE(patient.Paused(Edit()));
}

TEST_F(PatientWindowsTest, AfterATimeOutNothingIsSentForAWhile) {
  Hang();
  EXPECT_EQ(patient.Press(Button()), Reply::kNoAnswer);
  EXPECT_TRUE(patient.Paused(Edit()));
  const auto sent = sim().send_count();
  const auto before = loop.TickMs();
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(patient.LineCount(Edit()).reply, Reply::kNoAnswer);
    EXPECT_EQ(patient.SetText(Edit(), "y"), Reply::kNoAnswer);
    EXPECT_EQ(patient.Text(Label()).reply, Reply::kNoAnswer);
    EXPECT_EQ(patient.Line(Edit(), 0).reply, Reply::kNoAnswer);
    EXPECT_EQ(patient.LineStart(Edit(), 0).reply, Reply::kNoAnswer);
    EXPECT_EQ(patient.PressSelector(Button()), Reply::kNoAnswer);
    EXPECT_EQ(patient.Text(4711).reply, Reply::kGone);
  }
  EXPECT_EQ(sim().send_count(), sent);
  EXPECT_EQ(loop.TickMs(), before);
}

TEST_F(PatientWindowsTest, AnyKindOfMessageThatTimesOutStartsThePause) {
  Hang();
  const std::function<Reply()> kinds[] = {[&] { return patient.SetText(Edit(), "y"); },
                                          [&] { return patient.Text(Label()).reply; },
                                          [&] { return patient.LineCount(Edit()).reply; },
                                          [&] { return patient.Line(Edit(), 0).reply; },
                                          [&] { return patient.PressSelector(Button()); },
                                          [&] { return patient.Press(Button()); }};
  for (const auto& ask : kinds) {
    EXPECT_EQ(ask(), Reply::kNoAnswer);
    EXPECT_TRUE(patient.Paused(Edit()));
    PassPause();
    EXPECT_FALSE(patient.Paused(Edit()));
  }
}

TEST_F(PatientWindowsTest, AsksAgainAfterThePauseAndResumes) {
  sim().FailNextSends(1);
  EXPECT_EQ(patient.Press(Button()), Reply::kNoAnswer);
  loop.AdvanceMs(PatientWindows::kPauseMs - 1);
  EXPECT_EQ(patient.Press(Button()), Reply::kNoAnswer);
  loop.AdvanceMs(1);
  EXPECT_EQ(patient.Press(Button()), Reply::kAnswered);
}

TEST_F(PatientWindowsTest, AWindowThatIsGoneStartsNoPause) {
  EXPECT_EQ(patient.Press(4711), Reply::kGone);
  EXPECT_FALSE(patient.Paused(Edit()));
  EXPECT_EQ(patient.Text(Label()).value, "TETRA Demodulator *");
}

TEST_F(PatientWindowsTest, ARefusalCostsNoTimeAndStartsNoPause) {
  sim().SetRefusing(true);
  EXPECT_EQ(patient.LineCount(Edit()).reply, Reply::kRefused);
  EXPECT_FALSE(patient.Paused(Edit()));
  EXPECT_EQ(patient.Text(Label()).value, "TETRA Demodulator *");
}

TEST_F(PatientWindowsTest, WhatSendsNoMessageGoesOnDuringThePause) {
  sim().FailNextSends(1);
  (void)patient.Press(Button());
  ASSERT_TRUE(patient.Paused(Edit()));
  Placement placement;
  ScreenRect rect;
  EXPECT_TRUE(patient.IsAlive(Edit()));
  EXPECT_TRUE(patient.IsVisible(Edit()));
  EXPECT_EQ(patient.ClassName(Edit()), kEdit);
  EXPECT_EQ(patient.Parent(Edit()), Handle(ids().info_window));
  EXPECT_TRUE(patient.GetPlacement(Handle(ids().main), placement));
  EXPECT_TRUE(patient.GetRect(Edit(), rect));
  EXPECT_NE(patient.ScreenPixel(Edit(), 1, 1), -1);
  EXPECT_TRUE(patient.IsSeenAt(Edit(), rect.left + 1, rect.top + 1));
  EXPECT_FALSE(patient.IsSeenAt(Edit(), -1, -1));
  std::size_t seen = 0;
  patient.EnumTopLevel([&seen](WindowHandle) { return ++seen > 0; });
  EXPECT_EQ(seen, tree().top_level().size());
  EXPECT_EQ(patient.OwnMainWindow(), sim().OwnMainWindow());
  EXPECT_EQ(patient.Foreground(), sim().Foreground());
}

TEST_F(PatientWindowsTest, MovesNoWindowDuringThePause) {
  patient.SetPlacement(Handle(ids().main), {});
  EXPECT_EQ(sim().placed().size(), 1u);
  sim().FailNextSends(1);
  (void)patient.Press(Button());
  patient.SetPlacement(Handle(ids().main), {});
  EXPECT_EQ(sim().placed().size(), 1u);
}

TEST_F(PatientWindowsTest, AnotherProgramsSilenceHoldsNothingBack) {
  desktop.Do("stranger hang 600000");
  const WindowHandle stranger = Handle(tree().top_level().front());
  const auto before = loop.TickMs();
  EXPECT_EQ(patient.Text(stranger).reply, Reply::kNoAnswer);
  EXPECT_EQ(loop.TickMs() - before, sim::SimWindowOps::kSendLimitMs);
  EXPECT_TRUE(patient.Paused(stranger));
  EXPECT_FALSE(patient.Paused(Edit()));
  EXPECT_EQ(patient.Text(Label()).value, "TETRA Demodulator *");
}

TEST_F(PatientWindowsTest, InOneCycleAProgramIsWaitedForOnceHoweverLongTheCycleIs) {
  Hang();
  const auto before = loop.TickMs();
  patient.BeginCycle();
  EXPECT_EQ(patient.SetForeground(Handle(ids().main)), Handle(ids().main));
  EXPECT_EQ(loop.TickMs() - before, sim::SimWindowOps::kSendLimitMs) << "the probe is a message";
  for (int step = 0; step < 5; ++step) {
    loop.AdvanceMs(PatientWindows::kPauseMs);
    const auto now = loop.TickMs();
    EXPECT_EQ(patient.SetForeground(Handle(ids().main)), Handle(ids().main));
    EXPECT_EQ(patient.SetPlacement(Handle(ids().info_window), {}), Reply::kNoAnswer);
    EXPECT_EQ(patient.Press(Button()), Reply::kNoAnswer);
    EXPECT_EQ(patient.Text(Label()).reply, Reply::kNoAnswer);
    EXPECT_EQ(loop.TickMs(), now);
  }
  patient.EndCycle();
  EXPECT_FALSE(patient.Paused(Edit()));
}

TEST_F(PatientWindowsTest, AProbeThatTimesOutStartsThePause) {
  Hang();
  EXPECT_EQ(patient.SetPlacement(Handle(ids().main), {}), Reply::kNoAnswer);
  EXPECT_TRUE(patient.Paused(Edit()));
  PassPause();
  EXPECT_EQ(patient.SetForeground(Handle(ids().main)), Handle(ids().main));
  EXPECT_TRUE(patient.Paused(Edit()));
  PassPause();
  // SDR# is in front of the window that is to come there.
  tree().Raise(ids().main);
  EXPECT_EQ(patient.SetForeground(sim().OwnMainWindow()), Handle(ids().main));
  EXPECT_TRUE(patient.Paused(Edit()));
  const auto now = loop.TickMs();
  EXPECT_EQ(patient.SetForeground(sim().OwnMainWindow()), Handle(ids().main));
  EXPECT_EQ(loop.TickMs(), now);
}

TEST_F(PatientWindowsTest, TheListenerHearsWhatWasReallySent) {
  std::vector<Reply> heard;
  patient.SetListener([&](WindowHandle window, PatientWindows::Asked asked, Reply reply) {
    EXPECT_EQ(window, Label());
    EXPECT_EQ(asked, PatientWindows::Asked::kText);
    heard.push_back(reply);
  });
  (void)patient.Text(Label());
  Hang();
  (void)patient.Text(Label());
  (void)patient.Text(Label());
  EXPECT_EQ(heard, (std::vector<Reply>{Reply::kAnswered, Reply::kNoAnswer}));
}

TEST_F(PatientWindowsTest, AWindowThatEndsWhileItIsLookedAtIsGone) {
  sim().FailNextSends(1);
  (void)patient.Press(Button());
  int questions = 0;
  sim().SetMissing([&questions] { return ++questions > 1; });
  EXPECT_EQ(patient.Press(Button()), Reply::kGone);
}

TEST_F(PatientWindowsTest, ComesToTheFrontWhereNothingElseIsThough) {
  sim().FailNextSends(1);
  (void)patient.Press(Button());
  ASSERT_TRUE(patient.Paused(Button()));
  for (const standin::WindowId window : tree().top_level()) tree().SetVisible(window, false);
  ASSERT_EQ(sim().Foreground(), 0u);
  EXPECT_EQ(patient.SetForeground(sim().OwnMainWindow()), 0u);
  EXPECT_EQ(sim().foregrounds(), std::vector{sim().OwnMainWindow()});
}

TEST_F(PatientWindowsTest, NobodyNeedListen) {
  patient.SetListener(nullptr);
  EXPECT_EQ(patient.Text(Label()).value, "TETRA Demodulator *");
}

}  // namespace
}  // namespace corvane::test
