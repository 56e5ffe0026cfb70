// Boxes found by a window in an R-tree; the nearest of them by a heap; order by an ordered map.
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

#include "containers/TreeAlgorithm.h"
#include "examples/Svg.h"
#include "geometryAlgo/VedaType.h"

using namespace tarnalgo;

int main(int argc, char** argv) {
  // Parts scattered over a sheet, each known by a number.
  std::vector<TVRect2D> Boxes;
  TRTree<int> Tree(8);
  std::mt19937 Random(5);
  const auto Coordinate = [&Random](unsigned Size) { return double(Random() % Size); };
  for (int Id = 0; Id < 400; ++Id) {
    const TPoint2D Corner{Coordinate(286), Coordinate(166)};
    Boxes.push_back(TVRect2D(Corner, Corner + TPoint2D{3 + Coordinate(9), 3 + Coordinate(9)}));
    Tree.Insert(Id, Boxes.back());
  }
  const auto BoxOf = [&Boxes](int Id) { return Boxes[static_cast<std::size_t>(Id)]; };

  const TVRect2D Window({100, 60}, {180, 120});
  const std::vector<int> Found = Tree.Search(Window);
  TMinHeap<int> ByDistance;  // key mode: the least distance comes out first
  TGeneralSBTree<double, int> ByArea([](double A, double B) { return CompareExact(A, B); });
  for (const int Id : Found) {
    ByDistance.Add(Id, BoxOf(Id).Center().DistanceTo(Window.Center()));
    ByArea.Insert(BoxOf(Id).Area(), Id);
  }
  std::printf("%d boxes, %zu of them meet the window\n", Tree.Count(), Found.size());

  examples::TSvg Svg({{0, 0}, {300, 180}});
  TVPolyline2DList All;
  for (const TVRect2D& Box : Boxes) All.Add(std::make_unique<TVPolyline2D>(Box));
  Svg.Draw(All, {examples::kGrey, 1});
  for (const int Id : Found) {
    Svg.Draw(TVPolyline2D(BoxOf(Id)), {examples::kInk, 1.2, {}, examples::kSky});
  }
  std::printf("nearest to its centre:");
  for (int I = 0; I < 5; ++I) {
    const double Distance = ByDistance.TopKey();
    const int Id = ByDistance.Pop();
    Svg.Draw(TVPolyline2D(BoxOf(Id)), {examples::kInk, 1.2, {}, examples::kOrange});
    std::printf(" %d (%.1f mm)", Id, Distance);
  }
  std::printf("\nareas around 50 mm2:");
  TGeneralSBTree<double, int>::TNode* Below = nullptr;
  TGeneralSBTree<double, int>::TNode* Above = nullptr;
  ByArea.SearchNearby(50.5, Below, Above);
  if (Below != nullptr) std::printf(" %g below", Below->Key);
  if (Above != nullptr) std::printf(", %g above", Above->Key);
  std::printf("\n");
  Svg.Draw(TVPolyline2D(Window), {examples::kRed, 3});
  Svg.Legend({examples::kGrey, 1}, "boxes in the tree");
  Svg.Legend({examples::kRed, 3}, "window");
  Svg.Legend({examples::kInk, 1.2, {}, examples::kSky}, "found by Search");
  Svg.Legend({examples::kInk, 1.2, {}, examples::kOrange}, "five nearest to the window's centre");
  return Svg.Save(argc, argv);
}
