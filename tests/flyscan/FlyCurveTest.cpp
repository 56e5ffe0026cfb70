#include "geometryAlgo/flyscanAlgo/FlyCurve.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <vector>

#include "geometryAlgo/flyscanAlgo/FlyCurves.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

TEST(TFlyCurve, CloneKeepsTheClassAndSharesTheCurve) {
  TGeLine2D Line({0, 0}, {4, 0});
  const TFlyLine Piece(&Line, 0.25, true, 7, 99);
  const std::unique_ptr<TFlyCurve> Copy = Piece.Clone();
  EXPECT_NE(nullptr, dynamic_cast<TFlyLine*>(Copy.get()));
  EXPECT_EQ(&Line, Copy->GeCurve());
  EXPECT_EQ(0.25, Copy->PathStartParam());
  EXPECT_TRUE(Copy->IsFlyGap());
  EXPECT_EQ(7, Copy->ChannelPort());
  EXPECT_NE(nullptr, dynamic_cast<TFlyCircle*>(TFlyCircle().Clone().get()));
}

TEST(TFlyCurve, ThePathStartsWhereItIsSet) {
  TGeCircularArc2D Circle(TPoint2D(5, 5), 2.0, 0.0, kFullTurn);
  TFlyCircle Piece(&Circle, 0.0, false, 0, 0);
  EXPECT_TRUE(Piece.GetPathStart().Equals({7, 5}));
  Piece.SetPathStart({5, 7});
  EXPECT_TRUE(Piece.GetPathStart().Equals({5, 7}));
  EXPECT_EQ(TPoint2D(5, 5), Piece.Circle2D().Center);
  EXPECT_EQ(2.0, Piece.Circle2D().Radius);
}

TEST(TFlyCurve, RefusesACurveOfTheWrongKindOnAccess) {
  TGeLine2D Line({1, 2}, {4, 6});
  TGeCircularArc2D Circle(TPoint2D(0, 0), 1.0, 0.0, kFullTurn);
  for (TGeCurve2D* const Curve :
       {static_cast<TGeCurve2D*>(&Circle), static_cast<TGeCurve2D*>(nullptr)}) {
    const TFlyLine Piece(Curve, 0.0, false, 0, 0);
    test::ExpectRaises([&] { Piece.GeLine(); }, "FlyLine Create Error!");
    test::ExpectRaises([&] { Piece.Line2D(); }, "FlyLine Create Error!");
  }
  for (TGeCurve2D* const Curve :
       {static_cast<TGeCurve2D*>(&Line), static_cast<TGeCurve2D*>(nullptr)}) {
    const TFlyCircle Piece(Curve, 0.0, false, 0, 0);
    test::ExpectRaises([&] { Piece.GeCircle(); }, "FlyCircle Create Error!");
    test::ExpectRaises([&] { Piece.Circle2D(); }, "FlyCircle Create Error!");
  }
  EXPECT_EQ(TLine2D({1, 2}, {4, 6}), TFlyLine(&Line, 0.0, false, 0, 0).Line2D());
}

TEST(TFlyCurve, APieceWithoutACurveIsNeutral) {
  TFlyCurve Piece;
  Piece.SetPathStart({1, 1});
  EXPECT_EQ(0.0, Piece.PathStartParam());
  EXPECT_EQ(TPoint2D::FZero, Piece.GetPathStart());
  TFlyCurves Pass;
  EXPECT_EQ(TPoint2D::FZero, Pass.StartPoint());
  EXPECT_EQ(TPoint2D::FZero, Pass.EndPoint());
  Pass.Add(std::make_unique<TFlyCurve>());
  Pass.ReverseDir();
  EXPECT_EQ(TPoint2D::FZero, Pass.StartPoint());
  EXPECT_EQ(TPoint2D::FZero, Pass.EndPoint());
}

TEST(TFlyCurves, ReverseDirKeepsWhereEachPieceStartsCutting) {
  TOwningFlyCurves Pass;
  Pass.Add(std::make_unique<TFlyLine>(new TGeLine2D({0, 0}, {4, 0}), 0.0, false, 0, 0));
  Pass.Add(std::make_unique<TFlyCircle>(new TGeCircularArc2D(TPoint2D(6, 0), 2.0, 0.0, kFullTurn),
                                        0.0, false, 0, 0));
  auto Bezier = std::make_unique<TGePolyBezier2D>();
  Bezier->AddBezier({{8, 0}, {9, 1}, {10, -1}, {11, 0}});
  Pass.Add(std::make_unique<TFlyCurve>(Bezier.release(), 0.0, true, 0, 0));
  Pass[1]->SetPathStart({6, 2});
  std::vector<TPoint2D> Starts;
  for (const TFlyCurve* const Piece : Pass) Starts.push_back(Piece->GetPathStart());
  const TPoint2D Start = Pass.StartPoint();
  const TPoint2D End = Pass.EndPoint();

  Pass.ReverseDir();
  for (int I = 0; I < 3; ++I) {
    EXPECT_TRUE(Pass[2 - I]->GetPathStart().Equals(Starts[static_cast<std::size_t>(I)]));
  }
  EXPECT_TRUE(Pass.StartPoint().Equals(End));
  EXPECT_TRUE(Pass.EndPoint().Equals(Start));
  EXPECT_TRUE(Pass[2]->GeCurve()->StartPoint().Equals({4, 0}));

  Pass.ReverseDir();
  for (int I = 0; I < 3; ++I) {
    EXPECT_TRUE(Pass[I]->GetPathStart().Equals(Starts[static_cast<std::size_t>(I)]));
  }
  EXPECT_TRUE(Pass.StartPoint().Equals(Start));
}

/// A line that counts how often one of its kind is freed.
class TCountedLine : public TGeLine2D {
 public:
  explicit TCountedLine(int& Freed) : TGeLine2D({0, 0}, {1, 0}), FFreed(Freed) {}
  ~TCountedLine() override { ++FFreed; }

 private:
  int& FFreed;
};

TEST(TOwningFlyCurves, FreesTheCurvesWithTheirPieces) {
  int Freed = 0;
  {
    TOwningFlyCurves Pass;
    for (int I = 0; I < 4; ++I) {
      Pass.Add(std::make_unique<TFlyLine>(new TCountedLine(Freed), 0.0, false, 0, 0));
    }
    Pass.Delete(0);
    EXPECT_EQ(1, Freed);
    const std::unique_ptr<TFlyCurve> Taken = Pass.Extract(0);
    const std::unique_ptr<TGeCurve2D> Curve(Taken->GeCurve());
    EXPECT_EQ(1, Freed);
    TOwningFlyCurves Other(std::move(Pass));
    TOwningFlyCurves Third;
    Third.Add(std::make_unique<TFlyLine>(new TCountedLine(Freed), 0.0, false, 0, 0));
    Third = std::move(Other);
    TOwningFlyCurves& Same = Third;
    Third = std::move(Same);
    EXPECT_EQ(2, Freed);  // the one that was replaced
  }
  EXPECT_EQ(5, Freed);
  static_assert(!std::is_constructible_v<TFlyCurves, TOwningFlyCurves>);  // would leak the curves
}

}  // namespace
}  // namespace tarnalgo
