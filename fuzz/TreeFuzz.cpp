// Histories of the ordered map, the heap and the R-tree against plain models.

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>
#include <vector>

#include "containers/TreeAlgorithm.h"
#include "fuzz/Bytes.h"
#include "geometryAlgo/VedaType.h"
#include "host/Cadutils.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

void MapHistory(TBytes& Bytes) {
  TGeneralSBTree<int, int> Tree(CompareExact<int>);
  std::multimap<int, int> Model;
  while (!Bytes.IsEmpty()) {
    const int Key = Bytes.Below(32);
    if (Bytes.Below(3) < 2) {
      Tree.Insert(Key, Key);
      Model.emplace(Key, Key);
    } else {
      Tree.Remove(Key);
      if (const auto Found = Model.find(Key); Found != Model.end()) Model.erase(Found);
    }
    int Value = -1;
    const int Probe = Bytes.Below(32);
    Require(Tree.Search(Probe, Value) == (Model.count(Probe) > 0), "the map finds what is in it");
  }
}

void HeapHistory(TBytes& Bytes) {
  TMinHeap<int> Heap;
  std::vector<int> Model;
  while (!Bytes.IsEmpty()) {
    if (Bytes.Below(3) < 2 || Model.empty()) {
      const int Key = Bytes.Below(16);
      Heap.Add(Key, Key);
      Model.push_back(Key);
    } else {
      const auto Least = std::min_element(Model.begin(), Model.end());
      Require(Heap.Pop() == *Least, "the heap gives the least");
      Model.erase(Least);
    }
    Require(Heap.Count() == static_cast<int>(Model.size()), "the heap counts");
  }
}

TVRect2D MakeBox(TBytes& Bytes) {
  const TPoint2D P = Bytes.Point();
  return TVRect2D(P, P + TPoint2D(Bytes.Below(4), Bytes.Below(4)));
}

void BoxHistory(TBytes& Bytes) {
  TRTree<int> Tree(8);
  std::map<int, TVRect2D> Model;
  for (int Next = 0; !Bytes.IsEmpty(); ++Next) {
    if (Bytes.Below(3) < 2 || Model.empty()) {
      const TVRect2D Box = MakeBox(Bytes);
      Tree.Insert(Next, Box);
      Model.emplace(Next, Box);
    } else {
      const int Place = Bytes.Below(256) % static_cast<int>(Model.size());
      const int Item = std::next(Model.begin(), Place)->first;
      Tree.Remove(Item);
      Model.erase(Item);
    }
    const TVRect2D Window = MakeBox(Bytes);
    std::vector<int> Found = Tree.Search(Window, kLinearTolerance);
    std::sort(Found.begin(), Found.end());
    std::vector<int> Expected;
    for (const auto& [Item, Box] : Model) {
      const double Slack = kLinearTolerance;
      if (Box.Left <= Window.Right + Slack && Window.Left <= Box.Right + Slack &&
          Box.Bottom <= Window.Top + Slack && Window.Bottom <= Box.Top + Slack) {
        Expected.push_back(Item);
      }
    }
    Require(Found == Expected, "the R-tree finds what a scan finds");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  TBytes Bytes(Data, Size);
  switch (Bytes.Below(3)) {
    case 0:
      MapHistory(Bytes);
      break;
    case 1:
      HeapHistory(Bytes);
      break;
    default:
      BoxHistory(Bytes);
      break;
  }
  return 0;
}
