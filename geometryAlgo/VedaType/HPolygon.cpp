#include "geometryAlgo/VedaType/HPolygon.h"

#include <algorithm>
#include <cmath>
#include <polyclipping/clipper.hpp>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "geometryAlgo/VedaType/RegionMeasures.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

double AbsArea(const TVPolyline2D& Contour) {
  return std::abs(Contour.Area());
}

/// Where a contour is found again: the corner of its box, the origin for one without points.
TPoint2D CornerOf(const TVPolyline2D& Contour) {
  return Contour.IsEmpty() ? TPoint2D::FZero : Contour.BoundBox().GetBottomLeft();
}

bool IsSameRing(const TVPolyline2D& A, const TVPolyline2D& B, double Eps) {
  return A.IsEqualTo(B, Eps) || A.IsEqualToReverse(B, Eps);
}

/// Does an operation that may mirror the contour without letting it change its sense.
template <class TOperation>
void KeepSense(TVPolyline2D& Contour, TOperation Operation) {
  const bool WasClockwise = Contour.IsClockwise();
  Operation();
  Contour.SetIsClockwise(WasClockwise);
}

/// Contours by their boxes, to find the pairs that may meet. Refers to the contours.
class TContourPairs {
 public:
  explicit TContourPairs(double Eps) : FEps(Eps) {}

  void Add(const TVPolyline2D& Contour, int Group) {
    const TVRect2D Box = Contour.BoundBox();
    if (Box.IsValid()) FItems.push_back({&Contour, Box, Group});
  }
  void AddAll(const TVGeometry2DList<TVPolyline2D>& Contours, int Group) {
    for (const TVPolyline2D* Contour : Contours) Add(*Contour, Group);
  }

  /// `Test(contour, contour)` is true for some pair whose boxes come within the tolerance; of two
  /// different groups only, or of any.
  template <class TTest>
  bool AnyPair(bool AcrossGroupsOnly, TTest Test) {
    std::stable_sort(FItems.begin(), FItems.end(),
                     [](const TItem& A, const TItem& B) { return A.Box.Left < B.Box.Left; });
    for (std::size_t I = 0; I < FItems.size(); ++I) {
      const TItem& A = FItems[I];
      for (std::size_t J = I + 1; J < FItems.size(); ++J) {
        const TItem& B = FItems[J];
        if (B.Box.Left > A.Box.Right + FEps) break;  // and so are all that follow
        if (B.Box.Bottom > A.Box.Top + FEps || A.Box.Bottom > B.Box.Top + FEps) continue;
        if (AcrossGroupsOnly && A.Group == B.Group) continue;
        if (Test(*A.Contour, *B.Contour)) return true;
      }
    }
    return false;
  }

 private:
  struct TItem {
    const TVPolyline2D* Contour;
    TVRect2D Box;
    int Group;
  };

  double FEps;
  std::vector<TItem> FItems;
};

/// Some contour of one group meets one of the other.
bool GroupsMeet(TContourPairs& Pairs, double Eps) {
  return Pairs.AnyPair(
      true, [&](const TVPolyline2D& A, const TVPolyline2D& B) { return A.IsCrossWith(B, Eps); });
}

/// The ring of a node as a closed contour; nothing for an open path or one without points.
std::unique_ptr<TVPolyline2D> ContourOfNode(const ClipperLib::PolyNode& Node, double Scale) {
  if (Node.IsOpen() || Node.Contour.empty()) return nullptr;
  auto Contour = std::make_unique<TVPolyline2D>(Node.Contour, Scale);
  const TPoint2D First = Contour->First();
  if (Contour->Count() == 1 || Contour->Last() != First) Contour->Add(First);
  return Contour;
}

/// The region of an outer node, if it has a contour.
std::unique_ptr<TVHPolygon> RegionOfNode(const ClipperLib::PolyNode& Node, double Scale) {
  std::unique_ptr<TVPolyline2D> Outline = ContourOfNode(Node, Scale);
  if (!Outline) return nullptr;
  auto Region = std::make_unique<TVHPolygon>(Outline->IsClockwise());
  Region->Add(std::move(Outline));
  for (const ClipperLib::PolyNode* Child : Node.Childs) {
    if (auto Hole = ContourOfNode(*Child, Scale)) Region->Add(std::move(Hole));
  }
  return Region;
}

}  // namespace

// --- One region ---

void TVHPolygon::Clear() {
  FKeepsSense = false;  // turning the outline once a hole would cost a walk round it each time
  TVGeometry2DList::Clear();
  FKeepsSense = true;
}

void TVHPolygon::SetIsClockwise(bool B) {
  FIsClockwise = B;
  for (int I = 0; I < Count(); ++I) {
    TVPolyline2D& Item = *(*this)[I];
    if (HasWantedSense(Item)) Item.SetIsClockwise(I == 0 ? B : !B);
  }
}

int TVHPolygon::PtCount() const {
  int Sum = 0;
  for (const TVPolyline2D* Item : *this) Sum += Item->Count();
  return Sum;
}

bool TVHPolygon::CheckClosed(double Eps) const {
  return std::all_of(begin(), end(),
                     [Eps](const TVPolyline2D* Item) { return Item->IsClosed(Eps); });
}

double TVHPolygon::Area() const {
  return TRegionMeasures(*this).Area();
}

TPoint2D TVHPolygon::Gravity() const {
  return TRegionMeasures(*this).Gravity();
}

bool TVHPolygon::IsEqualTo(const TVHPolygon& Other, double Eps) const {
  if (Count() != Other.Count()) return false;
  if (IsEmpty()) return true;
  if (!IsSameRing(*First(), *Other.First(), Eps)) return false;
  TPlaceIndex Free(kCornerReach * Eps);  // holes of `Other` by the corners of their boxes
  for (int I = 1; I < Count(); ++I) Free.Add(CornerOf(*Other[I]), I);
  for (int I = 1; I < Count(); ++I) {
    const TVPolyline2D& Hole = *(*this)[I];
    int Match = Count();
    Free.VisitNear(CornerOf(Hole), [&](int J, const TPoint2D&) {
      if (J < Match && IsSameRing(Hole, *Other[J], Eps)) Match = J;
      return false;
    });
    if (Match == Count()) return false;
    Free.Remove(CornerOf(*Other[Match]), Match);
  }
  return true;
}

TShapeRelation TVHPolygon::RelationWithPoint(const TPoint2D& P, double Eps) const {
  return TRegionMeasures(*this).RelationWithPoint(P, Eps);
}

bool TVHPolygon::IsCrossWith(const TVLine2D& Line, double Eps) const {
  return IsCrossWith(TVPolyline2D(Line), Eps);
}

bool TVHPolygon::IsCrossWith(const TVPolyline2D& Other, double Eps) const {
  TContourPairs Pairs(Eps);
  Pairs.AddAll(*this, 0);
  Pairs.Add(Other, 1);
  return GroupsMeet(Pairs, Eps);
}

bool TVHPolygon::IsCrossWith(const TVHPolygon& Other, double Eps) const {
  TContourPairs Pairs(Eps);
  Pairs.AddAll(*this, 0);
  Pairs.AddAll(Other, 1);
  return GroupsMeet(Pairs, Eps);
}

void TVHPolygon::YMirror() {
  for (TVPolyline2D* Item : *this) {
    if (HasWantedSense(*Item)) {
      KeepSense(*Item, [Item] { Item->YMirror(); });
    } else {
      Item->YMirror();
    }
  }
}

void TVHPolygon::Transform(const TMatrix2D& Matrix) {
  for (TVPolyline2D* Item : *this) {
    if (HasWantedSense(*Item)) {
      KeepSense(*Item, [&] { Item->Transform(Matrix); });
    } else {
      Item->Transform(Matrix);
    }
  }
}

bool TVHPolygon::HasWantedSense(const TVPolyline2D& Item) const {
  return &Item == First() || Item.IsClosed();
}

void TVHPolygon::Notify(TVPolyline2D& Item, TListChange Change) {
  TVGeometry2DList::Notify(Item, Change);
  if (!FKeepsSense) return;
  if (Change == TListChange::Added) {
    TurnAfterAddition(Item);
  } else if (!IsEmpty()) {
    First()->SetIsClockwise(FIsClockwise);
  }
}

void TVHPolygon::TurnAfterAddition(TVPolyline2D& Item) {
  if (Count() == 1) {
    if (Item.IsClosed()) Item.SetIsClockwise(FIsClockwise);
  } else if (&Item == First()) {
    Item.SetIsClockwise(FIsClockwise);
    (*this)[1]->SetIsClockwise(!FIsClockwise);
  } else if (Item.IsClosed()) {
    Item.SetIsClockwise(!FIsClockwise);
  }
}

TVHPolygon* TVHPolygon::DoClone() const {
  std::unique_ptr<TVHPolygon> Copy(DoNew());
  Copy->FKeepsSense = false;
  Copy->Reserve(Count());
  for (const TVPolyline2D* Item : *this) Copy->Add(Item->Clone());
  Copy->FKeepsSense = true;
  return Copy.release();
}

// --- Lists of regions ---

TVHPolygonList::TVHPolygonList(const ClipperLib::PolyTree& PolyTree, double Scale) {
  // A stack of its own: trees can be deeper than the program's.
  std::vector<const ClipperLib::PolyNode*> Outer(PolyTree.Childs.rbegin(), PolyTree.Childs.rend());
  while (!Outer.empty()) {
    const ClipperLib::PolyNode& Node = *Outer.back();
    Outer.pop_back();
    if (auto Region = RegionOfNode(Node, Scale)) Add(std::move(Region));
    for (auto Hole = Node.Childs.rbegin(); Hole != Node.Childs.rend(); ++Hole) {
      Outer.insert(Outer.end(), (*Hole)->Childs.rbegin(), (*Hole)->Childs.rend());
    }
  }
}

void TVHPolygonList::SetIsClockwise(bool B) {
  for (TVHPolygon* Item : *this) Item->SetIsClockwise(B);
}

int TVHPolygonList::PtCount() const {
  int Sum = 0;
  for (const TVHPolygon* Item : *this) Sum += Item->PtCount();
  return Sum;
}

bool TVHPolygonList::CheckClosed(double Eps) const {
  return std::all_of(begin(), end(),
                     [Eps](const TVHPolygon* Item) { return Item->CheckClosed(Eps); });
}

TPoint2D TVHPolygonList::Gravity() const {
  TWeightedPlaces Places;
  for (const TVHPolygon* Item : *this) {
    if (!Item->IsEmpty()) Places.Add(Item->Gravity(), Item->Area());
  }
  return Places.Total() != 0.0 ? Places.Centroid() : Places.Mean();
}

TPoint2D TVHPolygonList::GravityOutline() const {
  TWeightedPlaces Places;
  for (const TVHPolygon* Item : *this) {
    if (!Item->IsEmpty()) Places.Add(Item->First()->Gravity(), AbsArea(*Item->First()));
  }
  return Places.Total() != 0.0 ? Places.Centroid() : Places.Mean();
}

TShapeRelation TVHPolygonList::RelationWithPoint(const TPoint2D& P, double Eps) const {
  TShapeRelation Result = srOut;
  for (const TVHPolygon* Item : *this) {
    const TShapeRelation Relation = Item->RelationWithPoint(P, Eps);
    if (Relation == srIn) return srIn;
    if (Relation == srOn) Result = srOn;
  }
  return Result;
}

bool TVHPolygonList::IsCrossWith(const TVLine2D& Line, double Eps) const {
  return IsCrossWith(TVPolyline2D(Line), Eps);
}

bool TVHPolygonList::IsCrossWith(const TVPolyline2D& Other, double Eps) const {
  TContourPairs Pairs(Eps);
  for (const TVHPolygon* Item : *this) Pairs.AddAll(*Item, 0);
  Pairs.Add(Other, 1);
  return GroupsMeet(Pairs, Eps);
}

bool TVHPolygonList::IsCrossWith(const TVHPolygon& Other, double Eps) const {
  TContourPairs Pairs(Eps);
  for (const TVHPolygon* Item : *this) Pairs.AddAll(*Item, 0);
  Pairs.AddAll(Other, 1);
  return GroupsMeet(Pairs, Eps);
}

bool TVHPolygonList::IsCrossWith(const TVHPolygonList& Other, double Eps) const {
  TContourPairs Pairs(Eps);
  for (const TVHPolygon* Item : *this) Pairs.AddAll(*Item, 0);
  for (const TVHPolygon* Item : Other) Pairs.AddAll(*Item, 1);
  return GroupsMeet(Pairs, Eps);
}

bool TVHPolygonList::IntersectSelf(double Eps) const {
  TContourPairs Pairs(Eps);
  for (const TVHPolygon* Item : *this) {
    const bool HasSelfIntersection =
        std::any_of(Item->begin(), Item->end(),
                    [Eps](const TVPolyline2D* Contour) { return Contour->IsSelfIntersect(Eps); });
    if (HasSelfIntersection) return true;
    Pairs.AddAll(*Item, 0);
  }
  return Pairs.AnyPair(
      false, [Eps](const TVPolyline2D& A, const TVPolyline2D& B) { return A.IsCrossWith(B, Eps); });
}

void TVHPolygonList::SortByArea() {
  SortByKey([](const TVHPolygon& Item) { return Item.Area(); },
            [](double A, double B) { return CompareExact(B, A); });
}

void TVHPolygonList::SortByRegArea() {
  SortByKey([](const TVHPolygon& Item) { return Item.IsEmpty() ? 0.0 : AbsArea(*Item.First()); },
            [](double A, double B) { return CompareExact(B, A); });
}

}  // namespace tarnalgo
