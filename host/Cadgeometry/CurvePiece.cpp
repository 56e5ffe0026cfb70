#include "host/Cadgeometry/CurvePiece.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "host/Cadgeometry/BernsteinRoots.h"
#include "host/Cadgeometry/Nearest.h"
#include "host/Cadtypes/SortFew.h"
#include "host/Cadutils.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// Relative to the size of a cubic: how far its controls may be from the thirds of the chord for it
/// to count as a line.
constexpr double kStraightError = 1e-15;

bool IsStraightAndEven(const TBezierSegment2D& B) {
  const double Scale =
      std::max({std::abs(B.P0.X), std::abs(B.P0.Y), std::abs(B.P3.X), std::abs(B.P3.Y)});
  const TBezierSegment2D Even(B.P0, B.P3);
  return B.P1.Equals(Even.P1, kStraightError * Scale) &&
         B.P2.Equals(Even.P2, kStraightError * Scale);
}

/// The parameters at which the cubic turns back in X or Y, ascending, 0 first and 1 last.
struct TMonotoneCuts {
  std::array<double, 6> At{};
  std::size_t Count = 0;

  explicit TMonotoneCuts(const TBezierSegment2D& B) {
    std::array<double, 4> Turns{};
    std::size_t Found = 0;
    const TPoint2D D[] = {B.P1 - B.P0, B.P2 - B.P1, B.P3 - B.P2};
    for (const double T : TBernsteinRoots<2>({D[0].X, D[1].X, D[2].X})) Turns[Found++] = T;
    for (const double T : TBernsteinRoots<2>({D[0].Y, D[1].Y, D[2].Y})) Turns[Found++] = T;
    SortFew(Turns.data(), Turns.data() + Found);
    At[Count++] = 0.0;
    for (std::size_t I = 0; I < Found; ++I) {
      if (Turns[I] > At[Count - 1] + kLeastBezierCut && Turns[I] < 1.0 - kLeastBezierCut) {
        At[Count++] = Turns[I];
      }
    }
    At[Count++] = 1.0;
  }
};

}  // namespace

TCurvePiece TCurvePiece::OfLine(const TLine2D& Line, double From, double To) {
  TCurvePiece Piece;
  Piece.Start = Line.StartPoint;
  Piece.End = Line.EndPoint;
  Piece.Box = Line.GetBoundBox();
  Piece.From = From;
  Piece.To = To;
  return Piece;
}

TCurvePiece TCurvePiece::OfArc(const TArc2D& Arc, const TPoint2D& Start, const TPoint2D& End,
                               double From, double To) {
  TCurvePiece Piece;
  Piece.Kind = TPieceKind::Arc;
  Piece.Start = Start;
  Piece.End = End;
  Piece.Arc = Arc;
  Piece.Box = Arc.GetBoundBox().Union(Start).Union(End);
  Piece.From = From;
  Piece.To = To;
  return Piece;
}

TCurvePiece TCurvePiece::OfMonotoneBezier(const TBezierSegment2D& Part, double From, double To) {
  TCurvePiece Piece;
  Piece.Kind = TPieceKind::Bezier;
  Piece.Start = Part.P0;
  Piece.Control1 = Part.P1;
  Piece.Control2 = Part.P2;
  Piece.End = Part.P3;
  Piece.Box = TRect2D(Part.P0, Part.P0).Union(Part.P3);
  Piece.From = From;
  Piece.To = To;
  return Piece;
}

void TCurvePiece::AppendBezier(const TBezierSegment2D& Segment, double From, double To,
                               std::vector<TCurvePiece>& Pieces) {
  if (IsStraightAndEven(Segment)) {
    Pieces.push_back(OfLine({Segment.P0, Segment.P3}, From, To));
    return;
  }
  TAppendGuard Guard(Pieces);
  const TMonotoneCuts Cuts(Segment);
  TBezierSegment2D Rest = Segment;
  for (std::size_t I = 1; I < Cuts.Count; ++I) {
    const double CutFrom = Cuts.At[I - 1];
    const double CutTo = Cuts.At[I];
    TBezierSegment2D Part = Rest;
    if (CutTo < 1.0) Rest.Split((CutTo - CutFrom) / (1.0 - CutFrom), Part, Rest);
    TCurvePiece Piece = OfMonotoneBezier(Part, From + CutFrom * (To - From),
                                         CutTo < 1.0 ? From + CutTo * (To - From) : To);
    Piece.StartIsCut = CutFrom > 0.0;
    Piece.EndIsCut = CutTo < 1.0;
    Pieces.push_back(Piece);
  }
  Guard.Keep();
}

bool TCurvePiece::IsPoint() const {
  switch (Kind) {
    case TPieceKind::Line:
      return Start == End;
    case TPieceKind::Arc:
      return Start == End && (Arc.Radius == 0.0 || Arc.SweepAngle == 0.0);
    case TPieceKind::Bezier:
      return Start == End && Start == Control1 && Start == Control2;
  }
  return false;
}

bool TCurvePiece::IsFinite() const {
  // The controls of a line and the centre of a cubic are 0.
  const double Values[] = {Start.X,    Start.Y,        End.X,          End.Y,        Control1.X,
                           Control1.Y, Control2.X,     Control2.Y,     Arc.Center.X, Arc.Center.Y,
                           Arc.Radius, Arc.StartAngle, Arc.SweepAngle, Box.Min.X,    Box.Min.Y,
                           Box.Max.X,  Box.Max.Y};
  return std::all_of(std::begin(Values), std::end(Values),
                     [](double Value) { return std::isfinite(Value); });
}

bool TCurvePiece::IsCircle() const {
  return Kind == TPieceKind::Arc && std::abs(Arc.SweepAngle) >= kFullTurn;
}

double TCurvePiece::Magnitude() const {
  double Largest = std::max(
      {std::abs(Box.Min.X), std::abs(Box.Min.Y), std::abs(Box.Max.X), std::abs(Box.Max.Y)});
  if (Kind == TPieceKind::Arc) {
    Largest = std::max({Largest, std::abs(Arc.Center.X), std::abs(Arc.Center.Y), Arc.Radius});
  }
  return Largest;
}

TPoint2D TCurvePiece::Eval(double U) const {
  if (U == 0.0) return Start;  // exact: the ends as they were given
  if (U == 1.0) return End;
  switch (Kind) {
    case TPieceKind::Line:
      return Lerp(Start, End, U);
    case TPieceKind::Arc:
      return Arc.PointAtParam(U);
    case TPieceKind::Bezier:
      return Bezier().EvalPoint(U);
  }
  return Start;
}

TPoint2D TCurvePiece::Derivative(double U) const {
  switch (Kind) {
    case TPieceKind::Line:
      return End - Start;
    case TPieceKind::Arc:
      return (Arc.PointAtParam(U) - Arc.Center).RotateCcw90() * Arc.SweepAngle;
    case TPieceKind::Bezier:
      return Bezier().Derivative(U);
  }
  return {};
}

TPoint2D TCurvePiece::SecondDerivative(double U) const {
  switch (Kind) {
    case TPieceKind::Line:
      return {};
    case TPieceKind::Arc:
      return (Arc.Center - Arc.PointAtParam(U)) * (Arc.SweepAngle * Arc.SweepAngle);
    case TPieceKind::Bezier:
      return Bezier().SecondDerivative(U);
  }
  return {};
}

double TCurvePiece::Nearest(const TPoint2D& P, double& Distance) const {
  switch (Kind) {
    case TPieceKind::Line:
      return NearestOnSegment({Start, End}, P, Distance);
    case TPieceKind::Arc:
      return NearestOnArc(Arc, Start, End, P, Distance);
    case TPieceKind::Bezier: {
      double U = 0.0;
      TPoint2D Foot;
      Distance = Bezier().DistanceTo(P, 0.0, U, Foot);
      return U;
    }
  }
  return 0.0;
}

bool TCurvePiece::MayReach(const TPoint2D& P, double Distance) const {
  if (Kind != TPieceKind::Bezier) return true;
  const TPoint2D Chord = End - Start;
  const double D1 = Chord.CrossMul(Control1 - Start);
  const double D2 = Chord.CrossMul(Control2 - Start);
  const double D = Chord.CrossMul(P - Start);
  const double Slack = 2.0 * Distance * (std::abs(Chord.X) + std::abs(Chord.Y));  // for rounding
  return !(D > std::max({0.0, D1, D2}) + Slack || D < std::min({0.0, D1, D2}) - Slack);
}

TCurvePiece TCurvePiece::Scaled(double Factor) const {
  TCurvePiece Result = *this;
  for (TPoint2D* P : {&Result.Start, &Result.End, &Result.Control1, &Result.Control2,
                      &Result.Arc.Center, &Result.Box.Min, &Result.Box.Max}) {
    *P = *P * Factor;
  }
  Result.Arc.Radius *= Factor;
  return Result;
}

}  // namespace tarnalgo
