#include <memory>
#include <vector>

#include "geometryAlgo/flyscanAlgo.h"
#include "tests/starved/Starve.h"
#include "tests/support/Plate.h"

namespace tarnalgo::test {
namespace {

std::unique_ptr<TGeCompositeCurve2D> Detour() {
  auto Curve = std::make_unique<TGeCompositeCurve2D>();
  Curve->AddCurve(std::make_unique<TGeLine2D>(TPoint2D(-5, 1), TPoint2D(3, 1)));
  Curve->AddCurve(std::make_unique<TGeCircularArc2D>(TPoint2D(3, 1), 1.0, TPoint2D(3, 5)));
  Curve->AddCurve(std::make_unique<TGePolyline2D>(TDynPoints2D{{3, 5}, {0, 5}, {0, 0}, {9, 0}}));
  return Curve;
}

struct TSheet {
  std::unique_ptr<TFlyCurve> Piece = std::make_unique<TFlyCurve>();
  TLinearSegments Segments;
  std::vector<std::unique_ptr<TLinearSegmentList>> Runs;
  TOwningFlyCurves Pass;

  TSheet() {
    TPlate Plate;
    Plate.Rows = Plate.Columns = 4;
    for (const TLine2D& Edge : EdgesOf(Plate)) Segments.AddLine(Piece.get(), Edge);
    Segments.SortByAngleIntercept();
    Runs = CutIntoRuns(Segments);
    Runs[1]->BuildResult(Pass);
    Segments.AddLine(Piece.get(), {{0, 0}, {1, 3}});
  }
  auto State() const {
    std::vector<TLine2D> Lines;
    for (const TLinearSegment* Segment : Segments) Lines.push_back(Segment->Line);
    std::vector<std::pair<double, TGeCurve2D*>> Pieces;
    for (const TFlyCurve* Item : Pass) Pieces.emplace_back(Item->PathStartParam(), Item->GeCurve());
    return std::tuple(Lines, Pieces);
  }
};

TEST(StarvedFlyscan, SegmentsAndRuns) {
  const auto Make = [] { return std::make_unique<TSheet>(); };
  Starve("AddLine", Make, [](TSheet& S) { S.Segments.AddLine(nullptr, {{1, 1}, {2, 2}}); });
  Starve("SortByAngleIntercept", Make, [](TSheet& S) { S.Segments.SortByAngleIntercept(); });
  Starve("SortByDM", Make, [](TSheet& S) {
    S.Runs[0]->AngVec = DcsX;
    S.Runs[0]->SortByDM();
  });
  Starve(
      "BuildResult", Make, [](TSheet& S) { S.Runs[0]->BuildResult(S.Pass); }, TPromise::Usable);
  // A run that is sorted already: nothing at all has changed.
  const auto MakeSorted = [] {
    auto Sheet = std::make_unique<TSheet>();
    TOwningFlyCurves Once;
    Sheet->Runs[0]->BuildResult(Once);
    return Sheet;
  };
  Starve("BuildResult", MakeSorted, [](TSheet& S) { S.Runs[0]->BuildResult(S.Pass); });
  Starve("ReverseDir", Make, [](TSheet& S) { S.Pass.ReverseDir(); });
  Starve("groups", Make, [](TSheet& S) {
    TSegmentGroups Groups;
    for (const auto& Run : S.Runs) Groups.Add(Run.get());
    Groups.SortByIntercept();
    return Groups.Count();
  });
  Starve("Clone", Make, [](TSheet& S) { return S.Pass.First()->Clone()->PathStartParam(); });
}

TEST(StarvedFlyscan, ReversingAPassOfComposites) {
  struct TSubject {
    TOwningFlyCurves Pass;
    TSubject() {
      for (int I = 0; I < 3; ++I) {
        auto Curve = Detour();
        Pass.Add(std::make_unique<TFlyCurve>(Curve.get(), 0.5 + I, false, 0, 0));
        static_cast<void>(Curve.release());
      }
    }
    auto State() const {
      std::vector<std::pair<double, TGeCurve2D*>> Pieces;
      for (const TFlyCurve* Item : Pass) {
        Pieces.emplace_back(Item->PathStartParam(), Item->GeCurve());
      }
      return Pieces;
    }
  };
  // With no memory at all it may not get back; a single failure it must take back.
  auto Subject = std::make_unique<TSubject>();
  const std::string Before = TextOf(*Subject);
  for (int Nth = 1;; ++Nth) {
    StarveAt(Nth, TShortage::Once);
    try {
      Subject->Pass.ReverseDir();
    } catch (const std::bad_alloc&) {}
    if (!EndShortage()) break;
    ASSERT_EQ(Before, TextOf(*Subject)) << "allocation " << Nth;
  }
}

TEST(StarvedFlyscan, Connections) {
  struct TSubject {
    TPoint2D Out{0, 0};
    TPoint2D In{9, 4};
    double Radius = 6.0;
    auto State() const { return std::tie(Out, In, Radius); }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  for (const TPoint2D& Way : {TPoint2D(1, 0), TPoint2D(-1, 0), TPoint2D(0, 1)}) {
    On("CreateConnectCurve",
       [&Way](TSubject& S) { return TFlyscanTool::CreateConnectCurve(S.Out, DcsX, S.In, Way); });
    On("CreateTriBezierConnect", [&Way](TSubject& S) {
      return TFlyscanTool::CreateTriBezierConnect(S.Out, DcsX, S.In, Way);
    });
    On("CreateTriLineConnect",
       [&Way](TSubject& S) { return TFlyscanTool::CreateTriLineConnect(S.Out, DcsX, S.In, Way); });
    On("CalcTransitionLine", [&Way](TSubject& S) {
      TTransitionLineFunc Func;
      Func.SetMinRadius(0.5);
      Func.SetMaxAng(4.0);
      return Func.CalcTransitionLine(S.Out, DcsX, S.In, Way, S.Radius);
    });
    On("CalcAllTransitionLines", [&Way](TSubject& S) {
      TTransitionLineFunc Func;
      return Func.CalcAllTransitionLines(S.Out, DcsX, S.In, Way, 1.5);
    });
  }
  Starve(
      "AddToPolyline", [] { return Detour(); },
      [](TGeCompositeCurve2D& Curve) {
        TTransitionLineFunc::AddToPolyline(Curve, {9, 0}, {9, 5}, 1.0);
      });
}

TEST(StarvedFlyscan, HolesAndCrossings) {
  struct TSubject {
    TFlyHoles Holes;
    std::vector<TGeCurve2D*> Known;
    std::vector<TPoint2D> Points{{9, 9}};
    std::vector<TVLine2D> Lines{{{1, 1}, {2, 2}}};
    std::unique_ptr<TGeCompositeCurve2D> Line = Detour();
    explicit TSubject(int Count = 20) {
      for (int I = 0; I < Count; ++I) Known.push_back(Holes.AddHole(Circle(I)));
      Known.push_back(Holes.AddHole(Detour()));
    }
    static std::unique_ptr<TGeCurve2D> Circle(int I) {
      return std::make_unique<TGeCircularArc2D>(TPoint2D(I * 3.0, 20.0), 1.0, 0.0, kFullTurn);
    }
    auto State() const {
      std::vector<bool> AreThere;
      for (const TGeCurve2D* Hole : Known) AreThere.push_back(Holes.Contains(Hole));
      return std::tuple(AreThere, Holes.Count(), Holes.RTree().Count(), Points, Lines);
    }
  };
  const auto Make = [] { return std::make_unique<TSubject>(); };
  const auto On = [&](const char* Name, auto Run) { Starve(Name, Make, Run); };
  On("AddHole", [](TSubject& S) { S.Holes.AddHole(TSubject::Circle(50)); });
  On("AddHole", [](TSubject& S) { S.Holes.AddHole(TSubject::Circle(51).release()); });
  Starve(
      "AddHole to a full node", [] { return std::make_unique<TSubject>(7); },
      [](TSubject& S) { S.Holes.AddHole(TSubject::Circle(50)); });
  On("RemoveHole", [](TSubject& S) { S.Holes.RemoveHole(S.Known[3]); });
  On("CheckCrossWithHoles",
     [](TSubject& S) { return TCrossTool::CheckCrossWithHoles(*S.Line, S.Holes.RTree()); });
  On("Cross", [](TSubject& S) { TCrossTool::Cross(*S.Line, *S.Line, S.Points, S.Lines); });
  On("Cross", [](TSubject& S) {
    TCrossTool::Cross(*S.Line, TGeCircularArc2D({3, 3}, 2.0, 0.0, kFullTurn), S.Points, S.Lines);
  });
  On("AddPoint", [](TSubject& S) {
    TCollection<TPointL2D> Keys;
    TCrossTool::AddPoint(Keys, S.Points, {5, 5});
    return Keys.Count();
  });
}

}  // namespace
}  // namespace tarnalgo::test
