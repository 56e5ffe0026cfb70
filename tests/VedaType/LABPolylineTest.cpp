#include "geometryAlgo/VedaType/LABPolyline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

constexpr double kHalfTurn = 1.0;  // bulge

/// A slot 10 long and 4 wide with round ends, counter-clockwise.
TLABPolyline Slot() {
  return {{{0, 0}, {10, 0}},
          {{10, 0}, {10, 4}, {10, 2}, kHalfTurn},
          {{10, 4}, {0, 4}},
          {{0, 4}, {0, 0}, {0, 2}, kHalfTurn}};
}

/// Any mixture of segments through points of a small grid or of the plane.
TLABPolyline RandomChain(std::mt19937& Random, bool OnGrid) {
  const auto Point = [&] {
    return OnGrid ? test::RandomGridPoint(Random, -4, 4) : test::RandomPoint(Random, -5, 5);
  };
  TLABPolyline Chain;
  TPoint2D Last = Point();
  for (int I = test::RandomInt(Random, 1, 7); I > 0; --I) {
    const TPoint2D Next = Point();
    const int Kind = test::RandomInt(Random, 0, 3);
    if (Kind == 1 && !Next.Equals(Last)) {
      const double Bulge = test::RandomDouble(Random, 0.1, 2) * (I % 2 == 0 ? 1 : -1);
      Chain.Add({Last, Next, TVArc2D(Last, Next, Bulge).Center, Bulge});
    } else if (Kind == 2) {
      const TPoint2D Control = Point();
      Chain.Add({Last, Control, Point(), Next});
    } else if (Kind == 3) {
      Chain.Add({Last, Last, Next, I % 2 == 0 ? kCircleBulge : -kCircleBulge});
    } else {
      Chain.Add({Last, Next});
    }
    Last = Chain.Last().P4;
  }
  return Chain;
}

TEST(TLABPolyline, AddMovesAStartThatIsApart) {
  const struct {
    double Gap;
    double Start;
  } Cases[] = {{0.5, 1.0}, {5e-7, 1 + 5e-7}, {2e-6, 1.0}};
  for (const auto& Case : Cases) {
    TLABPolyline Chain{{{0, 0}, {1, 0}}};
    Chain.Add({{1 + Case.Gap, 0}, {5, 0}});
    EXPECT_EQ(TPoint2D(Case.Start, 0), Chain[1].P1);
  }
  TLABPolyline Chain{{{0, 0}, {1, 0}}};
  Chain.Insert(1, {{3, 0}, {5, 0}});
  EXPECT_EQ(TPoint2D(3, 0), Chain[1].P1) << "inserted as it is";
  Chain.AddRange(Chain);
  EXPECT_EQ(4, Chain.Count());
  EXPECT_THROW(Chain.Delete(4), EParamError);
}

// Takes minutes when every range moves what is already there.
TEST(TLABPolyline, GrowsByManySmallRangesInLinearTime) {
  constexpr int kRanges = 100000;
  const TLABPolyline Step{{{0, 0}, {1, 0}}};
  TLABPolyline Chain;
  for (int I = 0; I < kRanges; ++I) Chain.AddRange(Step);
  EXPECT_EQ(Chain.Count(), kRanges);
}

TEST(TLABPolyline, MeasuresOfASlotAreExact) {
  const TLABPolyline Chain = Slot();
  EXPECT_DOUBLE_EQ(40 + 4 * kPi, Chain.Area());
  EXPECT_TRUE(Chain.BoundBox().SameAs({-2, 12, 4, 0}, 1e-15));
  EXPECT_TRUE(Chain.Gravity().Equals({5, 2}, 1e-15));
  EXPECT_FALSE(Chain.GetIsClockwise());
  const TLABPolyline HalfDisc{{{3, 0}, {-3, 0}, {0, 0}, kHalfTurn}};  // joined by its diameter
  EXPECT_DOUBLE_EQ(4.5 * kPi, HalfDisc.Area());
  EXPECT_TRUE(HalfDisc.Gravity().Equals({0, 4 / kPi}, 1e-14));
  const TLABPolyline Arch{{{0, 0}, {0, 4}, {6, 4}, {6, 0}}};
  // With P1 in the origin (3·P2×P3 + 3·P2×P4 + 6·P3×P4) / 20.
  EXPECT_DOUBLE_EQ(-(72 + 72 + 144) / 20.0, Arch.Area());
}

// A fine sample has no arcs and no Beziers to go wrong with.
TEST(TLABPolyline, RegionAgreesWithAFineSample) {
  std::mt19937 Random(31);
  for (int Round = 0; Round < 300; ++Round) {
    TLABPolyline Chain = RandomChain(Random, Round % 2 == 0);
    // The sample of a straight Bezier is its chord, whatever it overshoots.
    for (int I = 0; I < Chain.Count(); ++I) {
      if (Chain[I].IsLine()) Chain.Replace(I, TLABSegline(Chain[I].ToLine()));
    }
    SCOPED_TRACE(Chain.ToString());
    TVPolyline2D Ring = Chain.Sample(1e-6);
    EXPECT_NEAR(Ring.Area(), Chain.Area(), 1e-4);
    EXPECT_TRUE(Ring.BoundBox().SameAs(Chain.BoundBox(), 1e-5));
    if (std::abs(Chain.Area()) > 1.0) {
      const TPoint2D Moment = Chain.Gravity() * Chain.Area();
      EXPECT_TRUE(Moment.Equals(Ring.Gravity() * Ring.Area(), 1e-2));
    }
    Ring.Add(Ring.First());
    for (int I = 0; I < 40; ++I) {
      const TPoint2D P =
          I % 2 == 0 ? test::RandomGridPoint(Random, -5, 5) : test::RandomPoint(Random, -5, 5);
      const double Distance = Ring.DistTo(P);
      if (Distance > 1e-7 && Distance < 3e-6) continue;  // nearer than the sample can tell
      EXPECT_EQ(Ring.RelationWithPoint(P, 1e-7), Chain.RelationWithPoint(P)) << P.X << ", " << P.Y;
    }
    for (const TLABSegline& Seg : Chain) {
      EXPECT_EQ(srOn, Chain.RelationWithPoint(Seg.P1));
      EXPECT_EQ(srOn, Chain.RelationWithPoint(Seg.PointByParam(0.37)));
    }
  }
}

TEST(TLABPolyline, ChangesReachWhatWasWorkedOut) {
  TLABPolyline Chain = Slot();
  EXPECT_EQ(srIn, Chain.RelationWithPoint({5, 2}));
  const TLABPolyline Copy = Chain;
  Chain.Translate({100, 0});
  EXPECT_EQ(srOut, Chain.RelationWithPoint({5, 2}));
  EXPECT_EQ(srIn, Copy.RelationWithPoint({5, 2}));
  EXPECT_TRUE(Chain.SampleWithoutClone().First().Equals({100, 0}));
  EXPECT_EQ(&Chain.SampleWithoutClone(), &Chain.SampleWithoutClone());
  Chain.Clear();
  EXPECT_TRUE(Chain.Sample().IsEmpty());
  EXPECT_EQ(srOut, Chain.RelationWithPoint({105, 2}));
}

TEST(TLABPolyline, RoundTripsThroughPolylinesAndHostCurves) {
  const TVPolyline2D Box(TVRect2D({0, 0}, {3, 2}));
  const TLABPolyline Chain(Box);
  EXPECT_TRUE(Chain.IsClosed());
  EXPECT_EQ(Box.Points(), Chain.Sample().Points());
  EXPECT_TRUE(TLABPolyline(static_cast<const TVPolyline2D*>(nullptr)).IsEmpty());
  TLABPolyline Reversed = Slot();
  Reversed.SetIsClockwise(true);
  EXPECT_DOUBLE_EQ(-Slot().Area(), Reversed.Area());
  const auto Curve = Reversed.ToGeCurve2D();
  EXPECT_TRUE(Curve->IsClosed());
  EXPECT_NEAR(20 + 4 * kPi, Curve->CurveLength(), 1e-12);
  std::mt19937 Random(5);
  for (int Round = 0; Round < 200; ++Round) {
    const TLABPolyline Drawn = RandomChain(Random, Round % 2 == 0);
    const TLABPolyline Back(*Drawn.ToGeCurve2D());
    ASSERT_EQ(Drawn.Count(), Back.Count()) << Drawn.ToString();
    for (int I = 0; I < Back.Count(); ++I) {
      EXPECT_EQ(Drawn[I].SegType, Back[I].SegType);
      for (const double T : {0.0, 0.3, 1.0}) {
        EXPECT_TRUE(Drawn[I].PointByParam(T).Equals(Back[I].PointByParam(T), 1e-12)) << T;
      }
    }
  }
}

/// A curve class of a host, which the library knows by its virtual operations only.
class THostOutline : public TGeCurve2D {
 public:
  explicit THostOutline(const TLABPolyline& Chain) : FWhole(Chain.ToGeCurve2D()) {}
  THostOutline(const THostOutline& Other) : TGeCurve2D(), FWhole(Other.FWhole->Clone()) {}
  TPoint2D StartPoint() const override { return FWhole->StartPoint(); }
  TPoint2D EndPoint() const override { return FWhole->EndPoint(); }
  double ParamTo() const override { return FWhole->ParamTo(); }
  TPoint2D PointAtParam(double T) const override { return FWhole->PointAtParam(T); }
  double NearestParam(const TPoint2D& P, double& Distance) const override {
    return FWhole->NearestParam(P, Distance);
  }
  void Reverse() override { FWhole->Reverse(); }
  TRect2D GetBoundBox() const override { return FWhole->GetBoundBox(); }
  double CurveLength() const override { return FWhole->CurveLength(); }
  void AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const override {
    FWhole->AppendSamples(ChordEps, Points);
  }
  void AppendPieces(std::vector<TCurvePiece>& Pieces) const override {
    FWhole->AppendPieces(Pieces);
  }

 protected:
  THostOutline* NewClone() const override { return new THostOutline(*this); }

 private:
  std::unique_ptr<TGeCompositeCurve2D> FWhole;
};

TEST(TLABPolyline, TakesCurvesOfAHostByTheirPieces) {
  TLABPolyline Drawn = Slot();
  Drawn.Replace(2, {{10, 4}, {8, 9}, {1, 0}, {0, 4}});
  const TLABPolyline Taken{THostOutline(Drawn)};
  EXPECT_NEAR(Drawn.Area(), Taken.Area(), 1e-12);
  EXPECT_TRUE(Taken.IsClosed(0.0));
}

TEST(TLABPolyline, TakesVerticesWithBulges) {
  const TLWPolyline Vertices{{{0, 0}, 0}, {{10, 0}, kHalfTurn}, {{10, 4}, 0}, {{0, 4}, kHalfTurn}};
  EXPECT_DOUBLE_EQ(Slot().Area(), TLABPolyline(Vertices, true).Area());
  EXPECT_EQ(3, TLABPolyline(Vertices).Count());
  EXPECT_TRUE(TLABPolyline(TLWPolyline{{{1, 1}, 1}}, true).IsEmpty());
  const struct {
    TPoint2D End;
    double Bulge;
    bool IsArc;
  } Cases[] = {{{1, 0}, 2.1e-6, true},
               {{1, 0}, -1.9e-6, false},
               {{1e5, 0}, 1e-10, false},
               {{5e-7, 0}, 1, false},
               {{1, 0}, std::nan(""), false}};
  for (const auto& Case : Cases) {
    const TLABPolyline Chain(TLWPolyline{{{0, 0}, Case.Bulge}, {Case.End, 0}});
    EXPECT_EQ(Case.IsArc ? stArc : stLine, Chain.First().SegType) << Case.Bulge;
  }
  // An arc of the host whose ends coincide is a circle or nothing, as its sweep says.
  EXPECT_TRUE(TLABSegline(TArc2D({0, 0}, 2, 1, 1e-7 - kFullTurn)).IsCircle());
  EXPECT_TRUE(TLABSegline(TArc2D({0, 0}, 2, 1, 1e-7)).IsPoint());
  EXPECT_FALSE(TLABPolyline({{{0, 0}, {0, 0}}, {{5, 5}, {5, 5}}}).IsPoint());
}

TEST(TLABPolyline, TangentsAtVertices) {
  const TLABPolyline Ring = Slot();
  EXPECT_TRUE(Ring.LeftTangentVector(0).Normal().Equals({1, 0}, 1e-12)) << "round the joint";
  EXPECT_TRUE(Ring.RightTangentVector(0).Equals({10, 0}));
  EXPECT_TRUE(Ring.LeftTangentVector(2).Normal().Equals({-1, 0}, 1e-12));
  const TLABPolyline Open{{{0, 0}, {1, 0}}, {{1, 0}, {1, 0}}, {{1, 0}, {1, 0}, {1, 3}, {4, 4}}};
  EXPECT_TRUE(Open.LeftTangentVector(2).Equals({1, 0})) << "past the point";
  EXPECT_TRUE(Open.RightTangentVector(1).Normal().Equals({0, 1})) << "control on the end";
  const TLABPolyline Arriving{{{4, 4}, {1, 3}, {0, 0}, {0, 0}}};
  EXPECT_TRUE(Arriving.LeftTangentVector(1).Normal().Equals(TPoint2D(-1, -3).Normal()));
  const TLABPolyline Ended{{{0, 0}, {0, 0}}, {{0, 0}, {1, 0}}, {{1, 0}, {1, 0}}};
  EXPECT_EQ(TPoint2D::FZero, Ended.LeftTangentVector(1)) << "no way there";
  EXPECT_EQ(TPoint2D::FZero, Ended.RightTangentVector(2)) << "no way on";
  const TLABPolyline Point{{{1, 1}, {1, 1}}};
  const struct {
    const TLABPolyline& Chain;
    int Index;
    const char* Left;  // nothing where there is a tangent
    const char* Right;
  } Cases[] = {{Ring, 4, "参数不在作用域内", "参数不在作用域内"},
               {Open, -1, "参数不在作用域内", "参数不在作用域内"},
               {TLABPolyline(), 0, "参数不在作用域内", "参数不在作用域内"},
               {Point, 0, "混合多段线为一个点", "混合多段线为一个点"},
               {Open, 0, "不封闭混合多段线起点没有左切向量", nullptr},
               {Open, 3, nullptr, "不封闭混合多段线终点没有右切向量"}};
  for (const auto& Case : Cases) {
    if (Case.Left != nullptr) {
      test::ExpectRaises([&] { Case.Chain.LeftTangentVector(Case.Index); },
                         std::string("[Error] TLABPolyline.LeftTangentVector: ") + Case.Left);
    }
    if (Case.Right != nullptr) {
      test::ExpectRaises([&] { Case.Chain.RightTangentVector(Case.Index); },
                         std::string("[Error] TLABPolyline.RightTangentVector: ") + Case.Right);
    }
  }
  EXPECT_TRUE(Open.LeftTangentVector(3).IsParallelTo({3, 1}));
}

// A dense scan of a corner: no step of it counts, all together are two lines.
TEST(TLABPolyline, StepsTooShortToCountAddUp) {
  TLABPolyline Scan{{{-1, 1}, {0, 0}, {0, 1}, kHalfTurn}};
  for (int I = 0; I < 20000; ++I) {
    const auto At = [](int Step) {
      return TPoint2D(std::min(Step, 10000) * 8e-7, std::max(Step - 10000, 0) * 8e-7);
    };
    Scan.Add({At(I), At(I + 1)});
  }
  EXPECT_TRUE(Scan.RightTangentVector(5000).IsParallelTo({1, 0}));
  EXPECT_TRUE(Scan.LeftTangentVector(20001).IsParallelTo({0, 1}));
  TLABPolyline Ring = Scan;
  Ring.Add({Scan.Last().P4, {-1, 1 + 9e-7}});
  Ring.Add({{-1, 1 + 9e-7}, {-1, 1 + 2e-7}});
  for (TLABPolyline* const Chain : {&Scan, &Ring}) {
    const TPoint2D End = Chain->Last().P4;
    const bool WasClosed = Chain->IsClosed();
    Chain->CollinearSmooth();
    ASSERT_EQ(WasClosed ? 4 : 3, Chain->Count());
    EXPECT_EQ(WasClosed, Chain->IsClosed());
    EXPECT_TRUE((*Chain)[1].P4.Equals({8e-3, 0}, 2e-6));
    EXPECT_EQ(End, Chain->Last().P4);
  }
}

TEST(TLABPolyline, SmoothingJoinsLinesAndKeepsCurves) {
  TLABPolyline Chain{{{5, 0}, {10, 0}},
                     {{10, 0}, {10, 4}, {10, 2}, kHalfTurn},
                     {{10, 4}, {6, 4}},
                     {{6, 4}, {6, 4}},
                     {{6, 4}, {4, 4}, {2, 4}, {0, 4}},
                     {{0, 4}, {0, 0}, {0, 2}, kHalfTurn},
                     {{0, 0}, {2, 5e-7}},
                     {{2, 5e-7}, {5, 0}}};
  const double Area = Chain.Area();
  TLABPolyline Merged = Chain;
  Merged.MergeCollinearLines();
  EXPECT_EQ(5, Merged.Count()) << "the bottom, two arcs, the Bezier, the other half of the top";
  Chain.CollinearSmooth();
  EXPECT_EQ(4, Chain.Count());
  EXPECT_TRUE(Chain.IsClosed(0.0));
  EXPECT_NEAR(Area, Chain.Area(), 1e-5);
  EXPECT_EQ(2u, Chain.GetLines().size());
  TLABPolyline BackAndForth{{{0, 0}, {5, 0}}, {{5, 0}, {2, 0}}};
  BackAndForth.CollinearSmooth();
  EXPECT_EQ(2, BackAndForth.Count()) << "a way that turns back is not straight";
  BackAndForth.ConnectHeadTail();
  EXPECT_TRUE(BackAndForth.IsClosed(0.0));
  EXPECT_EQ(3, BackAndForth.Count());
}

TEST(TLABPolyline, CrossesASegmentOncePerPlace) {
  const TLABPolyline Chain = Slot();
  const struct {
    const char* Name;
    TVLine2D Line;
    std::size_t Points, Lines;
  } Cases[] = {{"through both arcs", {{-9, 2}, {19, 2}}, 2, 0},
               {"through two vertices", {{10, -1}, {10, 9}}, 2, 0},
               {"along a side and beyond", {{-5, 0}, {20, 0}}, 0, 1},
               {"tangent", {{12, -9}, {12, 9}}, 1, 0},
               {"apart", {{20, 0}, {20, 9}}, 0, 0}};
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    const bool IsAny = Chain.CrossWithSegLine(Case.Line, Points, Lines);
    EXPECT_EQ(Case.Points, Points.size());
    EXPECT_EQ(Case.Lines, Lines.size());
    EXPECT_EQ(IsAny, Case.Points + Case.Lines > 0);
  }
}

// Crossing at 3, where two stretches that touch have it already, and at 10.
TEST(TLABPolyline, ReportsNoPointOnAnyOfSeveralStretches) {
  TLABPolyline Chain{{{0, 0}, {2, 0}}};
  for (const TPoint2D P : {TPoint2D(4, 0),
                           {4, 3},
                           {3, 3},
                           {3, -1},
                           {6, -1},
                           {6, 0},
                           {8, 0},
                           {8, -1},
                           {10, -1},
                           {10, 1}}) {
    Chain.Add({Chain.Last().P4, P});
  }
  for (const TVLine2D& Line : {TVLine2D({-1, 0}, {20, 0}), TVLine2D({20, 0}, {-1, 0})}) {
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    EXPECT_TRUE(Chain.CrossWithSegLine(Line, Points, Lines));
    EXPECT_EQ(std::vector<TPoint2D>{TPoint2D(10, 0)}, Points);
    EXPECT_EQ(3U, Lines.size());
  }
}

TEST(TLABPolyline, CrossesABezierBeyondItsEnds) {
  const TLABPolyline Chain{{{0, 0}, {2, 6}, {4, 6}, {6, 0}}};  // 4.5 high
  std::vector<TPoint2D> Points;
  std::vector<TVLine2D> Lines;
  EXPECT_TRUE(Chain.CrossWithSegLine({{-9, 4}, {9, 4}}, Points, Lines));
  ASSERT_EQ(2U, Points.size());
  EXPECT_NEAR(6.0, Points[0].X + Points[1].X, 1e-12);
}

TEST(TLABPolyline, WritesNumbersThatReadBack) {
  EXPECT_EQ("#000000\nline (0, 0.1) (1e+300, 0)\narc (1, 0) (0, 1) centre (0, 0) bulge 0.5\n",
            TLABPolyline({{{0, 0.1}, {1e300, 0}}, {{1, 0}, {0, 1}, {0, 0}, 0.5}}).ToString());
}

TEST(TLABPolylineList, ActsOnItsChains) {
  TLABPolylineList List;
  EXPECT_FALSE(List.FirstIsCircle());
  List.Add(std::make_unique<TLABPolyline>(TLABPolyline{{{1, 0}, {1, 0}, {0, 0}, -kCircleBulge}}));
  List.Add(std::make_unique<TLABPolyline>(Slot()));
  EXPECT_TRUE(List.FirstIsCircle());
  EXPECT_NEAR(40 + 3 * kPi, List.Clone()->Area(), 1e-13);
}

TEST(TLABPolylineList, MovesEveryPointOfEveryKindOfSegment) {
  TMatrix2D Matrix;
  Matrix.Scale(-2.0, 2.0);
  Matrix.Rotate(0.5);
  Matrix.Translate(7.0, 8.0);
  const struct {
    const char* Name;
    std::function<void(IVGeometry2D&)> Move;
    std::function<TPoint2D(const TPoint2D&)> Map;
  } Cases[] = {
      {"shift",
       [](auto& G) {
         G.Translate({3, 4});
       },
       [](auto& P) { return P + TPoint2D(3, 4); }},
      {"turn", [](auto& G) { G.Rotate(2.0); },
       [](auto& P) {
         return TPoint2D(P.X * std::cos(2.0) - P.Y * std::sin(2.0),
                         P.X * std::sin(2.0) + P.Y * std::cos(2.0));
       }},
      {"half turn about",
       [](auto& G) {
         G.Rotate(kPi, {3, 4});
       },
       [](auto& P) { return TPoint2D(6 - P.X, 8 - P.Y); }},
      {"quarter", [](auto& G) { G.RotateBy90(); }, [](auto& P) { return TPoint2D(-P.Y, P.X); }},
      {"back", [](auto& G) { G.RotateBy_90(); }, [](auto& P) { return TPoint2D(P.Y, -P.X); }},
      {"mirror", [](auto& G) { G.YMirror(); }, [](auto& P) { return TPoint2D(-P.X, P.Y); }},
      {"matrix", [&](auto& G) { G.Transform(Matrix); },
       [&](auto& P) { return Matrix.Transform(P); }},
  };
  TLABPolylineList List;
  List.Add(std::make_unique<TLABPolyline>(
      TLABPolyline{{{0, 1}, {10, 1}}, {{10, 1}, {10, 5}, {10, 3}, kHalfTurn}}));
  List.Add(std::make_unique<TLABPolyline>(TLABPolyline{{{1, 0}, {2, 5}, {4, 6}, {7, 1}}}));
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    const auto Moved = List.Clone();
    Case.Move(*Moved);
    for (int I = 0; I < List.Count(); ++I) {
      for (int J = 0; J < List[I]->Count(); ++J) {
        for (const double T : {0.0, 0.3, 1.0}) {
          const TPoint2D Expected = Case.Map((*List[I])[J].PointByParam(T));
          EXPECT_TRUE(Expected.Equals((*(*Moved)[I])[J].PointByParam(T), 1e-12));
        }
      }
    }
  }
  List.Translate({0.4, 0.6});
  List.RoundTo(0);
  EXPECT_EQ(TPoint2D(7, 2), List[1]->Last().P4);
}

// Every question comes back from any coordinates; the sanitized build watches.
TEST(TLABPolyline, OddCoordinatesComeBack) {
  constexpr double kOdd[] = {0.0,
                             1.0,
                             -2.0,
                             5e-324,
                             1e160,
                             -1.7e308,
                             1e300,
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
  std::mt19937 Random(9);
  const auto Number = [&] { return kOdd[test::RandomInt(Random, 0, std::size(kOdd) - 1)]; };
  const auto Point = [&] {
    const double X = Number();
    return TPoint2D(X, Number());
  };
  for (int Round = 0; Round < 2000; ++Round) {
    TLABPolyline Chain;
    for (int I = 0; I < 3; ++I) {
      const auto Type = static_cast<TSegType>(test::RandomInt(Random, 0, 2));
      const TLABSegline Seg(Type, Point(), Point(), Point(), Point(), Number());
      Chain.Insert(I, Seg);
    }
    const TShapeRelation Relation = Chain.RelationWithPoint(Point(), std::abs(Number()));
    EXPECT_TRUE(Relation == srOn || Relation == srIn || Relation == srOut);
    Chain.Area();
    Chain.BoundBox();
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    std::vector<TVArc2D> Arcs;
    std::vector<TBezierSegment2D> Beziers;
    Chain.CrossWithSegLine({Point(), Point()}, Points, Lines);
    Chain[0].CrossWithLABSegline(Chain[1], Points, Lines, Arcs, Beziers);
    Chain.CollinearSmooth();
    EXPECT_LE(Chain.Count(), 3);
  }
}

}  // namespace
}  // namespace tarnalgo
