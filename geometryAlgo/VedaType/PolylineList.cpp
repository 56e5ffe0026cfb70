#include <algorithm>
#include <cmath>
#include <optional>
#include <polyclipping/clipper.hpp>
#include <unordered_map>

#include "geometryAlgo/VedaType/PlaceIndex.h"
#include "geometryAlgo/VedaType/Polyline.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// Ends that meet in one place are compared each with that many others at most, the ones later in
/// the list first: a heap of ends in one place must not cost its square.
constexpr int kMostMates = 64;

/// A point that equal boxes share, but not those that have no more than a corner or the centre in
/// common.
TPoint2D MarkOf(const TVRect2D& Box) {
  return 0.5 * Box.GetBottomLeft() + 0.25 * Box.GetTopRight();
}

/// The two ends of the polylines of a list that may be joined, as numbers: 2 i is the start of
/// polyline i and 2 i + 1 its end. Each end has at most one mate.
class TEndJoiner {
 public:
  TEndJoiner(const TVPolyline2DList& List, double Eps) : FEps(Eps) {
    FItems.assign(List.begin(), List.end());
    FMates.assign(2 * FItems.size(), -1);
  }

  int ItemCount() const { return static_cast<int>(FItems.size()); }
  /// Closed polylines and those without an edge have no ends to join.
  bool IsJoinable(int Item) const {
    const TVPolyline2D& Polyline = *FItems[Index(Item)];
    return Polyline.Count() >= 2 && !Polyline.IsClosed(FEps);
  }

  /// Each end takes the first free end before it in the list that it meets.
  void MateByOrder() {
    TPlaceIndex Free(FEps);
    for (int Id = 0; Id < 2 * ItemCount(); ++Id) {
      if (!IsJoinable(Id / 2)) continue;
      const int Mate = FirstNear(Free, Id);
      if (Mate < 0) {
        Free.Add(Place(Id), Id);
        continue;
      }
      Join(Id, Mate);
      Free.Remove(Place(Mate), Mate);
    }
  }

  /// Of all ends that meet, those are joined first between which the way goes on straightest.
  void MateByStraightness() {
    std::vector<TCandidate> Candidates = CollectCandidates();
    std::stable_sort(Candidates.begin(), Candidates.end(),
                     [](const TCandidate& A, const TCandidate& B) { return A.Turn < B.Turn; });
    for (const TCandidate& Pair : Candidates) {
      if (FMates[Index(Pair.A)] < 0 && FMates[Index(Pair.B)] < 0) Join(Pair.A, Pair.B);
    }
  }

  /// Each polyline is joined to the chain that the polylines just before it form.
  void MateWithFormer() {
    int Head = -1;  // the two free ends of the chain, −1 without a chain
    int Tail = -1;
    for (int Item = 0; Item < ItemCount(); ++Item) {
      if (!IsJoinable(Item)) {
        Head = Tail = -1;
        continue;
      }
      const int Start = 2 * Item;
      const int End = Start + 1;
      if (Meet(Tail, Start)) {
        Tail = JoinAndPass(Tail, Start);
      } else if (Meet(Tail, End)) {
        Tail = JoinAndPass(Tail, End);
      } else if (Meet(Head, End)) {
        Head = JoinAndPass(Head, End);
      } else if (Meet(Head, Start)) {
        Head = JoinAndPass(Head, Start);
      } else {
        Head = Start;
        Tail = End;
      }
      if (!Meet(Head, Tail)) continue;
      Join(Head, Tail);  // the chain has become a ring
      Head = Tail = -1;
    }
  }

  /// For every polyline the points of the chain that begins the list with it, nothing for those
  /// that went into the chain of an earlier one.
  std::vector<std::optional<std::vector<TPoint2D>>> Chains() const {
    std::vector<std::optional<std::vector<TPoint2D>>> Result(FItems.size());
    std::vector<bool> IsUsed(FItems.size(), false);
    for (int Item = 0; Item < ItemCount(); ++Item) {
      if (!IsUsed[Index(Item)]) Result[Index(Item)] = WalkChain(Item, IsUsed);
    }
    return Result;
  }

 private:
  /// Two ends that meet and by how much the way turns from one to the other.
  struct TCandidate {
    int A;
    int B;
    double Turn;
  };

  static std::size_t Index(int I) { return static_cast<std::size_t>(I); }
  static int OtherEnd(int Id) { return Id ^ 1; }
  const std::vector<TPoint2D>& Points(int Id) const { return FItems[Index(Id / 2)]->Points(); }
  const TPoint2D& Place(int Id) const {
    return Id % 2 == 0 ? Points(Id).front() : Points(Id).back();
  }
  bool Meet(int A, int B) const { return A >= 0 && B >= 0 && Place(A).Equals(Place(B), FEps); }

  void Join(int A, int B) {
    FMates[Index(A)] = B;
    FMates[Index(B)] = A;
  }
  int JoinAndPass(int Free, int Id) {
    Join(Free, Id);
    return OtherEnd(Id);
  }

  int FirstNear(const TPlaceIndex& Free, int Id) const {
    int First = -1;
    Free.VisitNear(Place(Id), [&](int Other, const TPoint2D&) {
      if (Other != OtherEnd(Id) && (First < 0 || Other < First)) First = Other;
      return false;
    });
    return First;
  }

  std::vector<TCandidate> CollectCandidates() const {
    std::vector<TCandidate> Candidates;
    TPlaceIndex Seen(FEps);
    for (int Id = 0; Id < 2 * ItemCount(); ++Id) {
      if (!IsJoinable(Id / 2)) continue;
      int Mates = 0;
      Seen.VisitNear(Place(Id), [&](int Other, const TPoint2D&) {
        if (Other != OtherEnd(Id)) Candidates.push_back({Other, Id, TurnBetween(Other, Id)});
        return ++Mates >= kMostMates;
      });
      Seen.Add(Place(Id), Id);
    }
    std::sort(Candidates.begin(), Candidates.end(), [](const TCandidate& A, const TCandidate& B) {
      return A.A != B.A ? A.A < B.A : A.B < B.B;
    });
    return Candidates;
  }

  /// Angle by which the way turns when it arrives at end `A` and leaves from end `B`.
  double TurnBetween(int A, int B) const { return Inward(A).AngleBetween(-Inward(B)); }

  /// Direction from the end into its polyline.
  TPoint2D Inward(int Id) const {
    const TVPolyline2D& Polyline = *FItems[Index(Id / 2)];
    const TPoint2D Direction = Id % 2 == 0 ? Polyline.CalcRightDerivative(0.0)
                                           : -Polyline.CalcLeftDerivative(Polyline.Count() - 1.0);
    return Direction.Normal();
  }

  /// The chain through polyline `First` in its direction; from its own start when it is a ring.
  std::vector<TPoint2D> WalkChain(int First, std::vector<bool>& IsUsed) const {
    int Start = 2 * First;
    bool IsRing = false;
    while (FMates[Index(Start)] >= 0) {
      Start = OtherEnd(FMates[Index(Start)]);
      IsRing = Start == 2 * First;
      if (IsRing) break;
    }
    std::vector<TPoint2D> Chain;
    for (int Id = Start; Id >= 0;) {
      IsUsed[Index(Id / 2)] = true;
      Append(Id, Chain);
      Id = FMates[Index(OtherEnd(Id))];
      if (IsRing && Id == Start) break;
    }
    if (IsRing) Chain.back() = Chain.front();
    return Chain;
  }

  /// Appends a polyline from its end `Id` on, the joint once.
  void Append(int Id, std::vector<TPoint2D>& Chain) const {
    const std::vector<TPoint2D>& From = Points(Id);
    const std::ptrdiff_t Joint = Chain.empty() || From.empty() ? 0 : 1;
    if (Id % 2 == 0) {
      Chain.insert(Chain.end(), From.begin() + Joint, From.end());
    } else {
      Chain.insert(Chain.end(), From.rbegin() + Joint, From.rend());
    }
  }

  double FEps;
  std::vector<const TVPolyline2D*> FItems;
  std::vector<int> FMates;  // of each end, −1 for none
};

/// Keeps the items of the list for which `Keeps(position, item)` answers true, in their order.
/// Emptied from the back, so that a long list is not moved up once for each item dropped. A
/// `Keeps` that raises must not have changed an item.
template <class TKeeps>
int KeepItems(TVPolyline2DList& List, TKeeps Keeps) {
  const std::vector<TVPolyline2D*> Items(List.begin(), List.end());
  std::vector<std::unique_ptr<TVPolyline2D>> Owned;
  Owned.reserve(Items.size());  // before `Keeps` changes anything: what follows takes no memory
  std::vector<bool> Stays(Items.size());
  for (std::size_t I = 0; I < Items.size(); ++I) Stays[I] = Keeps(I, *Items[I]);
  const int Former = List.Count();
  const auto FirstDropped = std::find(Stays.begin(), Stays.end(), false) - Stays.begin();
  while (List.Count() > FirstDropped) {
    const int Last = List.Count() - 1;
    if (!List.OwnsObjects() || !Stays[static_cast<std::size_t>(Last)]) {
      List.Delete(Last);
    } else {
      Owned.push_back(List.Extract(Last));
    }
  }
  for (auto Item = Owned.rbegin(); Item != Owned.rend(); ++Item) List.Add(std::move(*Item));
  if (!List.OwnsObjects()) {
    for (std::size_t I = static_cast<std::size_t>(FirstDropped); I < Items.size(); ++I) {
      if (Stays[I]) List.Add(Items[I]);
    }
  }
  return Former - List.Count();
}

/// Replaces the polylines by the chains they were joined to; the number of joins.
int TakeChains(TVPolyline2DList& List, const TEndJoiner& Joiner) {
  auto Chains = Joiner.Chains();
  return KeepItems(List, [&](std::size_t I, TVPolyline2D& Item) {
    if (!Chains[I]) return false;
    Item.Assign(std::move(*Chains[I]));
    return true;
  });
}

}  // namespace

TPaths TVPolyline2DList::ToPaths(double Scale) const {
  TPaths Paths;
  Paths.reserve(static_cast<std::size_t>(Count()));
  for (const TVPolyline2D* Item : *this) Paths.push_back(Item->ToPath(Scale));
  return Paths;
}

double TVPolyline2DList::DistanceTo(const TPoint2D& P, TPoint2D& Nearest) const {
  Nearest = TPoint2D::FZero;
  double Least = kStartOfMinimum;
  for (const TVPolyline2D* Item : *this) {
    TPoint2D Foot;
    const double Dist = Item->DistTo(P, Foot);
    if (!(Dist < Least)) continue;
    Least = Dist;
    Nearest = Foot;
  }
  return Least;
}

double TVPolyline2DList::DistanceTo(const TPoint2D& P) const {
  TPoint2D Nearest;
  return DistanceTo(P, Nearest);
}

int TVPolyline2DList::DeleteRepeat(TRepeatKind Kind, double Eps) {
  // Equal polylines have equal boxes; each side of them may differ by Eps.
  TPlaceIndex Marks(kMarkReach * Eps);
  const std::vector<TVPolyline2D*> Items(begin(), end());
  return KeepItems(*this, [&](std::size_t I, const TVPolyline2D& Item) {
    if (!Item.IsEqualTo(Item, Eps)) return true;  // a NaN or an infinity equals nothing
    const TPoint2D Mark = Item.IsEmpty() ? TPoint2D::FZero : MarkOf(Item.BoundBox());
    const bool IsRepeat = Marks.VisitNear(Mark, [&](int Former, const TPoint2D&) {
      const TVPolyline2D& Other = *Items[static_cast<std::size_t>(Former)];
      return Item.IsEqualTo(Other, Eps) ||
             (Kind == rkAnyDirection && Item.IsEqualToReverse(Other, Eps));
    });
    if (!IsRepeat) Marks.Add(Mark, static_cast<int>(I));
    return !IsRepeat;
  });
}

int TVPolyline2DList::Connect(double Eps) {
  TEndJoiner Joiner(*this, Eps);
  Joiner.MateByOrder();
  return TakeChains(*this, Joiner);
}

int TVPolyline2DList::ConnectOptimize(double Eps) {
  TEndJoiner Joiner(*this, Eps);
  Joiner.MateByStraightness();
  return TakeChains(*this, Joiner);
}

int TVPolyline2DList::TryConnectByOrder(double Eps) {
  TEndJoiner Joiner(*this, Eps);
  Joiner.MateWithFormer();
  return TakeChains(*this, Joiner);
}

TVPolyline2D TVPolyline2DList::ConnectPolylines(double Eps) const {
  TVPolyline2D Whole;
  for (const TVPolyline2D* Item : *this) {
    const std::vector<TPoint2D>& Points = Item->Points();
    auto First = Points.begin();
    if (!Whole.IsEmpty() && First != Points.end() && First->Equals(Whole.Last(), Eps)) ++First;
    for (; First != Points.end(); ++First) Whole.Add(*First);
  }
  return Whole;
}

void TVPolyline2DList::SortByArea() {
  std::unordered_map<const TVPolyline2D*, double> Areas;
  for (const TVPolyline2D* Item : *this) Areas[Item] = std::abs(Item->Area());
  Sort([&](const TVPolyline2D& A, const TVPolyline2D& B) {
    return CompareExact(Areas[&B], Areas[&A]);  // swapped: the largest first
  });
}

void TVPolyline2DList::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  std::string Text;
  for (const TVPolyline2D* Item : *this) Text += DebugDrawing(Item->Points(), Colour);
  WriteDebugFile("TVPolyline2DList.WriteToFile", FileName, Text);
}

}  // namespace tarnalgo
