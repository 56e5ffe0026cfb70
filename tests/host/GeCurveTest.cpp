#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <typeinfo>
#include <vector>

#include "host/Cadgeometry.h"
#include "tests/support/Curves.h"
#include "tests/support/Generate.h"
#include "tests/support/Raises.h"

namespace tarnalgo {
namespace {

using test::kCurveKindCount;
using test::kCurveKinds;
using TCurve = std::unique_ptr<TGeCurve2D>;

const double kNaN = std::nan("");
const double kInf = std::numeric_limits<double>::infinity();

/// `Check(curve)` for many curves of every kind.
template <class TCheck>
void ForEveryKind(TCheck Check) {
  for (int Kind = 0; Kind < kCurveKindCount; ++Kind) {
    for (unsigned Round = 0; Round < 30; ++Round) {
      SCOPED_TRACE(testing::Message() << kCurveKinds[Kind] << " round " << Round);
      test::TCurveMaker Maker(Round, false);
      const TCurve Curve = Maker.Make(Kind);
      Check(*Curve);
    }
  }
}

std::vector<TPoint2D> Dense(const TGeCurve2D& Curve, int Steps) {
  std::vector<TPoint2D> Points;
  for (int I = 0; I <= Steps; ++I)
    Points.push_back(Curve.PointAtParam(Curve.ParamTo() * I / Steps));
  return Points;
}

double DistanceToChords(const std::vector<TPoint2D>& Chords, const TPoint2D& P) {
  double Distance = kStartOfMinimum;
  TGePolyline2D(Chords).NearestParam(P, Distance);
  return Distance;
}

TEST(TGeCurve2D, ParameterRangeEndsInTheEnds) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    EXPECT_EQ(Curve.StartPoint(), Curve.PointAtParam(Curve.ParamFrom()));
    EXPECT_EQ(Curve.EndPoint(), Curve.PointAtParam(Curve.ParamTo()));
    EXPECT_EQ(Curve.StartPoint(), Curve.PointAtParam(-1.0));
    EXPECT_EQ(Curve.StartPoint(), Curve.PointAtParam(kNaN));
    EXPECT_EQ(Curve.EndPoint(), Curve.PointAtParam(kInf));
  });
}

TEST(TGeCurve2D, ReversalMirrorsTheParameterAndUndoesItself) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    const TCurve Other = Curve.Clone();
    Other->Reverse();
    const double To = Curve.ParamTo();
    for (int I = 0; I <= 64; ++I) {
      const double T = To * I / 64;
      EXPECT_TRUE(Curve.PointAtParam(T).Equals(Other->PointAtParam(To - T), 1e-12));
    }
    EXPECT_EQ(Curve.StartPoint(), Other->EndPoint());
    Other->Reverse();
    EXPECT_EQ(Dense(Curve, 64), Dense(*Other, 64));
  });
}

TEST(TGeCurve2D, ParameterOfAPointOfTheCurveLeadsBackToIt) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    for (const TPoint2D& P : Dense(Curve, 37)) {
      EXPECT_TRUE(Curve.PointAtParam(Curve.ParamOfPoint(P)).Equals(P, 1e-6));
      double Distance = 1.0;
      EXPECT_TRUE(Curve.PointAtParam(Curve.NearestParam(P, Distance)).Equals(P, 1e-9));
      EXPECT_LE(Distance, 1e-9);
    }
    EXPECT_EQ(Curve.ParamFrom(), Curve.ParamOfPoint(Curve.StartPoint() + TPoint2D(9e-7, 0)));
    if (!Curve.IsClosed()) {
      EXPECT_EQ(Curve.ParamTo(), Curve.ParamOfPoint(Curve.EndPoint() - TPoint2D(0, 9e-7)));
    }
  });
}

TEST(TGeCurve2D, NearestParameterAgreesWithDenseSampling) {
  std::mt19937 Random(8);
  ForEveryKind([&](const TGeCurve2D& Curve) {
    const auto Points = Dense(Curve, 3000);
    for (int I = 0; I < 5; ++I) {
      const TPoint2D P = test::RandomPoint(Random, -8, 8);
      double Distance = 0.0;
      const double T = Curve.NearestParam(P, Distance);
      EXPECT_NEAR(Distance, P.DistanceTo(Curve.PointAtParam(T)), 1e-9);
      double Least = kStartOfMinimum;
      for (const TPoint2D& Q : Points) Least = std::min(Least, P.DistanceTo(Q));
      EXPECT_LE(Distance, Least + 1e-12);
      EXPECT_GE(Distance, Least - 0.02);
    }
  });
}

TEST(TGeCurve2D, BoxIsTight) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    const TRect2D Box = Curve.GetBoundBox();
    TRect2D Sampled;
    // A multiple of 1 .. 8 steps: every vertex is met.
    for (const TPoint2D& P : Dense(Curve, 20160)) Sampled = Sampled.Union(P);
    EXPECT_TRUE(Box.Contains(Sampled, 1e-12));
    EXPECT_TRUE(Sampled.Contains(Box, 1e-3));
  });
}

TEST(TGeCurve2D, LengthIsThatOfItsFinestChords) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    double Chords = 0.0;
    const auto Points = Dense(Curve, 2520 * static_cast<int>(Curve.ParamTo()));
    for (std::size_t I = 1; I < Points.size(); ++I) Chords += Points[I].DistanceTo(Points[I - 1]);
    EXPECT_NEAR(1.0, Chords / Curve.CurveLength(), 1e-3);
    EXPECT_LE(Chords, Curve.CurveLength() * (1 + 1e-12));
  });
}

TEST(TGeCurve2D, SamplesStayWithinTheChordError) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    for (const double ChordEps : {1.0, 0.1, 1e-3}) {
      const auto Points = Curve.Sample(ChordEps);
      EXPECT_EQ(Curve.StartPoint(), Points.front());
      EXPECT_EQ(Curve.EndPoint(), Points.back());
      for (const TPoint2D& P : Dense(Curve, 300)) {
        EXPECT_LE(DistanceToChords(Points, P), ChordEps * (1 + 1e-9));
      }
      for (const TPoint2D& P : Points) {
        double Distance = 0.0;
        Curve.NearestParam(P, Distance);
        EXPECT_LE(Distance, 1e-9);
      }
    }
  });
}

TEST(TGeCurve2D, SamplesAreBoundedWhateverChordErrorIsAsked) {
  const TGeCircularArc2D Circle({0, 0}, 1e9, 0.0, kFullTurn);
  TGePolyBezier2D Bezier;
  Bezier.AddBezier({{0, 0}, {1e12, 1e12}, {-1e12, 1e12}, {0, 0}});
  for (const double ChordEps : {0.0, -1.0, kNaN, 1e-300}) {
    EXPECT_EQ(65537u, Circle.Sample(ChordEps).size());
    EXPECT_EQ(65537u, Bezier.Sample(ChordEps).size());
  }
  EXPECT_EQ(5u, Circle.Sample(kInf).size());  // still a quadrangle
  EXPECT_EQ(5u, Bezier.Sample(kInf).size());
  EXPECT_EQ(2u, TGeLine2D({0, 0}, {1, 1}).Sample(0.0).size());
}

TEST(TGeCurve2D, IsClosedWithinTheLinearTolerance) {
  EXPECT_TRUE(TGeCircularArc2D({0, 0}, 1, 0.3, kFullTurn).IsClosed());
  EXPECT_TRUE(TGeCircularArc2D({0, 0}, 1, 0.3, -kFullTurn).IsClosed());
  EXPECT_TRUE(TGeCircularArc2D({0, 0}, 1, 0.3, kFullTurn - 9e-7).IsClosed());
  EXPECT_FALSE(TGeCircularArc2D({0, 0}, 1, 0.3, kFullTurn - 2e-6).IsClosed());
  EXPECT_TRUE(TGePolyline2D(1).IsClosed());
  EXPECT_FALSE(TGePolyline2D(0).IsClosed());
  EXPECT_FALSE(TGeCompositeCurve2D().IsClosed());
}

TEST(TGeCurve2D, EmptyCurvesAnswerNeutrally) {
  TGeCompositeCurve2D Nested;
  Nested.AddCurve(std::make_unique<TGePolyline2D>());
  const TGePolyline2D NoPoints;
  const TGePolyBezier2D NoSegments;
  for (const TGeCurve2D* Curve :
       {static_cast<const TGeCurve2D*>(&Nested), static_cast<const TGeCurve2D*>(&NoPoints),
        static_cast<const TGeCurve2D*>(&NoSegments)}) {
    EXPECT_TRUE(Curve->IsEmpty());
    EXPECT_EQ(TPoint2D::FZero, Curve->StartPoint());
    EXPECT_EQ(TPoint2D::FZero, Curve->EndPoint());
    EXPECT_EQ(TPoint2D::FZero, Curve->PointAtParam(0.5));
    EXPECT_FALSE(Curve->GetBoundBox().IsValid());
    EXPECT_EQ(0.0, Curve->CurveLength());
    EXPECT_EQ(0.0, Curve->ParamOfPoint({1, 1}));
    EXPECT_TRUE(Curve->Sample(0.1).empty());
  }
}

// --- Arcs ---

TEST(TGeCircularArc2D, BulgeKeepsTheEndsAndComesBack) {
  std::mt19937 Random(4);
  for (int Round = 0; Round < 500; ++Round) {
    const TPoint2D From = test::RandomPoint(Random, -9, 9);
    const TPoint2D To = test::RandomPoint(Random, -9, 9);
    const double Bulge = test::RandomDouble(Random, -5, 5);
    const TGeCircularArc2D Arc(From, Bulge, To);
    EXPECT_EQ(From, Arc.StartPoint());
    EXPECT_EQ(To, Arc.EndPoint());
    EXPECT_NEAR(Bulge, Arc.Bulge(), 1e-9);
    EXPECT_EQ(Bulge < 0.0, Arc.GetSweepAngle() < 0.0);
    EXPECT_NEAR(Arc.GetRadius(), Arc.GetCenter().DistanceTo(To), 1e-9);
    // A positive bulge passes on the right of the chord.
    EXPECT_EQ(Bulge > 0.0, (To - From).CrossMul(Arc.PointAtParam(0.5) - From) < 0.0);
  }
}

TEST(TGeCircularArc2D, ThreePointsAndTheOtherArc) {
  std::mt19937 Random(6);
  for (int Round = 0; Round < 500; ++Round) {
    const TPoint2D P[] = {test::RandomPoint(Random, -9, 9), test::RandomPoint(Random, -9, 9),
                          test::RandomPoint(Random, -9, 9)};
    if (std::abs((P[1] - P[0]).CrossMul(P[2] - P[0])) < 0.1) continue;
    const TGeCircularArc2D Through(P[0], P[1], P[2], true);
    const TGeCircularArc2D Other(P[0], P[1], P[2], false);
    double Distance = 1.0;
    const double T = Through.NearestParam(P[1], Distance);
    EXPECT_TRUE(T > 0.0 && T < 1.0);
    EXPECT_LE(Distance, 1e-7);
    EXPECT_GT(P[1].DistanceTo(Other.PointAtParam(Other.ParamOfPoint(P[1]))), 1e-6);
    EXPECT_EQ(P[0], Other.StartPoint());
    EXPECT_EQ(P[2], Other.EndPoint());
    EXPECT_NEAR(kFullTurn, std::abs(Through.GetSweepAngle() - Other.GetSweepAngle()), 1e-12);
    EXPECT_NEAR(kFullTurn * Through.GetRadius(), Through.CurveLength() + Other.CurveLength(), 1e-6);
  }
}

TEST(TGeCircularArc2D, RefusesWhatMakesNoArc) {
  for (const double Radius : {-1.0, kNaN, kInf}) {
    EXPECT_THROW(TGeCircularArc2D({0, 0}, Radius, 0, 1), EParamError);
  }
  EXPECT_THROW(TGeCircularArc2D({0, 0}, 1, kNaN, 1), EParamError);
  EXPECT_THROW(TGeCircularArc2D({0, 0}, 1, 0, kInf), EParamError);
  for (const double Bulge : {0.0, kNaN, kInf}) {
    EXPECT_THROW(TGeCircularArc2D(TPoint2D(0, 0), Bulge, TPoint2D(1, 0)), EParamError);
  }
  EXPECT_THROW(TGeCircularArc2D(TPoint2D(1, 1), 0.5, TPoint2D(1, 1)), EParamError);
  EXPECT_THROW(TGeCircularArc2D({0, 0}, {1, 1}, {2, 2}, true), EGeometry);
  EXPECT_THROW(TGeCircularArc2D({0, 0}, {1, 1}, {0, 0}, true), EGeometry);
  TGeCircularArc2D Arc({0, 0}, 1, 0, 1);
  EXPECT_THROW(Arc.SetStartAngle(kNaN), EParamError);
  EXPECT_THROW(Arc.SetEndAngle(kInf), EParamError);
  EXPECT_THROW(Arc.SetSweepAngle(kNaN), EParamError);
  EXPECT_EQ(0.0, Arc.GetStartAngle());
  EXPECT_EQ(1.0, Arc.GetSweepAngle());
}

TEST(TGeCircularArc2D, SettingOneAngleKeepsTheOtherEndAndTheSense) {
  const struct {
    const char* Name;
    double Start, Sweep;
    char Which;
    double Value;
    double ExpectedStart, ExpectedSweep;
  } Cases[] = {
      {"start forwards", 0, 2, 's', 1, 1, 1},
      {"start backwards over zero", 1, 1, 's', -1, -1, 3},
      {"start past the end goes round", 0, 2, 's', 3, 3, kFullTurn - 1},
      {"start of a clockwise arc", 3, -2, 's', 2, 2, -1},
      {"end forwards", 0, 2, 'e', 3, 0, 3},
      {"end behind the start goes round", 1, 1, 'e', 0.5, 1, kFullTurn - 0.5},
      {"end of a clockwise arc", 3, -2, 'e', 0, 3, -3},
      {"end onto the start", 1, 1, 'e', 1, 1, kFullTurn},
      {"clockwise onto the start", 1, -1, 'e', 1, 1, -kFullTurn},
      {"a circle opens", 0, kFullTurn, 's', 1, 1, kFullTurn - 1},
      {"a circle moved by a turn stays", 0, -kFullTurn, 's', kFullTurn, kFullTurn, -kFullTurn},
      {"sweep", 1, 1, 'w', -2, 1, -2},
      {"sweep beyond a turn", 1, 1, 'w', 9, 1, kFullTurn},
  };
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    TGeCircularArc2D Arc({1, 2}, 3, Case.Start, Case.Sweep);
    const TPoint2D Start = Arc.StartPoint();
    const TPoint2D End = Arc.EndPoint();
    if (Case.Which == 's') Arc.SetStartAngle(Case.Value);
    if (Case.Which == 'e') Arc.SetEndAngle(Case.Value);
    if (Case.Which == 'w') Arc.SetSweepAngle(Case.Value);
    EXPECT_DOUBLE_EQ(Case.ExpectedStart, Arc.GetStartAngle());
    EXPECT_NEAR(Case.ExpectedSweep, Arc.GetSweepAngle(), 1e-15 * 10);
    EXPECT_EQ(Case.Which == 's' ? End : Start,
              Case.Which == 's' ? Arc.EndPoint() : Arc.StartPoint());
    EXPECT_TRUE(Arc.PointAtParam(1e-12).Equals(Arc.StartPoint(), 1e-9));
    EXPECT_TRUE(Arc.PointAtParam(1 - 1e-12).Equals(Arc.EndPoint(), 1e-9));
  }
}

// --- Polylines and composites ---

TEST(TGePolyline2D, CountsAndIndicesAreChecked) {
  EXPECT_THROW(TGePolyline2D(-1), EParamError);
  TGePolyline2D Curve(3);
  Curve.SetPoint(1, {5, 5});
  for (const int Index : {-1, 3}) {
    EXPECT_THROW(Curve.SetPoint(Index, {1, 1}), EParamError);
    EXPECT_THROW(Curve.GetPoint(Index), EParamError);
  }
  EXPECT_EQ((TDynPoints2D{{0, 0}, {5, 5}, {0, 0}}), Curve.Points());
  EXPECT_EQ(TPoint2D(2.5, 2.5), Curve.PointAtParam(1.5));
}

/// A line that counts how many of its kind there are.
class TCountedLine : public TGeLine2D {
 public:
  explicit TCountedLine(int& Count) : TGeLine2D({0, 0}, {1, 0}), FCount(&Count) { ++Count; }
  TCountedLine(const TCountedLine& Other) : TGeLine2D(Other), FCount(Other.FCount) { ++*FCount; }
  TCountedLine& operator=(const TCountedLine&) = delete;
  ~TCountedLine() override { --*FCount; }

 protected:
  TCountedLine* NewClone() const override { return new TCountedLine(*this); }

 private:
  int* FCount;
};

TEST(TGeCompositeCurve2D, FreesWhatItOwnsAndNothingElse) {
  int Count = 0;
  {
    TCountedLine Referred(Count);
    {
      TGeCompositeCurve2D Curve({&Referred, &Referred}, false);
      Curve.AddCurve(std::make_unique<TCountedLine>(Count));
      EXPECT_EQ(2, Count);
      const auto Copy = Curve.Clone();  // deep: owns its copies of the referred ones too
      EXPECT_EQ(5, Count);
      EXPECT_NE(Curve.GetCurve(0), Copy->GetCurve(0));
      Curve = *Copy;
      EXPECT_EQ(7, Count);
    }
    EXPECT_EQ(1, Count);
    TGeCompositeCurve2D Owning({new TCountedLine(Count), new TCountedLine(Count)}, true);
    EXPECT_EQ(3, Count);
  }
  EXPECT_EQ(0, Count);
}

TEST(TGeCompositeCurve2D, ARefusedListIsNotLeaked) {
  int Count = 0;
  EXPECT_THROW(TGeCompositeCurve2D({new TCountedLine(Count), nullptr}, true), EParamError);
  EXPECT_EQ(0, Count);
  TGeCurve2D* const Twice = new TCountedLine(Count);
  EXPECT_THROW(TGeCompositeCurve2D({Twice, Twice}, true), EParamError);
  EXPECT_EQ(0, Count);
  TGeCompositeCurve2D Curve;
  EXPECT_THROW(Curve.AddCurve(nullptr), EParamError);
  EXPECT_THROW(Curve.GetCurve(0), EParamError);
}

TEST(TGeCompositeCurve2D, MembersMayLieApartOrBeEmpty) {
  TGeCompositeCurve2D Curve;
  Curve.AddCurve(std::make_unique<TGePolyline2D>());
  Curve.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(0, 0), TPoint2D(1, 0)));
  Curve.AddCurve(std::make_unique<TGePolyBezier2D>());
  Curve.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(5, 0), TPoint2D(7, 0)));
  Curve.AddCurve(std::make_unique<TGePolyline2D>());
  EXPECT_EQ(TPoint2D(0, 0), Curve.StartPoint());
  EXPECT_EQ(TPoint2D(7, 0), Curve.EndPoint());
  EXPECT_EQ(3.0, Curve.CurveLength());
  EXPECT_EQ(TRect2D({0, 0}, {7, 0}), Curve.GetBoundBox());
  EXPECT_EQ(TPoint2D(0, 0), Curve.PointAtParam(0.5));
  EXPECT_EQ(TPoint2D(0.5, 0), Curve.PointAtParam(1.5));
  EXPECT_EQ(TPoint2D(5, 0), Curve.PointAtParam(2.5));
  EXPECT_EQ(TPoint2D(6, 0), Curve.PointAtParam(3.5));
  EXPECT_EQ(TPoint2D(7, 0), Curve.PointAtParam(4.5));
  // The end of a member is found as such, although its successor starts elsewhere.
  EXPECT_TRUE(Curve.PointAtParam(Curve.ParamOfPoint({1.1, 0})).Equals({1, 0}, 1e-9));
  EXPECT_EQ((std::vector<TPoint2D>{{0, 0}, {1, 0}, {5, 0}, {7, 0}}), Curve.Sample(0.1));
}

TEST(TGeCompositeCurve2D, NestsDeeperThanTheStack) {
  constexpr int kDepth = 100000;
  TGeCompositeCurve2D Curve;
  Curve.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(0, 0), TPoint2D(0, 1)));
  for (int I = 0; I < kDepth; ++I) {
    auto Inner = std::make_unique<TGeCompositeCurve2D>(std::move(Curve));
    Curve = TGeCompositeCurve2D();
    Curve.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(I, 0), TPoint2D(I + 1, 0)));
    Curve.AddCurve(std::move(Inner));
    Curve.AddCurve(std::make_unique<TGeCompositeCurve2D>());
  }
  const auto Copy = Curve.Clone();
  Copy->Reverse();
  EXPECT_EQ(kDepth + 1.0, Copy->CurveLength());
  EXPECT_EQ(TRect2D({0, 0}, {kDepth, 1}), Copy->GetBoundBox());
  EXPECT_EQ(TPoint2D(0, 1), Copy->StartPoint());
  EXPECT_EQ(TPoint2D(kDepth - 1, 0), Copy->EndPoint());
  EXPECT_EQ(TPoint2D(kDepth - 1, 0), Curve.StartPoint());
  EXPECT_EQ(TPoint2D(kDepth - 0.5, 0), Copy->PointAtParam(2.5));
  EXPECT_EQ(2.5, Copy->ParamOfPoint({kDepth - 0.5, 0.0}));
  EXPECT_EQ(2U * (kDepth + 1), Copy->Sample(0.1).size());
  std::vector<TIntersect2D> Results;
  Copy->IntersectCurve(TGeLine2D({kDepth - 0.5, -1}, {kDepth - 0.5, 1}), Results);
  ASSERT_EQ(1U, Results.size());
  EXPECT_EQ(2.5, Results[0].OnFirst.Param);
}

TEST(TGeCompositeCurve2D, ReversesACurveReferredToTwiceOnce) {
  TGeLine2D Line({0, 0}, {1, 0});
  TGeCompositeCurve2D Inner({&Line}, false);
  TGeCompositeCurve2D Curve({&Line, &Inner, &Inner}, false);
  Curve.Reverse();
  EXPECT_EQ(TPoint2D(1, 0), Line.StartPoint());
  EXPECT_EQ(TPoint2D(0.25, 0), Curve.PointAtParam(0.75));
}

TEST(TGeCompositeCurve2D, AMeetingAtAnEndBeforeAnEmptyMemberIsThere) {
  TGeCompositeCurve2D Curve;
  Curve.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(-1, 0), TPoint2D(0, 0)));
  Curve.AddCurve(std::make_unique<TGePolyline2D>());
  Curve.AddCurve(std::make_unique<TGeLine2D>(TPoint2D(5, 0), TPoint2D(7, 0)));
  std::vector<TIntersect2D> Results;
  Curve.IntersectCurve(TGeLine2D({0, -1}, {0, 1}), Results);
  ASSERT_EQ(1U, Results.size());
  EXPECT_TRUE(Curve.PointAtParam(Results[0].OnFirst.Param).Equals({0, 0}));
  EXPECT_TRUE(Curve.PointAtParam(Curve.ParamOfPoint({0, 1})).Equals({0, 0}));
}

TEST(TGeObject, CloneKeepsClassAndContentAndIsApart) {
  ForEveryKind([](const TGeCurve2D& Curve) {
    const TGeObject& Object = Curve;
    const std::unique_ptr<TGeObject> Copy = Object.Clone();
    const TGeObject& Copied = *Copy;
    EXPECT_EQ(typeid(Curve), typeid(Copied));
    TGeCurve2D& Other = dynamic_cast<TGeCurve2D&>(*Copy);
    const auto Before = Dense(Curve, 20);
    EXPECT_EQ(Before, Dense(Other, 20));
    Other.Reverse();
    EXPECT_EQ(Before, Dense(Curve, 20));
  });
}

}  // namespace
}  // namespace tarnalgo
