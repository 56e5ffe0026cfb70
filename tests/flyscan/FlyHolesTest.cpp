#include "geometryAlgo/flyscanAlgo/FlyHoles.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "host/Cadtypes/Constants.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

/// A round hole that counts how often one of its kind is freed.
class TCountedHole : public TGeCircularArc2D {
 public:
  TCountedHole(const TPoint2D& Center, int& Freed)
      : TGeCircularArc2D(Center, 1.0, 0.0, kFullTurn), FFreed(&Freed) {}
  ~TCountedHole() override { ++*FFreed; }

 private:
  int* FFreed;
};

TEST(TFlyHoles, OwnsItsHolesUntilTheyAreRemoved) {
  int Freed = 0;
  {
    TFlyHoles Holes;
    TGeCurve2D* const First = Holes.AddHole(std::make_unique<TCountedHole>(TPoint2D(0, 0), Freed));
    Holes.AddHole(std::make_unique<TCountedHole>(TPoint2D(10, 0), Freed));
    EXPECT_EQ(First, Holes.AddHole(First));  // present: nothing happens
    EXPECT_EQ(2, Holes.Count());
    EXPECT_EQ(2, Holes.RTree().Count());

    const TGeCircularArc2D Stranger(TPoint2D(0, 0), 1.0, 0.0, kFullTurn);
    Holes.RemoveHole(&Stranger);
    Holes.RemoveHole(nullptr);
    EXPECT_EQ(nullptr, Holes.AddHole(nullptr));
    EXPECT_EQ(0, Freed);

    Holes.RemoveHole(First);
    EXPECT_EQ(1, Freed);
    EXPECT_FALSE(Holes.Contains(First));
    EXPECT_EQ(1, Holes.RTree().Count());
  }
  EXPECT_EQ(2, Freed);
}

TEST(TFlyHoles, FindsHolesByTheirBoxes) {
  TFlyHoles Holes;
  std::vector<TGeCurve2D*> Added;
  for (int I = 0; I < 100; ++I) {
    Added.push_back(Holes.AddHole(
        std::make_unique<TGeCircularArc2D>(TPoint2D(I * 10.0, 0), 1.0, 0.0, kFullTurn)));
  }
  Holes.AddHole(std::make_unique<TGePolyline2D>(0));  // without a point: never found
  EXPECT_EQ((std::vector<TGeCurve2D*>{Added[42]}),
            Holes.RTree().Search(TVRect2D({421, 1}, {423, 5}), kLinearTolerance));
  EXPECT_TRUE(Holes.RTree().Search(TVRect2D({421.00001, 0}, {423, 5}), kLinearTolerance).empty());
  Holes.RemoveHole(Added[42]);
  EXPECT_TRUE(Holes.RTree().Search(TVRect2D({421, 1}, {423, 5}), kLinearTolerance).empty());
}

TEST(TGeToDataDic, RefusesAKeyItHoldsAndKeepsIt) {
  int Freed = 0;
  int Data = 7;
  TGeToDataDic<int> Dic;
  auto* const Key = new TCountedHole(TPoint2D(0, 0), Freed);
  Dic.Add(std::unique_ptr<TGeCurve2D>(Key), &Data);
  test::ExpectRaises<EParamError>([&] { Dic.Add(std::unique_ptr<TGeCurve2D>(Key), &Data); },
                                  "[Error] TGeToDataDic.Add: the key is present already");
  EXPECT_EQ(&Data, Dic.Find(Key));
  EXPECT_EQ(0, Freed);
  Dic.Clear();
  EXPECT_EQ(1, Freed);
  EXPECT_EQ(nullptr, Dic.Find(nullptr));
}

}  // namespace
}  // namespace tarnalgo
