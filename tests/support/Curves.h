#pragma once  // tests/support/Curves.h

#include <cmath>
#include <memory>
#include <random>
#include <utility>

#include "host/Cadgeometry.h"
#include "tests/support/Generate.h"

namespace tarnalgo::test {

inline const char* const kCurveKinds[] = {"line",     "arc",         "circle",
                                          "polyline", "poly-Bezier", "composite"};
inline constexpr int kCurveKindCount = 6;

/// Makes curves from random numbers; mirrored it makes the mirror images (X negated) of the same.
class TCurveMaker {
 public:
  TCurveMaker(unsigned Seed, bool IsMirrored) : FRandom(Seed), FIsMirrored(IsMirrored) {}

  std::unique_ptr<TGeCurve2D> Make(int Kind) {
    switch (Kind) {
      case 0:
        return std::make_unique<TGeLine2D>(Point(), Point());
      case 1:
        return Arc(Point(), Point());
      case 2: {
        const double Angle = RandomDouble(FRandom, 0, kFullTurn);
        const double Sweep = RandomInt(FRandom, 0, 1) == 0 ? kFullTurn : -kFullTurn;
        return std::make_unique<TGeCircularArc2D>(Point(), RandomDouble(FRandom, 1, 5),
                                                  FIsMirrored ? kPi - Angle : Angle,
                                                  FIsMirrored ? -Sweep : Sweep);
      }
      case 3: {
        TDynPoints2D Points(static_cast<std::size_t>(RandomInt(FRandom, 3, 7)));
        for (TPoint2D& P : Points) P = Point();
        return std::make_unique<TGePolyline2D>(Points);
      }
      case 4: {
        auto Curve = std::make_unique<TGePolyBezier2D>();
        TPoint2D Last = Point();
        for (int I = RandomInt(FRandom, 1, 3); I > 0; --I) Last = AddBezier(*Curve, Last);
        return Curve;
      }
      default:
        return Composite();
    }
  }

 private:
  TPoint2D Point() {
    const TPoint2D P = RandomPoint(FRandom, -5, 5);
    return FIsMirrored ? TPoint2D(-P.X, P.Y) : P;
  }
  std::unique_ptr<TGeCurve2D> Arc(const TPoint2D& From, const TPoint2D& To) {
    double Bulge = RandomDouble(FRandom, -2, 2);
    if (std::abs(Bulge) < 0.05) Bulge = 0.05;
    return std::make_unique<TGeCircularArc2D>(From, FIsMirrored ? -Bulge : Bulge, To);
  }
  TPoint2D AddBezier(TGePolyBezier2D& Curve, const TPoint2D& From) {
    const TPoint2D C1 = Point();
    const TPoint2D C2 = Point();
    const TPoint2D To = Point();
    Curve.AddBezier({From, C1, C2, To});
    return To;
  }
  std::unique_ptr<TGeCurve2D> Composite() {
    auto Curve = std::make_unique<TGeCompositeCurve2D>();
    TPoint2D Last = Point();
    for (int I = RandomInt(FRandom, 2, 4); I > 0; --I) {
      const int Kind = RandomInt(FRandom, 0, 2);
      const TPoint2D Next = Point();
      if (Kind == 0) Curve->AddCurve(std::make_unique<TGeLine2D>(Last, Next));
      if (Kind == 1) Curve->AddCurve(Arc(Last, Next));
      if (Kind == 2) {
        auto Bezier = std::make_unique<TGePolyBezier2D>();
        Bezier->AddBezier({Last, Point(), Point(), Next});
        auto Nested = std::make_unique<TGeCompositeCurve2D>();
        Nested->AddCurve(std::move(Bezier));
        Curve->AddCurve(std::move(Nested));
      }
      Last = Next;
    }
    return Curve;
  }

  std::mt19937 FRandom;
  bool FIsMirrored;
};

}  // namespace tarnalgo::test
