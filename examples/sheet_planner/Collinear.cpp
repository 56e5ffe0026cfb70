#include "examples/sheet_planner/Collinear.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace sheet_planner {

using namespace tarnalgo;

namespace {
/// Angle: how far below half a turn a direction counts as a hair below 0.
constexpr double kHalfTurnMargin = 1e-3;
}  // namespace

std::vector<TDirectionClass> DirectionClasses(const std::vector<double>& Angles, double MaxSpread) {
  std::vector<int> Order(Angles.size());
  std::iota(Order.begin(), Order.end(), 0);
  const auto AngleOf = [&Angles](int I) { return Angles[static_cast<std::size_t>(I)]; };
  std::stable_sort(Order.begin(), Order.end(),
                   [&](int A, int B) { return AngleOf(A) < AngleOf(B); });
  std::vector<TDirectionClass> Classes;
  std::size_t First = 0;
  while (First < Order.size()) {
    std::size_t End = First + 1;
    std::size_t Widest = End;
    double WidestGap = 0.0;
    for (; End < Order.size(); ++End) {
      const double Width = AngleOf(Order[End]) - AngleOf(Order[First]);
      const double Gap = AngleOf(Order[End]) - AngleOf(Order[End - 1]);
      if (Width > MaxSpread / 2 && Gap > WidestGap) {
        Widest = End;
        WidestGap = Gap;
      }
      if (Width > MaxSpread) break;
    }
    if (End < Order.size()) End = Widest;
    TDirectionClass& Class = Classes.emplace_back();
    Class.Members.assign(Order.begin() + static_cast<std::ptrdiff_t>(First),
                         Order.begin() + static_cast<std::ptrdiff_t>(End));
    Class.Angle = AngleOf(Order[First + (End - First) / 2]);
    Class.Spread = AngleOf(Order[End - 1]) - AngleOf(Order[First]);
    First = End;
  }
  return Classes;
}

double UndirectedAngle(const TLine2D& Line) {
  const TPoint2D Way = Line.EndPoint - Line.StartPoint;
  const double Angle = std::atan2(Way.Y, Way.X);
  const double Upward = Angle < 0.0 ? Angle + kPi : Angle;
  return Upward > kPi - kHalfTurnMargin ? Upward - kPi : Upward;
}

TDirectionFrame::TDirectionFrame(double Angle, const TPoint2D& AOrigin)
    : Origin(AOrigin), Axis(std::cos(Angle), std::sin(Angle)) {}

}  // namespace sheet_planner
