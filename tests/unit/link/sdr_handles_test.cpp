#include "link/sdr_handles.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(SdrHandlesTest, RolesStandAtTheirIndexes) {
  const std::pair<SdrRole, std::size_t> expected[] = {{SdrRole::kMainWindow, 0},
                                                      {SdrRole::kNetRemoteHeader, 2},
                                                      {SdrRole::kNetworkButton, 3},
                                                      {SdrRole::kPortBox, 4},
                                                      {SdrRole::kTetraHeader, 5},
                                                      {SdrRole::kDemodulatorBox, 6},
                                                      {SdrRole::kAutoBox, 7},
                                                      {SdrRole::kTimeslot1, 8},
                                                      {SdrRole::kTimeslot2, 9},
                                                      {SdrRole::kTimeslot3, 10},
                                                      {SdrRole::kTimeslot4, 11},
                                                      {SdrRole::kNetInfoButton, 12},
                                                      {SdrRole::kNetworkInfoWindow, 13},
                                                      {SdrRole::kNetworkInfoEdit, 14},
                                                      {SdrRole::kMccLabel, 15},
                                                      {SdrRole::kMncLabel, 16},
                                                      {SdrRole::kLaLabel, 17}};
  for (const auto& [role, index] : expected) EXPECT_EQ(static_cast<std::size_t>(role), index);
}

TEST(SdrHandlesTest, IsEmptyAtFirstAndAfterClear) {
  SdrHandles handles;
  EXPECT_EQ(handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 0);
  handles[SdrRole::kMainWindow] = 1;
  handles[SdrRole::kLaLabel] = 2;
  EXPECT_EQ(handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 2);
  handles.Clear();
  EXPECT_EQ(handles.CountSet(SdrRole::kMainWindow, SdrRole::kLaLabel), 0);
}

TEST(SdrHandlesTest, TimeslotsOneToFourAndNoOther) {
  SdrHandles handles;
  handles[SdrRole::kAutoBox] = 7;
  handles[SdrRole::kTimeslot1] = 8;
  handles[SdrRole::kTimeslot4] = 11;
  handles[SdrRole::kNetInfoButton] = 12;
  EXPECT_EQ(handles.Timeslot(1), 8u);
  EXPECT_EQ(handles.Timeslot(4), 11u);
  EXPECT_EQ(handles.Timeslot(0), 0u);
  EXPECT_EQ(handles.Timeslot(5), 0u);
  EXPECT_EQ(handles.Timeslot(-1), 0u);
}

}  // namespace
}  // namespace corvane
