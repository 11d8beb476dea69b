#include "core/bookkeeping.h"

#include "unit/core/core_fixture.h"

namespace corvane {
namespace {

class BookkeepingTest : public CoreTest {
 protected:
  // The group's call, with these heard.
  void Hear(int gssi, const std::vector<std::int32_t>& heard) {
    call.Clear(Call::Clearing::kEnded);
    corvane::Setup setup;
    setup.gssi = gssi;
    call.Accept(setup, "", 0);
    for (const std::int32_t ssi : heard) call.AddHeard(ssi);
  }

  Call call{form};
  Bookkeeping bookkeeping{network, groups, subscribers, clock, call};
};

TEST_F(BookkeepingTest, AnUnknownGroupGetsARecordThatIsFollowed) {
  const std::size_t index = bookkeeping.FindGroupIndex(9001);
  EXPECT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[index].Gssi, 9001);
  EXPECT_EQ(groups[index].Mcc, 262);
  EXPECT_EQ(groups[index].Mnc, 1);
  EXPECT_EQ(groups[index].Label.trimmed(), "");
  EXPECT_EQ(groups[index].Priority, 0);
  EXPECT_TRUE(groups[index].Follow);
}

TEST_F(BookkeepingTest, AKnownGroupIsFoundAgainAndTheFirstRecordWins) {
  AddGroup(9001, "First", true);
  AddGroup(9001, "Second", true);
  EXPECT_EQ(bookkeeping.FindGroupIndex(9001), 0U);
  EXPECT_EQ(groups.size(), 2U);
}

TEST_F(BookkeepingTest, TheSameGroupOnTwoNetworksHasTwoRecords) {
  const std::size_t first = bookkeeping.FindGroupIndex(9001);
  network.CurrentMnc = "2";
  const std::size_t second = bookkeeping.FindGroupIndex(9001);
  EXPECT_NE(first, second);
  groups.SetFollow(second, false);
  groups.SetLabel(second, "Other");
  EXPECT_TRUE(groups[first].Follow);
  EXPECT_EQ(groups[first].Label.trimmed(), "");
}

TEST_F(BookkeepingTest, AnIndexStaysValidWhileTheTableGrows) {
  const std::size_t first = bookkeeping.FindGroupIndex(9001);
  for (int gssi = 1; gssi < 2000; ++gssi) static_cast<void>(bookkeeping.FindGroupIndex(gssi));
  EXPECT_EQ(groups[first].Gssi, 9001);
  EXPECT_EQ(groups.size(), 2000U);
  EXPECT_EQ(groups.highest_index(), 2000U);
}

TEST_F(BookkeepingTest, TheSecondCheckAddsOnlyWhatIsMissing) {
  AddGroup(9001, "Known", true);
  bookkeeping.CheckGroup(9001);
  EXPECT_EQ(groups.size(), 1U);
  bookkeeping.CheckGroup(77);
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[1].Label.trimmed(), "Individual");
  EXPECT_TRUE(groups[1].Follow);
}

TEST_F(BookkeepingTest, AKnownSubscriberShowsWhenItWasLastSeen) {
  AddSubscriber(5010, 9001, "Car 3");
  EXPECT_EQ(bookkeeping.LookupSsiLabel(5010, 9001), "Car 3");
  EXPECT_EQ(form.lblSsiLastSeen.caption.get(), "02/01/2025 03:04:05");
}

TEST_F(BookkeepingTest, AnUnknownSubscriberLeavesTheTimeAlone) {
  form.lblSsiLastSeen.caption = "before";
  EXPECT_EQ(bookkeeping.LookupSsiLabel(5010, 9001), "");
  EXPECT_EQ(form.lblSsiLastSeen.caption.get(), "before");
}

TEST_F(BookkeepingTest, ALabelOfAnotherGroupOrNetworkIsNotShown) {
  AddSubscriber(5010, 9002, "Other group");
  EXPECT_EQ(bookkeeping.LookupSsiLabel(5010, 9001), "");
  network.CurrentMcc = "232";
  EXPECT_EQ(bookkeeping.LookupSsiLabel(5010, 9002), "");
}

TEST_F(BookkeepingTest, TalkersAreFiledUnderTheShownGroup) {
  AddSubscriber(5010, 9001, "Car 3");
  AddGroup(9001, "Fire", true);
  Hear(9001, {5010, 5011});
  bookkeeping.StoreCallSubscribers();
  ASSERT_EQ(subscribers.size(), 2U);
  EXPECT_EQ(subscribers[0].LastSeen, clock.Now());
  EXPECT_EQ(subscribers[0].Label.trimmed(), "Car 3");
  EXPECT_EQ(subscribers[1].Ssi, 5011);
  EXPECT_EQ(subscribers[1].LastGssi, 9001);
  EXPECT_EQ(subscribers[1].LastSeen, clock.Now());
  EXPECT_EQ(subscribers[1].Label.trimmed(), "");
}

TEST_F(BookkeepingTest, ASubscriberOfTwoGroupsHasOneRecordForEach) {
  Hear(9001, {5010});
  bookkeeping.StoreCallSubscribers();
  Hear(9002, {5010});
  bookkeeping.StoreCallSubscribers();
  ASSERT_EQ(subscribers.size(), 2U);
  EXPECT_EQ(subscribers[0].LastGssi, 9001);
  EXPECT_EQ(subscribers[1].LastGssi, 9002);
}

TEST_F(BookkeepingTest, WithoutAGroupNobodyIsFiled) {
  call.AddHeard(5010);
  bookkeeping.StoreCallSubscribers();
  EXPECT_TRUE(subscribers.empty());
}

}  // namespace
}  // namespace corvane
