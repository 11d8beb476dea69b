// A user who clicks, types and presses keys at random in the real program while calls run: it must
// neither end nor hang, lose no group and no subscriber, close when asked, and follow calls again.
//
// CORVANE_RANDOM_SECONDS=n goes on for that long, CORVANE_SEED=n begins elsewhere.
#include <array>
#include <chrono>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "base/text.h"
#include "desktop/call_test.h"
#include "desktop/harness/user_input.h"

namespace corvane::desktop {
namespace {

using enum ControlId;

constexpr int kUsualSeconds = 60;
constexpr int kUsualSeed = 20261121;
constexpr const char* kGroups = "TETRA_GSSI.txt";
constexpr const char* kSubscribers = "TETRA_SSI.txt";

int FromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr && std::atoi(text) > 0 ? std::atoi(text) : otherwise;
}

class RandomHandsTest : public CallTest {
 protected:
  int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  // Somewhere inside the window, the menu included. The title bar is the system's.
  void ClickSomewhere(WindowHandle window) {
    constexpr int kTitleBar = 28;
    constexpr int kBorder = 6;
    const WindowPlace place = PlaceOf(window);
    if (place.width <= 2 * kBorder || place.height <= kTitleBar + kBorder) return;
    const int y = Pick(kTitleBar, place.height - kBorder);
    const int x = Pick(kBorder, place.width - kBorder);
    static constexpr std::array kButtons = {MouseButton::kLeft, MouseButton::kLeft,
                                            MouseButton::kLeft, MouseButton::kRight,
                                            MouseButton::kMiddle};
    HandClickAt(window, x, y, kButtons[static_cast<std::size_t>(Pick(0, 4))]);
    if (Pick(0, 4) == 0) HandClickAt(window, x, y);
  }

  void PressSomething() {
    static constexpr std::array kKeys = {kTabKey,  kReturnKey, kEscapeKey, kEndKey,
                                         kHomeKey, kDownKey,   0x26,       0x20,
                                         0x71,     0x5D,       0x2E,       0x08};
    HandKey(kKeys[static_cast<std::size_t>(Pick(0, static_cast<int>(kKeys.size()) - 1))],
            Pick(0, 5) == 0 ? kShiftKey : 0);
  }

  void DoSomething() {
    const WindowHandle main = Corvane().Window();
    const WindowHandle editor = Corvane().EditorWindow();
    const WindowHandle window = editor != 0 && Pick(0, 1) == 0 ? editor : main;
    switch (Pick(0, 9)) {
      case 0:
        return ChooseMenuItem(main, Number(Pick(0, 2) == 0 ? mnuCompactMode : mnuGSSIEditor));
      case 1:
        return BringToFront(window);
      case 2:
      case 3:
        return PressSomething();
      case 4:
        return HandType("Ab 1");
      default:
        return ClickSomewhere(window);
    }
  }

  std::mt19937 random_;
};

TEST_F(RandomHandsTest, NothingEndsHangsOrGetsLost) {
  const int seed = FromEnvironment("CORVANE_SEED", kUsualSeed);
  const int seconds = FromEnvironment("CORVANE_RANDOM_SECONDS", kUsualSeconds);
  RecordProperty("seed", seed);
  random_.seed(static_cast<unsigned>(seed));
  Folder().Write(kGroups,
                 "9001;262;42;North;3;True\r\n9002;262;42;South;0;True\r\n"
                 "7001;262;7;Elsewhere;1;True\r\n");
  Folder().Write(kSubscribers, "5010;9001;262;42;Alpha;2026-11-14 10:11:12\r\n");
  Begin();
  Do("traffic calls-per-hour=900 groups=9001,9002,9003,9004 carriers=2610,2611 "
     "parties=5010-5030 length=1-8 individual=5 encrypted=5");
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  int actions = 0;
  while (std::chrono::steady_clock::now() < end) {
    DoSomething();
    ++actions;
    (void)WaitFor([] { return false; }, Pick(10, 200));
    ASSERT_TRUE(Corvane().Running()) << "seed " << seed << ", action " << actions;
    ASSERT_TRUE(Corvane().Responds(kAnswerLimit_ms)) << "seed " << seed << ", action " << actions;
    ASSERT_EQ(Corvane().OpenMessageBox(), "") << "seed " << seed << ", action " << actions;
  }
  EXPECT_GT(actions, seconds);
  EXPECT_FALSE(Corvane().InStatusLog("Internal error"));

  Do("traffic off");
  for (int escape = 0; escape < 3; ++escape) HandKey(kEscapeKey);  // an open menu or list
  Close(Corvane().Window());
  Await("the program's end", [&] { return !Corvane().Running(); });
  EXPECT_EQ(Corvane().TheProcess().ExitCode(), 0U);
  for (const char* group : {"9001;262;42;", "9002;262;42;", "7001;262;7;"}) {
    EXPECT_TRUE(Contains(Folder().Read(kGroups), group)) << group;
  }
  EXPECT_TRUE(Contains(Folder().Read(kSubscribers), "5010;9001;262;42;"));

  StartCorvane();
  PressStart();
  AwaitScanning();
  Do("call id=3000 group=9100 party=5010 carrier=2610 slot=2");
  AwaitFollowing(3000);
}

}  // namespace
}  // namespace corvane::desktop
