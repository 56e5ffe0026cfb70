// Thinned lists: a subset in order, ends kept, what is dropped lies as near as each form promises;
// of simple outlines on a grid the clipping forms stay simple, outside or inside, exactly.

#include <algorithm>
#include <cmath>
#include <vector>

#include "fuzz/Bytes.h"
#include "fuzz/GridOutline.h"
#include "geometryAlgo/NestOptimizeAlgo.h"
#include "geometryAlgo/VedaType.h"
#include "host/Exceptions.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

using TPoints = std::vector<TPoint2D>;
constexpr double kSlack = 1e-9;  // the oracle's own rounding

bool IsSame(const TPoint2D& A, const TPoint2D& B) {
  return A == B || (std::isnan(A.X + A.Y) && std::isnan(B.X + B.Y));
}

bool IsSubset(const TPoints& Result, const TPoints& Points) {
  auto At = Points.begin();
  for (const TPoint2D& P : Result) {
    At = std::find_if(At, Points.end(), [&](const TPoint2D& Q) { return IsSame(P, Q); });
    if (At == Points.end()) return false;
    ++At;
  }
  return true;
}

/// `Result` can be laid on `Points` so that each point between two of its points lies within `Eps`
/// of the segment between these. Tries all ways, as places may repeat.
bool IsNearInOrder(const TPoints& Result, const TPoints& Points, double Eps) {
  if (Result.empty() || Points.empty()) return Result.empty() && Points.empty();
  std::vector<bool> Ends(Points.size());  // where the result so far can end
  Ends[0] = Result[0] == Points[0];
  for (std::size_t K = 1; K < Result.size(); ++K) {
    std::vector<bool> Next(Points.size());
    for (std::size_t From = 0; From < Points.size(); ++From) {
      for (std::size_t To = From + 1; Ends[From] && To < Points.size(); ++To) {
        if (!(Points[To] == Result[K])) continue;
        const TPoints Dropped(Points.begin() + static_cast<std::ptrdiff_t>(From) + 1,
                              Points.begin() + static_cast<std::ptrdiff_t>(To));
        if (test::FarthestFrom({Points[From], Points[To]}, Dropped) <= Eps) Next[To] = true;
      }
    }
    Ends = Next;
  }
  return Ends.back();
}

/// The stated recursion, as plainly as it goes; a chord without a direction keeps nothing.
void Keep(const TPoints& Points, int First, int Last, double Tolerance, std::vector<bool>& Kept) {
  const auto At = [&](int I) { return Points[static_cast<std::size_t>(I)]; };
  double Farthest = 0.0;
  int Place = First;
  const TLine2D Chord(At(First), At(Last));
  for (int I = First + 1; I < Last; ++I) {
    const double Distance = Chord.DistanceDirect(At(I));
    if (Distance > Farthest) Place = I;
    if (Distance > Farthest) Farthest = Distance;
  }
  if (!(Farthest > Tolerance) || At(First) == At(Last)) return;
  Kept[static_cast<std::size_t>(Place)] = true;
  Keep(Points, First, Place, Tolerance, Kept);
  Keep(Points, Place, Last, Tolerance, Kept);
}

TPoints KeptByRecursion(const TPoints& Points, double Tolerance) {
  const bool IsClosed = Points.front() == Points.back();
  const int Count = static_cast<int>(Points.size()) - (IsClosed ? 1 : 0);
  std::vector<bool> Kept(Points.size());
  Kept.front() = Kept[static_cast<std::size_t>(Count) - 1] = true;
  Keep(Points, 0, Count - 1, Tolerance, Kept);
  TPoints Result;
  for (std::size_t I = 0; I < Points.size(); ++I) {
    if (Kept[I]) Result.push_back(Points[I]);
  }
  if (IsClosed) Result.push_back(Points.front());
  return Result;
}

void CheckLists(TPoints Points, double Tolerance, const std::vector<int>& Fixed) {
  const int Last = static_cast<int>(Points.size()) - 1;
  const bool IsClosed = Points.front() == Points.back();
  TPolyDecimator Decimator(Points, Tolerance);
  const double Near = Tolerance + kSlack;
  Require(IsNearInOrder(Decimator.ClipTriangles(0, Last), Points, Near), "clipped points lie near");
  Require(test::FarthestFrom(Decimator.CollinearSmooth(Tolerance), Points) <= Near,
          "smoothed points lie near");
  const TPoints Plain = Decimator.DouglasPeucker(false);
  const double Used = Decimator.Tolerance();
  Require(Used == (Tolerance == 0.0 ? 0.01 : Tolerance), "a tolerance of zero is set");
  Require(Plain == KeptByRecursion(Points, Used), "the plain form is the stated recursion");
  Require(IsNearInOrder(Decimator.DouglasPeucker(true), Points, Used + kSlack),
          "dropped points lie near their chord");
  const TPoints Restricted = Decimator.DecimateWithRestrictions(Fixed);
  Require(IsNearInOrder(Restricted, Points, Used + kSlack), "with fixed points too");
  for (const int I : Fixed) {
    const bool IsThere = I >= 0 && I <= Last;
    Require(!IsThere || std::count(Restricted.begin(), Restricted.end(),
                                   Points[static_cast<std::size_t>(I)]) > 0,
            "fixed points stay");
  }
  const TPoints Hybrid = Decimator.HybridDecimate();
  Require(IsSubset(Hybrid, Points) && test::FarthestFrom(Hybrid, Points) <= Used + kSlack,
          "the hybrid form stays near");
  Require((Hybrid.front() == Hybrid.back()) >= IsClosed, "what is closed stays closed");
}

void CheckOutlines(TPoints Ring, double Tolerance) {
  const TPolyDecimator Decimator(Ring, Tolerance);
  const int Last = static_cast<int>(Ring.size()) - 1;
  for (const TPoints& Outer :
       {Decimator.ClipConcaveTriangles(0, Last), Decimator.PlateSimplify()}) {
    Require(IsSubset(Outer, Ring) && test::IsSimple(Outer), "an outer form stays simple");
    Require(test::Holds(Outer, Ring), "an outer form holds the outline");
    Require(test::FarthestFrom(Outer, Ring) <= Tolerance + kSlack, "an outer form stays near");
  }
  const TPoints Inner = Decimator.GetInscribedHull();
  Require(test::IsSimple(Inner) && test::Holds(Ring, Inner), "the inner form lies in the outline");
  Require(test::FarthestFrom(Inner, Ring) <= Tolerance + kSlack, "the inner form stays near");
}

/// Any points, any tolerance: all forms end, in a subset.
void CheckAnything(TPoints Points, double Tolerance, const std::vector<int>& Fixed) {
  const int Last = static_cast<int>(Points.size()) - 1;
  TPolyDecimator Decimator(Points, Tolerance);
  for (const TPoints& Result :
       {Decimator.ClipTriangles(0, Last), Decimator.ClipConcaveTriangles(0, Last),
        Decimator.GetInscribedHull(), Decimator.PlateSimplify(), Decimator.CollinearSmooth(),
        Decimator.DouglasPeucker(0, Last, false), Decimator.DecimateWithRestrictions(Fixed),
        Decimator.HybridDecimate()}) {
    Require(!Result.empty(), "something is left");
  }
  const TPoints Before = Points;
  Decimator.SimplifyRadialDistance();
  Require(IsSubset(Points, Before) && !Points.empty(), "the clean-up leaves a subset");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  const int Kind = Bytes.Below(4);
  const double Tolerance = Kind == 0 ? Bytes.Anything() : Bytes.Below(24) / 4.0;
  std::vector<int> Fixed;
  for (int Count = Bytes.Below(3); Count > 0; --Count) Fixed.push_back(Bytes.Below(24) - 2);
  if (Kind == 3) {
    const TPoints Ring = fuzz::GridOutline(Bytes, 24, 12);
    if (!Ring.empty()) CheckOutlines(Ring, Tolerance);
    return 0;
  }
  TPoints Points;
  for (int Count = 2 + Bytes.Below(20); Count > 0; --Count) {
    Points.push_back(Bytes.GridPoint(8));
    if (Kind == 0) Points.back() = {Bytes.Anything(), Bytes.Anything()};
  }
  if (Bytes.Below(2) == 1) Points.push_back(Points.front());
  if (Kind == 0) {
    CheckAnything(Points, Tolerance, Fixed);
  } else {
    CheckLists(Points, Tolerance, Fixed);
  }
  return 0;
}
