#include <cstdint>
#include <functional>
#include <vector>

#include "host/Cadgeometry.h"
#include "host/Exceptions.h"
#include "host/Zeblib.h"
#include "host/tarnds.h"
#include "tests/starved/Starve.h"
#include "tests/support/Curves.h"

namespace tarnalgo::test {
namespace {

const TBezierSegment2D kWave({0, 0}, {4, 9}, {6, -9}, {10, 1});

// A composite with a composite, a composite without members and one of every other kind.
std::unique_ptr<TGeCompositeCurve2D> Nested(int Depth) {
  auto Curve = std::make_unique<TGeCompositeCurve2D>();
  Curve->AddCurve(std::make_unique<TGeLine2D>(TPoint2D(-2, 0), TPoint2D(0, 0)));
  Curve->AddCurve(std::make_unique<TGeCircularArc2D>(TPoint2D(0, 0), 0.6, TPoint2D(3, 0)));
  auto Beziers = std::make_unique<TGePolyBezier2D>();
  Beziers->AddBezier(kWave);
  Curve->AddCurve(std::move(Beziers));
  Curve->AddCurve(std::make_unique<TGePolyline2D>(TDynPoints2D{{10, 1}, {12, 5}, {3, 8}}));
  Curve->AddCurve(std::make_unique<TGeCompositeCurve2D>());
  if (Depth > 0) {
    Curve->AddCurve(Nested(Depth - 1));
    Curve->AddCurve(Nested(Depth - 1));
  }
  return Curve;
}

TEST(StarvedHost, EveryKindOfCurve) {
  struct TSubject {
    std::unique_ptr<TGeCurve2D> Curve;
    std::vector<TPoint2D> Points;
    std::vector<TCurvePiece> Pieces;
    auto State() const { return std::tuple(Curve->Sample(0.01), Points, Pieces.size()); }
  };
  for (int Kind = 0; Kind < kCurveKindCount; ++Kind) {
    SCOPED_TRACE(kCurveKinds[Kind]);
    const auto Make = [Kind] {
      auto Subject = std::make_unique<TSubject>();
      Subject->Curve = TCurveMaker(17, false).Make(Kind);
      Subject->Points.assign(3, TPoint2D(1, 1));
      Subject->Pieces.resize(1);
      return Subject;
    };
    Starve("AppendSamples", Make, [](TSubject& S) { S.Curve->AppendSamples(0.05, S.Points); });
    Starve("AppendPieces", Make, [](TSubject& S) { S.Curve->AppendPieces(S.Pieces); });
    Starve("Reverse", Make, [](TSubject& S) { S.Curve->Reverse(); });
    Starve("Clone", Make, [](TSubject& S) { return S.Curve->Clone(); });
    Starve("questions", Make, [](TSubject& S) {
      double Distance = 0.0;
      const double Nearest = S.Curve->NearestParam({1, 2}, Distance);
      return std::tuple(Nearest, Distance, S.Curve->ParamOfPoint({1, 2}), S.Curve->CurveLength(),
                        S.Curve->PointAtParam(0.3), S.Curve->StartPoint(), S.Curve->EndPoint(),
                        S.Curve->GetBoundBox().Width());
    });
  }
}

TEST(StarvedHost, Composites) {
  const auto Make = [] { return Nested(2); };
  using TCurve = TGeCompositeCurve2D;
  Starve("AddCurve", Make, [](TCurve& C) { C.AddCurve(std::make_unique<TGeLine2D>()); });
  Starve("Reserve", Make, [](TCurve& C) { C.Reserve(100); });
  Starve("Reverse", Make, [](TCurve& C) { C.Reverse(); });
  Starve("copy", Make, [](TCurve& C) { return TCurve(C); });
  Starve("assignment", Make, [&](TCurve& C) { C = *Nested(1); });
  Starve("samples", Make, [](TCurve& C) { return C.Sample(0.01); });
  Starve("a place", Make, [](TCurve& C) { return C.PointAtParam(4.0); });

  struct TFigures {
    std::vector<TGeCurve2D*> Curves;
    int State() const { return 0; }
  };
  const auto None = [] { return std::make_unique<TFigures>(); };
  // The list makes its room in peace: what follows is the composite's to free.
  Starve("Create", None, [](TFigures& S) {
    std::vector<TGeCurve2D*> Curves;
    Curves.reserve(3);
    auto First = std::make_unique<TGeLine2D>();
    auto Second = Nested(0);
    auto Third = std::make_unique<TGePolyline2D>(5);
    for (TGeCurve2D* Curve :
         {static_cast<TGeCurve2D*>(First.release()), static_cast<TGeCurve2D*>(Second.release()),
          static_cast<TGeCurve2D*>(Third.release())}) {
      Curves.push_back(Curve);
    }
    return TCurve(Curves, true).GetCurveCount() + static_cast<int>(S.Curves.size());
  });
  Starve("Create on lent curves", None, [](TFigures& S) {
    TGeLine2D Line;
    const std::vector<TGeCurve2D*> Curves(S.Curves.size() + 1, &Line);
    return TCurve(Curves, false).GetCurveCount();
  });
  Starve("refused list", None, [](TFigures& S) {
    S.Curves.clear();
    S.Curves.reserve(3);
    TGeCurve2D* const Line = new TGeLine2D;
    for (TGeCurve2D* Curve : {Line, static_cast<TGeCurve2D*>(nullptr), Line}) {
      S.Curves.push_back(Curve);
    }
    try {
      TCurve(S.Curves, true);
    } catch (const EParamError&) {}
  });
}

TEST(StarvedHost, DeepNestingIsFreedWithoutRecursion) {
  auto Top = std::make_unique<TGeCompositeCurve2D>();
  for (int I = 0; I < 200000; ++I) {
    auto Above = std::make_unique<TGeCompositeCurve2D>();
    Above->Reserve(3);
    Above->AddCurve(std::make_unique<TGeLine2D>());
    Above->AddCurve(std::move(Top));
    Above->AddCurve(std::make_unique<TGeLine2D>());
    Top = std::move(Above);
  }
  StarveAt(1, TShortage::FromThenOn);
  Top.reset();
  EXPECT_FALSE(EndShortage());
}

TEST(StarvedHost, Crossings) {
  struct TSubject {
    std::unique_ptr<TGeCurve2D> A;
    std::unique_ptr<TGeCurve2D> B;
    std::vector<TIntersect2D> Results{TIntersect2D()};
    std::vector<TPoint2D> State() const {
      std::vector<TPoint2D> Places;
      for (const TIntersect2D& Result : Results) Places.push_back(Result.Point());
      return Places;
    }
  };
  for (int Kind = 0; Kind < kCurveKindCount; ++Kind) {
    SCOPED_TRACE(kCurveKinds[Kind]);
    const auto Make = [Kind] {
      auto Subject = std::make_unique<TSubject>();
      Subject->A = Nested(1);
      Subject->B = TCurveMaker(3, false).Make(Kind);
      return Subject;
    };
    Starve("IntersectCurve", Make, [](TSubject& S) { S.A->IntersectCurve(*S.B, S.Results); });
    Starve("a curve and itself", Make, [](TSubject& S) { S.B->IntersectCurve(*S.B, S.Results); });
  }
}

TEST(StarvedHost, Beziers) {
  StarveOn("questions", kWave, [](TBezierSegment2D& B) {
    double T = 0.0;
    TPoint2D Foot;
    const double Distance = B.DistanceTo({5, 5}, 0.0, T, Foot);
    return std::tuple(Distance, T, Foot, B.CurvatureChangedPlaces(), B.GetBoundBox().Width());
  });
}

TEST(StarvedHost, Lists) {
  const auto None = [] { return std::make_unique<int>(0); };
  Starve("CreateOrderList", None, [](int&) { return TListUtils::CreateOrderList(9); });
  Starve("DestroyAll", None, [](int&) {
    TSBTreeIntKey* Root = nullptr;
    try {
      for (unsigned I = 0; I < 20; ++I) {
        auto* const Node = new TSBTreeIntKey(I * 7 % 20);
        Root = Root ? Root->Insert(Node) : Node;
      }
    } catch (...) {
      if (Root) Root->DestroyAll();
      throw;
    }
    Root->DestroyAll();
  });
}

TEST(StarvedHost, DebugOutput) {
  struct TSubject {
    std::vector<int> Big = std::vector<int>(100);
    TDebugOutput Former = SetDebugOutput([Copy = Big](std::string_view) {});
    ~TSubject() { SetDebugOutput({}); }
    bool State() const {  // whether the receiver is still the one with the big list
      TDebugOutput Output = SetDebugOutput({});
      const bool Result = Output.target_type().hash_code() != 0 && static_cast<bool>(Output);
      SetDebugOutput(std::move(Output));
      return Result;
    }
  };
  Starve(
      "SetDebugOutput", [] { return std::make_unique<TSubject>(); },
      [](TSubject&) { return static_cast<bool>(SetDebugOutput({})); });
}

}  // namespace
}  // namespace tarnalgo::test
