#include "geometryAlgo/flyscanAlgo/SegmentGroups.h"

#include <gtest/gtest.h>

#include <unordered_map>
#include <vector>

namespace tarnalgo {
namespace {

TEST(TSegmentGroups, InterceptsWithinTheBandKeepTheirOrder) {
  TLinearSegmentList Runs[] = {{0.0, 5.0}, {0.0, 1.0 + 9e-7}, {0.0, -2.0}, {0.0, 1.0}};
  TSegmentGroups Groups;
  for (TLinearSegmentList& Run : Runs) Groups.Add(&Run);
  Groups.SortByIntercept();
  EXPECT_EQ((std::vector<TLinearSegmentList*>{&Runs[2], &Runs[1], &Runs[3], &Runs[0]}),
            std::vector<TLinearSegmentList*>(Groups.begin(), Groups.end()));
  EXPECT_EQ(1, TSegmentGroups::CompareIntercept({0.0, 1.0 + 2e-6}, {0.0, 1.0}));
  EXPECT_EQ(-1, TSegmentGroups::CompareIntercept({0.0, 1.0}, {0.0, 1.0 + 2e-6}));
}

TEST(TGroupKey, GroupsByChannelAndTheBitsOfTheAngle) {
  std::unordered_map<TGroupKey, TSegmentGroups> Groups;
  Groups[{1, 0.0}];
  Groups[{1, -0.0}];
  Groups[{2, 0.0}];
  Groups[{1, 1e-12}];
  Groups[{1, 1e-12}];
  EXPECT_EQ(3u, Groups.size());
}

}  // namespace
}  // namespace tarnalgo
