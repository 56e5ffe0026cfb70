#pragma once  // tests/support/Driving.h

#include <algorithm>
#include <cmath>

#include "host/Cadgeometry.h"

namespace tarnalgo::test {

/// The two poses of a transition; directions are unit vectors.
struct TPoses {
  TPoint2D StartPt;
  TPoint2D StartVec;
  TPoint2D EndPt;
  TPoint2D EndVec;
};

/// Direction at one end of a piece; zero for a line too short to have one.
inline TPoint2D DirectionAt(const TGeCurve2D& Piece, bool AtEnd) {
  if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Piece)) {
    const double Angle = Arc->GetStartAngle() + (AtEnd ? Arc->GetSweepAngle() : 0.0);
    return DcsX.RotateBy(Angle + std::copysign(kQuarterTurn, Arc->GetSweepAngle()));
  }
  const TPoint2D Way = Piece.EndPoint() - Piece.StartPoint();
  return Way.Mag() < 1e-4 ? TPoint2D() : Way.Normal();
}

/// A unit circle's way from heading `From` to heading `To`, counter-clockwise for `Sense` 1.
inline TPoint2D ArcWay(double From, double To, int Sense) {
  return TPoint2D(std::sin(To) - std::sin(From), std::cos(From) - std::cos(To)) * Sense;
}

/// The shortest way turn, straight, turn of at most `MaxTurn` in all.
///
/// Drives instead of constructing: for each heading after the first turn, is the rest of the way,
/// less what the second turn makes good, straight ahead? The roots are found by bisection.
inline double ShortestByDriving(const TPoses& P, double Radius, double MaxTurn) {
  double Shortest = kStartOfMinimum;
  const double Start = P.StartVec.Angle();
  const double End = P.EndVec.Angle();
  for (const int First : {1, -1}) {
    for (const int Second : {1, -1}) {
      const auto Rest = [&](double Turn) {
        const double Heading = Start + First * Turn;
        const TPoint2D Turns = ArcWay(Start, Heading, First) + ArcWay(Heading, End, Second);
        return (P.EndPt - P.StartPt - Turns * Radius).RotateBy(-Heading);
      };
      constexpr int kSteps = 1000;
      for (int I = 0; I < kSteps; ++I) {
        double Low = kFullTurn * I / kSteps;
        double High = kFullTurn * (I + 1) / kSteps;
        if ((Rest(Low).Y < 0) == (Rest(High).Y < 0)) continue;
        const bool IsLowNegative = Rest(Low).Y < 0;
        for (int Half = 0; Half < 60; ++Half) {
          const double Middle = (Low + High) / 2;
          ((Rest(Middle).Y < 0) == IsLowNegative ? Low : High) = Middle;
        }
        if (Rest(Low).X < 0) continue;  // backwards
        double Left = std::remainder(Second * (End - Start - First * Low), kFullTurn);
        if (Left < 0) Left += kFullTurn;
        if (Low + Left <= MaxTurn) {
          Shortest = std::min(Shortest, Rest(Low).X + Radius * (Low + Left));
        }
      }
    }
  }
  return Shortest;
}

/// The length of the way straight, turn, straight that turns by less than a right angle, plainly so
/// and with room before and behind; otherwise `kStartOfMinimum`.
inline double FilletByDriving(const TPoses& P, double Radius) {
  const double Turn = std::remainder(P.EndVec.Angle() - P.StartVec.Angle(), kFullTurn);
  if (!(std::abs(Turn) > 1e-2 && std::abs(Turn) < kQuarterTurn - 1e-6)) return kStartOfMinimum;
  const TPoint2D Arc =
      ArcWay(P.StartVec.Angle(), P.StartVec.Angle() + Turn, Turn > 0 ? 1 : -1) * Radius;
  const TPoint2D Rest = P.EndPt - P.StartPt - Arc;  // what the straight parts have to make good
  const double Before = Rest.CrossMul(P.EndVec) / P.StartVec.CrossMul(P.EndVec);
  const double Behind = P.StartVec.CrossMul(Rest) / P.StartVec.CrossMul(P.EndVec);
  if (!(std::min(Before, Behind) > 1e-4)) return kStartOfMinimum;
  return Before + Radius * std::abs(Turn) + Behind;
}

}  // namespace tarnalgo::test
