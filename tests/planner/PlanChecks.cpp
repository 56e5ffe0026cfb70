#include "tests/planner/PlanChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <set>
#include <utility>

#include "examples/sheet_planner/Contours.h"
#include "examples/sheet_planner/Report.h"
#include "examples/sheet_planner/SvgWriter.h"

namespace sheet_planner::test {

using namespace tarnalgo;

namespace {

/// The segments have a point in common. By the sides of their ends, nothing of the library.
bool Meet(const TLine2D& A, const TLine2D& B) {
  const auto Side = [](const TLine2D& L, const TPoint2D& P) {
    const double Distance = L.GetDirection().CrossMul(P - L.StartPoint);
    return std::abs(Distance) < 1e-9 ? 0.0 : Distance;  // the rounding of collinear segments
  };
  const double A1 = Side(B, A.StartPoint);
  const double A2 = Side(B, A.EndPoint);
  const double B1 = Side(A, B.StartPoint);
  const double B2 = Side(A, B.EndPoint);
  if (A1 * A2 < 0.0 && B1 * B2 < 0.0) return true;
  constexpr double kTouch = 1e-7;
  const std::vector<TPoint2D> OfA{A.StartPoint, A.EndPoint};
  const std::vector<TPoint2D> OfB{B.StartPoint, B.EndPoint};
  return Distance(OfA[0], OfB) < kTouch || Distance(OfA[1], OfB) < kTouch ||
         Distance(OfB[0], OfA) < kTouch || Distance(OfB[1], OfA) < kTouch;
}

/// Everything that is cut on a sheet, as chords.
std::vector<TLine2D> AllCuts(const TSheet& Sheet) {
  std::vector<TLine2D> Cuts;
  const auto AddPoints = [&Cuts](const std::vector<TPoint2D>& Points) {
    for (std::size_t I = 1; I < Points.size(); ++I) Cuts.push_back({Points[I - 1], Points[I]});
  };
  for (const TSheetEdge& Edge : Sheet.Edges) Cuts.push_back(Edge.Line);
  const auto AddTurn = [&](const TPoint2D& Center, double Radius, double From, double Sweep) {
    constexpr int kChords = 720;
    std::vector<TPoint2D> Points;
    for (int I = 0; I <= kChords; ++I) {
      const double Angle = From + Sweep * I / kChords;
      Points.push_back(Center + TPoint2D(std::cos(Angle), std::sin(Angle)) * Radius);
    }
    AddPoints(Points);
  };
  for (const TSheetChain& Chain : Sheet.Chains) {
    for (const TLABSegline& Seg : Chain.Chain) {
      const TPoint2D Radius = Seg.P1 - Seg.P2;
      if (Seg.SegType == stLine) AddPoints({Seg.P1, Seg.P4});
      if (Seg.SegType == stArc) {
        AddTurn(Seg.P2, Radius.Mag(), Radius.Angle(), 4.0 * std::atan(Seg.Bulge));
      }
    }
  }
  for (const TSheetCircle& Circle : Sheet.Circles) {
    AddTurn(Circle.Circle.Center, Circle.Circle.Radius, 0.0, kFullTurn);
  }
  return Cuts;
}

bool MeetsAny(const TLine2D& Gap, const std::vector<TLine2D>& Cuts) {
  const TRect2D Box = Gap.GetBoundBox().Inflate(1e-3, 1e-3);
  return std::any_of(Cuts.begin(), Cuts.end(), [&](const TLine2D& Cut) {
    if (std::max(Cut.StartPoint.X, Cut.EndPoint.X) < Box.Min.X ||
        std::min(Cut.StartPoint.X, Cut.EndPoint.X) > Box.Max.X ||
        std::max(Cut.StartPoint.Y, Cut.EndPoint.Y) < Box.Min.Y ||
        std::min(Cut.StartPoint.Y, Cut.EndPoint.Y) > Box.Max.Y) {
      return false;
    }
    return Meet(Gap, Cut);
  });
}

/// The gap without what lies within `Margin` of its ends.
TLine2D Inner(const TLine2D& Gap, double Margin) {
  const TPoint2D Step = Gap.GetDirection() * Margin;
  return {Gap.StartPoint + Step, Gap.EndPoint - Step};
}

/// Ends of an edge in an order that does not depend on its direction.
using TCut = std::array<double, 4>;
TCut CutOf(const TLine2D& Line) {
  const std::array<double, 2> A{Line.StartPoint.X, Line.StartPoint.Y};
  const std::array<double, 2> B{Line.EndPoint.X, Line.EndPoint.Y};
  return A < B ? TCut{A[0], A[1], B[0], B[1]} : TCut{B[0], B[1], A[0], A[1]};
}

void ExpectEachEdgeOnce(const TSheet& Sheet, const TPlan& Plan) {
  std::multiset<TCut> Wanted;
  for (const TSheetEdge& Edge : Sheet.Edges) Wanted.insert(CutOf(Edge.Line));
  std::multiset<TCut> Cut;
  for (const TOwningFlyCurves& Pass : Plan.Passes) {
    for (const TFlyCurve* Piece : Pass) {
      if (Piece->IsFlyGap()) continue;
      Cut.insert(CutOf(static_cast<const TFlyLine*>(Piece)->Line2D()));
    }
  }
  for (const TOrdinaryContour& Contour : Plan.Contours) {
    for (const TContourPiece& Piece : Contour.Pieces) {
      if (Piece.Kind != TContourPiece::TKind::Edge) continue;
      Cut.insert(CutOf(Sheet.Edges[static_cast<std::size_t>(Piece.Index)].Line));
    }
  }
  EXPECT_TRUE(Wanted == Cut) << Wanted.size() << " edges, " << Cut.size() << " cuts";
}

void ExpectContinuous(const TOwningFlyCurves& Pass) {
  ASSERT_FALSE(Pass.IsEmpty());
  EXPECT_FALSE(Pass.First()->IsFlyGap());
  EXPECT_FALSE(Pass.Last()->IsFlyGap());
  const TLine2D Whole{Pass.StartPoint(), Pass.EndPoint()};
  const TPoint2D Way = Whole.GetDirection();
  const double Hop = std::hypot(CamSampleLen, InterceptTolerance) + 1e-6;
  for (int I = 0; I < Pass.Count(); ++I) {
    const TGeCurve2D& Curve = *Pass[I]->GeCurve();
    EXPECT_EQ(Pass.First()->ChannelPort(), Pass[I]->ChannelPort());
    EXPECT_LE(std::abs(Way.CrossMul(Curve.StartPoint() - Whole.StartPoint)),
              InterceptTolerance + 1e-6);
    EXPECT_LE(std::abs(Way.CrossMul(Curve.EndPoint() - Whole.StartPoint)),
              InterceptTolerance + 1e-6);
    EXPECT_GT(Way.DotMul(Curve.EndPoint() - Curve.StartPoint()), 0.0);
    if (Pass[I]->IsFlyGap()) {
      EXPECT_LE(Way.DotMul(Curve.EndPoint() - Curve.StartPoint()), MaxConnectDistance + 1e-3);
    }
    if (I == 0) continue;
    const double Step = Pass[I - 1]->GeCurve()->EndPoint().DistanceTo(Curve.StartPoint());
    const bool IsAtGap = Pass[I]->IsFlyGap() || Pass[I - 1]->IsFlyGap();
    EXPECT_LE(Step, IsAtGap ? 0.0 : Hop);
  }
}

void ExpectGapsClear(const TSheet& Sheet, const TPlan& Plan) {
  const std::vector<TLine2D> Cuts = AllCuts(Sheet);
  constexpr double kEndMargin = 2e-4;  // a touch this near to an end is the end's
  for (const TOwningFlyCurves& Pass : Plan.Passes) {
    for (const TFlyCurve* Piece : Pass) {
      if (!Piece->IsFlyGap()) continue;
      const TLine2D Gap = static_cast<const TFlyLine*>(Piece)->Line2D();
      EXPECT_FALSE(MeetsAny(Inner(Gap, kEndMargin), Cuts))
          << "accepted from " << Gap.StartPoint.X << ", " << Gap.StartPoint.Y << " to "
          << Gap.EndPoint.X << ", " << Gap.EndPoint.Y;
    }
  }
  for (const TRejectedGap& Gap : Plan.Rejected) {
    EXPECT_TRUE(MeetsAny(Inner(Gap.Line, 0.5 * kEndMargin), Cuts))
        << "rejected from " << Gap.Line.StartPoint.X << ", " << Gap.Line.StartPoint.Y << " to "
        << Gap.Line.EndPoint.X << ", " << Gap.Line.EndPoint.Y;
  }
}

void ExpectContours(const TSheet& Sheet, const TPlan& Plan, double Snap) {
  std::multiset<int> Seen;
  for (const TOrdinaryContour& Contour : Plan.Contours) {
    const TLABPolyline& Chain = Contour.Chain;
    EXPECT_TRUE(!Contour.IsClosed || Chain.IsClosed(2 * Snap + 1e-6));
    for (int I = 1; I < Chain.Count(); ++I) {
      EXPECT_LE(Chain[I - 1].P4.DistanceTo(Chain[I].P1), 2 * Snap + 1e-6);
    }
    int SegCount = 0;
    for (const TContourPiece& Piece : Contour.Pieces) {
      if (Piece.Kind == TContourPiece::TKind::Chain) Seen.insert(Piece.Index);
      EXPECT_EQ(StartOf(Sheet, Piece), Chain[SegCount].P1);
      SegCount += SegCountOf(Sheet, Piece);
      EXPECT_EQ(EndOf(Sheet, Piece), Chain[SegCount - 1].P4);
    }
    EXPECT_EQ(SegCount, Chain.Count());
  }
  EXPECT_EQ(Sheet.Chains.size(), Seen.size());
  const std::set<int> Different(Seen.begin(), Seen.end());
  EXPECT_EQ(Seen.size(), Different.size());
}

/// Turning round a closed chain: the angles under which its chords are seen add up to a full turn.
bool IsInside(const TPoint2D& P, const std::vector<TPoint2D>& Points) {
  double Turn = 0.0;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    const TPoint2D A = Points[I - 1] - P;
    const TPoint2D B = Points[I] - P;
    Turn += std::atan2(A.CrossMul(B), A.DotMul(B));
  }
  return std::abs(Turn) > kPi;
}

std::vector<TPoint2D> PointsOfStep(const TPlan& Plan, const TPlanStep& Step) {
  std::vector<TPoint2D> Points;
  const auto Index = static_cast<std::size_t>(Step.Index);
  const auto Append = [&Points](const std::vector<TPoint2D>& More) {
    Points.insert(Points.end(), More.begin(), More.end());
  };
  if (Step.Kind == TPlanStep::TKind::Circle) {
    Append(Plan.Circles[Step.Index]->GeCurve()->Sample(0.01));
  } else if (Step.Kind == TPlanStep::TKind::Pass) {
    for (const TFlyCurve* Piece : Plan.Passes[Index]) Append(Piece->GeCurve()->Sample(0.01));
  } else {
    Append(Plan.Contours[Index].Chain.Sample(0.01).Points());
  }
  return Points;
}

/// The order is a permutation of the plan, and nothing is cut after a closed contour round it.
void ExpectOrder(const TSheet& Sheet, const TPlan& Plan) {
  using TKind = TPlanStep::TKind;
  std::array<int, 3> Counts{};
  for (const TPlanStep& Step : Plan.Order) {
    EXPECT_EQ(Step.Index, Counts[static_cast<std::size_t>(Step.Kind)]++);
  }
  const std::array<std::size_t, 3> Wanted{Plan.Passes.size(), Sheet.Circles.size(),
                                          Plan.Contours.size()};
  EXPECT_EQ(Plan.Passes.size(), Plan.GroupOfPass.size());
  for (std::size_t I = 0; I < 3; ++I) EXPECT_EQ(Wanted[I], static_cast<std::size_t>(Counts[I]));
  std::vector<std::vector<TPoint2D>> Points;
  for (const TPlanStep& Step : Plan.Order) Points.push_back(PointsOfStep(Plan, Step));
  for (std::size_t I = 0; I < Plan.Order.size(); ++I) {
    const TPlanStep& Step = Plan.Order[I];
    if (Step.Kind == TKind::Pass) continue;
    if (Step.Kind == TKind::Contour &&
        !Plan.Contours[static_cast<std::size_t>(Step.Index)].IsClosed) {
      continue;
    }
    TRect2D Box;
    for (const TPoint2D& P : Points[I]) Box = Box.Union(P);
    for (std::size_t J = I + 1; J < Plan.Order.size(); ++J) {
      const bool IsAllInside =
          std::all_of(Points[J].begin(), Points[J].end(), [&](const TPoint2D& P) {
            return P.X > Box.Min.X && P.X < Box.Max.X && P.Y > Box.Min.Y && P.Y < Box.Max.Y &&
                   Distance(P, Points[I]) > 0.05 && IsInside(P, Points[I]);
          });
      EXPECT_FALSE(IsAllInside) << "step " << J << " lies inside step " << I;
    }
  }
}

}  // namespace

TDrawing DrawingOf(const std::vector<TLine2D>& Lines) {
  TDrawing Drawing;
  for (const TLine2D& Line : Lines) Drawing.Edges.push_back({Line, 0});
  return Drawing;
}

double TotalLength(const TSheet& Sheet) {
  return std::accumulate(
      Sheet.Edges.begin(), Sheet.Edges.end(), 0.0,
      [](double Sum, const TSheetEdge& Edge) { return Sum + Edge.Line.Length(); });
}

double Distance(const TPoint2D& P, const std::vector<TPoint2D>& Points) {
  double Least = kStartOfMinimum;
  for (std::size_t I = 1; I < Points.size(); ++I) {
    const TPoint2D Way = Points[I] - Points[I - 1];
    const double Square = Way.DotMul(Way);
    const double T =
        Square > 0.0 ? std::clamp((P - Points[I - 1]).DotMul(Way) / Square, 0.0, 1.0) : 0.0;
    Least = std::min(Least, P.DistanceTo(Points[I - 1] + Way * T));
  }
  return Least;
}

double UnionLength(const std::vector<TDrawnEdge>& Edges, double Eps) {
  std::vector<TLine2D> Lines;
  for (const TDrawnEdge& Edge : Edges) Lines.push_back(Edge.Line);
  std::stable_sort(Lines.begin(), Lines.end(),
                   [](const TLine2D& A, const TLine2D& B) { return A.Length() > B.Length(); });
  // Each edge counts where no longer one covers it.
  double Total = 0.0;
  for (std::size_t I = 0; I < Lines.size(); ++I) {
    const double Length = Lines[I].Length();
    if (Length <= Eps) continue;
    std::vector<std::pair<double, double>> Covered;
    for (std::size_t J = 0; J < I; ++J) {
      const TPoint2D Way = Lines[J].GetDirection();
      const TPoint2D From = Lines[I].StartPoint - Lines[J].StartPoint;
      const TPoint2D To = Lines[I].EndPoint - Lines[J].StartPoint;
      if (std::abs(Way.CrossMul(From)) > Eps || std::abs(Way.CrossMul(To)) > Eps) continue;
      const TPoint2D Own = Lines[I].GetDirection();
      const double A = Own.DotMul(Lines[J].StartPoint - Lines[I].StartPoint);
      const double B = Own.DotMul(Lines[J].EndPoint - Lines[I].StartPoint);
      Covered.push_back(
          {std::clamp(std::min(A, B), 0.0, Length), std::clamp(std::max(A, B), 0.0, Length)});
    }
    std::sort(Covered.begin(), Covered.end());
    double Reached = 0.0;
    for (const auto& [Low, High] : Covered) {
      if (Low > Reached) Total += Low - Reached;
      Reached = std::max(Reached, High);
    }
    Total += Length - Reached;
  }
  return Total;
}

void ExpectSound(const TSheet& Sheet, const TPlan& Plan, double Snap) {
  ExpectEachEdgeOnce(Sheet, Plan);
  for (const TOwningFlyCurves& Pass : Plan.Passes) ExpectContinuous(Pass);
  ExpectGapsClear(Sheet, Plan);
  ExpectContours(Sheet, Plan, Snap);
  ExpectOrder(Sheet, Plan);
}

TPlan ExpectSoundPlan(const TDrawing& Drawing, const TPrepOptions& Options) {
  const TSheet Sheet = PrepareSheet(Drawing, Options);
  TPlan Plan = PlanSheet(Sheet);
  ExpectSound(Sheet, Plan, Options.Snap);
  const auto Output = [&Drawing](const TSheet& OfSheet, const TPlan& OfPlan) {
    return PlanSvg(Drawing, OfSheet, OfPlan) + PlanReport(Drawing, OfSheet, OfPlan) +
           PlanListing(Drawing, OfSheet, OfPlan);
  };
  const TSheet Again = PrepareSheet(Drawing, Options);
  EXPECT_TRUE(Output(Sheet, Plan) == Output(Again, PlanSheet(Again)));
  if (Options.Snap <= 1e-5 || Sheet.Stats.EndsMoved == 0) {
    const double Union = UnionLength(Drawing.Edges, Options.Snap);
    EXPECT_NEAR(Union, TotalLength(Sheet), Union * 1e-6);
  }
  return Plan;
}

}  // namespace sheet_planner::test
