#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>

#include "geometryAlgo/VedaType/EdgeTree.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadutils.h"

namespace tarnalgo {

double TVPolyline2D::TotalLength() const {
  double Sum = 0.0;
  for (std::size_t I = 1; I < FPoints.size(); ++I) Sum += FPoints[I - 1].DistanceTo(FPoints[I]);
  return Sum;
}

double TVPolyline2D::RangeLength(int From, int To) const {
  const int Size = Count();
  if (From < 0 || From >= Size || To < 0 || To >= Size || From == To) return 0.0;
  if (From > To && !IsClosed()) return 0.0;
  double Sum = 0.0;
  for (int I = From; I != To;) {
    const int Next = TMathUtils::CycInc(I, 1, Size);
    Sum += (*this)[I].DistanceTo((*this)[Next]);
    I = Next;
  }
  return Sum;
}

double TVPolyline2D::DistTo(const TPoint2D& P, TPoint2D& Nearest) const {
  Nearest = TPoint2D::FZero;
  if (Count() == 1) {
    Nearest = First();
    return P.DistanceTo(Nearest);
  }
  double Least = kStartOfMinimum;
  for (int I = 0; I < Count() - 1; ++I) {
    const TVLine2D Edge = Line(I);
    double T = 0.0;
    const double Dist = Edge.SegmentDistanceTo(P, T);
    if (!(Dist < Least)) continue;
    Least = Dist;
    Nearest = Edge.StartPoint * (1.0 - T) + Edge.EndPoint * T;
  }
  return Least;
}

double TVPolyline2D::DistTo(const TPoint2D& P) const {
  TPoint2D Nearest;
  return DistTo(P, Nearest);
}

TPoint2D TVPolyline2D::CalcPointByParam(double U) const {
  if (!(U >= 0.0 && U <= Count() - 1)) return TPoint2D::FZero;
  const int I = static_cast<int>(std::floor(U));
  const int J = static_cast<int>(std::ceil(U));
  const TPoint2D& Start = (*this)[I];
  return Start + ((*this)[J] - Start) * (U - I);
}

double TVPolyline2D::CalcParamByPoint(const TPoint2D& P, double MaxDist) const {
  // An unlimited reach must not be added to coordinates: the sum overflows.
  const bool IsLimited = MaxDist < kStartOfMinimum;
  double Least = MaxDist;
  double Param = 0.0;
  for (int I = 0; I < Count() - 1; ++I) {
    const TVLine2D Edge = Line(I);
    if (IsLimited && !IsNearBoxOf(Edge, P, MaxDist + kLinearTolerance)) continue;
    double T = 0.0;
    const double Dist = Edge.SegmentDistanceTo(P, T);
    if (!(Dist < Least)) continue;
    Least = Dist;
    Param = I + T;
  }
  return Param;
}

double TVPolyline2D::CalcFirstParamByPoint(const TPoint2D& P, double Eps) const {
  if (Count() == 1) return First().Equals(P, Eps) ? 0.0 : -1.0;
  for (int I = 0; I < Count() - 1; ++I) {
    const TVLine2D Edge = Line(I);
    double T = 0.0;
    if (IsNearBoxOf(Edge, P, Eps) && Edge.SegmentDistanceTo(P, T) <= Eps) return I + T;
  }
  return -1.0;
}

TPoint2D TVPolyline2D::CalcTravelPos(double Length) const {
  if (FPoints.empty()) return TPoint2D::FZero;
  if (!(Length > 0.0)) return First();
  for (std::size_t I = 1; I < FPoints.size(); ++I) {
    const double EdgeLength = FPoints[I - 1].DistanceTo(FPoints[I]);
    if (Length < EdgeLength) return Lerp(FPoints[I - 1], FPoints[I], Length / EdgeLength);
    Length -= EdgeLength;
  }
  return Last();
}

TPoint2D TVPolyline2D::CalcDerivative(double U) const {
  const TPoint2D Leaving = CalcRightDerivative(U);
  return Leaving == TPoint2D::FZero ? CalcLeftDerivative(U) : Leaving;  // exact: the neutral value
}

TPoint2D TVPolyline2D::CalcLeftDerivative(double U) const {
  if (!(U >= 0.0 && U <= Count() - 1)) return TPoint2D::FZero;
  return FirstDirection(static_cast<int>(std::ceil(U)) - 1, -1);
}

TPoint2D TVPolyline2D::CalcRightDerivative(double U) const {
  if (!(U >= 0.0 && U <= Count() - 1)) return TPoint2D::FZero;
  return FirstDirection(static_cast<int>(std::floor(U)), 1);
}

TPoint2D TVPolyline2D::FirstDirection(int Edge, int Step) const {
  const int EdgeCount = Count() - 1;
  const bool GoesRound = IsClosed();
  for (int Seen = 0; Seen < EdgeCount; ++Seen, Edge += Step) {
    if (Edge < 0 || Edge >= EdgeCount) {
      if (!GoesRound) break;
      Edge = Edge < 0 ? EdgeCount - 1 : 0;
    }
    const TPoint2D Vector = (*this)[Edge + 1] - (*this)[Edge];
    if (Vector != TPoint2D::FZero) return Vector;  // exact: whatever has a length has a direction
  }
  return TPoint2D::FZero;
}

TVPolyline2D TVPolyline2D::SubCurve(double ParamFrom, double ParamTo) const {
  if (ParamTo < ParamFrom) RaiseError("TVPolyline2D.SubCurve", "ParamTo < ParamFrom");
  TVPolyline2D Part;
  if (FPoints.empty()) return Part;
  Part.Add(CalcPointByParam(ParamFrom));
  if (ParamFrom < Count() - 1 && ParamTo > 0.0) {
    const int FirstBetween = ParamFrom < 0.0 ? 0 : static_cast<int>(std::floor(ParamFrom)) + 1;
    for (int I = FirstBetween; I < Count() && I < ParamTo; ++I) Part.Add((*this)[I]);
  }
  Part.Add(CalcPointByParam(ParamTo));
  return Part;
}

void TVPolyline2D::RemoveDuplicate(std::vector<double>& Params, double Eps) const {
  const std::vector<double> Lengths = VertexLengths();
  const double Total = Lengths.empty() ? 0.0 : Lengths.back();
  const bool GoesRound = IsClosed();
  std::set<double> Taken;  // travelled lengths, farther than Eps from each other
  const auto IsTaken = [&](double Length) {
    const auto Next = Taken.lower_bound(Length - Eps);
    return Next != Taken.end() && *Next <= Length + Eps;
  };
  const auto IsDropped = [&](double U) {
    if (!(U >= 0.0 && U <= Count() - 1)) return true;
    const auto I = static_cast<std::size_t>(U);
    const std::size_t J = std::min(I + 1, Lengths.size() - 1);
    const double Length = std::lerp(Lengths[I], Lengths[J], U - std::floor(U));
    if (std::isnan(Length)) return true;
    if (IsTaken(Length)) return true;
    if (GoesRound && (IsTaken(Length + Total) || IsTaken(Length - Total))) return true;
    Taken.insert(Length);
    return false;
  };
  std::vector<double> Kept;
  Kept.reserve(Params.size());
  std::remove_copy_if(Params.begin(), Params.end(), std::back_inserter(Kept), IsDropped);
  Params.swap(Kept);
}

std::vector<double> TVPolyline2D::VertexLengths() const {
  std::vector<double> Lengths(FPoints.size());
  for (std::size_t I = 1; I < FPoints.size(); ++I) {
    Lengths[I] = Lengths[I - 1] + FPoints[I - 1].DistanceTo(FPoints[I]);
  }
  return Lengths;
}

bool TVPolyline2D::IsPointParamInLineParams(double U,
                                            const std::vector<std::pair<double, double>>& Ranges) {
  return std::any_of(Ranges.begin(), Ranges.end(), [U](const std::pair<double, double>& Range) {
    return TMathUtils::IsInRange(U, Range.first, Range.second, true, true);
  });
}

}  // namespace tarnalgo
