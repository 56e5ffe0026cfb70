#include "examples/sheet_planner/DxfWriter.h"

#include <dxflib/dl_dxf.h>
#include <dxflib/dl_writer_ascii.h>

#include <fstream>
#include <memory>

#include "examples/sheet_planner/BadInput.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

struct TLayer {
  const char* Name;
  int Color;
};

constexpr TLayer kCutLayers[] = {{"PASSES", 5}, {"CIRCLES", 3}, {"CONTOURS", 7}};
constexpr TLayer kIdleLayers[] = {{"RAPIDS", 8}, {"GAPS", 1}, {"CONNECTIONS", 6}};

const char* LayerOf(const TMove& Move) {
  return Move.IsBeamOn() ? kCutLayers[static_cast<int>(Move.Step.Kind)].Name
                         : kIdleLayers[static_cast<int>(Move.Kind)].Name;
}

double DegreesOf(double Angle) {
  return Angle * 180.0 / kPi;
}

class TDxfFile {
 public:
  explicit TDxfFile(const std::string& Path) : FOut(FDxf.out(Path.c_str(), DL_VERSION_2000)) {
    if (!FOut) throw EBadInput("cannot write the plan to " + Path);
  }

  void WriteTables() {
    FDxf.writeHeader(*FOut);
    FOut->sectionEnd();
    FOut->sectionTables();
    FDxf.writeVPort(*FOut);
    FOut->tableLinetypes(3);
    for (const char* const Name : {"BYBLOCK", "BYLAYER", "CONTINUOUS"}) {
      FDxf.writeLinetype(*FOut, DL_LinetypeData(Name, Name, 0, 0, 0.0));
    }
    FOut->tableEnd();
    FOut->tableLayers(7);
    WriteLayer({"0", 7});
    for (const TLayer& Layer : kCutLayers) WriteLayer(Layer);
    for (const TLayer& Layer : kIdleLayers) WriteLayer(Layer);
    FOut->tableEnd();
    FOut->tableStyle(1);
    FDxf.writeStyle(*FOut, DL_StyleData("Standard", 0, 0.0, 1.0, 0.0, 0, 2.5, "txt", ""));
    FOut->tableEnd();
    FDxf.writeView(*FOut);
    FDxf.writeUcs(*FOut);
    FOut->tableAppid(1);
    FDxf.writeAppid(*FOut, "ACAD");
    FOut->tableEnd();
    FDxf.writeDimStyle(*FOut, 1.0, 1.0, 1.0, 1.0, 1.0);
    FDxf.writeBlockRecord(*FOut);
    FOut->tableEnd();
    FOut->sectionEnd();
    FOut->sectionBlocks();
    for (const char* const Name : {"*Model_Space", "*Paper_Space", "*Paper_Space0"}) {
      FDxf.writeBlock(*FOut, DL_BlockData(Name, 0, 0.0, 0.0, 0.0));
      FDxf.writeEndBlock(*FOut, Name);
    }
    FOut->sectionEnd();
    FOut->sectionEntities();
  }

  void Write(const TMove& Move) {
    FLayer = LayerOf(Move);
    const TGeCurve2D& Curve = *Move.Curve;
    if (const auto* const Arc = dynamic_cast<const TGeCircularArc2D*>(&Curve)) {
      WriteArc(*Arc);
    } else if (const auto* const Joint = dynamic_cast<const TGePolyBezier2D*>(&Curve)) {
      for (int I = 0; I < Joint->GetBezierCount(); ++I) WriteBezier(Joint->GetBezier(I));
    } else if (const auto* const Chain = dynamic_cast<const TGePolyline2D*>(&Curve)) {
      for (int I = 1; I < Chain->GetPointCount(); ++I) {
        WriteLine(Chain->GetPoint(I - 1), Chain->GetPoint(I));
      }
    } else {
      WriteLine(Curve.StartPoint(), Curve.EndPoint());
    }
  }

  void Finish() {
    FOut->sectionEnd();
    FDxf.writeObjects(*FOut);
    FDxf.writeObjectsEnd(*FOut);
    FOut->dxfEOF();
    FOut->close();
  }

 private:
  void WriteLayer(const TLayer& Layer) {
    FDxf.writeLayer(*FOut, DL_LayerData(Layer.Name, 0),
                    DL_Attributes("", Layer.Color, -1, "CONTINUOUS", 1.0));
  }
  DL_Attributes Attributes() const { return {FLayer, 256, -1, "BYLAYER", 1.0}; }

  void WriteLine(const TPoint2D& From, const TPoint2D& To) {
    FDxf.writeLine(*FOut, DL_LineData(From.X, From.Y, 0.0, To.X, To.Y, 0.0), Attributes());
  }
  void WriteArc(const TGeCircularArc2D& Arc) {
    const TPoint2D Center = Arc.GetCenter();
    if (Arc.IsCircle()) {
      FDxf.writeCircle(*FOut, DL_CircleData(Center.X, Center.Y, 0.0, Arc.GetRadius()),
                       Attributes());
      return;
    }
    const bool IsCcw = Arc.GetSweepAngle() > 0.0;
    const double First = IsCcw ? Arc.GetStartAngle() : Arc.GetEndAngle();
    const double Last = IsCcw ? Arc.GetEndAngle() : Arc.GetStartAngle();
    FDxf.writeArc(
        *FOut,
        DL_ArcData(Center.X, Center.Y, 0.0, Arc.GetRadius(), DegreesOf(First), DegreesOf(Last)),
        Attributes());
  }
  void WriteBezier(const TBezierSegment2D& Bezier) {
    constexpr int kPlanar = 8;
    FDxf.writeSpline(*FOut, DL_SplineData(3, 8, 4, 0, kPlanar), Attributes());
    for (const double Knot : {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0}) {
      FDxf.writeKnot(*FOut, DL_KnotData(Knot));
    }
    for (const TPoint2D& P : {Bezier.P0, Bezier.P1, Bezier.P2, Bezier.P3}) {
      FDxf.writeControlPoint(*FOut, DL_ControlPointData(P.X, P.Y, 0.0, 1.0));
    }
  }

  DL_Dxf FDxf;
  std::unique_ptr<DL_WriterA> FOut;
  std::string FLayer;
};

}  // namespace

void WritePlanDxf(const std::string& Path, const std::vector<TMove>& Moves) {
  {
    TDxfFile File(Path);
    File.WriteTables();
    for (const TMove& Move : Moves) File.Write(Move);
    File.Finish();
  }
  // The writer reports nothing: a disk that ran full shows in a file without its end.
  std::ifstream File(Path, std::ios::binary);
  File.seekg(-8, std::ios::end);
  std::string Mark;
  while (File >> Mark && Mark != "EOF") {}
  if (Mark != "EOF") throw EBadInput("cannot write the plan to " + Path);
}

}  // namespace sheet_planner
