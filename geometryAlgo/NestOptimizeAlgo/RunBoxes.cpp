#include "geometryAlgo/NestOptimizeAlgo/RunBoxes.h"

#include <cmath>

namespace tarnalgo {

namespace {

// A box is wider than its points by this share of their coordinates and its size, more than what
// all steps about it round.
constexpr double kPadding = 1e-14;

/// The unit vector of `Way`; any one will do for a way of no length.
TPoint2D AxisOf(const TPoint2D& Way) {
  return Way == TPoint2D::FZero ? DcsX : Way.Normal();
}

}  // namespace

/// What lies within a distance of a segment.
struct TRunBoxes::TCapsule {
  TVLine2D Segment;
  TPoint2D Axis;
  double Length;
  double Radius;

  TCapsule(const TVLine2D& ASegment, double ARadius)
      : Segment(ASegment),
        Axis(AxisOf(ASegment.Vector())),
        Length(ASegment.Vector().Mag()),
        Radius(ARadius) {}

  bool Holds(const TPoint2D& P) const { return Segment.SegmentDistanceTo(P) <= Radius; }
  /// By the box along the segment that holds the given one: a true answer is certain.
  bool Holds(const TBox& Box) const {
    const TPoint2D FromStart = Box.Center - Segment.StartPoint;
    const double Cosine = std::abs(Axis.DotMul(Box.Axis));
    const double Sine = std::abs(Axis.CrossMul(Box.Axis));
    const double Along = Axis.DotMul(FromStart);
    const double HalfAlong = Cosine * Box.Half.X + Sine * Box.Half.Y;
    const double Aside =
        std::abs(Axis.CrossMul(FromStart)) + Sine * Box.Half.X + Cosine * Box.Half.Y;
    const double Beyond = std::max({HalfAlong - Along, Along + HalfAlong - Length, 0.0});
    return Beyond * Beyond + Aside * Aside <= Radius * Radius;
  }
};

TRunBoxes::TRunBoxes(std::span<const TPoint2D> Points)
    : FPoints(Points), FIsOut(Points.size(), false) {
  do {
    const std::size_t Level = FLevels.size();
    const std::size_t Run = RunOf(Level);
    std::vector<TBox>& Boxes = FLevels.emplace_back();
    Boxes.reserve((Points.size() - 1) / Run + 1);
    for (std::size_t First = 0; First < Points.size(); First += Run) {
      const auto Part = Points.subspan(First, std::min(Run, Points.size() - First));
      Boxes.push_back(BoxAlong(Part, Part.back() - Part.front()));
    }
  } while (FLevels.back().size() > 1);
}

std::size_t TRunBoxes::RunOf(std::size_t Level) {
  std::size_t Run = kLeaf;
  for (; Level > 0; --Level) Run *= kBranches;
  return Run;
}

TRunBoxes::TRange TRunBoxes::RangeOf(std::size_t Level, int Node) const {
  const std::size_t First = Slot(Node) * RunOf(Level);
  const std::size_t End = std::min(First + RunOf(Level), FPoints.size());
  return {static_cast<int>(First), static_cast<int>(End) - 1};
}

TRunBoxes::TBox TRunBoxes::BoxAlong(std::span<const TPoint2D> Points, const TPoint2D& Way) {
  TBox Box;
  Box.Count = static_cast<int>(Points.size());
  Box.Axis = AxisOf(Way);
  TPoint2D Low;
  TPoint2D High;
  const TPoint2D& Origin = Points.front();
  for (const TPoint2D& P : Points) {
    const TPoint2D FromOrigin = P - Origin;
    const TPoint2D Place(Box.Axis.DotMul(FromOrigin), Box.Axis.CrossMul(FromOrigin));
    Low = {std::min(Low.X, Place.X), std::min(Low.Y, Place.Y)};
    High = {std::max(High.X, Place.X), std::max(High.Y, Place.Y)};
  }
  const TPoint2D Middle = (Low + High) / 2.0;
  Box.Center = Origin + Box.Axis * Middle.X + Box.Axis.RotateCcw90() * Middle.Y;
  const double Padding =
      kPadding * (std::abs(Origin.X) + std::abs(Origin.Y) + High.X - Low.X + High.Y - Low.Y);
  Box.Half = (High - Low) / 2.0 + TPoint2D(Padding, Padding);
  return Box;
}

/// False only where one of the four sides' directions tells the boxes apart.
bool TRunBoxes::Overlap(const TBox& A, const TBox& B) {
  const double Cosine = std::abs(A.Axis.DotMul(B.Axis));
  const double Sine = std::abs(A.Axis.CrossMul(B.Axis));
  const TPoint2D Between = B.Center - A.Center;
  return std::abs(A.Axis.DotMul(Between)) <= A.Half.X + Cosine * B.Half.X + Sine * B.Half.Y &&
         std::abs(A.Axis.CrossMul(Between)) <= A.Half.Y + Sine * B.Half.X + Cosine * B.Half.Y &&
         std::abs(B.Axis.DotMul(Between)) <= B.Half.X + Cosine * A.Half.X + Sine * A.Half.Y &&
         std::abs(B.Axis.CrossMul(Between)) <= B.Half.Y + Sine * A.Half.X + Cosine * A.Half.Y;
}

bool TRunBoxes::AllNear(int First, int Last, const TVLine2D& Segment, double Tolerance) const {
  return AllNear(FLevels.size() - 1, 0, {First, Last}, TCapsule(Segment, Tolerance));
}

bool TRunBoxes::AllNear(std::size_t Level, int Node, const TRange& Range,
                        const TCapsule& Capsule) const {
  const TRange Own = RangeOf(Level, Node);
  const TRange Part = Common(Range, Own);
  if (Part.IsEmpty()) return true;
  const bool IsWhole = Part.First == Own.First && Part.Last == Own.Last;
  if (IsWhole && Capsule.Holds(FLevels[Level][Slot(Node)])) return true;
  if (Level == 0) {
    const auto Points = FPoints.subspan(Slot(Part.First), Slot(Part.Last - Part.First + 1));
    return std::all_of(Points.begin(), Points.end(),
                       [&](const TPoint2D& P) { return Capsule.Holds(P); });
  }
  const int Children = static_cast<int>(FLevels[Level - 1].size());
  for (int Child = Node * kBranches; Child < std::min((Node + 1) * kBranches, Children); ++Child) {
    if (!AllNear(Level - 1, Child, Range, Capsule)) return false;
  }
  return true;
}

void TRunBoxes::TakeOut(int I) {
  FIsOut[Slot(I)] = true;
  for (int Node = I / kLeaf; std::vector<TBox> & Boxes : FLevels) {
    --Boxes[Slot(Node)].Count;
    Node /= kBranches;
  }
}

}  // namespace tarnalgo
