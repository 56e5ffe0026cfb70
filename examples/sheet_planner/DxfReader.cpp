#include "examples/sheet_planner/DxfReader.h"

#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "examples/sheet_planner/BadInput.h"
#include "examples/sheet_planner/DxfText.h"
#include "examples/sheet_planner/Flatten.h"
#include "examples/sheet_planner/Format.h"
#include "geometryAlgo/VedaType/LABPolyline.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

constexpr std::uintmax_t kLargestFile = std::uintmax_t{128} << 20;
constexpr int kDeepestNesting = 32;
constexpr std::size_t kMostExpanded = 4'000'000;

/// Entities as written, in the coordinates of their block.
struct TPolylineEntity {
  TLWPolyline Vertices;
  bool IsClosed = false;
};

struct TSplineEntity {
  TSplineCurve Curve;
  std::vector<TPoint2D> FitPoints;
  bool IsClosed = false;
};

struct TInsertEntity {
  std::string Block;
  TMatrix2D Placement;  // of block coordinates without the block's base point
  int Columns = 1;
  int Rows = 1;
  TPoint2D ColumnStep;
  TPoint2D RowStep;
};

struct TEntity {
  std::variant<TLine2D, TArc2D, TCircle2D, TEllipseArc, TPolylineEntity, TSplineEntity,
               TInsertEntity>
      Shape;
  std::string Layer;
  const char* Kind = "";
  bool IsMirrored = false;  // given in coordinates that look from below: X runs the other way
};

struct TBlock {
  TPoint2D Base;
  std::vector<TEntity> Entities;
};

/// Takes what the DXF library reads: blocks and the entities of model space.
class TCollector : public DL_CreationAdapter {
 public:
  std::map<std::string, TBlock> Blocks;
  TBlock ModelSpace;

  void addBlock(const DL_BlockData& Data) override {
    FTarget = &Blocks[Data.name];
    *FTarget = TBlock{{Data.bpx, Data.bpy}, {}};
  }
  void endBlock() override { FTarget = &ModelSpace; }

  void addLine(const DL_LineData& Data) override {
    Add("LINE", TLine2D{{Data.x1, Data.y1}, {Data.x2, Data.y2}}, false);
  }
  void addArc(const DL_ArcData& Data) override {
    const double From = Data.angle1 * kPi / 180.0;
    double Sweep = std::fmod((Data.angle2 - Data.angle1) * kPi / 180.0, kFullTurn);
    if (Sweep <= 0.0) Sweep += kFullTurn;
    Add("ARC", TArc2D({Data.cx, Data.cy}, Data.radius, From, Sweep), true);
  }
  void addCircle(const DL_CircleData& Data) override {
    Add("CIRCLE", TCircle2D({Data.cx, Data.cy}, Data.radius), true);
  }
  void addEllipse(const DL_EllipseData& Data) override {
    const TPoint2D Major{Data.mx, Data.my};
    // The sense is counter-clockwise about the axis: clockwise from above when it points down.
    const double Side = IsSeenFromBelow() ? -1.0 : 1.0;
    double Sweep = Data.angle2 - Data.angle1;
    if (Sweep <= 0.0) Sweep += kFullTurn;
    const TEllipseArc Arc{{Data.cx, Data.cy},
                          Major,
                          Major.RotateCcw90() * (Data.ratio * Side),
                          Data.angle1,
                          Data.angle1 + std::min(Sweep, kFullTurn)};
    Add("ELLIPSE", Arc, false);
  }
  void addPolyline(const DL_PolylineData& Data) override {
    constexpr int kClosed = 1;
    Add("POLYLINE", TPolylineEntity{{}, (Data.flags & kClosed) != 0}, true);
  }
  void addVertex(const DL_VertexData& Data) override {
    if (auto* const Polyline = Last<TPolylineEntity>()) {
      Polyline->Vertices.push_back({{Data.x, Data.y}, Data.bulge});
    }
  }
  void addSpline(const DL_SplineData& Data) override {
    constexpr int kClosed = 1;
    TSplineEntity Spline;
    Spline.Curve.Degree = static_cast<int>(std::min(Data.degree, 100U));
    Spline.IsClosed = (Data.flags & kClosed) != 0;
    Add("SPLINE", std::move(Spline), false);
  }
  void addControlPoint(const DL_ControlPointData& Data) override {
    if (auto* const Spline = Last<TSplineEntity>()) {
      Spline->Curve.Controls.push_back({Data.x, Data.y});
      Spline->Curve.Weights.push_back(Data.w);
    }
  }
  void addKnot(const DL_KnotData& Data) override {
    if (auto* const Spline = Last<TSplineEntity>()) Spline->Curve.Knots.push_back(Data.k);
  }
  void addFitPoint(const DL_FitPointData& Data) override {
    if (auto* const Spline = Last<TSplineEntity>()) Spline->FitPoints.push_back({Data.x, Data.y});
  }
  void addInsert(const DL_InsertData& Data) override {
    TInsertEntity Insert;
    Insert.Block = Data.name;
    const double Turn = Data.angle * kPi / 180.0;
    Insert.Placement.Scale(Data.sx, Data.sy);
    Insert.Placement.Rotate(Turn);
    Insert.Placement.Translate(Data.ipx, Data.ipy);
    Insert.Columns = std::max(Data.cols, 1);
    Insert.Rows = std::max(Data.rows, 1);
    Insert.ColumnStep = TPoint2D(Data.colSp, 0.0).RotateBy(Turn);
    Insert.RowStep = TPoint2D(0.0, Data.rowSp).RotateBy(Turn);
    Add("INSERT", std::move(Insert), true);
  }

 private:
  bool IsSeenFromBelow() {
    double Axis[3];
    getExtrusion()->getDirection(Axis);
    return Axis[2] < 0.0;
  }

  /// `FollowsAxis`: the kind's coordinates are the entity's own, not the world's.
  template <class TShape>
  void Add(const char* Kind, TShape Shape, bool FollowsAxis) {
    std::string Layer = getAttributes().getLayer();
    if (Layer.empty()) Layer = "0";
    const bool IsMirrored = FollowsAxis && IsSeenFromBelow();
    FTarget->Entities.push_back({std::move(Shape), std::move(Layer), Kind, IsMirrored});
  }

  template <class TShape>
  TShape* Last() {
    return FTarget->Entities.empty() ? nullptr
                                     : std::get_if<TShape>(&FTarget->Entities.back().Shape);
  }

  TBlock* FTarget = &ModelSpace;
};

/// Keeps lengths up to one factor, so that arcs stay arcs.
bool IsSimilarity(const TMatrix2D& M) {
  const TPoint2D X{M.M11, M.M21};
  const TPoint2D Y{M.M12, M.M22};
  const double Size = std::max(X.Mag(), Y.Mag());
  return std::abs(X.Mag() - Y.Mag()) <= kLinearTolerance * Size &&
         std::abs(X.DotMul(Y)) <= kLinearTolerance * Size * Size;
}

TArc2D Transformed(const TArc2D& Arc, const TMatrix2D& M) {
  const TPoint2D Start = M.TransformVector(TPoint2D(1.0, 0.0).RotateBy(Arc.StartAngle));
  const double Side = M.Determinant() < 0.0 ? -1.0 : 1.0;
  return {M.Transform(Arc.Center), Arc.Radius * Start.Mag(), Start.Angle(), Arc.SweepAngle * Side};
}

bool IsFullTurn(double Sweep) {
  return std::abs(std::abs(Sweep) - kFullTurn) <= kLinearTolerance;
}

/// The circle that a polyline of arcs traces, as some programs write one: no edges, one centre and
/// radius, one full turn.
bool IsCircle(const std::vector<TArc2D>& Arcs) {
  double Sweep = 0.0;
  for (const TArc2D& Arc : Arcs) {
    const TArc2D& First = Arcs[0];
    const double Slack = kLinearTolerance * std::max(1.0, First.Radius);
    if (!Arc.Center.Equals(First.Center, Slack)) return false;
    if (std::abs(Arc.Radius - First.Radius) > Slack) return false;
    Sweep += Arc.SweepAngle;
  }
  return !Arcs.empty() && IsFullTurn(Sweep);
}

/// Draws entities into a drawing, references to blocks expanded.
class TExpander {
 public:
  TExpander(const TCollector& Source, const std::map<std::string, TCensus>& SkippedInBlocks,
            double ChordError, TDrawing& Drawing)
      : FSource(Source),
        FSkippedInBlocks(SkippedInBlocks),
        FChordError(ChordError),
        FDrawing(Drawing) {}

  void Run() { Block(FSource.ModelSpace, TMatrix2D(), "0", 0); }

 private:
  void Block(const TBlock& From, const TMatrix2D& Placement, const std::string& Layer, int Depth) {
    for (const TEntity& Entity : From.Entities) {
      CountExpanded(1);
      FKind = Entity.Kind;
      // Layer 0 within a block means the layer of the reference.
      const std::string& OwnLayer = Entity.Layer == "0" ? Layer : Entity.Layer;
      FMatrix = TMatrix2D();
      if (Entity.IsMirrored) FMatrix.Scale(-1.0, 1.0);
      FMatrix.Append(Placement);
      std::visit(
          [&](const auto& Shape) {
            if constexpr (std::is_same_v<std::decay_t<decltype(Shape)>, TInsertEntity>) {
              Insert(Shape, OwnLayer, Depth);
            } else {
              FLayer = FDrawing.LayerIndex(OwnLayer);
              const bool IsDrawn = Draw(Shape);
              ++(IsDrawn ? FDrawing.Read[FKind] : FDrawing.Skipped[FKind]);
            }
          },
          Entity.Shape);
    }
  }

  void CountExpanded(std::size_t Count) {
    FExpanded += Count;
    if (FExpanded <= kMostExpanded) return;
    throw EBadInput("the drawing expands to more than " + std::to_string(kMostExpanded) +
                    " entities, sides and chords");
  }

  void Insert(const TInsertEntity& Reference, const std::string& Layer, int Depth) {
    const auto Found = FSource.Blocks.find(Reference.Block);
    if (Found == FSource.Blocks.end()) {
      ++FDrawing.Skipped["INSERT (no such block)"];
      return;
    }
    if (std::find(FOpen.begin(), FOpen.end(), &Found->second) != FOpen.end()) {
      ++FDrawing.Skipped["INSERT (within its own block)"];
      return;
    }
    if (Depth >= kDeepestNesting) {
      ++FDrawing.Skipped["INSERT (nested too deep)"];
      return;
    }
    ++FDrawing.Read["INSERT"];
    const TBlock& From = Found->second;
    if (From.Entities.empty()) return AddSkipped(Reference.Block);
    const TMatrix2D Outer = FMatrix;
    FOpen.push_back(&From);
    for (int Row = 0; Row < Reference.Rows; ++Row) {
      for (int Column = 0; Column < Reference.Columns; ++Column) {
        TMatrix2D Placement;
        Placement.Translate(-From.Base.X, -From.Base.Y);
        Placement.Append(Reference.Placement);
        const TPoint2D Step = Reference.ColumnStep * Column + Reference.RowStep * Row;
        Placement.Translate(Step.X, Step.Y);
        Placement.Append(Outer);
        Block(From, Placement, Layer, Depth + 1);
        AddSkipped(Reference.Block);
      }
    }
    FOpen.pop_back();
  }

  void AddSkipped(const std::string& BlockName) {
    const auto Found = FSkippedInBlocks.find(BlockName);
    if (Found == FSkippedInBlocks.end()) return;
    for (const auto& [Kind, Count] : Found->second) FDrawing.Skipped[Kind] += Count;
  }

  /// A transform can carry sound coordinates out of range.
  static bool IsInRange(const TPoint2D& P) {
    return std::abs(P.X) <= kLargestCoordinate && std::abs(P.Y) <= kLargestCoordinate;
  }
  bool Refuse(const char* Why) {
    FKind += std::string(" (") + Why + ")";
    return false;
  }

  bool Draw(const TLine2D& Line) {
    const TPoint2D From = FMatrix.Transform(Line.StartPoint);
    const TPoint2D To = FMatrix.Transform(Line.EndPoint);
    if (!IsInRange(From) || !IsInRange(To)) return Refuse("out of range");
    FDrawing.AddEdge(From, To, FLayer);
    return true;
  }

  bool Draw(const TCircle2D& Circle) {
    return DrawArc({Circle.Center, Circle.Radius, 0.0, kFullTurn});
  }

  bool Draw(const TArc2D& Arc) { return DrawArc(Arc); }

  bool DrawArc(const TArc2D& Arc) {
    if (!(Arc.Radius > 0.0)) return Refuse("no radius");
    if (!IsSimilarity(FMatrix)) {
      return Draw(TEllipseArc{Arc.Center,
                              {Arc.Radius, 0.0},
                              {0.0, Arc.Radius},
                              Arc.StartAngle,
                              Arc.StartAngle + Arc.SweepAngle});
    }
    const TArc2D Placed = Transformed(Arc, FMatrix);
    if (!IsInRange(Placed.Center) || !(Placed.Radius <= kLargestCoordinate)) {
      return Refuse("out of range");
    }
    if (!(Placed.Radius > 0.0)) return Refuse("no radius");
    if (IsFullTurn(Placed.SweepAngle)) {
      FDrawing.Circles.push_back({{Placed.Center, Placed.Radius}, FLayer});
    } else {
      FDrawing.Arcs.push_back({Placed, FLayer});
    }
    return true;
  }

  bool Draw(const TEllipseArc& Arc) {
    return DrawCurve(
        Flatten(TEllipseArc{FMatrix.Transform(Arc.Center), FMatrix.TransformVector(Arc.A),
                            FMatrix.TransformVector(Arc.B), Arc.From, Arc.To},
                FChordError));
  }

  bool Draw(const TPolylineEntity& Polyline) {
    const auto& Vertices = Polyline.Vertices;
    if (Vertices.size() < 2) return Refuse("fewer than two vertices");
    CountExpanded(Vertices.size());
    std::vector<TLine2D> Lines;
    std::vector<TArc2D> Arcs;
    for (const TLABSegline& Side : TLABPolyline(Vertices, Polyline.IsClosed)) {
      if (Side.IsPoint()) continue;  // a repeated vertex leaves a side of no length
      if (Side.SegType == stArc) {
        Arcs.push_back(Side.ToArc().ToArc2D());
      } else {
        Lines.push_back(Side.ToLine().ToLine2D());
      }
    }
    if (Lines.empty() && IsCircle(Arcs)) return Draw(TCircle2D(Arcs[0].Center, Arcs[0].Radius));
    bool IsDrawn = true;
    for (const TLine2D& Line : Lines) IsDrawn = IsDrawn && Draw(Line);
    for (const TArc2D& Arc : Arcs) IsDrawn = IsDrawn && DrawArc(Arc);
    return IsDrawn;
  }

  bool Draw(const TSplineEntity& Spline) {
    TSplineCurve Curve = Spline.Curve;
    if (Curve.Controls.empty()) {
      std::vector<TPoint2D> Points = Spline.FitPoints;
      if (Spline.IsClosed && !Points.empty()) Points.push_back(Points.front());
      Curve = SplineThrough(Points);
    }
    for (TPoint2D& Control : Curve.Controls) {
      Control = FMatrix.Transform(Control);
      if (!IsInRange(Control)) return Refuse("out of range");
    }
    if (!Curve.IsSound()) return Refuse("bad degree, knots or weights");
    return DrawCurve(Flatten(Curve, FChordError));
  }

  bool DrawCurve(std::vector<TPoint2D> Points) {
    for (const TPoint2D& P : Points) {
      if (!IsInRange(P)) return Refuse("out of range");
    }
    CountExpanded(Points.size());
    if (IsStraight(Points)) {
      FDrawing.AddEdge(Points.front(), Points.back(), FLayer);
    } else {
      if (Points.front().Equals(Points.back())) Points.back() = Points.front();
      FDrawing.Curves.push_back({std::move(Points), FLayer});
    }
    return true;
  }

  const TCollector& FSource;
  const std::map<std::string, TCensus>& FSkippedInBlocks;
  double FChordError;
  TDrawing& FDrawing;
  std::vector<const TBlock*> FOpen;  // the blocks that are being placed, each within the one before
  std::size_t FExpanded = 0;
  std::string FKind;
  TMatrix2D FMatrix;
  int FLayer = 0;
};

}  // namespace

TDrawing ReadDxf(std::string_view Bytes, double ChordError) {
  TDxfText Clean = CleanDxf(Bytes);
  TDrawing Drawing;
  Drawing.Unit = Clean.Unit;
  Drawing.Skipped = std::move(Clean.Skipped);
  Drawing.Notes = std::move(Clean.Notes);

  std::istringstream Stream(std::move(Clean.Text));
  TCollector Collector;
  DL_Dxf Dxf;
  Dxf.in(Stream, &Collector);
  TExpander(Collector, Clean.SkippedInBlocks, ChordError, Drawing).Run();
  if (!Drawing.HasGeometry()) {
    throw EBadInput(Drawing.Skipped.empty()
                        ? std::string("the drawing is empty")
                        : "nothing to cut in the drawing; skipped: " + Listed(Drawing.Skipped));
  }
  return Drawing;
}

TDrawing ReadDxfFile(const std::string& Path, double ChordError) {
  std::error_code Error;
  const std::filesystem::file_status Status = std::filesystem::status(Path, Error);
  if (!std::filesystem::exists(Status)) throw EBadInput("no such file");
  if (std::filesystem::is_directory(Status)) throw EBadInput("a directory, not a drawing");
  std::ifstream File(Path, std::ios::binary);
  if (!File) throw EBadInput("the file cannot be opened");
  std::string Bytes;
  std::vector<char> Buffer(std::size_t{1} << 20);
  while (File) {
    File.read(Buffer.data(), static_cast<std::streamsize>(Buffer.size()));
    Bytes.append(Buffer.data(), static_cast<std::size_t>(File.gcount()));
    if (Bytes.size() > kLargestFile) throw EBadInput("the file is larger than 128 MiB");
  }
  TDrawing Drawing = ReadDxf(Bytes, ChordError);
  Drawing.Name = std::filesystem::path(Path).filename().string();
  return Drawing;
}

}  // namespace sheet_planner
