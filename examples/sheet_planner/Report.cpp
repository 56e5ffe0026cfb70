#include "examples/sheet_planner/Report.h"

#include <algorithm>
#include <cstddef>

#include "examples/sheet_planner/Format.h"
#include "examples/sheet_planner/LooseEnds.h"

namespace sheet_planner {

using namespace tarnalgo;

namespace {

std::string Padded(const std::string& Text, std::size_t Width) {
  return Text.size() < Width ? std::string(Width - Text.size(), ' ') + Text : Text;
}

/// Without control characters, which would move the terminal's cursor.
std::string Printable(std::string Text) {
  std::replace_if(
      Text.begin(), Text.end(), [](char C) { return (C >= 0 && C < ' ') || C == '\x7F'; }, '?');
  return Text;
}

double CutLength(const TOwningFlyCurves& Pass) {
  double Length = 0.0;
  for (const TFlyCurve* Piece : Pass) {
    if (!Piece->IsFlyGap()) Length += Piece->GeCurve()->CurveLength();
  }
  return Length;
}

std::string PlaceText(const TPoint2D& P) {
  return Fixed(P.X, 3) + ", " + Fixed(P.Y, 3);
}

/// The first places of a list.
std::string FirstOf(const std::vector<TPoint2D>& Places) {
  constexpr std::size_t kShown = 4;
  std::string Text;
  for (std::size_t I = 0; I < std::min(Places.size(), kShown); ++I) {
    Text += (I == 0 ? "(" : ", (") + PlaceText(Places[I]) + ")";
  }
  return Places.size() > kShown ? Text + ", ... (--list tells all)" : Text;
}

int CutCount(const TOwningFlyCurves& Pass) {
  return static_cast<int>(
      std::count_if(Pass.begin(), Pass.end(), [](const TFlyCurve* P) { return !P->IsFlyGap(); }));
}

/// Lines of a label, a count and what there is to say about it.
class TTable {
 public:
  void Heading(const std::string& Text) { FText += Text + "\n"; }
  void Row(const std::string& Label, long long Count, const std::string& Remark = {}) {
    Row(Label, Grouped(Count), Remark);
  }
  void Row(const std::string& Label, const std::string& Value, const std::string& Remark) {
    FText += "  " + Label + std::string(kLabel - std::min(Label.size(), kLabel), ' ') +
             Padded(Value, kValue);
    if (!Remark.empty()) FText += "  " + Remark;
    FText += '\n';
  }
  void Words(const std::string& Label, const std::string& Text) {
    FText += "  " + Label + std::string(kLabel - std::min(Label.size(), kLabel), ' ') + "  " +
             Text + "\n";
  }
  std::string Take() { return std::move(FText); }

 private:
  static constexpr std::size_t kLabel = 20;
  static constexpr std::size_t kValue = 10;
  std::string FText;
};

}  // namespace

std::string PlanReport(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan) {
  const auto Length = [&](double Value) { return Fixed(Value, 1) + " " + Drawing.Unit; };
  const TPrepStats& Prep = Sheet.Stats;
  const TPlanStats& Stats = Plan.Stats;
  TTable Table;
  Table.Heading("drawing  " + Printable(Drawing.Name));
  Table.Words("entities", Listed(Drawing.Read));
  Table.Words("skipped", Listed(Drawing.Skipped));
  for (const std::string& Note : Drawing.Notes) Table.Words("note", Note);
  if (!Sheet.PortLayers.empty()) {
    std::string Ports;
    for (std::size_t I = 0; I < Sheet.PortLayers.size(); ++I) {
      Ports += (I == 0 ? "" : ", ") + std::to_string(I) + " " + Printable(Sheet.PortLayers[I]);
    }
    Table.Words("ports", Ports);
  }

  Table.Heading("straight edges");
  Table.Row("read", Prep.EdgesRead, Counted(Prep.EndsMoved, "end", "ends") + " snapped");
  Table.Row("dropped", Prep.Repeated + Prep.Covered + Prep.TooShort,
            Counted(Prep.Repeated, "drawn again", "drawn again") + ", " + Grouped(Prep.Covered) +
                " within others, " + Grouped(Prep.TooShort) + " shorter than the snap gap");
  Table.Row("trimmed", Prep.Trimmed,
            "overlaps; " + Length(Prep.DroppedLength) + " in all was drawn more than once");
  Table.Row("flown", Stats.FlownEdges, Length(Stats.FlownLength));
  Table.Row("not flown", Stats.ShortEdges + Stats.LongEdges + Stats.EdgesBesideArcs,
            Grouped(Stats.ShortEdges) + " below " + Short(MinScanLineLength, 6) + ", " +
                Grouped(Stats.LongEdges) + " above " + Short(MaxScanLineLength, 6) + " " +
                Drawing.Unit + ", " + Grouped(Stats.EdgesBesideArcs) + " beside arcs or curves");

  int Longest = 0;
  int Lone = 0;
  for (const TOwningFlyCurves& Pass : Plan.Passes) {
    Longest = std::max(Longest, CutCount(Pass));
    if (CutCount(Pass) == 1) ++Lone;
  }
  Table.Heading("flying cut");
  Table.Row("runs", Stats.Runs,
            "in " + Counted(Stats.Groups, "direction", "directions") + "; split " +
                Grouped(Stats.RunsSplit) + " times at another level of nesting");
  Table.Row(
      "passes", static_cast<long long>(Plan.Passes.size()),
      "up to " + Counted(Longest, "edge", "edges") + " each, " + Grouped(Lone) + " of one edge");
  Table.Row("gaps accepted", Stats.GapsAccepted, Length(Stats.GapLength));
  Table.Row("gaps rejected", Stats.GapsCrossing + Stats.GapsTooLong,
            Grouped(Stats.GapsCrossing) + " across another cut, " + Grouped(Stats.GapsTooLong) +
                " longer than " + Short(MaxConnectDistance, 6) + " " + Drawing.Unit);

  const TConnectStats& Joints = Plan.Joints;
  if (!Plan.Connections.empty()) {
    Table.Row("connections", Joints.Smooth + Joints.ThreePiece + Joints.Transitions,
              Grouped(Joints.Smooth) + " smooth, " + Grouped(Joints.ThreePiece) + " three-piece, " +
                  Counted(Joints.Transitions, "transition", "transitions"));
    Table.Row("rejected", Joints.Crossing + Joints.NoCurve + Joints.TooFar,
              Grouped(Joints.Crossing) + " across a cut, " + Grouped(Joints.NoCurve) +
                  " without a curve within the limits, " + Grouped(Joints.TooFar) + " too far");
  }
  double Around = 0.0;
  for (const TSheetCircle& Circle : Sheet.Circles) Around += Circle.Circle.Radius * kFullTurn;
  double Ordinary = 0.0;
  long long Closed = 0;
  for (const TOrdinaryContour& Contour : Plan.Contours) {
    Ordinary += Contour.Length();
    if (Contour.IsClosed) ++Closed;
  }
  const auto Arcs = std::count_if(Sheet.Chains.begin(), Sheet.Chains.end(),
                                  [](const TSheetChain& Chain) { return Chain.IsArc(); });
  long long Holes = 0;
  for (const TLABHPolygon* Region : Plan.Regions) Holes += Region->Count() - 1;
  Table.Heading("material");
  Table.Row("outlines", Plan.Regions.Count(),
            Counted(Holes, "hole", "holes") + "; " + Fixed(Plan.Regions.Area(), 1) + " " +
                Drawing.Unit + "²");
  Table.Heading("other cuts");
  Table.Row("circles", Plan.Circles.Count(), Length(Around));
  Table.Row(
      "ordinary contours", static_cast<long long>(Plan.Contours.size()),
      Length(Ordinary) + ", " + Grouped(Closed) + " closed; of " +
          Counted(Stats.ShortEdges + Stats.LongEdges + Stats.EdgesBesideArcs, "edge", "edges") +
          ", " + Counted(Arcs, "arc", "arcs") + ", " +
          Counted(static_cast<long long>(Sheet.Chains.size()) - Arcs, "curve", "curves"));
  if (Prep.RepeatedOther > 0) {
    Table.Row("drawn again", Prep.RepeatedOther, "arcs, circles and curves, dropped");
  }
  const TLooseEnds Ends = FindLooseEnds(Sheet);
  if (!Ends.Loose.empty() || !Ends.Branches.empty()) {
    Table.Heading("ends of the drawing");
    Table.Row("loose", static_cast<long long>(Ends.Loose.size()), FirstOf(Ends.Loose));
    Table.Row("branch points", static_cast<long long>(Ends.Branches.size()),
              FirstOf(Ends.Branches));
  }
  return Table.Take();
}

std::string TraceReport(const TTraceStats& Stats) {
  const TScatterStats& Scatter = Stats.Scatter;
  TTable Table;
  Table.Heading("tracing");
  Table.Row("pieces", Stats.Pieces,
            "of " + Counted(Stats.Curves, "figure", "figures") + " drawn, cut at " +
                Counted(Scatter.Cuts, "place", "places"));
  Table.Row("ends moved", Scatter.EndsMoved, "to other ends or curves within the gap");
  Table.Row("dropped", Scatter.Repeated + Scatter.Stubs + Scatter.Swallowed,
            Counted(Scatter.Repeated, "drawn again", "drawn again") + ", " +
                Counted(Scatter.Stubs, "stub", "stubs") + ", " + Grouped(Scatter.Swallowed) +
                " no larger than a node");
  Table.Row("outlines", Stats.Outsides, "round " + Counted(Stats.Faces, "area", "areas"));
  Table.Row(
      "open chains", Stats.Dangling + Stats.Bridges,
      Grouped(Stats.Dangling) + " to loose ends, " + Counted(Stats.Bridges, "bridge", "bridges"));
  return Table.Take();
}

std::string WorkReport(const TDrawing& Drawing, const TWork& Before, const TWork& After,
                       const TMachine& Machine) {
  TTable Table;
  Table.Heading("work: contour by contour, then as planned (" + Drawing.Unit + ", s)");
  const auto Length = [&Table](const char* Label, double Old, double New) {
    Table.Row(Label, Fixed(Old, 1), Padded(Fixed(New, 1), 10));
  };
  const auto Number = [&Table](const char* Label, int Old, int New) {
    Table.Row(Label, Grouped(Old), Padded(Grouped(New), 10));
  };
  Length("cut", Before.CutLength, After.CutLength);
  Length("gaps flown over", Before.GapLength, After.GapLength);
  Length("connections", Before.ConnectionLength, After.ConnectionLength);
  Length("rapid travel", Before.RapidLength, After.RapidLength);
  Number("rapid moves", Before.RapidMoves, After.RapidMoves);
  Number("halts", Before.Halts, After.Halts);
  Number("pierces", Before.Pierces, After.Pierces);
  Number("flying starts", Before.FlyingStarts, After.FlyingStarts);
  Table.Row("time", Fixed(Before.Time, 1),
            Padded(Fixed(After.Time, 1), 10) + "  at cut speed " + Short(Machine.CutSpeed, 3) +
                ", rapid " + Short(Machine.RapidSpeed, 3) + ", acceleration " +
                Short(Machine.Acceleration, 3) + ", pierce " + Short(Machine.PierceTime, 3));
  return Table.Take();
}

std::string PlanListing(const TDrawing& Drawing, const TSheet& Sheet, const TPlan& Plan) {
  const auto Line = [&](const char* Kind, std::size_t Number, int Port, const std::string& Rest) {
    std::string Text = std::string(Kind) + " " + std::to_string(Number);
    if (Drawing.Layers.size() > 1) Text += "  port " + std::to_string(Port);
    return Text + "  " + Rest + "\n";
  };
  std::string Text;
  for (std::size_t I = 0; I < Plan.Passes.size(); ++I) {
    const TOwningFlyCurves& Pass = Plan.Passes[I];
    Text +=
        Line("pass", I + 1, Pass.First()->ChannelPort(),
             "(" + PlaceText(Pass.StartPoint()) + ") to (" + PlaceText(Pass.EndPoint()) + ")  " +
                 Counted(CutCount(Pass), "edge", "edges") + ", " + Fixed(CutLength(Pass), 3));
  }
  for (int I = 0; I < Plan.Circles.Count(); ++I) {
    const TCircle2D Circle = static_cast<const TFlyCircle*>(Plan.Circles[I])->Circle2D();
    Text += Line("circle", static_cast<std::size_t>(I) + 1, Plan.Circles[I]->ChannelPort(),
                 "(" + PlaceText(Circle.Center) + ")  radius " + Fixed(Circle.Radius, 3));
  }
  for (std::size_t I = 0; I < Plan.Contours.size(); ++I) {
    const TOrdinaryContour& Contour = Plan.Contours[I];
    Text += Line("contour", I + 1, Contour.Port,
                 Counted(static_cast<long long>(Contour.Pieces.size()), "piece", "pieces") + ", " +
                     Fixed(Contour.Length(), 3) + (Contour.IsClosed ? ", closed" : ", open"));
  }
  const TLooseEnds Ends = FindLooseEnds(Sheet);
  for (const TPoint2D& P : Ends.Loose) Text += "loose end  (" + PlaceText(P) + ")\n";
  for (const TPoint2D& P : Ends.Branches) Text += "branch point  (" + PlaceText(P) + ")\n";
  return Text;
}

}  // namespace sheet_planner
