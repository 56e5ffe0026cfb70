#include "geometryAlgo/UPolygonGetter/TopoGraph.h"

#include <algorithm>
#include <polyclipping/clipper.hpp>
#include <tuple>
#include <utility>

#include "containers/Container/Bytewise.h"
#include "geometryAlgo/UPolygonGetter/CompareTool.h"

namespace tarnalgo {

namespace {

template <class TIterator>
std::uint64_t HashOfPoints(TIterator First, TIterator Last) {
  std::uint64_t Hash = 0;
  for (; First != Last; ++First) {
    Hash = Hash * 0x9E3779B97F4A7C15u + TBytewiseHash<TPoint2D>()(*First);
  }
  return Hash;
}

bool IsReverseOf(const TMChainExtend& A, const TMChainExtend& B) {
  return std::equal(A.begin(), A.end(), B.Points().rbegin(), B.Points().rend());
}

}  // namespace

TIntPointList SortedNodes(const TTopoLinks& Links) {
  TIntPointList Result = Links.Keys();
  std::sort(Result.begin(), Result.end(), [](const TIntPoint& A, const TIntPoint& B) {
    return TCompareTool::CompareByYX(A, B) < 0;
  });
  return Result;
}

std::uint64_t CourseOf(const TMChainExtend& Chain) {
  const std::vector<TPoint2D>& Points = Chain.Points();
  return std::min(HashOfPoints(Points.begin(), Points.end()),
                  HashOfPoints(Points.rbegin(), Points.rend()));
}

TTopoGraph::TTopoGraph(const TTopoLinks& Links) {
  NumberNodes(Links);
  NumberChains();
  PairExactly();
  PairTheRest();
}

const TIntPoint& TTopoGraph::Node(int I) const {
  return FNodes[Index(I)];
}

int TTopoGraph::Find(const TIntPoint& P) const {
  return FIndex.Find(TNodeHash()(P), [&](int I) { return Node(I) == P; });
}

void TTopoGraph::NumberNodes(const TTopoLinks& Links) {
  FNodes = SortedNodes(Links);
  FIndex.Reserve(FNodes.size());
  FEdges.reserve(FNodes.size());
  FFirst.push_back(0);
  for (const TIntPoint& P : FNodes) {
    FIndex.Add(TNodeHash()(P), static_cast<int>(FEdges.size()));
    FEdges.push_back(Links[P]);
    FFirst.push_back(FFirst.back() + FEdges.back()->Count());
  }
}

void TTopoGraph::NumberChains() {
  FEntries.reserve(Index(FFirst.back()));
  for (int I = 0; I < NodeCount(); ++I) {
    for (TMChainExtend* Chain : Edges(I)) {
      const int To = Chain->Count() < 2 ? -1 : Find(TransToInt(Chain->Last()));
      FEntries.push_back({Chain, I, To});
    }
  }
}

bool TTopoGraph::TryPair(int A, int B) {
  TEntry& One = FEntries[Index(A)];
  TEntry& Other = FEntries[Index(B)];
  if (One.From != Other.To || One.To != Other.From) return false;
  One.Twin = B;
  Other.Twin = A;
  return true;
}

/// Objects with one course, and only they (but for collisions of the hash, which the comparison
/// catches), come together; those that run one way are paired with those that run the other way in
/// the order of their numbers, and objects that read the same both ways with their neighbours.
void TTopoGraph::PairExactly() {
  struct TCourse {
    std::uint64_t Hash;
    int Direction;  // 0 and 1: the two ways, 2: the same both ways
    int Entry;
  };
  std::vector<TCourse> Courses;
  Courses.reserve(FEntries.size());
  FCourse.reserve(FEntries.size());
  for (int I = 0; I < EntryCount(); ++I) {
    const std::vector<TPoint2D>& Points = Entry(I).Chain->Points();
    const std::uint64_t Ahead = HashOfPoints(Points.begin(), Points.end());
    const std::uint64_t Back = HashOfPoints(Points.rbegin(), Points.rend());
    FCourse.push_back(std::min(Ahead, Back));
    if (Entry(I).To >= 0) Courses.push_back({FCourse.back(), Ahead == Back ? 2 : Ahead > Back, I});
  }
  std::sort(Courses.begin(), Courses.end(), [](const TCourse& A, const TCourse& B) {
    return std::tie(A.Hash, A.Direction, A.Entry) < std::tie(B.Hash, B.Direction, B.Entry);
  });
  const auto Pair = [this](int A, int B) {
    if (IsReverseOf(*Entry(A).Chain, *Entry(B).Chain)) TryPair(A, B);
  };
  for (auto First = Courses.begin(); First != Courses.end();) {
    const auto Last = std::find_if(First, Courses.end(),
                                   [&](const TCourse& Item) { return Item.Hash != First->Hash; });
    const auto Middle =
        std::find_if(First, Last, [&](const TCourse& Item) { return Item.Direction != 0; });
    if (First->Direction == 2) {
      for (; Last - First > 1; First += 2) Pair(First->Entry, (First + 1)->Entry);
    } else {
      for (auto It = Middle; First != Middle && It != Last; ++First, ++It) {
        Pair(First->Entry, It->Entry);
      }
    }
    First = Last;
  }
}

/// Objects that were not copied but worked out twice.
void TTopoGraph::PairTheRest() {
  std::vector<int> Rest;
  for (int I = 0; I < EntryCount(); ++I) {
    if (Entry(I).Twin < 0 && Entry(I).To >= 0) Rest.push_back(I);
  }
  const auto Ends = [this](int I) { return std::minmax(Entry(I).From, Entry(I).To); };
  std::stable_sort(Rest.begin(), Rest.end(), [&](int A, int B) { return Ends(A) < Ends(B); });
  for (std::size_t I = 0; I < Rest.size(); ++I) {
    const int A = Rest[I];
    for (std::size_t J = I + 1; J < Rest.size() && Ends(Rest[J]) == Ends(A); ++J) {
      if (Entry(A).Twin >= 0) break;
      const int B = Rest[J];
      if (Entry(B).Twin < 0 && Entry(A).Chain->EqualsTo(*Entry(B).Chain)) TryPair(A, B);
    }
    if (Entry(A).Twin < 0 && Entry(A).From == Entry(A).To) TryPair(A, A);
  }
}

}  // namespace tarnalgo
