#include "examples/sheet_planner/LooseEnds.h"

#include <map>

namespace sheet_planner {

using namespace tarnalgo;

TLooseEnds FindLooseEnds(const TSheet& Sheet) {
  struct TPlace {
    TPoint2D Point;
    int Ends = 0;
  };
  std::map<int, TPlace> Places;
  const auto Add = [&Places](int Anchor, const TPoint2D& P) {
    TPlace& Place = Places.try_emplace(Anchor, TPlace{P}).first->second;
    ++Place.Ends;
  };
  const auto AddPiece = [&Add](const TSheetPiece& Piece, const TPoint2D& From, const TPoint2D& To) {
    Add(Piece.FromAnchor, From);
    Add(Piece.ToAnchor, To);
  };
  for (const TSheetEdge& Edge : Sheet.Edges) {
    AddPiece(Edge, Edge.Line.StartPoint, Edge.Line.EndPoint);
  }
  for (const TSheetChain& Chain : Sheet.Chains) {
    AddPiece(Chain, Chain.Chain.First().P1, Chain.Chain.Last().P4);
  }
  TLooseEnds Found;
  for (const auto& [Anchor, Place] : Places) {
    if (Place.Ends == 1) Found.Loose.push_back(Place.Point);
    if (Place.Ends > 2) Found.Branches.push_back(Place.Point);
  }
  return Found;
}

}  // namespace sheet_planner
