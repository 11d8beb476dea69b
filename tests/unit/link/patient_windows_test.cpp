#include "link/patient_windows.h"

#include "link/window_text.h"
#include "link_fixture.h"

namespace corvane::test {
namespace {

class PatientWindowsTest : public LinkTest {
 protected:
  void SetUp() override {
    windows.Add(5, 0, kStatic, "MCC:262");
    windows.Add(6, 0, kEdit).lines = {"one", "two"};
    windows.on_hang = [this] { loop.now_ms += 500; };
  }
  PatientWindows patient{windows, loop};
};

TEST_F(PatientWindowsTest, PassesAnswersOn) {
  EXPECT_EQ(GetWindowTextOf(patient, 5), "MCC:262");
  EXPECT_EQ(GetEditLine(patient, 6, 1), "two");
  EXPECT_TRUE(patient.SetText(5, "x").answered);
  EXPECT_EQ(windows.At(5).text, "x");
  EXPECT_FALSE(patient.Paused());
}

TEST_F(PatientWindowsTest, AfterATimeOutNothingIsSentForAWhile) {
  windows.HangAll(true);
  EXPECT_FALSE(patient.Send(5, kBmClick, 0, 0).answered);
  EXPECT_TRUE(patient.Paused());
  const auto sent = windows.messages.size();
  const auto before = loop.now_ms;
  for (int i = 0; i < 100; ++i) {
    EXPECT_FALSE(patient.Send(6, kEmGetLineCount, 0, 0).answered);
    EXPECT_FALSE(patient.SetText(5, "y").answered);
    EXPECT_FALSE(patient.GetText(5, 10).answered);
    EXPECT_FALSE(patient.GetLine(6, 0, 64).answered);
  }
  EXPECT_EQ(windows.messages.size(), sent);
  EXPECT_EQ(loop.now_ms, before);
}

TEST_F(PatientWindowsTest, AnyKindOfMessageThatTimesOutStartsThePause) {
  windows.HangAll(true);
  EXPECT_FALSE(patient.SetText(5, "y").answered);
  EXPECT_TRUE(patient.Paused());
  loop.now_ms += PatientWindows::kPauseMs;
  EXPECT_FALSE(patient.GetText(5, 10).answered);
  EXPECT_TRUE(patient.Paused());
  loop.now_ms += PatientWindows::kPauseMs;
  EXPECT_FALSE(patient.GetLine(6, 0, 64).answered);
  EXPECT_TRUE(patient.Paused());
}

TEST_F(PatientWindowsTest, AsksAgainAfterThePauseAndResumes) {
  windows.HangAll(true);
  (void)patient.Send(5, kBmClick, 0, 0);
  windows.HangAll(false);
  loop.now_ms += PatientWindows::kPauseMs - 1;
  EXPECT_FALSE(patient.Send(5, kBmClick, 0, 0).answered);
  loop.now_ms += 1;
  EXPECT_TRUE(patient.Send(5, kBmClick, 0, 0).answered);
}

TEST_F(PatientWindowsTest, AWindowThatIsGoneStartsNoPause) {
  EXPECT_FALSE(patient.Send(77, kBmClick, 0, 0).answered);
  EXPECT_FALSE(patient.Paused());
  EXPECT_EQ(GetWindowTextOf(patient, 5), "MCC:262");
}

TEST_F(PatientWindowsTest, WhatSendsNoMessageGoesOnDuringThePause) {
  windows.HangAll(true);
  (void)patient.Send(5, kBmClick, 0, 0);
  Placement placement;
  ScreenRect rect;
  EXPECT_TRUE(patient.IsAlive(5));
  EXPECT_TRUE(patient.IsVisible(5));
  EXPECT_EQ(patient.ClassName(5), kStatic);
  EXPECT_TRUE(patient.GetPlacement(5, placement));
  EXPECT_TRUE(patient.GetRect(5, rect));
  int seen = 0;
  patient.EnumTopLevel([&seen](WindowHandle) { return ++seen > 0; });
  EXPECT_EQ(seen, 2);
  EXPECT_EQ(patient.OwnMainWindow(), windows.own);
}

TEST_F(PatientWindowsTest, MovesNoWindowDuringThePause) {
  patient.SetPlacement(5, {});
  EXPECT_EQ(windows.placements.size(), 1u);
  windows.HangAll(true);
  (void)patient.Send(5, kBmClick, 0, 0);
  patient.SetPlacement(5, {});
  EXPECT_EQ(windows.placements.size(), 1u);
}

}  // namespace
}  // namespace corvane::test
