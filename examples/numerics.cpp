// Measured points: a circle through them by least squares, and their main axes by singular values.
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/UMatrixAlgo.h"

using namespace tarnalgo;

namespace {

/// The circle with the least sum of (X² + Y² - A·X - B·Y - C)²: linear in A, B and C.
TVCircle2D FitCircle(const std::vector<TPoint2D>& Points) {
  const int Count = static_cast<int>(Points.size());
  TFloatMatrix Design(3, Count);  // transposed: a row for each unknown, a column for each point
  TFloatVector Squares(Count);
  for (int I = 0; I < Count; ++I) {
    const TPoint2D& P = Points[static_cast<std::size_t>(I)];
    Design.SetItem(0, I, P.X);
    Design.SetItem(1, I, P.Y);
    Design.SetItem(2, I, 1.0);
    Squares.SetItem(I, P.X * P.X + P.Y * P.Y);
  }
  TFloatVector X;
  if (!TLinearSolveTool::SolveLeastSquares(Design, Squares, X)) return {};
  const TPoint2D Centre(X[0] / 2, X[1] / 2);
  return {Centre, std::sqrt(X[2] + Centre.X * Centre.X + Centre.Y * Centre.Y)};
}

}  // namespace

int main(int argc, char** argv) {
  std::mt19937 Random(3);
  const auto Noise = [&Random](double Size) { return Size * (double(Random() % 2001) / 1000 - 1); };
  std::vector<TPoint2D> Bow;    // a worn arc, probed
  std::vector<TPoint2D> Cloud;  // sparks about a slanted edge
  for (int I = 0; I < 40; ++I) {
    const double Angle = 0.3 + I * 0.06;
    Bow.push_back(TPoint2D{45 + Noise(1.2), 8 + Noise(1.2)} +
                  TPoint2D(std::cos(Angle), std::sin(Angle)) * 45);
    Cloud.push_back(TPoint2D(150, 35) + TPoint2D{Noise(42), Noise(7)}.RotateBy(0.5));
  }
  const TVCircle2D Circle = FitCircle(Bow);
  double Worst = 0.0;
  for (const TPoint2D& P : Bow) {
    Worst = std::max(Worst, std::abs(P.DistanceTo(Circle.Center) - Circle.Radius));
  }
  std::printf("circle about (%.2f, %.2f), radius %.2f, farthest point %.2f off\n", Circle.Center.X,
              Circle.Center.Y, Circle.Radius, Worst);

  TPoint2D Mean;
  for (const TPoint2D& P : Cloud) Mean = Mean + P / static_cast<double>(Cloud.size());
  TFloatMatrix Offsets(2, static_cast<int>(Cloud.size()));
  for (int I = 0; I < Offsets.GetColCnt(); ++I) {
    const TPoint2D Offset = Cloud[static_cast<std::size_t>(I)] - Mean;
    Offsets.SetItem(0, I, Offset.X);
    Offsets.SetItem(1, I, Offset.Y);
  }
  TFloatMatrix U;
  TFloatMatrix V;
  TFloatVector W;
  TMatrixDCMPTool::SVDCMP(Offsets, U, V, W);
  const double Degrees = std::atan(U(1, 0) / U(0, 0)) * 180 / kPi;
  std::printf("cloud: spread %.1f along %.1f degrees, %.1f across\n", W[0], Degrees, W[1]);

  examples::TSvg Svg({{-8, -2}, {196, 74}});
  Svg.Draw(TVArc2D(Circle.Center, Circle.Radius, 0.1, 2.8).SampleToPolyline(0.05),
           {examples::kBlue, 2.5});
  for (const TPoint2D& P : Bow) Svg.Dot(P, examples::kInk, 3.5);
  Svg.Dot(Circle.Center, examples::kBlue, 5);
  for (const TPoint2D& P : Cloud) Svg.Dot(P, examples::kInk, 3.5);
  for (int Axis = 0; Axis < 2; ++Axis) {
    const TPoint2D Half = TPoint2D(U(0, Axis), U(1, Axis)) * (W[Axis] / 4);
    Svg.Draw(TVLine2D(Mean - Half, Mean + Half), {examples::kRed, Axis == 0 ? 3.0 : 2.0});
  }
  Svg.Legend({examples::kInk}, "measured points", true);
  Svg.Legend({examples::kBlue, 2.5}, "fitted circle and its centre");
  Svg.Legend({examples::kRed, 3}, "main axes, by singular values");
  return Svg.Save(argc, argv);
}
