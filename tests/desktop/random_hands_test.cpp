// A user who clicks, types and presses keys at random in the real program while calls run: it must
// neither end nor hang, lose no group and no subscriber, edit nothing that was not touched, close
// when asked, and follow calls again.
//
// CORVANE_RANDOM_SECONDS=n goes on for that long in each case, CORVANE_SEED=n begins elsewhere.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <random>
#include <sstream>
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
constexpr int kSetRightEvery = 100;
constexpr const char* kGroups = "TETRA_GSSI.txt";
constexpr const char* kSubscribers = "TETRA_SSI.txt";
constexpr const char* kKnownGroups =
    "9001;262;42;North;3;True\r\n9002;262;42;South;0;False\r\n7001;262;7;Elsewhere;1;True\r\n";
constexpr const char* kKnownSubscribers =
    "5010;9001;262;42;Alpha;2026-11-14 10:11:12\r\n5010;9002;262;42;Beta;2026-11-14 10:11:13\r\n";

int FromEnvironment(const char* name, int otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr && std::atoi(text) > 0 ? std::atoi(text) : otherwise;
}

using Fields = std::vector<std::string>;

// The lines of a list file, cut at the semicolons.
std::vector<Fields> ListOf(const std::string& file) {
  std::vector<Fields> lines;
  std::istringstream text(file);
  for (std::string line; std::getline(text, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Fields fields;
    std::istringstream parts(line);
    for (std::string field; std::getline(parts, field, ';');) fields.push_back(field);
    lines.push_back(std::move(fields));
  }
  return lines;
}

class RandomHandsTest : public CallTest {
 protected:
  // What the hands leave alone.
  enum class Hands { kTouchEverything, kOnlyLook };

  int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  void BeginWithCalls() {
    random_.seed(static_cast<unsigned>(seed_));
    RecordProperty("seed", seed_);
    Folder().Write(kGroups, kKnownGroups);
    Folder().Write(kSubscribers, kKnownSubscribers);
    Begin();
    Do("traffic calls-per-hour=900 groups=9001-9060 carriers=2610,2611 "
       "parties=5010-5030 length=1-8 individual=5 encrypted=5");
  }

  // Where the editor shows what stores an edit when it is clicked. It opens at the same place
  // every time: nothing here moves a window.
  void LearnWhereEditsAreMade() {
    ChooseMenuItem(Corvane().Window(), Number(mnuGSSIEditor));
    Await("the editor", [&] { return Visible(Corvane().EditorWindow()); });
    for (const ControlId id : {cmdUpdateGSSI, lstGSSI_Lockouts}) {
      edits_.push_back(PlaceOf(Child(Corvane().EditorWindow(), Number(id))));
    }
    Close(Corvane().EditorWindow());
    Await("the editor's end", [&] { return Corvane().EditorWindow() == 0; });
  }

  // True also while the editor is not there: it can come before the click arrives.
  [[nodiscard]] bool MayEdit(int x, int y) const {
    return std::any_of(edits_.begin(), edits_.end(), [=](const WindowPlace& place) {
      return x >= place.left && x < place.left + place.width && y >= place.top &&
             y < place.top + place.height;
    });
  }

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
    const MouseButton button = kButtons[static_cast<std::size_t>(Pick(0, 4))];
    const bool twice = Pick(0, 4) == 0;
    if (hands_ == Hands::kOnlyLook && MayEdit(place.left + x, place.top + y)) return;
    HandClickAt(window, x, y, button);
    if (twice) HandDoubleClickAt(window, x, y);
  }

  // Enter and the space bar store what stands in the editor's boxes.
  void PressSomething() {
    static constexpr std::array kKeys = {kTabKey,    kReturnKey,      kEscapeKey, kEndKey,
                                         kHomeKey,   kDownKey,        kUpKey,     kSpaceKey,
                                         kF2Key,     kContextMenuKey, kDeleteKey, kBackspaceKey,
                                         kPageUpKey, kPageDownKey};
    const int key = kKeys[static_cast<std::size_t>(Pick(0, static_cast<int>(kKeys.size()) - 1))];
    const int with = Pick(0, 5) == 0 ? kShiftKey : 0;
    if (hands_ == Hands::kOnlyLook && (key == kReturnKey || key == kSpaceKey)) return;
    HandKey(key, with);
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
        return HandType(hands_ == Hands::kOnlyLook ? "Ab1" : "Ab 1");
      default:
        return ClickSomewhere(window);
    }
  }

  // What is played stays within reach, whatever the hands have chosen: they are to meet calls.
  void SetRight() {
    ChooseInCombo(Corvane().Control(cboBaseFrequency), 2);
    Click(Corvane().Control(optOffsets_3));
    (void)LeaveAtOnce(Corvane().Control(txtParkCarrier), "2604");
    const WindowHandle log_mode = Corvane().Control(chkCreateCallActivityCvsFile);
    if (Checked(log_mode)) Click(log_mode);
    DoubleClick(Corvane().Control(lblChangeToCcFrequency));
  }

  // How often a voice channel was tuned to.
  [[nodiscard]] int CallsFollowed() {
    const std::vector<std::string> sent = Commands();
    return static_cast<int>(std::count_if(sent.begin(), sent.end(), [](const std::string& command) {
      return Contains(command, "\"AudioGain\"") && !Contains(command, "\"Value\": 25}");
    }));
  }

  // One page of settings, and the window's parts as compact mode has them.
  [[nodiscard]] bool IsWhole() {
    const bool compact = TextOf(Corvane().Window()) == "Corva v0.99.6s";
    int pages = 0;
    for (const ControlId page :
         {fraPresets, fraRecordingOptions, fraOptions, fraLoggingOptions, fraCheckboxDetection}) {
      pages += Visible(Corvane().Control(page)) ? 1 : 0;
    }
    return pages == (compact ? 0 : 1) && Visible(Corvane().Control(fraWinsock)) == !compact &&
           Visible(Corvane().Control(lstCallLog)) == !compact &&
           Visible(Corvane().Control(fraCallDetails));
  }

  void PlayAround(Hands hands) {
    hands_ = hands;
    const int seconds = FromEnvironment("CORVANE_RANDOM_SECONDS", kUsualSeconds);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    int actions = 0;
    while (std::chrono::steady_clock::now() < end) {
      if (actions % kSetRightEvery == 0) SetRight();
      DoSomething();
      ++actions;
      (void)WaitFor([] { return false; }, Pick(10, 200));
      const std::string now =
          "seed " + std::to_string(seed_) + ", action " + std::to_string(actions);
      ASSERT_TRUE(Corvane().Running()) << now;
      ASSERT_TRUE(Corvane().Responds(kAnswerLimit_ms)) << now;
      ASSERT_EQ(Corvane().OpenMessageBox(), "") << now;
      ASSERT_TRUE(WaitFor([this] { return IsWhole(); }, kAnswerLimit_ms)) << now;
    }
    EXPECT_GT(actions, seconds);
    EXPECT_FALSE(Corvane().InStatusLog("Internal error"));
    Do("traffic off");
    for (int escape = 0; escape < 3; ++escape) HandKey(kEscapeKey);  // an open menu or list
    EXPECT_GT(CallsFollowed(), seconds / 60);
    // The poll cycle goes on: it makes a connection that was cut anew.
    const std::size_t connections = Sdr().Count("accept");
    Do("cut");
    Await("the connection made anew", [&] { return Sdr().Count("accept") > connections; });
  }

  void CloseCorvane() {
    Close(Corvane().Window());
    Await("the program's end", [&] { return !Corvane().Running(); });
    EXPECT_EQ(Corvane().TheProcess().ExitCode(), 0U);
  }

  const int seed_ = FromEnvironment("CORVANE_SEED", kUsualSeed);

 private:
  std::mt19937 random_;
  Hands hands_ = Hands::kTouchEverything;
  std::vector<WindowPlace> edits_;
};

TEST_F(RandomHandsTest, NothingEndsHangsOrGetsLost) {
  BeginWithCalls();
  PlayAround(Hands::kTouchEverything);
  CloseCorvane();
  for (const char* group : {"9001;262;42;", "9002;262;42;", "7001;262;7;"}) {
    EXPECT_TRUE(Contains(Folder().Read(kGroups), group)) << group;
  }
  for (const char* subscriber : {"5010;9001;262;42;", "5010;9002;262;42;"}) {
    EXPECT_TRUE(Contains(Folder().Read(kSubscribers), subscriber)) << subscriber;
  }

  StartCorvane();
  PressStart();
  AwaitScanning();
  Do("call id=3000 group=9100 party=5010 carrier=2610 slot=2");
  AwaitFollowing(3000);
}

// Whatever they open, choose, type and hold: what they do not store stays as it was.
TEST_F(RandomHandsTest, HandsThatStoreNothingEditNothing) {
  BeginWithCalls();
  LearnWhereEditsAreMade();
  PlayAround(Hands::kOnlyLook);
  CloseCorvane();
  const std::string groups = Folder().Read(kGroups);
  for (const char* known : {"9001;262;42;North;3;True\r\n", "9002;262;42;South;0;False\r\n",
                            "7001;262;7;Elsewhere;1;True\r\n"}) {
    EXPECT_TRUE(Contains(groups, known)) << known;
  }
  for (const Fields& group : ListOf(groups)) {
    ASSERT_EQ(group.size(), 6U);
    if (group[0] == "9001" || group[0] == "9002" || group[0] == "7001") continue;
    EXPECT_EQ((Fields{group[3], group[4], group[5]}), (Fields{"", "0", "True"})) << group[0];
  }
  int labelled = 0;
  for (const Fields& subscriber : ListOf(Folder().Read(kSubscribers))) {
    ASSERT_EQ(subscriber.size(), 6U);
    if (subscriber[4].empty()) continue;
    ++labelled;
    EXPECT_EQ(subscriber[0], "5010");
    EXPECT_EQ(subscriber[4], subscriber[1] == "9001" ? "Alpha" : "Beta");
  }
  EXPECT_EQ(labelled, 2);
}

}  // namespace
}  // namespace corvane::desktop
