#include "link/network_info.h"

#include "link_fixture.h"

namespace corvane::test {
namespace {

class NetworkInfoTest : public LinkTest {
 protected:
  void SetUp() override {
    AddSdr();
    AddNetworkInfo();
    FillHandles();
    windows.At(kInfoEdit).lines = {"first", "second", ""};
  }
  NetworkInfo box{context};
};

TEST_F(NetworkInfoTest, CountsAndReadsLinesOfTheBoxAtIndex14) {
  EXPECT_EQ(box.Identity(), kInfoEdit);
  EXPECT_EQ(box.LineCount(), 3);
  EXPECT_EQ(windows.messages.back(), (FakeWindows::Message{kInfoEdit, 186, 0, 0, ""}));
  EXPECT_EQ(box.Line(1), "second");
  EXPECT_EQ(box.Line(-1), "");
}

TEST_F(NetworkInfoTest, ABoxThatGivesNoAnswerHasNoLinesAndTakesNone) {
  windows.At(kInfoEdit).hung = true;
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), std::nullopt);
}

TEST_F(NetworkInfoTest, ABoxThatIsGoneGivesNoAnswer) {
  windows.Destroy(kInfoWindow);
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), std::nullopt);
}

TEST_F(NetworkInfoTest, WithoutABoxNothingIsSent) {
  context.handles.Clear();
  EXPECT_EQ(box.Identity(), 0u);
  EXPECT_EQ(box.LineCount(), 0);
  EXPECT_EQ(box.Line(0), "");
  box.Clear();
  EXPECT_TRUE(windows.messages.empty());
}

TEST_F(NetworkInfoTest, ClearsTheBoxWithAnEmptyText) {
  box.Clear();
  EXPECT_EQ(windows.messages.back(), (FakeWindows::Message{kInfoEdit, 12, 0, 0, ""}));
  EXPECT_EQ(box.LineCount(), 1);
}

TEST_F(NetworkInfoTest, AnotherBoxHasAnotherIdentity) {
  context.handles[SdrRole::kNetworkInfoEdit] = 555;
  EXPECT_EQ(box.Identity(), 555u);
}

}  // namespace
}  // namespace corvane::test
