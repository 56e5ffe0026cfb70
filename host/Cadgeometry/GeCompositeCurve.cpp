#include "host/Cadgeometry/GeCompositeCurve.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "host/Cadgeometry/Nearest.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

bool HoldsOneTwice(std::vector<TGeCurve2D*> Curves) {
  std::sort(Curves.begin(), Curves.end(), std::less<>());
  return std::adjacent_find(Curves.begin(), Curves.end()) != Curves.end();
}

/// The list without repetitions, as owners: what a refused list leaves to free.
void FreeOnce(std::vector<TGeCurve2D*> Curves) {
  std::sort(Curves.begin(), Curves.end(), std::less<>());
  Curves.erase(std::unique(Curves.begin(), Curves.end()), Curves.end());
  for (TGeCurve2D* Curve : Curves) delete Curve;
}

}  // namespace

TGeCompositeCurve2D::TGeCompositeCurve2D(const std::vector<TGeCurve2D*>& Curves, bool Owns) {
  const bool HasNull = std::find(Curves.begin(), Curves.end(), nullptr) != Curves.end();
  if (HasNull || (Owns && HoldsOneTwice(Curves))) {
    if (Owns) FreeOnce(Curves);
    RaiseError<EParamError>("TGeCompositeCurve2D.Create", "a curve is empty or stands twice");
  }
  FCurves.reserve(Curves.size());
  for (TGeCurve2D* Curve : Curves) FCurves.emplace_back(Curve, TRelease(Owns));
}

TGeCompositeCurve2D::TGeCompositeCurve2D(const TGeCompositeCurve2D& Other) : TGeCurve2D(Other) {
  FCurves.reserve(Other.FCurves.size());
  for (const TMember& Member : Other.FCurves) FCurves.push_back(Member->Clone());
}

TGeCompositeCurve2D& TGeCompositeCurve2D::operator=(const TGeCompositeCurve2D& Other) {
  if (this != &Other) *this = TGeCompositeCurve2D(Other);
  return *this;
}

void TGeCompositeCurve2D::AddCurve(std::unique_ptr<TGeCurve2D> Curve) {
  if (!Curve) RaiseError<EParamError>("TGeCompositeCurve2D.AddCurve", "the curve is empty");
  FCurves.push_back(std::move(Curve));
}

std::size_t TGeCompositeCurve2D::CheckedIndex(int Index) const {
  if (Index < 0 || Index >= GetCurveCount()) {
    RaiseError<EParamError>("TGeCompositeCurve2D", "index out of range");
  }
  return static_cast<std::size_t>(Index);
}

bool TGeCompositeCurve2D::IsEmpty() const {
  return std::all_of(FCurves.begin(), FCurves.end(),
                     [](const TMember& Member) { return Member->IsEmpty(); });
}

TPoint2D TGeCompositeCurve2D::StartPoint() const {
  for (const TMember& Member : FCurves) {
    if (!Member->IsEmpty()) return Member->StartPoint();
  }
  return TPoint2D::FZero;
}

TPoint2D TGeCompositeCurve2D::EndPoint() const {
  for (auto Member = FCurves.rbegin(); Member != FCurves.rend(); ++Member) {
    if (!(*Member)->IsEmpty()) return (*Member)->EndPoint();
  }
  return TPoint2D::FZero;
}

TPoint2D TGeCompositeCurve2D::PointAtParam(double T) const {
  const double Inside = ClampParam(T, ParamTo());
  if (Inside == 0.0) return StartPoint();  // exact: the ends of the range are the ends
  auto Index = static_cast<std::size_t>(Inside);
  if (Index < FCurves.size() && !FCurves[Index]->IsEmpty()) {
    const TGeCurve2D& Member = *FCurves[Index];
    const double Fraction = Inside - static_cast<double>(Index);
    return Member.PointAtParam(Member.ParamFrom() +
                               (Member.ParamTo() - Member.ParamFrom()) * Fraction);
  }
  // An empty member lasts where the next one starts; past the last one it is the end.
  while (Index < FCurves.size() && FCurves[Index]->IsEmpty()) ++Index;
  return Index < FCurves.size() ? FCurves[Index]->StartPoint() : EndPoint();
}

double TGeCompositeCurve2D::NearestParam(const TPoint2D& P, double& Distance) const {
  Distance = kStartOfMinimum;
  double Nearest = 0.0;
  for (int I = 0; I < GetCurveCount(); ++I) {
    const TGeCurve2D& Member = *GetCurve(I);
    double MemberDistance = kStartOfMinimum;
    const double T = Member.NearestParam(P, MemberDistance);
    if (!(MemberDistance < Distance)) continue;
    const double Range = Member.ParamTo() - Member.ParamFrom();
    const double Fraction = Range > 0.0 ? (T - Member.ParamFrom()) / Range : 0.0;
    const bool IsLast = I + 1 == GetCurveCount();
    Distance = MemberDistance;
    Nearest = SequenceParam(I, Fraction, IsLast, Member.EndPoint(),
                            IsLast ? Member.EndPoint() : GetCurve(I + 1)->StartPoint());
  }
  return Nearest;
}

void TGeCompositeCurve2D::Reverse() {
  std::reverse(FCurves.begin(), FCurves.end());
  for (const TMember& Member : FCurves) Member->Reverse();
}

TRect2D TGeCompositeCurve2D::GetBoundBox() const {
  TRect2D Box;
  for (const TMember& Member : FCurves) Box = Box.Union(Member->GetBoundBox());
  return Box;
}

double TGeCompositeCurve2D::CurveLength() const {
  double Length = 0.0;
  for (const TMember& Member : FCurves) Length += Member->CurveLength();
  return Length;
}

void TGeCompositeCurve2D::AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const {
  for (const TMember& Member : FCurves) Member->AppendSamples(ChordEps, Points);
}

void TGeCompositeCurve2D::AppendPieces(std::vector<TCurvePiece>& Pieces) const {
  for (int I = 0; I < GetCurveCount(); ++I) {
    const TGeCurve2D& Member = *GetCurve(I);
    const double From = Member.ParamFrom();
    const double Range = Member.ParamTo() - From;
    std::size_t Index = Pieces.size();
    Member.AppendPieces(Pieces);
    const auto ToOwnParam = [&](double T) { return Range > 0.0 ? I + (T - From) / Range : I; };
    for (; Index < Pieces.size(); ++Index) {
      Pieces[Index].From = ToOwnParam(Pieces[Index].From);
      Pieces[Index].To = ToOwnParam(Pieces[Index].To);
    }
  }
}

}  // namespace tarnalgo
