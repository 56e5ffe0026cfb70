#include "examples/sheet_planner/Flatten.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include "examples/sheet_planner/BadInput.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

constexpr int kLargestDegree = 15;
constexpr int kMostEllipseChords = 4096;
constexpr int kDeepestHalving = 12;
constexpr std::size_t kMostPoints = 1'000'000;
/// Length: how far a spline may leave its chord and still be the straight edge it was drawn as.
constexpr double kStraightSlack = 1e-5;

/// A point in homogeneous coordinates: (X·W, Y·W, W).
struct TWeighted {
  double XW = 0.0;
  double YW = 0.0;
  double W = 1.0;

  TPoint2D Point() const { return {XW / W, YW / W}; }
};

TWeighted Mix(const TWeighted& A, const TWeighted& B, double T) {
  return {A.XW + (B.XW - A.XW) * T, A.YW + (B.YW - A.YW) * T, A.W + (B.W - A.W) * T};
}

double DistanceToSegment(const TPoint2D& P, const TPoint2D& From, const TPoint2D& To) {
  const TPoint2D Way = To - From;
  const double Square = Way.DotMul(Way);
  if (!(Square > 0.0)) return P.DistanceTo(From);
  const double T = std::clamp((P - From).DotMul(Way) / Square, 0.0, 1.0);
  return P.DistanceTo(From + Way * T);
}

/// The control points of one polynomial piece of a spline, of any degree.
using TPiece = std::vector<TWeighted>;

/// The piece lies in the hull of its control points (all weights are positive), so none further
/// from the chord than `ChordError` means no point of the curve is.
bool IsFlat(const TPiece& Piece, double ChordError) {
  const TPoint2D From = Piece.front().Point();
  const TPoint2D To = Piece.back().Point();
  return std::all_of(Piece.begin() + 1, Piece.end() - 1, [&](const TWeighted& Control) {
    return DistanceToSegment(Control.Point(), From, To) <= ChordError;
  });
}

/// De Casteljau at the middle; `Piece` becomes the left half.
TPiece SplitOffRight(TPiece& Piece) {
  TPiece Right = Piece;
  const std::size_t Last = Piece.size() - 1;
  for (std::size_t Round = 1; Round <= Last; ++Round) {
    for (std::size_t I = 0; I <= Last - Round; ++I) Right[I] = Mix(Right[I], Right[I + 1], 0.5);
    Piece[Round] = Right[0];
  }
  return Right;
}

void AppendFlattened(TPiece Piece, double ChordError, int Depth, std::vector<TPoint2D>& Points) {
  if (Depth == kDeepestHalving || IsFlat(Piece, ChordError)) {
    if (Points.size() == kMostPoints) {
      throw EBadInput("a spline takes more than " + std::to_string(kMostPoints) +
                      " chords: allow a larger chord error");
    }
    Points.push_back(Piece.back().Point());
    return;
  }
  TPiece Right = SplitOffRight(Piece);
  AppendFlattened(std::move(Piece), ChordError, Depth + 1, Points);
  AppendFlattened(std::move(Right), ChordError, Depth + 1, Points);
}

/// Control point `Index` of the Bezier form over the knot span that starts at `Span`: the blossom
/// of the span at its lower end (Degree − Index times) and its upper end (Index times).
TWeighted BezierControl(const TSplineCurve& Curve, std::size_t Span, std::size_t Index) {
  const std::size_t Degree = static_cast<std::size_t>(Curve.Degree);
  std::array<TWeighted, kLargestDegree + 1> D;
  for (std::size_t J = 0; J <= Degree; ++J) {
    const std::size_t Control = Span - Degree + J;
    const double W = Curve.Weights.empty() ? 1.0 : Curve.Weights[Control];
    D[J] = {Curve.Controls[Control].X * W, Curve.Controls[Control].Y * W, W};
  }
  for (std::size_t Round = 1; Round <= Degree; ++Round) {
    const double At = Curve.Knots[Round <= Degree - Index ? Span : Span + 1];
    for (std::size_t J = Degree; J >= Round; --J) {
      const double Low = Curve.Knots[Span - Degree + J];
      const double High = Curve.Knots[Span + 1 + J - Round];
      D[J] = Mix(D[J - 1], D[J], (At - Low) / (High - Low));
    }
  }
  return D[Degree];
}

}  // namespace

bool TSplineCurve::IsSound() const {
  const std::size_t Count = Controls.size();
  if (Degree < 1 || Degree > kLargestDegree) return false;
  const std::size_t Order = static_cast<std::size_t>(Degree) + 1;
  if (Count < Order || Knots.size() != Count + Order) return false;
  if (!Weights.empty() && Weights.size() != Count) return false;
  const auto IsPositive = [](double W) { return W > 0.0; };
  for (std::size_t I = 1; I < Count; ++I) {
    const bool IsInside = Knots[Order - 1] < Knots[I] && Knots[I] < Knots[Count];
    if (IsInside && Knots[I] == Knots[I + Order - 1]) return false;  // the curve jumps there
  }
  return std::is_sorted(Knots.begin(), Knots.end()) && Knots[Order - 1] < Knots[Count] &&
         std::all_of(Weights.begin(), Weights.end(), IsPositive);
}

std::vector<TPoint2D> Flatten(const TEllipseArc& Arc, double ChordError) {
  const double Sweep = Arc.To - Arc.From;
  // Between two parameters Δ apart the curve leaves its chord by (1 − cos Δ/2) times a radius, and
  // no radius is longer than the diagonal of the two conjugate ones.
  const double Reach = std::hypot(Arc.A.Mag(), Arc.B.Mag());
  const double Ratio = std::clamp(ChordError / Reach, 1e-9, 1.0);
  const double Step = 2.0 * std::acos(1.0 - Ratio);
  const double Wanted = std::ceil(std::abs(Sweep) / std::min(Step, kQuarterTurn));
  const int Count = static_cast<int>(std::clamp(Wanted, 1.0, double{kMostEllipseChords}));
  std::vector<TPoint2D> Points;
  Points.reserve(static_cast<std::size_t>(Count) + 1);
  for (int I = 0; I <= Count; ++I) {
    const double T = Arc.From + Sweep * I / Count;
    Points.push_back(Arc.Center + Arc.A * std::cos(T) + Arc.B * std::sin(T));
  }
  const bool IsFull = std::abs(std::abs(Sweep) - kFullTurn) <= kLinearTolerance;
  if (IsFull) Points.back() = Points.front();
  return Points;
}

std::vector<TPoint2D> Flatten(const TSplineCurve& Curve, double ChordError) {
  const std::size_t Degree = static_cast<std::size_t>(Curve.Degree);
  std::vector<TPoint2D> Points;
  for (std::size_t Span = Degree; Span < Curve.Controls.size(); ++Span) {
    if (!(Curve.Knots[Span] < Curve.Knots[Span + 1])) continue;
    TPiece Piece(Degree + 1);
    for (std::size_t I = 0; I <= Degree; ++I) Piece[I] = BezierControl(Curve, Span, I);
    if (Points.empty()) Points.push_back(Piece.front().Point());
    AppendFlattened(std::move(Piece), ChordError, 0, Points);
  }
  return Points;
}

TSplineCurve SplineThrough(const std::vector<TPoint2D>& Points) {
  std::vector<TPoint2D> P;
  std::vector<double> H;  // chord lengths: the parameter's steps
  for (const TPoint2D& Point : Points) {
    if (!P.empty() && P.back().Equals(Point)) continue;
    if (!P.empty()) H.push_back(P.back().DistanceTo(Point));
    P.push_back(Point);
  }
  if (P.size() < 2) return {};
  const std::size_t Last = P.size() - 1;
  const bool IsClosed = Last > 2 && P.front().Equals(P.back());

  // Continuity of the second derivative, solved for the tangents M. Each row is dominated twofold
  // by its diagonal, so a sweep at least halves the error.
  constexpr int kSweeps = 60;
  std::vector<TPoint2D> M(P.size());
  const auto Slope = [&](std::size_t I) { return (P[I + 1] - P[I]) / H[I]; };
  const auto Solve = [&](std::size_t Before, std::size_t At, std::size_t After, std::size_t HB,
                         std::size_t HA) {
    const TPoint2D Right = (Slope(HB) * H[HA] + Slope(HA) * H[HB]) * 3.0;
    M[At] = (Right - M[Before] * H[HA] - M[After] * H[HB]) / (2.0 * (H[HB] + H[HA]));
  };
  for (int Sweep = 0; Sweep < kSweeps; ++Sweep) {
    if (IsClosed) {
      Solve(Last - 1, 0, 1, Last - 1, 0);
    } else {
      M[0] = (Slope(0) * 3.0 - M[1]) / 2.0;
    }
    for (std::size_t I = 1; I < Last; ++I) Solve(I - 1, I, I + 1, I - 1, I);
    M[Last] = IsClosed ? M[0] : (Slope(Last - 1) * 3.0 - M[Last - 1]) / 2.0;
  }

  TSplineCurve Curve;  // Bezier pieces: every knot three times
  Curve.Controls.push_back(P[0]);
  Curve.Knots.assign(4, 0.0);
  double Knot = 0.0;
  for (std::size_t I = 0; I < Last; ++I) {
    Curve.Controls.push_back(P[I] + M[I] * (H[I] / 3.0));
    Curve.Controls.push_back(P[I + 1] - M[I + 1] * (H[I] / 3.0));
    Curve.Controls.push_back(P[I + 1]);
    Knot += H[I];
    Curve.Knots.insert(Curve.Knots.end(), 3, Knot);
  }
  Curve.Knots.push_back(Knot);
  return Curve;
}

bool IsStraight(const std::vector<TPoint2D>& Points) {
  if (Points.size() < 2) return false;
  const TPoint2D From = Points.front();
  const TPoint2D To = Points.back();
  const TPoint2D Way = To - From;
  double Reached = 0.0;
  for (const TPoint2D& P : Points) {
    const double Here = (P - From).DotMul(Way);
    if (Here < Reached || DistanceToSegment(P, From, To) > kStraightSlack) return false;
    Reached = Here;
  }
  return Reached > 0.0;
}

}  // namespace sheet_planner
