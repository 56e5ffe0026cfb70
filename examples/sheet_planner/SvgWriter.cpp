#include "examples/sheet_planner/SvgWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

#include "examples/sheet_planner/Contours.h"
#include "examples/sheet_planner/Format.h"
#include "examples/sheet_planner/LooseEnds.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

// The layout, in pixels.
constexpr double kWidth = 1600.0;
constexpr double kPageMargin = 40.0;
constexpr double kHeader = 104.0;
constexpr double kFooter = 96.0;
constexpr double kLargestDrawing = 1000.0;  // high
constexpr double kSmallestDrawing = 160.0;
constexpr double kLegendLeft = 290.0;            // behind the order of the passes
constexpr double kLegendRight = kWidth - 300.0;  // before the scale
constexpr double kLegendRow = 32.0;

constexpr const char* kContourColour = "#64748b";
constexpr const char* kCircleColour = "#7c3aed";
constexpr const char* kRejectedColour = "#dc2626";
constexpr const char* kConnectionColour = "#0891b2";
constexpr const char* kEndColour = "#db2777";

struct TColour {
  double R;
  double G;
  double B;
};
/// First pass to last: told apart on white, on a beamer and in grey, and never red.
constexpr std::array<TColour, 5> kRamp{
    {{30, 41, 120}, {23, 99, 176}, {13, 148, 136}, {101, 163, 13}, {234, 138, 4}}};

std::string ColourAt(double Part) {
  const double Place = std::clamp(Part, 0.0, 1.0) * (kRamp.size() - 1);
  const std::size_t Low = std::min(static_cast<std::size_t>(Place), kRamp.size() - 2);
  const double T = Place - static_cast<double>(Low);
  const auto Mix = [T](double A, double B) {
    const int Value = static_cast<int>(std::lround(A + (B - A) * T));
    constexpr char kDigits[] = "0123456789abcdef";
    return std::string{kDigits[Value / 16], kDigits[Value % 16]};
  };
  const TColour& A = kRamp[Low];
  const TColour& B = kRamp[Low + 1];
  return "#" + Mix(A.R, B.R) + Mix(A.G, B.G) + Mix(A.B, B.B);
}

/// With some room round it; never without extent.
TRect2D FieldOf(const TSheet& Sheet) {
  const TRect2D Box = BoundsOf(Sheet);
  if (!Box.IsValid()) return {{0, 0}, {1, 1}};
  const double Room = std::max({Box.Width(), Box.Height(), 1e-3}) * 0.02;
  return Box.Inflate(Room, Room);
}

/// A length of 1, 2 or 5 times a power of ten, at most `Largest`.
double RoundLength(double Largest) {
  const double Power = std::pow(10.0, std::floor(std::log10(Largest)));
  for (const double Factor : {5.0, 2.0}) {
    if (Power * Factor <= Largest) return Power * Factor;
  }
  return Power;
}

/// Groups of the SVG text, from back to front.
class TPicture {
 public:
  TPicture(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan)
      : FDrawing(Drawing),
        FSheet(Sheet),
        FPlan(Plan),
        FEnds(FindLooseEnds(Sheet)),
        FBox(FieldOf(Sheet)) {
    FScale = std::min((kWidth - 2 * kPageMargin) / FBox.Width(), kLargestDrawing / FBox.Height());
    FDrawn = std::max(FBox.Height() * FScale, kSmallestDrawing);
    FStroke = std::clamp(TypicalEdge() * FScale / 7.0, 0.7, 3.2);
  }

  std::string Run() {
    Head();
    Contours();
    Circles();
    Gaps();
    Connections();
    Rejected();
    Cuts();
    Arrows();
    Ends();
    Legend();
    FText += "</svg>\n";
    return std::move(FText);
  }

 private:
  double X(const TPoint2D& P) const {
    const double Left = (kWidth - FBox.Width() * FScale) / 2;
    return Left + (P.X - FBox.Min.X) * FScale;
  }
  double Y(const TPoint2D& P) const {
    const double Bottom = kHeader + (FDrawn + FBox.Height() * FScale) / 2;
    return Bottom - (P.Y - FBox.Min.Y) * FScale;
  }
  std::string At(const TPoint2D& P) const { return Short(X(P), 2) + " " + Short(Y(P), 2); }
  double Height() const { return kHeader + FDrawn + kFooter; }

  /// Length of the flown edge in the middle of all that are no mere bits of a stretch: what strokes
  /// and arrows go by.
  double TypicalEdge() const {
    std::vector<double> Lengths;
    for (const TOwningFlyCurves& Pass : FPlan.Passes) {
      for (const TFlyCurve* Piece : Pass) {
        const double Length = Piece->GeCurve()->CurveLength();
        if (!Piece->IsFlyGap() && Length >= MinScanLineLength) Lengths.push_back(Length);
      }
    }
    if (Lengths.empty()) return FBox.Width() / 40;
    const auto Middle = Lengths.begin() + static_cast<std::ptrdiff_t>(Lengths.size() / 2);
    std::nth_element(Lengths.begin(), Middle, Lengths.end());
    return *Middle;
  }

  std::string PassColour(std::size_t Pass) const {
    const std::size_t Last = FPlan.Passes.size() - 1;
    return ColourAt(Last == 0 ? 0.0 : static_cast<double>(Pass) / static_cast<double>(Last));
  }

  void Text(double AX, double AY, double Size, const std::string& Content,
            const std::string& More = {}) {
    FText += "<text x=\"" + Short(AX, 1) + "\" y=\"" + Short(AY, 1) + "\" font-size=\"" +
             Short(Size, 1) + "\" " + More + ">" + Content + "</text>\n";
  }

  void Head() {
    const std::string H = Short(Height(), 0);
    FText += "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Short(kWidth, 0) +
             "\" height=\"" + H + "\" viewBox=\"0 0 " + Short(kWidth, 0) + " " + H +
             "\" font-family=\"'DejaVu Sans', Verdana, sans-serif\" fill=\"#1e293b\">\n";
    FText += "<title>" + XmlText(FDrawing.Name) + "</title>\n";
    FText += "<rect width=\"100%\" height=\"100%\" fill=\"#ffffff\"/>\n";
    FText += "<rect x=\"" + Short(kPageMargin / 2, 1) + "\" y=\"" + Short(kHeader, 1) +
             "\" width=\"" + Short(kWidth - kPageMargin, 1) + "\" height=\"" + Short(FDrawn, 1) +
             "\" rx=\"10\" fill=\"#f4f6f9\"/>\n";
    Text(kPageMargin, 46, 28, "Flying-cut plan: " + XmlText(FDrawing.Name), "font-weight=\"bold\"");
    const TPlanStats& Stats = FPlan.Stats;
    Text(kPageMargin, 78, 17,
         Counted(Stats.FlownEdges, "straight edge", "straight edges") + " in " +
             Counted(static_cast<long long>(FPlan.Passes.size()), "pass", "passes") + ", " +
             Counted(FPlan.Circles.Count(), "circle", "circles") + ", " +
             Counted(static_cast<long long>(FPlan.Contours.size()), "ordinary contour",
                     "ordinary contours") +
             "; sheet " + Short(SheetBox().Width(), 1) + " × " + Short(SheetBox().Height(), 1) +
             " " + FDrawing.Unit,
         "fill=\"#475569\"");
  }

  /// The box without the room round it.
  TRect2D SheetBox() const {
    const double Room = std::max(FBox.Width(), FBox.Height()) * 0.02 / 1.04;
    return FBox.Inflate(-Room, -Room);
  }

  void BeginGroup(const std::string& Attributes) { FText += "<g " + Attributes + ">\n"; }
  void EndGroup() { FText += "</g>\n"; }

  /// Moves or draws on to the curve's start and along it.
  void AppendCurve(const TGeCurve2D& Curve, std::string& Path, std::string& PathEnd) const {
    const std::vector<TPoint2D> Points = Curve.Sample(0.2 / FScale);
    AppendPoints(Points, Path, PathEnd);
  }

  void AppendPoints(const std::vector<TPoint2D>& Points, std::string& Path,
                    std::string& PathEnd) const {
    for (std::size_t I = 0; I < Points.size(); ++I) {
      std::string Place = At(Points[I]);
      if (Place == PathEnd) continue;
      Path += (I == 0 ? "M" : "L") + Place;
      PathEnd = std::move(Place);
    }
  }

  void AppendSeg(const TLABSegline& Seg, std::string& Path, std::string& PathEnd) const {
    AppendPoints({Seg.P1}, Path, PathEnd);
    if (Seg.SegType == stLine) {
      if (At(Seg.P4) != PathEnd) Path += "L" + At(Seg.P4);
    } else if (Seg.SegType == stArc) {
      // In two halves: more than half a turn would need its ends apart in the picture.
      const std::string Radius = Short(Seg.ToArc().Radius() * FScale, 2);
      const std::string Arc =
          "A" + Radius + " " + Radius + (Seg.Bulge < 0.0 ? " 0 0 1 " : " 0 0 0 ");
      Path += Arc + At(Seg.PointByParam(0.5)) + Arc + At(Seg.P4);
    } else {
      Path += "C" + At(Seg.P2) + " " + At(Seg.P3) + " " + At(Seg.P4);
    }
    PathEnd = At(Seg.P4);
  }

  void Contours() {
    BeginGroup(std::string("fill=\"none\" stroke=\"") + kContourColour + "\" stroke-width=\"" +
               Short(std::max(FStroke * 0.6, 0.8), 2) + "\" stroke-linejoin=\"round\"");
    for (const TOrdinaryContour& Contour : FPlan.Contours) {
      std::string Path;
      std::string PathEnd;
      for (const TLABSegline& Seg : Contour.Chain) AppendSeg(Seg, Path, PathEnd);
      if (!Path.empty()) FText += "<path d=\"" + Path + "\"/>\n";
    }
    EndGroup();
  }

  void Circles() {
    BeginGroup(std::string("fill=\"none\" stroke=\"") + kCircleColour + "\" stroke-width=\"" +
               Short(std::max(FStroke * 0.6, 0.8), 2) + "\"");
    for (const TSheetCircle& Circle : FSheet.Circles) {
      FText += "<circle cx=\"" + Short(X(Circle.Circle.Center), 2) + "\" cy=\"" +
               Short(Y(Circle.Circle.Center), 2) + "\" r=\"" +
               Short(Circle.Circle.Radius * FScale, 2) + "\"/>\n";
    }
    EndGroup();
  }

  /// One path a pass of its cuts, or of its gaps.
  void PassPaths(bool OfGaps) {
    for (std::size_t I = 0; I < FPlan.Passes.size(); ++I) {
      std::string Path;
      std::string PathEnd;
      for (const TFlyCurve* Piece : FPlan.Passes[I]) {
        if (Piece->IsFlyGap() == OfGaps) AppendCurve(*Piece->GeCurve(), Path, PathEnd);
      }
      if (Path.empty()) continue;
      FText += "<path d=\"" + Path + "\" stroke=\"" + PassColour(I) + "\"/>\n";
    }
  }

  void Gaps() {
    const std::string Dash = Short(FStroke * 1.2, 2);
    BeginGroup("fill=\"none\" stroke-width=\"" + Short(std::max(FStroke * 0.4, 0.5), 2) +
               "\" stroke-dasharray=\"" + Dash + " " + Dash + "\" stroke-opacity=\"0.75\"");
    PassPaths(true);
    EndGroup();
  }

  /// From one pass or circle to the next, flown.
  void Connections() {
    BeginGroup(std::string("fill=\"none\" stroke=\"") + kConnectionColour + "\" stroke-width=\"" +
               Short(std::max(FStroke * 0.5, 0.7), 2) + "\"");
    for (const auto& Connection : FPlan.Connections) {
      std::string Path;
      std::string PathEnd;
      if (Connection) AppendCurve(*Connection, Path, PathEnd);
      if (!Path.empty()) FText += "<path d=\"" + Path + "\"/>\n";
    }
    EndGroup();
  }

  void Rejected() {
    BeginGroup(std::string("fill=\"none\" stroke=\"") + kRejectedColour + "\" stroke-width=\"" +
               Short(std::max(FStroke * 0.6, 1.0), 2) + "\"");
    const double Arm = std::max(FStroke * 1.4, 2.5);
    for (const TRejectedGap& Gap : FPlan.Rejected) {
      const TPoint2D Middle = Gap.Line.EvalPoint(0.5);
      const auto Cross = [&](double DX, double DY) {
        return "M" + Short(X(Middle) - DX, 2) + " " + Short(Y(Middle) - DY, 2) + "L" +
               Short(X(Middle) + DX, 2) + " " + Short(Y(Middle) + DY, 2);
      };
      FText += "<path d=\"M" + At(Gap.Line.StartPoint) + "L" + At(Gap.Line.EndPoint) +
               Cross(Arm, Arm) + Cross(Arm, -Arm) + "\"/>\n";
    }
    EndGroup();
  }

  void Cuts() {
    BeginGroup("fill=\"none\" stroke-linecap=\"round\" stroke-width=\"" + Short(FStroke, 2) + "\"");
    PassPaths(false);
    EndGroup();
  }

  /// At the end of each pass, pointing the way it was cut. The last edge may be a bit of a stretch;
  /// passes are straight, so the whole tells the way.
  void Arrows() {
    const double Largest = std::clamp(FStroke * 3.2, 4.0, 11.0);
    BeginGroup("stroke=\"#ffffff\" stroke-width=\"0.4\"");
    for (std::size_t I = 0; I < FPlan.Passes.size(); ++I) {
      const TOwningFlyCurves& Pass = FPlan.Passes[I];
      const TPoint2D From(X(Pass.StartPoint()), Y(Pass.StartPoint()));
      const TPoint2D To(X(Pass.EndPoint()), Y(Pass.EndPoint()));
      const double Size = std::min(Largest, From.DistanceTo(To) * 0.5);
      const TPoint2D Way = (To - From).Normal() * Size;
      const TPoint2D Side = Way.RotateCcw90() * 0.42;
      const auto Place = [](const TPoint2D& P) { return Short(P.X, 2) + "," + Short(P.Y, 2); };
      FText += "<polygon points=\"" + Place(To + Way * 0.25) + " " + Place(To - Way * 0.75 + Side) +
               " " + Place(To - Way * 0.75 - Side) + "\" fill=\"" + PassColour(I) + "\"/>\n";
    }
    EndGroup();
  }

  void Ring(double AX, double AY, double Size) {
    FText += "<circle cx=\"" + Short(AX, 2) + "\" cy=\"" + Short(AY, 2) + "\" r=\"" +
             Short(Size, 2) + "\"/>\n";
  }
  void Square(double AX, double AY, double Size) {
    FText += "<rect x=\"" + Short(AX - Size, 2) + "\" y=\"" + Short(AY - Size, 2) + "\" width=\"" +
             Short(2 * Size, 2) + "\" height=\"" + Short(2 * Size, 2) + "\"/>\n";
  }

  /// A ring round each loose end, a square round each branch point.
  void Ends() {
    const double Size = std::clamp(FStroke * 1.6, 2.5, 6.0);
    BeginGroup(EndStroke("1.2"));
    for (const TPoint2D& P : FEnds.Loose) Ring(X(P), Y(P), Size);
    for (const TPoint2D& P : FEnds.Branches) Square(X(P), Y(P), Size);
    EndGroup();
  }
  static std::string EndStroke(const std::string& Width) {
    return std::string("fill=\"none\" stroke=\"") + kEndColour + "\" stroke-width=\"" + Width +
           "\"";
  }

  enum class TMark { Line, Ring, Square };

  /// An entry for what there is; they stand from left to right, in two rows if need be.
  void LegendEntry(TMark Mark, const std::string& Attributes, long long Count, std::string_view One,
                   std::string_view Many) {
    constexpr double kMark = 54.0;
    constexpr double kLetter = 9.0;  // wide, at most, on an average
    if (Count == 0) return;
    const std::string Content = Counted(Count, One, Many);
    const double Width = kMark + kLetter * static_cast<double>(Content.size());
    if (FLegendX + Width > kLegendRight) {
      FLegendX = kLegendLeft;
      FLegendY += kLegendRow;
    }
    BeginGroup(Attributes);
    if (Mark == TMark::Ring) Ring(FLegendX + 36, FLegendY, 6);
    if (Mark == TMark::Square) Square(FLegendX + 36, FLegendY, 6);
    if (Mark == TMark::Line) {
      FText += "<path d=\"M" + Short(FLegendX, 1) + " " + Short(FLegendY, 1) + "h44\"/>\n";
    }
    EndGroup();
    Text(FLegendX + kMark, FLegendY + 5, 15, Content);
    FLegendX += Width + 24;
  }

  void Legend() {
    const double LineY = FLegendY = Height() - kFooter + kLegendRow;
    FText += "<defs><linearGradient id=\"order\">";
    for (std::size_t I = 0; I < kRamp.size(); ++I) {
      const double Part = static_cast<double>(I) / (kRamp.size() - 1);
      FText += "<stop offset=\"" + Short(Part, 2) + "\" stop-color=\"" + ColourAt(Part) + "\"/>";
    }
    FText += "</linearGradient></defs>\n";
    FText += "<rect x=\"" + Short(kPageMargin, 1) + "\" y=\"" + Short(LineY - 6, 1) +
             "\" width=\"120\" height=\"12\" rx=\"3\" fill=\"url(#order)\"/>\n";
    Text(kPageMargin, LineY + 25, 13, "first", "fill=\"#475569\"");
    Text(kPageMargin + 120, LineY + 25, 13, "last", "fill=\"#475569\" text-anchor=\"end\"");
    Text(kPageMargin + 130, LineY + 5, 15,
         Counted(static_cast<long long>(FPlan.Passes.size()), "pass", "passes"));
    const auto Stroke = [](const std::string& Colour, const std::string& More = {}) {
      return "fill=\"none\" stroke=\"" + Colour + "\" stroke-width=\"2.5\"" + More;
    };
    const TPlanStats& Stats = FPlan.Stats;
    const auto Connections = std::count_if(FPlan.Connections.begin(), FPlan.Connections.end(),
                                           [](const auto& Curve) { return Curve != nullptr; });
    LegendEntry(TMark::Line, Stroke("#1763b0", " stroke-dasharray=\"5 5\""), Stats.GapsAccepted,
                "gap flown over", "gaps flown over");
    LegendEntry(TMark::Line, Stroke(kConnectionColour), Connections, "connection", "connections");
    LegendEntry(TMark::Line, Stroke(kRejectedColour), Stats.GapsCrossing, "gap rejected",
                "gaps rejected");
    LegendEntry(TMark::Line, Stroke(kContourColour), std::ssize(FPlan.Contours), "ordinary contour",
                "ordinary contours");
    LegendEntry(TMark::Line, Stroke(kCircleColour), FPlan.Circles.Count(), "circle", "circles");
    LegendEntry(TMark::Ring, EndStroke("1.6"), std::ssize(FEnds.Loose), "loose end", "loose ends");
    LegendEntry(TMark::Square, EndStroke("1.6"), std::ssize(FEnds.Branches), "branch point",
                "branch points");
    ScaleBar();
  }

  void ScaleBar() {
    constexpr double kLongest = 230.0;
    const double LineY = Height() - kFooter + kLegendRow;
    const double Length = RoundLength(kLongest / FScale);
    const double Pixels = Length * FScale;
    const double Left = kWidth - kPageMargin - Pixels;
    FText += "<path d=\"M" + Short(Left, 1) + " " + Short(LineY - 7, 1) + "v14m0 -7h" +
             Short(Pixels, 1) +
             "m0 -7v14\" fill=\"none\" stroke=\"#1e293b\" stroke-width=\"2\"/>\n";
    Text(Left + Pixels / 2, LineY + 25, 14, Short(Length, 6) + " " + FDrawing.Unit,
         "text-anchor=\"middle\"");
  }

  const TDrawing& FDrawing;
  const TSheet& FSheet;
  const TPlan& FPlan;
  TLooseEnds FEnds;
  TRect2D FBox;
  double FLegendX = kLegendLeft;
  double FLegendY = 0.0;
  double FScale = 1.0;
  double FDrawn = 0.0;  // height of the drawing's field
  double FStroke = 1.0;
  std::string FText;
};

}  // namespace

std::string PlanSvg(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan) {
  return TPicture(Drawing, Sheet, Plan).Run();
}

}  // namespace sheet_planner
