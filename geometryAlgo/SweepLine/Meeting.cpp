#include "geometryAlgo/SweepLine/Meeting.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "geometryAlgo/SweepLine/SideOfLine.h"
#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/ExtendedPoint.h"

namespace tarnalgo {

namespace {

/// On which side of `Line` and how far `P` is, times the length of `Line`: of the exact sign and
/// within 2^-28 of itself, however much of it extended precision loses.
long double CloseSide(const TVLine2D& Line, const TPoint2D& P) {
  constexpr long double kCloseEnough = 0x1p28L;
  const TRoundedSide<long double> Side(Line.StartPoint, Line.EndPoint, P);
  if (std::abs(Side.Value) >= kCloseEnough * Side.Bound) return Side.Value;
  return RoundedSide(Line.StartPoint, Line.EndPoint, P);
}

}  // namespace

bool TMeetingTest::IsNear(const TVLine2D& Line, const TPoint2D& P) const {
  if (P == Line.StartPoint || P == Line.EndPoint) return true;
  if (std::abs(PlainSide(Line, {P, P})) == 1) return false;
  const TExtPoint2D Start(Line.StartPoint);
  const TExtPoint2D End(Line.EndPoint);
  const TExtPoint2D V = End - Start;
  const TExtPoint2D D = TExtPoint2D(P) - Start;
  const long double Reach = FTolerance;
  if (!(V.DotMul(D) > 0.0L)) return D.Mag() <= Reach;
  const TExtPoint2D FromEnd = TExtPoint2D(P) - End;
  if (!(V.DotMul(FromEnd) < 0.0L)) return FromEnd.Mag() <= Reach;
  const long double Left = V.X * D.Y;
  const long double Right = V.Y * D.X;
  const long double Side = std::abs(Left - Right);
  const long double Limit = Reach * V.Mag();
  const long double Rounding =
      4 * std::numeric_limits<long double>::epsilon() * (std::abs(Left) + std::abs(Right));
  if (std::abs(Side - Limit) > Rounding) return Side < Limit;
  // Without a tolerance to speak of, extended precision does not decide.
  return std::abs(RoundedSide(Line.StartPoint, Line.EndPoint, P)) <= Limit;
}

bool TMeetingTest::FindTouch(const TVLine2D& A, const TVLine2D& B, TMeeting& Meeting) const {
  bool Found = false;
  const auto Take = [&](const TPoint2D& P, const TVLine2D& Other) {
    if (!IsNear(Other, P)) return;
    if (!Found || TPoint2DUtils::CompareByXY(P, Meeting.P1) < 0) Meeting.P1 = P;
    if (!Found || TPoint2DUtils::CompareByXY(P, Meeting.P2) > 0) Meeting.P2 = P;
    Found = true;
  };
  Take(A.StartPoint, B);
  Take(A.EndPoint, B);
  Take(B.StartPoint, A);
  Take(B.EndPoint, A);
  if (!Found) return false;
  Meeting.IsStretch = !Meeting.P1.Equals(Meeting.P2, FTolerance);
  if (!Meeting.IsStretch) Meeting.P2 = Meeting.P1;
  return true;
}

bool TMeetingTest::FindCrossing(const TVLine2D& A, const TVLine2D& B, TMeeting& Meeting) {
  const auto IsSplitBy = [](const TVLine2D& Line, const TVLine2D& By) {
    return SideOfLine(By.StartPoint, By.EndPoint, Line.StartPoint) *
               SideOfLine(By.StartPoint, By.EndPoint, Line.EndPoint) <
           0;
  };
  if (!IsSplitBy(A, B) || !IsSplitBy(B, A)) return false;
  Meeting = CrossingOf(A, B);
  return true;
}

TMeeting TMeetingTest::CrossingOf(const TVLine2D& A, const TVLine2D& B) {
  const TPoint2D VA = A.Vector();
  const TPoint2D VB = B.Vector();
  const bool UseA = VA.DotMul(VA) <= VB.DotMul(VB);
  const TVLine2D& Line = UseA ? A : B;
  const TVLine2D& Other = UseA ? B : A;
  const long double Side1 = CloseSide(Other, Line.StartPoint);
  const long double Side2 = CloseSide(Other, Line.EndPoint);
  const long double T = Side1 != Side2 ? Side1 / (Side1 - Side2) : 0.5L;
  const TExtPoint2D Start(Line.StartPoint);
  const TPoint2D P =
      (Start + (TExtPoint2D(Line.EndPoint) - Start) * std::clamp(T, 0.0L, 1.0L)).Rounded();
  return {false, P, P};
}

TMeetingTest::TLook TMeetingTest::LookAt(const TVLine2D& A, const TVLine2D& B) const {
  const auto [LowA, HighA] = std::minmax(A.StartPoint.Y, A.EndPoint.Y);
  const auto [LowB, HighB] = std::minmax(B.StartPoint.Y, B.EndPoint.Y);
  if (A.StartPoint.X > B.EndPoint.X + FTolerance || B.StartPoint.X > A.EndPoint.X + FTolerance ||
      LowA > HighB + FTolerance || LowB > HighA + FTolerance) {
    return TLook::kApart;
  }
  const int SideOfA = PlainSide(A, B);
  if (std::abs(SideOfA) == 1) return TLook::kApart;
  const int SideOfB = PlainSide(B, A);
  if (std::abs(SideOfB) == 1) return TLook::kApart;
  return SideOfA == 0 && SideOfB == 0 ? TLook::kCross : TLook::kUnsure;
}

int TMeetingTest::PlainSide(const TVLine2D& Line, const TVLine2D& Other) const {
  const TPoint2D V = Line.Vector();
  const TPoint2D D1 = Other.StartPoint - Line.StartPoint;
  const TPoint2D D2 = Other.EndPoint - Line.StartPoint;
  const double Side1 = V.CrossMul(D1);
  const double Side2 = V.CrossMul(D2);
  const double Length = std::abs(V.X) + std::abs(V.Y);
  const double Reach = std::abs(D1.X) + std::abs(D1.Y) + std::abs(D2.X) + std::abs(D2.Y);
  // Eight roundings of the products, and the underflow of all of them.
  const double Slack = Length * (FTolerance + 8 * std::numeric_limits<double>::epsilon() * Reach) +
                       std::numeric_limits<double>::min() * 16;
  if (!(std::abs(Side1) > Slack && std::abs(Side2) > Slack)) return 2;
  if ((Side1 > 0.0) != (Side2 > 0.0)) return 0;
  return Side1 > 0.0 ? 1 : -1;
}

}  // namespace tarnalgo
