#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "geometryAlgo/VedaType/EdgeTree.h"
#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "geometryAlgo/VedaType/Point.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadutils.h"
#include "host/tarnds/ListUtils.h"

namespace tarnalgo {

namespace {

/// Number of pairs of edges up to which it does not pay to ask for the direction of a hatch.
constexpr long long kFewPairs = 400;

/// What two edges have in common: one place, or the stretch between two. The parameters are those
/// of the polylines.
struct TMeeting {
  TIntersectPoint2D From;
  TIntersectPoint2D To;  // as `From` for a single place
  bool IsStretch = false;
};

/// The meeting of edge `I` of one polyline with edge `J` of the other, if there is one.
std::optional<TMeeting> MeetingOfEdges(const TVLine2D& A, int I, const TVLine2D& B, int J,
                                       double Eps) {
  TMeeting Meeting;
  const int Code = A.RelationWithSegLine2(B, Meeting.From, Meeting.To, Eps);
  if (Code == 0) return std::nullopt;
  Meeting.IsStretch = Code == 2;
  if (!Meeting.IsStretch) Meeting.To = Meeting.From;
  for (TIntersectPoint2D* Place : {&Meeting.From, &Meeting.To}) {
    Place->Param1 += I;
    Place->Param2 += J;
  }
  return Meeting;
}

TPoint2D AxisForPairs(const std::vector<TPoint2D>& A, const std::vector<TPoint2D>& B) {
  if (static_cast<long long>(A.size()) * static_cast<long long>(B.size()) <= kFewPairs) return DcsX;
  return TEdgeTree::HatchAxis(A.size() < B.size() ? B : A);
}

/// Calls `Visit(Meeting)` for every pair of edges that meet until it answers true; answers whether
/// it did.
template <class TVisitor>
bool VisitMeetings(const std::vector<TPoint2D>& A, const std::vector<TPoint2D>& B, double Eps,
                   TVisitor Visit) {
  const TPoint2D Axis = AxisForPairs(A, B);
  const TEdgeTree TreeOfA(A, Axis);
  const TEdgeTree TreeOfB(B, Axis);
  return TreeOfA.VisitPairs(TreeOfB, Eps, [&](int I, int J) {
    const auto Meeting = MeetingOfEdges(TreeOfA.Edge(I), I, TreeOfB.Edge(J), J, Eps);
    return Meeting && Visit(*Meeting);
  });
}

/// The same for the pairs of edges of one polyline that do not follow each other, and for those
/// that follow each other but run back over one another. The first parameter is the smaller one.
template <class TVisitor>
bool VisitOwnMeetings(const TVPolyline2D& A, double Eps, TVisitor Visit) {
  const TEdgeTree Tree(A.Points(), AxisForPairs(A.Points(), A.Points()));
  const bool IsRing = A.IsClosed(Eps);
  return Tree.VisitOwnPairs(Eps, [&](int I, int J) {
    const TVLine2D First = Tree.Edge(I);
    const TVLine2D Second = Tree.Edge(J);
    const bool AreNeighbours = J == I + 1 || (IsRing && I == 0 && J == Tree.EdgeCount() - 1);
    // Without turning back neighbours share their vertex only; most pairs end here.
    if (AreNeighbours && First.Vector().DotMul(Second.Vector()) >= 0.0) return false;
    const auto Meeting = MeetingOfEdges(First, I, Second, J, Eps);
    return Meeting && (!AreNeighbours || Meeting->IsStretch) && Visit(*Meeting);
  });
}

bool ComesFirst(const TMeeting& A, const TMeeting& B) {
  if (A.From.Param1 != B.From.Param1) return A.From.Param1 < B.From.Param1;
  return A.From.Param2 < B.From.Param2;
}

/// The ends of a meeting, whichever way it runs: −1, 0, 1.
int CompareEnds(const TMeeting& A, const TMeeting& B) {
  const auto InOrder = [](const TMeeting& M) {
    return TPoint2DUtils::CompareByXY(M.From.Point, M.To.Point) <= 0
               ? std::pair(M.From.Point, M.To.Point)
               : std::pair(M.To.Point, M.From.Point);
  };
  const auto [LowOfA, HighOfA] = InOrder(A);
  const auto [LowOfB, HighOfB] = InOrder(B);
  if (const int Sign = TPoint2DUtils::CompareByXY(LowOfA, LowOfB)) return Sign;
  return TPoint2DUtils::CompareByXY(HighOfA, HighOfB);
}

/// Meetings with the same ends are copies; the first along the polyline stands for them.
struct TMeetingOrder {
  static bool IsLess(const TMeeting& A, const TMeeting& B) {
    const int Sign = CompareEnds(A, B);
    return Sign != 0 ? Sign < 0 : ComesFirst(A, B);
  }
  static bool AreCopies(const TMeeting& A, const TMeeting& B) { return CompareEnds(A, B) == 0; }
};

struct TParamOrder {
  static bool IsLess(double A, double B) { return A < B; }
  static bool AreCopies(double A, double B) { return A == B; }  // exact: the very same place
};

/// A list to which the same values may be added by the million: an edge run back and forth a
/// thousand times meets another such edge a million times, in one place. Takes memory for the
/// different values only.
template <class T, class TOrder>
class TCopyFreeList {
 public:
  void Add(const T& Value) {
    if (FItems.size() >= FLimit) DropCopies();
    FItems.push_back(Value);
  }
  /// The different values in their order.
  std::vector<T> Take() {
    DropCopies();
    return std::move(FItems);
  }

 private:
  static constexpr std::size_t kLeastLimit = 4096;

  void DropCopies() {
    std::sort(FItems.begin(), FItems.end(), TOrder::IsLess);
    FItems.erase(std::unique(FItems.begin(), FItems.end(), TOrder::AreCopies), FItems.end());
    FLimit = std::max(kLeastLimit, 2 * FItems.size());
  }

  std::vector<T> FItems;
  std::size_t FLimit = kLeastLimit;
};

/// Everything two polylines have in common, in the order of the first one.
class TMeetingCollector {
 public:
  TMeetingCollector(const TVPolyline2D& A, const TVPolyline2D& B, double Eps) {
    TCopyFreeList<TMeeting, TMeetingOrder> Places;
    TCopyFreeList<TMeeting, TMeetingOrder> Stretches;
    VisitMeetings(A.Points(), B.Points(), Eps, [&](const TMeeting& Meeting) {
      (Meeting.IsStretch ? Stretches : Places).Add(Meeting);
      return false;
    });
    FPlaces = Places.Take();
    FStretches = Stretches.Take();
    std::stable_sort(FStretches.begin(), FStretches.end(), ComesFirst);
    std::stable_sort(FPlaces.begin(), FPlaces.end(), ComesFirst);
    DropPlacesOfStretches(Eps);
    DropRepeatedPlaces(Eps);
  }

  const std::vector<TMeeting>& Places() const { return FPlaces; }
  const std::vector<TMeeting>& Stretches() const { return FStretches; }

 private:
  /// No place lies on a stretch, whichever pass of the polyline found them.
  void DropPlacesOfStretches(double Eps) {
    if (FStretches.empty()) return;
    std::vector<TPoint2D> Ends;  // edge 2 i is stretch i, the edges between lead to the next one
    for (const TMeeting& Stretch : FStretches) {
      Ends.insert(Ends.end(), {Stretch.From.Point, Stretch.To.Point});
    }
    const TEdgeTree Tree(Ends);
    std::erase_if(FPlaces, [&](const TMeeting& Place) {
      const TPoint2D& P = Place.From.Point;
      return Tree.VisitNear(
          P, Eps, [&](int I) { return I % 2 == 0 && Tree.Edge(I).SegmentDistanceTo(P) <= Eps; });
    });
  }

  /// Every place stands for all within the tolerance, the first along the polyline for the others.
  void DropRepeatedPlaces(double Eps) {
    TPlaceIndex Taken(Eps);
    std::erase_if(FPlaces, [&](const TMeeting& Place) {
      if (Taken.HasNear(Place.From.Point)) return true;
      Taken.Add(Place.From.Point, 0);
      return false;
    });
  }

  std::vector<TMeeting> FPlaces;
  std::vector<TMeeting> FStretches;
};

/// Where `P` lies with respect to the ring of the tree.
TShapeRelation RelationWithRing(const TEdgeTree& Ring, const TPoint2D& P, double Eps) {
  if (Ring.VisitNear(P, Eps, [&](int I) { return Ring.Edge(I).SegmentDistanceTo(P) <= Eps; })) {
    return srOn;
  }
  bool IsInside = false;
  Ring.VisitRay(P, [&](int I) {
    const TVLine2D Edge = Ring.Edge(I);
    if (IsPassedByRay(Edge.StartPoint, Edge.EndPoint, P)) IsInside = !IsInside;
    return false;
  });
  return IsInside ? srIn : srOut;
}

/// The relation of two regions, told by the sides on which the parts of their rings lie.
class TRegionRelation {
 public:
  TRegionRelation(const TVPolyline2D& A, const TVPolyline2D& B, double Eps)
      : FRingOfA(RingOf(A)),
        FRingOfB(RingOf(B)),
        FTreeOfA(FRingOfA),
        FTreeOfB(FRingOfB),
        FEps(Eps) {}

  /// Where B lies with respect to A.
  TShapeRelation Find() {
    CollectCuts();
    const TSides SidesOfB = FindSides(FRingOfB, FCutsOfB, FTreeOfA);
    if (SidesOfB.IsCut()) return srCross;
    const TSides SidesOfA = FindSides(FRingOfA, FCutsOfA, FTreeOfB);
    if (SidesOfA.IsCut()) return srCross;
    if (SidesOfB.HasIn) return srContained;
    if (SidesOfA.HasIn) return srContain;
    // No part of either ring lies inside the other region, so nor does any of the other's inside.
    if (SidesOfB.HasOut && SidesOfA.HasOut) return FTouches ? srOn : srDeviate;
    if (SidesOfB.HasOut) return srContain;  // A runs on the outline of B
    return SidesOfA.HasOut ? srOn : srEqual;
  }

 private:
  /// On which sides of the other ring the parts of a ring lie; a part on the ring itself has none.
  struct TSides {
    bool HasIn = false;
    bool HasOut = false;
    bool IsCut() const { return HasIn && HasOut; }
  };

  static std::vector<TPoint2D> RingOf(const TVPolyline2D& Contour) {
    std::vector<TPoint2D> Ring = Contour.Points();
    // A gap within the tolerance would still let a ray slip through.
    if (Contour.Last() != Contour.First()) Ring.push_back(Contour.First());
    return Ring;
  }

  /// Between two neighbouring cuts a ring does not come near the other one, or runs along it.
  void CollectCuts() {
    TCopyFreeList<double, TParamOrder> CutsOfA;
    TCopyFreeList<double, TParamOrder> CutsOfB;
    for (const double End : {0.0, 1.0}) {
      CutsOfA.Add(End * (static_cast<double>(FRingOfA.size()) - 1.0));
      CutsOfB.Add(End * (static_cast<double>(FRingOfB.size()) - 1.0));
    }
    VisitMeetings(FRingOfA, FRingOfB, FEps, [&](const TMeeting& Meeting) {
      for (const TIntersectPoint2D* Place : {&Meeting.From, &Meeting.To}) {
        CutsOfA.Add(Place->Param1);
        CutsOfB.Add(Place->Param2);
      }
      FTouches = true;
      return false;
    });
    FCutsOfA = CutsOfA.Take();
    FCutsOfB = CutsOfB.Take();
  }

  TSides FindSides(const std::vector<TPoint2D>& Ring, const std::vector<double>& Cuts,
                   const TEdgeTree& Other) const {
    TSides Sides;
    const auto Look = [&](const TShapeRelation Relation) {
      Sides.HasIn |= Relation == srIn;
      Sides.HasOut |= Relation == srOut;
    };
    if (Ring.size() == 1) Look(RelationWithRing(Other, Ring.front(), FEps));
    for (std::size_t I = 1; I < Cuts.size() && !Sides.IsCut(); ++I) {
      Look(SideOfPart(Ring, Cuts[I - 1], Cuts[I], Other));
    }
    return Sides;
  }

  /// The side of the part between two parameters: told by the middle of its longest piece, the
  /// place that is surest to be far from its ends. A long piece may run along the other ring and
  /// a short one leave it; where the longest tells nothing any other may tell.
  TShapeRelation SideOfPart(const std::vector<TPoint2D>& Ring, double From, double To,
                            const TEdgeTree& Other) const {
    double Longest = -1.0;
    TPoint2D MiddleOfLongest = Ring[static_cast<std::size_t>(From)];
    VisitPieces(Ring, From, To, [&](const TVLine2D& Piece) {
      const double Length = Piece.Length();
      if (!(Length > Longest)) return false;
      Longest = Length;
      MiddleOfLongest = Piece.Center();
      return false;
    });
    TShapeRelation Side = RelationWithRing(Other, MiddleOfLongest, FEps);
    if (Side != srOn) return Side;
    VisitPieces(Ring, From, To, [&](const TVLine2D& Piece) {
      Side = RelationWithRing(Other, Piece.Center(), FEps);
      return Side != srOn;
    });
    return Side;
  }

  /// Calls `Visit(Piece)` for the edges, the first and the last one cut, between two parameters
  /// until it answers true.
  template <class TVisitor>
  static void VisitPieces(const std::vector<TPoint2D>& Ring, double From, double To,
                          TVisitor Visit) {
    for (auto I = static_cast<std::size_t>(From); I + 1 < Ring.size(); ++I) {
      const double Start = std::max(From - static_cast<double>(I), 0.0);
      const double End = std::min(To - static_cast<double>(I), 1.0);
      if (!(Start < End)) return;
      const TVLine2D Edge(Ring[I], Ring[I + 1]);
      if (Visit(TVLine2D(Edge.EvalPoint(Start), Edge.EvalPoint(End)))) return;
    }
  }

  std::vector<TPoint2D> FRingOfA;
  std::vector<TPoint2D> FRingOfB;
  TEdgeTree FTreeOfA;
  TEdgeTree FTreeOfB;
  double FEps;
  bool FTouches = false;
  std::vector<double> FCutsOfA;  // parameters, ascending, the two ends of the ring among them
  std::vector<double> FCutsOfB;
};

/// The place of the meetings nearest to `From`; a stretch offers its nearest point.
class TNearestPlace {
 public:
  explicit TNearestPlace(const TPoint2D& From) : FFrom(From) {}

  void Offer(const TMeeting& Meeting) {
    const TVLine2D Stretch(Meeting.From.Point, Meeting.To.Point);
    double T = 0.0;
    const double Dist = Stretch.SegmentDistanceTo(FFrom, T);
    if (!(Dist < FLeast)) return;
    FLeast = Dist;
    FNearest = Stretch.EvalPoint(T);
  }
  bool Take(TPoint2D& Nearest) const {
    if (!(FLeast < kStartOfMinimum)) return false;
    Nearest = FNearest;
    return true;
  }

 private:
  TPoint2D FFrom;
  double FLeast = kStartOfMinimum;
  TPoint2D FNearest;
};

/// The self-crossing at which an open polyline loses least when its two ends are cut off there.
class TEndTrimmer {
 public:
  TEndTrimmer(std::vector<double> VertexLengths, double MaxTail, double Eps)
      : FMaxTail(MaxTail), FLeastLoop(kLeastLoop * Eps), FTravelled(std::move(VertexLengths)) {}

  void Offer(const TIntersectPoint2D& Place) {
    const double From = LengthAt(Place.Param1);
    const double To = LengthAt(Place.Param2);
    const double Tail = FTravelled.back() - To;
    if (From > FMaxTail || Tail > FMaxTail || To - From <= FLeastLoop) return;
    if (!(From + Tail < FLeastWaste)) return;
    FLeastWaste = From + Tail;
    FJoint = Place;
  }
  bool HasFound() const { return FLeastWaste < kStartOfMinimum; }
  const TIntersectPoint2D& Joint() const { return FJoint; }

 private:
  double LengthAt(double Param) const {
    const auto I = static_cast<std::size_t>(Param);
    if (I + 1 >= FTravelled.size()) return FTravelled.back();
    return std::lerp(FTravelled[I], FTravelled[I + 1], Param - static_cast<double>(I));
  }

  double FMaxTail;
  double FLeastLoop;
  std::vector<double> FTravelled;  // from the first vertex to each
  double FLeastWaste = kStartOfMinimum;
  TIntersectPoint2D FJoint;
};

}  // namespace

bool TVPolyline2D::CrossWith(const TVLine2D& Line, std::vector<TPoint2D>& Points,
                             std::vector<TVLine2D>& Lines, double Eps) const {
  return CrossWith(TVPolyline2D(Line), Points, Lines, Eps);
}

bool TVPolyline2D::CrossWith(const TVPolyline2D& Other, std::vector<TPoint2D>& Points,
                             std::vector<TVLine2D>& Lines, double Eps) const {
  const TMeetingCollector Found(*this, Other, Eps);
  TAppendGuard PointGuard(Points);
  TAppendGuard LineGuard(Lines);
  for (const TMeeting& Place : Found.Places()) Points.push_back(Place.From.Point);
  for (const TMeeting& Stretch : Found.Stretches()) {
    Lines.emplace_back(Stretch.From.Point, Stretch.To.Point);
  }
  PointGuard.Keep();
  LineGuard.Keep();
  return !Found.Places().empty() || !Found.Stretches().empty();
}

bool TVPolyline2D::CrossWithLastPt(const TVLine2D& Line, TPoint2D& LastPt, double Eps) const {
  return CrossWithLastPt(TVPolyline2D(Line), LastPt, Eps);
}

bool TVPolyline2D::CrossWithLastPt(const TVPolyline2D& Other, TPoint2D& LastPt, double Eps) const {
  double Param = -1.0;
  VisitMeetings(FPoints, Other.FPoints, Eps, [&](const TMeeting& Meeting) {
    if (Meeting.To.Param1 > Param) {
      Param = Meeting.To.Param1;
      LastPt = Meeting.To.Point;
    }
    return false;
  });
  return Param >= 0.0;
}

bool TVPolyline2D::NearestCrossPoint(const TVLine2D& Line, const TPoint2D& From, TPoint2D& Nearest,
                                     double Eps) const {
  return NearestCrossPoint(TVPolyline2D(Line), From, Nearest, Eps);
}

bool TVPolyline2D::NearestCrossPoint(const TVPolyline2D& Other, const TPoint2D& From,
                                     TPoint2D& Nearest, double Eps) const {
  const TMeetingCollector Found(*this, Other, Eps);
  TNearestPlace Place(From);
  for (const TMeeting& Meeting : Found.Places()) Place.Offer(Meeting);
  for (const TMeeting& Meeting : Found.Stretches()) Place.Offer(Meeting);
  return Place.Take(Nearest);
}

bool TVPolyline2D::IsCrossWith(const TVLine2D& Line, double Eps) const {
  return IsCrossWith(TVPolyline2D(Line), Eps);
}

bool TVPolyline2D::IsCrossWith(const TVPolyline2D& Other, double Eps) const {
  return VisitMeetings(FPoints, Other.FPoints, Eps, [](const TMeeting&) { return true; });
}

bool TVPolyline2D::IsSelfIntersect(double Eps) const {
  const auto IsFound = [](const TMeeting&) { return true; };
  const auto AreNear = [Eps](const TPoint2D& P, const TPoint2D& Q) { return P.Equals(Q, Eps); };
  if (std::adjacent_find(begin(), end(), AreNear) == end()) {
    return VisitOwnMeetings(*this, Eps, IsFound);
  }
  // Edges shorter than the tolerance would make the neighbours on both sides of them touch.
  TVPolyline2D Course = *this;
  Course.DeleteNeighbourClosed(Eps);
  return VisitOwnMeetings(Course, Eps, IsFound);
}

TShapeRelation TVPolyline2D::RelationWithPoint(const TPoint2D& P, double Eps) const {
  if (FPoints.empty()) return srOut;
  bool IsInside = false;
  // Most edges lie above or below the point as a whole and are neither near nor passed.
  const double Reach = std::max(Eps, 0.0);
  TPoint2D Start = FPoints.back();
  bool StartIsAbove = P.Y < Start.Y - Reach;
  bool StartIsBelow = P.Y > Start.Y + Reach;
  for (const TPoint2D& End : FPoints) {
    const bool EndIsAbove = P.Y < End.Y - Reach;
    const bool EndIsBelow = P.Y > End.Y + Reach;
    if (!(StartIsAbove && EndIsAbove) && !(StartIsBelow && EndIsBelow)) {
      const TVLine2D Edge(Start, End);
      if (IsNearBoxOf(Edge, P, Eps) && Edge.SegmentDistanceTo(P) <= Eps) return srOn;
      if (IsPassedByRay(Start, End, P)) IsInside = !IsInside;
    }
    Start = End;
    StartIsAbove = EndIsAbove;
    StartIsBelow = EndIsBelow;
  }
  return IsInside ? srIn : srOut;
}

TShapeRelation TVPolyline2D::RelationWith(const TVPolyline2D& Other, double Eps) const {
  if (FPoints.empty() || Other.FPoints.empty()) return srDeviate;
  if (BoundBox().RelationWith(Other.BoundBox(), Eps) == srDeviate) return srDeviate;
  return TRegionRelation(*this, Other, Eps).Find();
}

bool TVPolyline2D::Trim(double MaxTail, double Eps) {
  if (IsClosed(Eps)) return false;
  TEndTrimmer Trimmer(VertexLengths(), MaxTail, Eps);
  VisitOwnMeetings(*this, Eps, [&](const TMeeting& Meeting) {
    // A tail that runs on along the beginning closes a loop, one that runs back does not.
    const bool RunsBack = Meeting.IsStretch && Meeting.To.Param2 < Meeting.From.Param2;
    if (!RunsBack) Trimmer.Offer(Meeting.From);
    return false;
  });
  if (!Trimmer.HasFound()) return false;
  const TIntersectPoint2D Joint = Trimmer.Joint();
  TVPolyline2D Loop = SubCurve(Joint.Param1, Joint.Param2);
  Loop.FPoints.front() = Joint.Point;
  Loop.FPoints.back() = Joint.Point;
  FPoints = std::move(Loop.FPoints);
  return true;
}

}  // namespace tarnalgo
