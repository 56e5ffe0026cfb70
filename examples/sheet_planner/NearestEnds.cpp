#include "examples/sheet_planner/NearestEnds.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace sheet_planner {

using namespace tarnalgo;

namespace {

double SquareOf(const TPoint2D& Way) {
  return Way.DotMul(Way);
}

double SquareTo(const TRect2D& Box, const TPoint2D& P) {
  return SquareOf({std::max({Box.Min.X - P.X, 0.0, P.X - Box.Max.X}),
                   std::max({Box.Min.Y - P.Y, 0.0, P.Y - Box.Max.Y})});
}

}  // namespace

TNearestEnds::TNearestEnds(std::vector<TPoint2D> Places)
    : FPlaces(std::move(Places)), FNodes(FPlaces.size()), FPositionOf(FPlaces.size()) {
  for (std::size_t I = 0; I < FNodes.size(); ++I) FNodes[I].Place = static_cast<int>(I);
  Build(Whole());
  for (std::size_t I = 0; I < FNodes.size(); ++I) {
    FPositionOf[static_cast<std::size_t>(FNodes[I].Place)] = static_cast<int>(I);
  }
}

void TNearestEnds::Build(const TRange& Range) {
  if (Range.IsEmpty()) return;
  TRect2D Box;
  for (int I = Range.First; I < Range.Last; ++I) Box = Box.Union(PlaceOf(Node(I).Place));
  const bool ByX = Box.Width() > Box.Height();
  const auto At = [this](int Position) { return FNodes.begin() + Position; };
  std::nth_element(At(Range.First), At(Range.Middle()), At(Range.Last),
                   [&](const TNode& A, const TNode& B) {
                     const TPoint2D& P = PlaceOf(A.Place);
                     const TPoint2D& Q = PlaceOf(B.Place);
                     return ByX ? P.X < Q.X : P.Y < Q.Y;
                   });
  Build(Range.Low());
  Build(Range.High());
  Node(Range.Middle()).Box = Box;
}

void TNearestEnds::Switch(int Place, bool IsOn) {
  const int Position = FPositionOf[static_cast<std::size_t>(Place)];
  if (Node(Position).IsOn == IsOn) return;
  Node(Position).IsOn = IsOn;
  for (TRange Range = Whole();;) {
    const int Middle = Range.Middle();
    Node(Middle).CountOn += IsOn ? 1 : -1;
    if (Middle == Position) return;
    Range = Position < Middle ? Range.Low() : Range.High();
  }
}

void TNearestEnds::Look(const TRange& Range, const TPoint2D& P, TBest& Best) const {
  if (Range.IsEmpty()) return;
  const TNode& Here = Node(Range.Middle());
  if (Here.CountOn == 0 || SquareTo(Here.Box, P) > Best.Square) return;
  if (Here.IsOn) {
    const double Square = SquareOf(PlaceOf(Here.Place) - P);
    if (Square < Best.Square || (Square == Best.Square && Here.Place < Best.Place)) {
      Best = {Here.Place, Square};
    }
  }
  const auto Distance = [&](const TRange& Part) {
    return Part.IsEmpty() ? kStartOfMinimum : SquareTo(Node(Part.Middle()).Box, P);
  };
  const bool LowFirst = Distance(Range.Low()) <= Distance(Range.High());
  Look(LowFirst ? Range.Low() : Range.High(), P, Best);
  Look(LowFirst ? Range.High() : Range.Low(), P, Best);
}

int TNearestEnds::Nearest(const TPoint2D& P) const {
  TBest Best;
  Look(Whole(), P, Best);
  return Best.Place;
}

}  // namespace sheet_planner
