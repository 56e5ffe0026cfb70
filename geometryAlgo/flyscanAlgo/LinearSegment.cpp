#include "geometryAlgo/flyscanAlgo/LinearSegment.h"

#include <algorithm>
#include <limits>
#include <memory>

#include "geometryAlgo/flyscanAlgo/NormalTurn.h"
#include "geometryAlgo/flyscanAlgo/Tunables.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// What `CompareAngleIntercept` looks at.
struct TSegmentKey {
  std::int32_t Port;
  double Angle;
  double Intercept;
};

/// The difference, capped: two ports may be further apart than the result can say.
int PortDifference(std::int32_t Left, std::int32_t Right) {
  const std::int64_t Difference = std::int64_t{Left} - Right;
  return static_cast<int>(std::clamp<std::int64_t>(Difference, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}

// Function objects, not functions: the sort inlines them.
constexpr auto KeyOf = [](const TLinearSegment& Segment) {
  return TSegmentKey{Segment.ChannelPort(), Segment.LineAngle, Segment.Intercept};
};

constexpr auto CompareKeys = [](const TSegmentKey& Left, const TSegmentKey& Right) {
  if (Left.Port != Right.Port) return PortDifference(Left.Port, Right.Port);
  const double AngleBand = AngleTolerance * 0.5;
  if (TMathUtils::FloatGreater(Left.Angle, Right.Angle, AngleBand)) return 1;
  if (TMathUtils::FloatLess(Left.Angle, Right.Angle, AngleBand)) return -1;
  if (TMathUtils::FloatGreater(Left.Intercept, Right.Intercept)) return 1;
  if (TMathUtils::FloatLess(Left.Intercept, Right.Intercept)) return -1;
  return 0;
};

}  // namespace

TLinearSegment::TLinearSegment(TFlyCurve* ACurve, const TLine2D& ALine)
    : Line(ALine), LineAngle(NormalTurn(ALine.Angle())), RefCurve(ACurve) {
  if (LineAngle > kTurnRoundAngle) {
    Line = ALine.ReverseParam();
    LineAngle -= kPi;
  }
  const bool IsVertical = TMathUtils::FloatEquals(LineAngle, kQuarterTurn, AngleTolerance);
  Intercept = IsVertical ? ALine.EndPoint.X : Line.PointAtX(0.0).Y;
}

TLinearSegment* TLinearSegments::AddLine(TFlyCurve* ACurve, const TLine2D& ALine) {
  return (*this)[Add(std::make_unique<TLinearSegment>(ACurve, ALine))];
}

int TLinearSegments::CompareAngleIntercept(const TLinearSegment& Left,
                                           const TLinearSegment& Right) {
  return CompareKeys(KeyOf(Left), KeyOf(Right));
}

void TLinearSegments::SortByAngleIntercept() {
  SortByKey(KeyOf, CompareKeys);
}

}  // namespace tarnalgo
