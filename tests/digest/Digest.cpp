// Runs a fixed workload through every unit and prints a digest of all results, a line a unit:
// scripts/digest.sh compares the lines of different compilers, optimisations and instruction sets.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <polyclipping/clipper.hpp>
#include <string>
#include <utility>
#include <vector>

#include "containers/TreeAlgorithm.h"
#include "geometryAlgo/GeometryExtend.h"
#include "geometryAlgo/NestOptimizeAlgo.h"
#include "geometryAlgo/ShapeApp.h"
#include "geometryAlgo/SweepLine.h"
#include "geometryAlgo/UDualSimplex.h"
#include "geometryAlgo/UMatrixAlgo.h"
#include "geometryAlgo/UPolygonGetter.h"
#include "geometryAlgo/VedaType.h"
#include "geometryAlgo/flyscanAlgo.h"
#include "host/Cadgeometry.h"
#include "host/Cadutils.h"

namespace {

using namespace tarnalgo;

constexpr double kSize = 100.0;  // of the drawings, mm

/// FNV-1a over the bytes of what it is given; every NaN counts as the same.
class TDigest {
 public:
  std::uint64_t Value() const { return FValue; }

  void Add(std::uint64_t Bits) {
    for (int I = 0; I < 64; I += 8) FValue = (FValue ^ (Bits >> I & 0xff)) * 0x100000001b3U;
  }
  void Add(int Number) { Add(static_cast<std::uint64_t>(Number)); }
  void Add(bool Flag) { Add(Flag ? 1 : 0); }
  void Add(TShapeRelation Relation) { Add(static_cast<int>(Relation)); }
  void Add(double Number) {
    Add(std::isnan(Number) ? std::uint64_t{1} : std::bit_cast<std::uint64_t>(Number));
  }
  void Add(const TPoint2D& P) { AddAll(P.X, P.Y); }
  void Add(const TIntPoint& P) { AddAll(static_cast<double>(P.X), static_cast<double>(P.Y)); }
  void Add(const TLine2D& Line) { AddAll(Line.StartPoint, Line.EndPoint); }
  void Add(const TVLine2D& Line) { AddAll(Line.StartPoint, Line.EndPoint); }
  void Add(const TVRect2D& Box) { AddAll(Box.Left, Box.Right, Box.Top, Box.Bottom); }
  void Add(const TVCircle2D& Circle) { AddAll(Circle.Center, Circle.Radius); }
  void Add(const TVArc2D& Arc) {
    AddAll(Arc.Center, Arc.StartPoint, Arc.EndPoint, Arc.IsClockwise);
  }
  void Add(const TVPoint2DList& List) { AddEach(List.Points()); }
  void Add(const TVPolyline2DList& List) {
    Add(List.Count());
    for (const TVPolyline2D* Item : List) Add(*Item);
  }
  void Add(const TGeCurve2D& Curve) { AddAll(Curve.CurveLength(), Curve.Sample(0.01)); }
  void Add(const TFloatVector& V) {
    Add(V.GetSize());
    for (int I = 0; I < V.GetSize(); ++I) Add(V[I]);
  }
  void Add(const TFloatMatrix& A) {
    for (int I = 0; I < A.GetRowCnt(); ++I) Add(A.GetRow(I));
  }
  void Add(const std::string& Text) {
    for (const char Letter : Text) Add(static_cast<int>(Letter));
  }
  template <class T>
  void Add(const std::vector<T>& Items) {
    AddEach(Items);
  }
  template <class... T>
  void AddAll(const T&... Items) {
    (Add(Items), ...);
  }

 private:
  template <class T>
  void AddEach(const T& Items) {
    Add(static_cast<std::uint64_t>(Items.size()));
    for (const auto& Item : Items) Add(Item);
  }

  std::uint64_t FValue = 0xcbf29ce484222325U;
};

/// SplitMix64: the standard's distributions differ between libraries. One draw an expression: the
/// order in which a call evaluates its arguments is the compiler's choice.
class TRandom {
 public:
  explicit TRandom(std::uint64_t Seed) : FState(Seed) {}

  std::uint64_t Bits() {
    std::uint64_t Z = FState += 0x9e3779b97f4a7c15U;
    Z = (Z ^ Z >> 30) * 0xbf58476d1ce4e5b9U;
    Z = (Z ^ Z >> 27) * 0x94d049bb133111ebU;
    return Z ^ Z >> 31;
  }
  int Below(int Bound) { return static_cast<int>(Bits() % static_cast<std::uint64_t>(Bound)); }
  double In(double Low, double High) {
    return Low + (High - Low) * static_cast<double>(Bits() >> 11) * 0x1p-53;
  }
  /// Every third on a grid, so that shapes touch, overlap and repeat.
  TPoint2D Point(double Size) {
    if (Below(3) == 0) return {Size / 8 * Below(9), Size / 8 * Below(9)};
    const double X = In(0, Size);
    return {X, In(0, Size)};
  }
  TVLine2D Line(double Size) {
    const TPoint2D P = Point(Size);
    return {P, Point(Size)};
  }
  TVCircle2D Circle(double Size) { return {Point(Size), In(0.1, Size / 2)}; }
  TVArc2D Arc(double Size) {
    const TVCircle2D Of = Circle(Size);
    const double Start = In(0, kFullTurn);
    return {Of.Center, Of.Radius, Start, In(-kFullTurn, kFullTurn)};
  }
  TBezierSegment2D Bezier(double Size) {
    const TVLine2D Ends = Line(Size);
    const TVLine2D Handles = Line(Size);
    return {Ends.StartPoint, Handles.StartPoint, Handles.EndPoint, Ends.EndPoint};
  }
  /// A closed star: simple, with reflex corners.
  TVPolyline2D Star(int Corners, const TPoint2D& Centre, double Radius) {
    std::vector<TPoint2D> Points;
    for (int I = 0; I < Corners; ++I) {
      const double Angle = kFullTurn * I / Corners;
      const double Length = Radius * In(0.3, 1.0);
      Points.push_back(Centre + TPoint2D(std::cos(Angle), std::sin(Angle)) * Length);
    }
    Points.push_back(Points.front());
    return TVPolyline2D(Points);
  }
  /// The same of 5 to 44 corners, anywhere.
  TVPolyline2D AnyStar(double Radius) {
    const int Corners = 5 + Below(40);
    return Star(Corners, Point(kSize), Radius);
  }
  TFloatMatrix Matrix(int Rows, int Columns) {
    TFloatMatrix A(Rows, Columns);
    for (int I = 0; I < Rows; ++I) {
      for (int J = 0; J < Columns; ++J) A.SetItem(I, J, In(-1, 1));
    }
    return A;
  }
  TFloatVector Vector(int Size) {
    TFloatVector V(Size, 0.0);
    for (int I = 0; I < Size; ++I) V.SetItem(I, In(-1, 1));
    return V;
  }

 private:
  std::uint64_t FState;
};

void Shapes(TDigest& D) {
  TRandom Random(1);
  for (int Round = 0; Round < 3000; ++Round) {
    const TVLine2D A = Random.Line(kSize);
    const TVLine2D B = Random.Line(kSize);
    const TVCircle2D Circle = Random.Circle(kSize);
    const TVArc2D Arc = Random.Arc(kSize);
    const TVArc2D Other = Random.Arc(kSize);
    const TPoint2D P = Random.Point(kSize);
    TPoint2D P1, P2;
    TVArc2D Part1, Part2;
    D.AddAll(A.RelationWithSegLine(B, P1, P2), P1, P2, A.SegmentDistanceTo(P), A.Rotate(0.3, P));
    D.AddAll(Circle.RelationWithSegLine(A, P1, P2), P1, P2, Circle.RelationWithPoint(P));
    D.AddAll(Circle.CrossWithCircle(Random.Circle(kSize), P1, P2), P1, P2);
    D.AddAll(Arc.CrossWithSegline(B, P1, P2), P1, P2, Arc.Length(), Arc.BoundBox(), Arc.Bulge());
    D.AddAll(Arc.CrossWithArc(Other, P1, P2, Part1, Part2), P1, P2, Part1, Part2);
    D.AddAll(Arc.CalcParamByPoint(P), Arc.CalcPointByParam(0.37), Arc.IsPointOn(P));
    if (Round % 10 == 0) D.AddAll(Arc.SampleToPolyline(0.01), Circle.SampleToPolyline(0.1));
  }
}

void Polylines(TDigest& D) {
  TRandom Random(2);
  for (int Round = 0; Round < 200; ++Round) {
    const TVPolyline2D A = Random.AnyStar(30);
    TVPolyline2D B = Random.AnyStar(30);
    const TPoint2D P = Random.Point(kSize);
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    A.CrossWith(B, Points, Lines);
    D.AddAll(Points, Lines, A.RelationWith(B), A.RelationWithPoint(P), A.Area(), A.TotalLength());
    B.Rotate(0.7, P);
    D.AddAll(B, B.BoundBox(), A.CalcFirstParamByPoint(A[1]));
  }
}

void Chains(TDigest& D) {
  TRandom Random(3);
  for (int Round = 0; Round < 200; ++Round) {
    const TBezierSegment2D Free = Random.Bezier(kSize);
    const TLABSegline Segs[] = {TLABSegline(Random.Line(kSize)),
                                TLABSegline(Random.Arc(kSize).ToArc2D()),
                                TLABSegline(Free.P0, Free.P1, Free.P2, Free.P3)};
    for (const TLABSegline& A : Segs) {
      D.AddAll(A.Length(), A.Sample(0.05), A.PointByParam(0.3),
               A.ParamByPoint(A.PointByParam(0.6)));
    }
    const TPoint2D Corner = Random.Point(kSize);
    const TPoint2D Far = Corner + TPoint2D(40, 0);
    TLABHPolygon Region;
    Region.Add(std::make_unique<TLABPolyline>(TLABPolyline{
        TLABSegline(Corner, Far),
        TLABSegline(Far, Far + TPoint2D(9, 9), Far + TPoint2D(0, 20), Far + TPoint2D(0, 30)),
        TLABSegline(Far + TPoint2D(0, 30), Corner)}));
    const TVLine2D Cut = Random.Line(kSize);
    std::vector<TPoint2D> Points;
    std::vector<TVLine2D> Lines;
    Region[0]->CrossWithSegLine(Cut, Points, Lines);
    D.AddAll(Points, Lines, Region.Area(), Region.Gravity());
    D.AddAll(Region.RelationWithPoint(Random.Point(kSize)), Region[0]->Sample(0.1));
  }
}

std::unique_ptr<TGeCurve2D> HostCurve(TRandom& Random, int Kind) {
  const TVArc2D Arc = Random.Arc(kSize);
  const TVLine2D Line = Random.Line(kSize);
  if (Kind == 0) return std::make_unique<TGeLine2D>(Line.StartPoint, Line.EndPoint);
  if (Kind == 1) {
    return std::make_unique<TGeCircularArc2D>(Arc.Center, Arc.Radius(), Arc.StartAngle(),
                                              Arc.AngleRange());
  }
  if (Kind == 2) return std::make_unique<TGePolyline2D>(Random.Star(9, Line.EndPoint, 40).Points());
  auto Result = std::make_unique<TGePolyBezier2D>();
  Result->AddBezier(Random.Bezier(kSize));
  return Result;
}

void HostCurves(TDigest& D) {
  TRandom Random(4);
  for (int Round = 0; Round < 400; ++Round) {
    const auto A = HostCurve(Random, Round % 4);
    const auto B = HostCurve(Random, Round / 4 % 4);
    std::vector<TIntersect2D> Meetings;
    A->IntersectCurve(*B, Meetings);
    D.Add(Meetings.size());
    for (const TIntersect2D& Meeting : Meetings) {
      D.AddAll(Meeting.IsOverlap, Meeting.OnFirst.Point, Meeting.OnFirst.Param);
      D.AddAll(Meeting.OnSecond.Param, Meeting.EndOnFirst.Point, Meeting.EndOnFirst.Param);
    }
    double Distance = 0.0;
    D.AddAll(*A, A->NearestParam(Random.Point(kSize), Distance), Distance);
  }
}

void Sweep(TDigest& D) {
  TRandom Random(5);
  for (const double Size : {20.0, kSize, 1e4}) {
    std::vector<TVLine2D> Lines;
    for (int I = 0; I < 600; ++I) Lines.push_back(Random.Line(Size));
    for (const auto& Meeting : TSeglinesIntersector::GetIntersectInfosBySweepline(
             Lines, kLinearTolerance, kLinearTolerance)) {
      D.AddAll(Meeting.LowerSegment, Meeting.HigherSegment, Meeting.Flag, Meeting.FirstPoint);
      D.AddAll(Meeting.LowerParam1, Meeting.HigherParam1, Meeting.SecondPoint);
    }
  }
}

void HullsAndBoxes(TDigest& D) {
  TRandom Random(6);
  for (int Round = 0; Round < 150; ++Round) {
    const TVPolyline2D A = Random.AnyStar(30);
    const TVPolyline2D B = Random.AnyStar(30);
    TVPoint2DList Corners;
    TPoint2D Direction;
    D.AddAll(TConvexHullCalculator::CalcConvexHull(A), TPolygonBasicAlgo::SimpleMABB(A, Corners),
             Corners, TPolygonBasicAlgo::SimpleWidth(A, Direction), Direction,
             TPolygonBasicAlgo::SimpleDiameter(A), TPointsBasicAlgo::FindMinCircle(A),
             TPolygonBasicAlgo::MinInternalAngle(A), TPolygonBasicAlgo::MinPolyDistance(A, B),
             TPolygonBasicAlgo::PolygonIntersection(A, B), TPolygonBasicAlgo::TriangleDivide(A),
             TPolygonBasicAlgo::PolygonSimplify(A, 0.1));
  }
}

void Paths(TDigest& D) {
  TRandom Random(7);
  for (int Round = 0; Round < 60; ++Round) {
    TVPolyline2DList List;
    for (int I = 0; I < 6; ++I) {
      List.Add(Random.AnyStar(8 + 40.0 / (I + 1)).Clone());
    }
    const TPaths All = TPathUtils::CreatePaths(List, kIntegerScale);
    ClipperLib::Clipper Clipper;
    Clipper.AddPaths({All[0], All[1], All[2]}, ClipperLib::ptSubject, true);
    Clipper.AddPaths({All[3], All[4], All[5]}, ClipperLib::ptClip, true);
    TPaths Rest;
    Clipper.Execute(ClipperLib::ctXor, Rest, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    TPathsList Groups;
    TPathUtils::NormalizeTPaths(Rest, Groups);
    D.AddAll(Groups, TPathUtils::CutByPath(All[0], All[1]), TPathUtils::Perimeter(Rest));
    double Param = 0.0;
    D.AddAll(TPathUtils::ParamByPoint(All[0], All[0][1], Param), Param);
    TPathUtils::Rotate(Rest, 0.4);
    D.AddAll(Rest, TPathUtils::CornerRadian(All[0], 2), TPathUtils::BoundBox(Rest, 1e-3));
  }
}

void Decimation(TDigest& D) {
  TRandom Random(8);
  for (int Round = 0; Round < 40; ++Round) {
    std::vector<TPoint2D> Points = Random.Star(200, {}, 50).Points();
    TPolyDecimator Decimator(Points, Random.In(0.1, 4));
    D.AddAll(Decimator.PlateSimplify(), Decimator.GetInscribedHull(), Decimator.HybridDecimate(),
             Decimator.DouglasPeucker(true), Decimator.DouglasPeucker(false));
  }
}

void Topology(TDigest& D) {
  TRandom Random(9);
  for (int Round = 0; Round < 20; ++Round) {
    TMChainsScatter Scatter(0.5);
    for (int I = 0; I < 25; ++I) {
      const TVLine2D Line = Random.Line(kSize);
      Scatter.AddCurve(I % 5 == 0 ? Random.Star(7, Line.EndPoint, 20)
                                  : TVPolyline2D{Line.StartPoint, Line.EndPoint});
    }
    TTopoLinks Links = TTopoLinks::CreateTopoLink(Scatter.GetChains());
    const TTopoLinks Dangling = Links.GetDanglingTopo();
    const TTopoLinks Bridges = Links.GetBridgeTopo();
    TVPolyline2DList Outlines;
    TPointsOfOutline PointsOf;
    TChainsOfOutline ChainsOf;
    Links.GetPolygons(PointsOf, ChainsOf, Outlines);
    D.AddAll(Outlines, Scatter.Stats().Cuts, Dangling.Count(), Bridges.Count());
  }
}

void FlyingCut(TDigest& D) {
  TRandom Random(10);
  TFlyCurve Part(nullptr, 0.0, false, 1, 0);
  TLinearSegments Edges;
  for (int Row = 0; Row < 12; ++Row) {
    for (int Column = 0; Column < 12; ++Column) {
      TVPolyline2D Window(
          TVRect2D({Column * 16.0, Row * 14.0}, {Column * 16.0 + 10, Row * 14 + 8.0}));
      Window.Rotate(0.1 * (Row % 3), {});
      for (int I = 0; I < 4; ++I) Edges.AddLine(&Part, Window.Line(I).ToLine2D());
    }
  }
  Edges.SortByAngleIntercept();
  for (int First = 0, Last = 0; First < Edges.Count(); First = Last) {
    TLinearSegmentList Run(Edges[First]->LineAngle, Edges[First]->Intercept);
    while (Last < Edges.Count() &&
           TLinearSegments::CompareAngleIntercept(*Edges[First], *Edges[Last]) == 0) {
      D.AddAll(Edges[Last]->LineAngle, Edges[Last]->Intercept);
      Run.Add(Edges[Last++]);
    }
    TOwningFlyCurves Pass;
    Run.BuildResult(Pass);
    for (const TFlyCurve* Piece : Pass) D.AddAll(Piece->IsFlyGap(), *Piece->GeCurve());
  }
  TTransitionLineFunc Transitions;
  for (int Round = 0; Round < 300; ++Round) {
    const TVLine2D Ends = Random.Line(20);
    const TPoint2D Out = TPoint2D(1, 0).RotateBy(Random.In(0, kFullTurn));
    const TPoint2D In = TPoint2D(1, 0).RotateBy(Random.In(0, kFullTurn));
    double Radius = 2.0;
    const auto Line =
        Transitions.CalcTransitionLine(Ends.StartPoint, Out, Ends.EndPoint, In, Radius);
    if (Line) D.AddAll(*Line, Radius);
    const auto Smooth = TFlyscanTool::CreateConnectCurve(Ends.StartPoint, Out, Ends.EndPoint, In);
    if (Smooth) D.Add(*Smooth);
  }
}

void Numerics(TDigest& D) {
  TRandom Random(11);
  for (const int Size : {1, 2, 3, 7, 16, 33, 70, 130}) {
    const TFloatMatrix A = Random.Matrix(Size, Size);
    const TFloatVector B = Random.Vector(Size);
    TFloatMatrix L, U, V, Q, R, Inverse;
    TFloatVector W, X;
    std::vector<int> Order;
    TMatrixDCMPTool::LUCMPExt(A, L, U, Order);
    D.AddAll(L, U, Order);
    TMatrixDCMPTool::QRDCMP(A, Q, R);
    D.AddAll(Q, R);
    TMatrixDCMPTool::SVDCMP(A, U, V, W);
    D.AddAll(U, V, W, A * A, A * B);
    D.AddAll(TMatrixDCMPTool::GetInverseMatrixByLu(A, Inverse), Inverse);
    D.AddAll(TLinearSolveTool::Gaussian(X, A, B), X);
    const TFloatMatrix Tall = Random.Matrix(Size + 5, Size);
    D.AddAll(TLinearSolveTool::SolveLeastSquares(Tall, Random.Vector(Size + 5), X), X);
    const TFloatMatrix Definite = A * A.Transpose() + TFloatMatrix(Size);
    D.AddAll(TLinearSolveTool::Cholesky(X, Definite, B), X);
    D.AddAll(TLinearSolveTool::ConjugateGradient(X, Definite, B), X);
  }
}

void Programs(TDigest& D) {
  TRandom Random(12);
  for (int Round = 0; Round < 60; ++Round) {
    const int Rows = 2 + Random.Below(20);
    const int Columns = 2 + Random.Below(20);
    TFloatMatrix A(Rows, Columns);
    TFloatVector B(Rows, 0.0);
    for (int I = 0; I < Rows; ++I) {
      for (int J = 0; J < Columns; ++J) A.SetItem(I, J, Random.Below(10));
      B.SetItem(I, 20 + Random.Below(50));
    }
    const TIntegerVec Senses(
        std::vector<int>(static_cast<std::size_t>(Rows), Round % 2 == 0 ? kAtMost : kAtLeast));
    TFloatVector Costs(Columns, 0.0);
    for (int J = 0; J < Columns; ++J) Costs.SetItem(J, 1 + Random.Below(9));
    TFloatVector X;
    double Objective = 0.0;
    const bool IsWhole = Round % 5 == 0 && Columns < 8;
    D.AddAll(
        TLinearProgramMethod::Solve(A, B, Senses, Costs, Round % 2 == 0, IsWhole, X, Objective));
    D.AddAll(X, Objective);
  }
}

void Trees(TDigest& D) {
  TRandom Random(13);
  TRTree<int> Tree(8);
  TMinHeap<int> Heap;
  TGeneralSBTree<double, int> Map([](double A, double B) { return CompareExact(A, B); });
  for (int Id = 0; Id < 2000; ++Id) {
    const TVLine2D Line = Random.Line(kSize);
    Tree.Insert(Id, Line.BoundBox());
    Heap.Add(Id, Line.Length());
    Map.Insert(Line.StartPoint.X, Id);
    if (Id % 10 == 0) D.Add(Tree.Search(Random.Line(kSize).BoundBox()));
    if (Id % 3 == 0) D.Add(Heap.Pop());
    TGeneralSBTree<double, int>::TNode* Below = nullptr;
    TGeneralSBTree<double, int>::TNode* Above = nullptr;
    Map.SearchNearby(Random.In(0, kSize), Below, Above);
    D.AddAll(Below == nullptr ? -1.0 : Below->Key, Above == nullptr ? -1.0 : Above->Key);
  }
}

}  // namespace

int main() {
  const struct {
    const char* Name;
    void (*Run)(TDigest&);
  } Units[] = {
      {"shapes", Shapes},     {"polylines", Polylines},
      {"chains", Chains},     {"host curves", HostCurves},
      {"sweep", Sweep},       {"hulls and boxes", HullsAndBoxes},
      {"paths", Paths},       {"decimation", Decimation},
      {"topology", Topology}, {"flying cut", FlyingCut},
      {"numerics", Numerics}, {"programs", Programs},
      {"trees", Trees},
  };
  for (const auto& Unit : Units) {
    TDigest Digest;
    Unit.Run(Digest);
    std::printf("%-16s %016llx\n", Unit.Name, static_cast<unsigned long long>(Digest.Value()));
  }
}
