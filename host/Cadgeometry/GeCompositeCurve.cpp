#include "host/Cadgeometry/GeCompositeCurve.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <typeinfo>
#include <unordered_set>
#include <utility>

#include "host/Cadgeometry/Nearest.h"
#include "host/Exceptions.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// Frees each curve of the list once. A square of comparisons: without memory for a sorted copy.
void FreeOnce(const std::vector<TGeCurve2D*>& Curves) {
  for (auto Curve = Curves.begin(); Curve != Curves.end(); ++Curve) {
    if (std::find(Curve + 1, Curves.end(), *Curve) == Curves.end()) delete *Curve;
  }
}

}  // namespace

/// The members that are no composites themselves, those of nested composites included and those
/// without a point left out, in order or backwards. The way down is kept on a list: a recursion
/// would be as deep as the nesting.
class TGeCompositeCurve2D::TLeafWalk {
 public:
  explicit TLeafWalk(const TGeCompositeCurve2D& Whole)
      : TLeafWalk(Whole, 0, Whole.GetCurveCount(), false) {}
  /// Through the members `First` .. `Last` − 1 only.
  TLeafWalk(const TGeCompositeCurve2D& Whole, int First, int Last, bool IsBackwards)
      : FIsBackwards(IsBackwards) {
    FOpen.push_back({&Whole, First, Last, 0.0, Whole.ParamTo()});
  }

  /// The next leaf, nullptr after the last.
  const TGeCurve2D* Next() {
    while (!FOpen.empty()) {
      TLevel& Level = FOpen.back();
      if (Level.First >= Level.Last) {
        FOpen.pop_back();
        continue;
      }
      const int Index = FIsBackwards ? --Level.Last : Level.First++;
      const double From = Level.ParamOf(Index);
      const double To = Level.ParamOf(Index + 1);
      const TGeCurve2D* const Member = Level.Curve->GetCurve(Index);
      if (const auto* const Nested = dynamic_cast<const TGeCompositeCurve2D*>(Member)) {
        FOpen.push_back({Nested, 0, Nested->GetCurveCount(), From, To});
        // A member is never null; the analyser takes the failed cast for a hint that it may be.
      } else if (!Member->IsEmpty()) {  // NOLINT(clang-analyzer-core.CallAndMessage)
        FLeaf = Member;
        FFrom = From;
        FTo = To;
        return Member;
      }
    }
    return nullptr;
  }

  /// The parameter of the whole composite at parameter `T` of the present leaf.
  double WholeParam(double T) const {
    const double Range = FLeaf->ParamTo() - FLeaf->ParamFrom();
    if (!(Range > 0.0) || T <= FLeaf->ParamFrom()) return FFrom;
    return T >= FLeaf->ParamTo() ? FTo : FFrom + (T - FLeaf->ParamFrom()) / Range * (FTo - FFrom);
  }

 private:
  struct TLevel {
    const TGeCompositeCurve2D* Curve = nullptr;
    int First = 0;  // members still to be visited: First .. Last - 1
    int Last = 0;
    double From = 0.0;  // parameters of the whole at the ends of `Curve`
    double To = 0.0;

    double ParamOf(int Index) const {
      const int Count = Curve->GetCurveCount();
      return Index == Count ? To : From + (To - From) * Index / Count;
    }
  };

  std::vector<TLevel> FOpen;
  bool FIsBackwards;
  const TGeCurve2D* FLeaf = nullptr;
  double FFrom = 0.0;
  double FTo = 0.0;
};

TGeCompositeCurve2D::TGeCompositeCurve2D(const std::vector<TGeCurve2D*>& Curves, bool Owns) {
  std::vector<TGeCurve2D*> Sorted;
  try {
    Sorted = Curves;
    FCurves.reserve(Curves.size());
  } catch (...) {
    if (Owns) FreeOnce(Curves);
    throw;
  }
  std::sort(Sorted.begin(), Sorted.end(), std::less<>());
  const auto Repeats = std::unique(Sorted.begin(), Sorted.end());
  const bool HasRepeats = Repeats != Sorted.end();
  if ((!Sorted.empty() && !Sorted.front()) || (Owns && HasRepeats)) {
    Sorted.erase(Repeats, Sorted.end());
    for (TGeCurve2D* Curve : Sorted) {
      if (Owns) delete Curve;
    }
    RaiseError<EParamError>("TGeCompositeCurve2D.Create", "a curve is empty or stands twice");
  }
  for (TGeCurve2D* Curve : Curves) FCurves.emplace_back(Curve, TRelease(Owns));
}

TGeCompositeCurve2D::TGeCompositeCurve2D(const TGeCompositeCurve2D& Other) : TGeCompositeCurve2D() {
  AppendCopies(Other);
}

/// Nested composites of this very class are copied level by level; any other member knows how.
void TGeCompositeCurve2D::AppendCopies(const TGeCompositeCurve2D& Other) {
  std::vector<std::pair<const TGeCompositeCurve2D*, TGeCompositeCurve2D*>> Open{{&Other, this}};
  while (!Open.empty()) {
    const auto [Source, Target] = Open.back();
    Open.pop_back();
    Target->FCurves.reserve(Source->FCurves.size());
    for (const TMember& Member : Source->FCurves) {
      const TGeCurve2D& Curve = *Member;
      if (typeid(Curve) != typeid(TGeCompositeCurve2D)) {
        Target->FCurves.push_back(Curve.Clone());
        continue;
      }
      auto Copy = std::make_unique<TGeCompositeCurve2D>();
      Open.emplace_back(&static_cast<const TGeCompositeCurve2D&>(Curve), Copy.get());
      Target->AddCurve(std::move(Copy));
    }
  }
}

/// Takes nested composites apart before they go, so that none of them has another one to free.
TGeCompositeCurve2D::~TGeCompositeCurve2D() {
  TListUtils::FreeNested(std::move(FCurves), [](const TMember& Member) -> std::vector<TMember>* {
    if (!Member.get_deleter().Owns) return nullptr;  // not to be looked at: it may be gone
    auto* const Nested = dynamic_cast<TGeCompositeCurve2D*>(Member.get());
    return Nested ? &Nested->FCurves : nullptr;
  });
}

TGeCompositeCurve2D& TGeCompositeCurve2D::operator=(const TGeCompositeCurve2D& Other) {
  if (this != &Other) *this = TGeCompositeCurve2D(Other);
  return *this;
}

void TGeCompositeCurve2D::AddCurve(std::unique_ptr<TGeCurve2D> Curve) {
  if (!Curve) RaiseError<EParamError>("TGeCompositeCurve2D.AddCurve", "the curve is empty");
  FCurves.push_back(std::move(Curve));
}

void TGeCompositeCurve2D::Reserve(int Count) {
  if (Count > 0) FCurves.reserve(static_cast<std::size_t>(std::min(Count, kMostReserved)));
}

std::size_t TGeCompositeCurve2D::CheckedIndex(int Index) const {
  if (Index < 0 || Index >= GetCurveCount()) {
    RaiseError<EParamError>("TGeCompositeCurve2D", "index out of range");
  }
  return static_cast<std::size_t>(Index);
}

bool TGeCompositeCurve2D::IsEmpty() const {
  return TLeafWalk(*this).Next() == nullptr;
}

TPoint2D TGeCompositeCurve2D::StartPoint() const {
  const TGeCurve2D* const Leaf = TLeafWalk(*this).Next();
  return Leaf ? Leaf->StartPoint() : TPoint2D::FZero;
}

TPoint2D TGeCompositeCurve2D::EndPoint() const {
  const TGeCurve2D* const Leaf = TLeafWalk(*this, 0, GetCurveCount(), true).Next();
  return Leaf ? Leaf->EndPoint() : TPoint2D::FZero;
}

bool TGeCompositeCurve2D::PlaceOfEmpty(int Index, TPoint2D& Place) const {
  if (const TGeCurve2D* const Later = TLeafWalk(*this, Index, GetCurveCount(), false).Next()) {
    Place = Later->StartPoint();
    return true;
  }
  if (const TGeCurve2D* const Earlier = TLeafWalk(*this, 0, Index, true).Next()) {
    Place = Earlier->EndPoint();
    return true;
  }
  return false;
}

TPoint2D TGeCompositeCurve2D::PointAtParam(double T) const {
  double Inside = ClampParam(T, ParamTo());
  if (Inside == 0.0) return StartPoint();  // exact: the ends of the range are the ends
  std::vector<std::pair<const TGeCompositeCurve2D*, int>> WayDown;
  const TGeCurve2D* Curve = this;
  while (const auto* const Composite = dynamic_cast<const TGeCompositeCurve2D*>(Curve)) {
    const int Index = static_cast<int>(Inside);
    WayDown.emplace_back(Composite, Index);
    if (Index >= Composite->GetCurveCount()) break;
    Curve = Composite->GetCurve(Index);
    Inside = Curve->ParamFrom() + (Curve->ParamTo() - Curve->ParamFrom()) * (Inside - Index);
  }
  const bool IsAtLeaf = WayDown.back().second < WayDown.back().first->GetCurveCount();
  if (IsAtLeaf && !Curve->IsEmpty()) return Curve->PointAtParam(Inside);
  TPoint2D Place;
  while (!WayDown.empty() && !WayDown.back().first->PlaceOfEmpty(WayDown.back().second, Place)) {
    WayDown.pop_back();
  }
  return Place;
}

double TGeCompositeCurve2D::NearestParam(const TPoint2D& P, double& Distance) const {
  Distance = kStartOfMinimum;
  double Nearest = 0.0;
  const TGeCurve2D* Ended = nullptr;  // the leaf just passed, when its end is the nearest place
  TLeafWalk Walk(*this);
  while (const TGeCurve2D* const Leaf = Walk.Next()) {
    // The parameter at which a leaf ends belongs to the next one, wherever that starts.
    if (Ended && !Ended->EndPoint().Equals(Leaf->StartPoint())) {
      Nearest = std::nextafter(Nearest, 0.0);
    }
    Ended = nullptr;
    double LeafDistance = kStartOfMinimum;
    const double T = Leaf->NearestParam(P, LeafDistance);
    if (!(LeafDistance < Distance)) continue;
    Distance = LeafDistance;
    Nearest = Walk.WholeParam(T);
    if (T >= Leaf->ParamTo() && Leaf->ParamTo() > Leaf->ParamFrom()) Ended = Leaf;
  }
  return Nearest;
}

void TGeCompositeCurve2D::Reverse() {
  // All that is to be turned is found before anything is.
  std::unordered_set<const TGeCurve2D*> Found{this};
  std::vector<TGeCompositeCurve2D*> Composites{this};
  std::vector<TGeCurve2D*> Leaves;
  for (std::size_t I = 0; I < Composites.size(); ++I) {
    for (const TMember& Member : Composites[I]->FCurves) {
      if (!Found.insert(Member.get()).second) continue;
      if (auto* const Nested = dynamic_cast<TGeCompositeCurve2D*>(Member.get())) {
        Composites.push_back(Nested);
      } else {
        Leaves.push_back(Member.get());
      }
    }
  }
  for (TGeCompositeCurve2D* Composite : Composites) {
    std::reverse(Composite->FCurves.begin(), Composite->FCurves.end());
  }
  for (TGeCurve2D* Leaf : Leaves) Leaf->Reverse();
}

TRect2D TGeCompositeCurve2D::GetBoundBox() const {
  TRect2D Box;
  TLeafWalk Walk(*this);
  while (const TGeCurve2D* const Leaf = Walk.Next()) Box = Box.Union(Leaf->GetBoundBox());
  return Box;
}

double TGeCompositeCurve2D::CurveLength() const {
  double Length = 0.0;
  TLeafWalk Walk(*this);
  while (const TGeCurve2D* const Leaf = Walk.Next()) Length += Leaf->CurveLength();
  return Length;
}

void TGeCompositeCurve2D::AppendSamples(double ChordEps, std::vector<TPoint2D>& Points) const {
  TAppendGuard Guard(Points);
  TLeafWalk Walk(*this);
  while (const TGeCurve2D* const Leaf = Walk.Next()) Leaf->AppendSamples(ChordEps, Points);
  Guard.Keep();
}

void TGeCompositeCurve2D::AppendPieces(std::vector<TCurvePiece>& Pieces) const {
  TAppendGuard Guard(Pieces);
  TLeafWalk Walk(*this);
  while (const TGeCurve2D* const Leaf = Walk.Next()) {
    std::size_t Index = Pieces.size();
    Leaf->AppendPieces(Pieces);
    for (; Index < Pieces.size(); ++Index) {
      Pieces[Index].From = Walk.WholeParam(Pieces[Index].From);
      Pieces[Index].To = Walk.WholeParam(Pieces[Index].To);
    }
  }
  Guard.Keep();
}

}  // namespace tarnalgo
