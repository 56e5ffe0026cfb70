// Cutting stock: the fewest bars from which a list of pieces can be cut. First with any numbers of
// bars (a bound), then with whole ones (a plan).
#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "examples/Svg.h"
#include "geometryAlgo/UDualSimplex.h"

using namespace tarnalgo;

namespace {

constexpr double kBar = 6000.0;  // mm
constexpr std::array<double, 3> kLengths = {2350.0, 1800.0, 1250.0};
constexpr std::array<double, 3> kWanted = {9, 16, 22};

using TPattern = std::array<int, 3>;  // how many pieces of each length come from one bar

/// Every way to cut a bar that leaves no room for another piece.
std::vector<TPattern> AllPatterns() {
  std::vector<TPattern> Patterns;
  for (int A = 0; A * kLengths[0] <= kBar; ++A) {
    for (int B = 0; A * kLengths[0] + B * kLengths[1] <= kBar; ++B) {
      const double Rest = kBar - A * kLengths[0] - B * kLengths[1];
      const int C = static_cast<int>(Rest / kLengths[2]);
      if (Rest - C * kLengths[2] < kLengths[2]) Patterns.push_back({A, B, C});
    }
  }
  return Patterns;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<TPattern> Patterns = AllPatterns();
  const int Count = static_cast<int>(Patterns.size());
  TFloatMatrix A(3, Count);  // a row for each length, a column for each pattern
  for (int J = 0; J < Count; ++J) {
    const TPattern& Pattern = Patterns[static_cast<std::size_t>(J)];
    for (int I = 0; I < 3; ++I) A.SetItem(I, J, Pattern[static_cast<std::size_t>(I)]);
  }
  const TFloatVector Wanted{kWanted[0], kWanted[1], kWanted[2]};
  const TIntegerVec Senses{kAtLeast, kAtLeast, kAtLeast};
  const TFloatVector Costs(Count, 1.0);  // a bar is a bar
  TFloatVector X;
  double Bars = 0.0;
  if (!TLinearProgramMethod::Solve(A, Wanted, Senses, Costs, false, false, X, Bars)) return 1;
  std::printf("%d patterns, at least %.3f bars\n", Count, Bars);
  if (!TLinearProgramMethod::Solve(A, Wanted, Senses, Costs, false, true, X, Bars)) return 1;
  std::printf("in whole bars: %.0f\n", Bars);

  const std::string_view Fills[] = {examples::kBlue, examples::kOrange, examples::kGreen};
  examples::TSvg Svg({{0, 0}, {7000, 1400}});
  double Top = 1400;
  for (int J = 0; J < Count; ++J) {
    const int Times = static_cast<int>(std::lround(X[J]));  // whole up to 1e-6
    if (Times == 0) continue;
    const TPattern& Pattern = Patterns[static_cast<std::size_t>(J)];
    std::printf("%2d bars cut into %d + %d + %d\n", Times, Pattern[0], Pattern[1], Pattern[2]);
    Svg.Draw(TVPolyline2D(TVRect2D({0, Top - 320}, {kBar, Top})), {examples::kInk, 1.5});
    double Left = 0.0;
    for (std::size_t I = 0; I < 3; ++I) {
      for (int K = 0; K < Pattern[I]; ++K, Left += kLengths[I]) {
        Svg.Draw(TVPolyline2D(TVRect2D({Left, Top - 320}, {Left + kLengths[I], Top})),
                 {examples::kInk, 1.5, {}, Fills[I]});
      }
    }
    Svg.Text({kBar + 150, Top - 200}, std::to_string(Times) + " times");
    Top -= 520;
  }
  for (std::size_t I = 0; I < 3; ++I) {
    Svg.Legend({examples::kInk, 1.5, {}, Fills[I]}, examples::Short(kLengths[I], 0) + " mm, " +
                                                        examples::Short(kWanted[I], 0) + " wanted");
  }
  Svg.Legend({examples::kInk, 1.5, {}, "#ffffff"}, "left over");
  return Svg.Save(argc, argv);
}
