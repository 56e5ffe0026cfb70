#pragma once  // geometryAlgo/VedaType/PlaceIndex.h

#include <cmath>
#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

#include "geometryAlgo/VedaType/Point.h"
#include "host/Cadtypes/Point.h"

namespace tarnalgo {

/// Numbered places, found again within a tolerance. Internal to the library.
///
/// Points are kept in the cells of a grid a few tolerances wide, so that a look reaches one cell,
/// four at a corner. Points that are not finite are not taken in and never found.
/// Cost: O(1) plus the places in the cells looked at.
class TPlaceIndex {
 public:
  explicit TPlaceIndex(double Eps) : FEps(Eps > 0.0 ? Eps : 0.0) {}

  void Add(const TPoint2D& P, int Id) {
    if (!TPoint2DUtils::IsFinite(P)) return;
    int& Head = FHeads.try_emplace(CellOf(P.X, P.Y), -1).first->second;
    FPlaces.push_back({P, Id, Head});
    Head = static_cast<int>(FPlaces.size()) - 1;
  }

  /// Takes a place out again, with the very point it was added with.
  void Remove(const TPoint2D& P, int Id) {
    const auto Found = FHeads.find(CellOf(P.X, P.Y));
    if (Found == FHeads.end()) return;
    for (int* Link = &Found->second; *Link >= 0; Link = &FPlaces[Index(*Link)].Next) {
      const TPlace& Place = FPlaces[Index(*Link)];
      if (Place.Id != Id) continue;
      *Link = Place.Next;
      return;
    }
  }

  /// Calls `Visit(Id, Point)` for every place at most `Eps` from `P`, in no particular order, until
  /// it answers true; answers whether it did.
  template <class TVisitor>
  bool VisitNear(const TPoint2D& P, TVisitor Visit) const {
    const TCell Low = CellOf(P.X - FEps, P.Y - FEps);
    const TCell High = CellOf(P.X + FEps, P.Y + FEps);
    const int Columns = Low.X == High.X ? 1 : 2;
    const int Rows = Low.Y == High.Y ? 1 : 2;
    for (int Column = 0; Column < Columns; ++Column) {
      for (int Row = 0; Row < Rows; ++Row) {
        const auto Found = FHeads.find({Column == 0 ? Low.X : High.X, Row == 0 ? Low.Y : High.Y});
        if (Found == FHeads.end()) continue;
        for (int I = Found->second; I >= 0; I = FPlaces[Index(I)].Next) {
          const TPlace& Place = FPlaces[Index(I)];
          if (Place.Point.Equals(P, FEps) && Visit(Place.Id, Place.Point)) return true;
        }
      }
    }
    return false;
  }

  bool HasNear(const TPoint2D& P) const {
    return VisitNear(P, [](int, const TPoint2D&) { return true; });
  }

 private:
  /// Width of a cell in tolerances: wide enough that most looks stay inside one cell.
  static constexpr double kCellWidth = 8.0;

  struct TCell {
    double X;
    double Y;
    friend bool operator==(const TCell&, const TCell&) = default;
  };
  struct THash {
    std::size_t operator()(const TCell& Cell) const {
      const std::size_t Seed = std::hash<double>()(Cell.X);  // equal for 0.0 and -0.0
      return (Seed ^ (Seed >> 29)) * 0x9E3779B97F4A7C15U + std::hash<double>()(Cell.Y);
    }
  };
  struct TPlace {
    TPoint2D Point;
    int Id;
    int Next;  // in the same cell, −1 at the end
  };

  static std::size_t Index(int I) { return static_cast<std::size_t>(I); }

  TCell CellOf(double X, double Y) const { return {ColumnOf(X), ColumnOf(Y)}; }
  /// A whole number held as a double. Where that is beyond its range the tolerance is far below the
  /// last digit, and every coordinate is a column of its own.
  double ColumnOf(double X) const {
    const double Column = std::floor(X / (kCellWidth * FEps));
    return std::isfinite(Column) ? Column : X;
  }

  double FEps;
  std::vector<TPlace> FPlaces;
  std::unordered_map<TCell, int, THash> FHeads;  // the last place added to a cell
};

}  // namespace tarnalgo
