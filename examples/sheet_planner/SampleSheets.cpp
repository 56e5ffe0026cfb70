#include "examples/sheet_planner/SampleSheets.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace sheet_planner {

using namespace tarnalgo;

namespace {

constexpr double kPitch = 12.0;
constexpr double kHole = 8.0;     // side of a square, diameter of a round hole
constexpr double kMargin = 15.0;  // from the outermost holes to the plate's edge

/// Draws in one layer of a sheet.
class TPen {
 public:
  TPen(TDrawing& Drawing, const std::string& Layer)
      : FDrawing(Drawing), FLayer(Drawing.LayerIndex(Layer)) {}

  void Closed(const std::vector<TPoint2D>& Corners) {
    for (std::size_t I = 0; I < Corners.size(); ++I) {
      FDrawing.AddEdge(Corners[I], Corners[(I + 1) % Corners.size()], FLayer);
    }
    ++FDrawing.Read["polygon"];
  }

  void Rectangle(const TPoint2D& Low, const TPoint2D& High) {
    Closed({Low, {High.X, Low.Y}, High, {Low.X, High.Y}});
  }

  void Circle(const TPoint2D& Center, double Radius) {
    FDrawing.Circles.push_back({{Center, Radius}, FLayer});
    ++FDrawing.Read["circle"];
  }

  /// A slot with round ends between two centres.
  void Slot(const TPoint2D& From, const TPoint2D& To, double Radius) {
    const TPoint2D Side = (To - From).Normal().RotateCw90() * Radius;
    FDrawing.AddEdge(From + Side, To + Side, FLayer);
    HalfTurn(To + Side, To - Side);
    FDrawing.AddEdge(To - Side, From - Side, FLayer);
    HalfTurn(From - Side, From + Side);
    ++FDrawing.Read["slot"];
  }

 private:
  void HalfTurn(const TPoint2D& From, const TPoint2D& To) {
    FDrawing.Arcs.push_back({TArc2D::CreateBulge(From, To, 1.0), FLayer});
  }

  TDrawing& FDrawing;
  int FLayer;
};

TPoint2D CellCenter(int Column, int Row) {
  return {kMargin + (Column + 0.5) * kPitch, kMargin + (Row + 0.5) * kPitch};
}

void SquareAt(TPen& Pen, const TPoint2D& Center) {
  const TPoint2D Half{kHole / 2, kHole / 2};
  Pen.Rectangle(Center - Half, Center + Half);
}

}  // namespace

TDrawing PerforatedPlate(int Columns, int Rows) {
  TDrawing Drawing;
  Drawing.Name = "perforated plate";
  Drawing.Unit = "mm";
  TPen Outline(Drawing, "OUTLINE");
  TPen Holes(Drawing, "HOLES");
  Outline.Rectangle({0, 0}, {Columns * kPitch + 2 * kMargin, Rows * kPitch + 2 * kMargin});
  const int Middle = Columns / 2;
  const int Band = Rows / 3;  // squares below, slots, round holes above
  for (int Row = 0; Row < Rows; ++Row) {
    for (int Column = 0; Column < Columns; ++Column) {
      const TPoint2D Center = CellCenter(Column, Row);
      if (Row < Band) {
        if (Column != Middle) SquareAt(Holes, Center);
      } else if (Row < 2 * Band) {
        const TPoint2D Half{kPitch / 2, 0};
        if (Column % 2 == 1) Holes.Slot(Center - Half - Half, Center, kHole / 4);
      } else {
        Holes.Circle(Center, kHole / 2);
      }
    }
  }
  if (Band > 1) {
    Holes.Slot(CellCenter(Middle, 0), CellCenter(Middle, Band - 1), kHole / 4);
  }
  return Drawing;
}

TDrawing SquareGrid(int Columns, int Rows) {
  TDrawing Drawing;
  Drawing.Name = "grid of squares";
  Drawing.Unit = "mm";
  TPen Holes(Drawing, "HOLES");
  for (int Row = 0; Row < Rows; ++Row) {
    for (int Column = 0; Column < Columns; ++Column) SquareAt(Holes, CellCenter(Column, Row));
  }
  return Drawing;
}

TDrawing BracketNest(int BlocksAcross, int BlocksUp) {
  constexpr double kArm = 24.0;  // width of an arm; a bracket is two arms wide and high
  constexpr int kPairsAcross = 2;
  constexpr int kPairsUp = 3;
  constexpr double kWeb = 9.0;  // between blocks
  TDrawing Drawing;
  Drawing.Name = "nest of brackets";
  Drawing.Unit = "mm";
  TPen Outline(Drawing, "BRACKETS");
  TPen Holes(Drawing, "HOLES");
  // In units of an arm; the other bracket of a pair is this one turned by half a turn in the
  // rectangle of 3 by 2 arms that the two fill.
  const std::array<TPoint2D, 6> Bracket{{{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}}};
  const auto DrawPair = [&](const TPoint2D& Corner) {
    for (const double Side : {1.0, -1.0}) {
      const auto Place = [&](const TPoint2D& P) {
        const TPoint2D Turned = Side > 0.0 ? P : TPoint2D(3, 2) - P;
        return Corner + Turned * kArm;
      };
      std::vector<TPoint2D> Corners(Bracket.size());
      std::transform(Bracket.begin(), Bracket.end(), Corners.begin(), Place);
      Outline.Closed(Corners);
      Holes.Circle(Place({0.5, 0.5}), 4.0);
      Holes.Circle(Place({0.5, 1.6}), 2.5);
      Holes.Slot(Place({1.35, 0.5}), Place({1.65, 0.5}), 2.5);
    }
  };
  // Where the pair of that number stands along one axis, blocks of `InBlock` pairs a web apart.
  const auto Place = [](int Number, int InBlock, double Size) {
    const int Block = Number / InBlock;
    return Number * Size + Block * kWeb;
  };
  for (int J = 0; J < BlocksUp * kPairsUp; ++J) {
    for (int I = 0; I < BlocksAcross * kPairsAcross; ++I) {
      DrawPair({Place(I, kPairsAcross, 3 * kArm), Place(J, kPairsUp, 2 * kArm)});
    }
  }
  return Drawing;
}

}  // namespace sheet_planner
