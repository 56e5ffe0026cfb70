#include "geometryAlgo/flyscanAlgo/FlyHoles.h"

namespace tarnalgo {

namespace {

constexpr int kNodeCapacity = 8;

}  // namespace

TFlyHoles::TFlyHoles() : FRTree(kNodeCapacity) {}

TFlyHoles::~TFlyHoles() {
  FRTree.Clear();  // before the curves, which are its keys
}

TGeCurve2D* TFlyHoles::AddHole(std::unique_ptr<TGeCurve2D> GeCurve) {
  TGeCurve2D* const Hole = GeCurve.get();
  if (!Hole) return nullptr;
  if (Contains(Hole)) return GeCurve.release();  // owned by the dictionary already
  const TVRect2D Box(Hole->GetBoundBox());
  FDic.Add(std::move(GeCurve), Hole);
  try {
    FRTree.Insert(Hole, Box);
  } catch (...) {
    FDic.Remove(Hole);
    throw;
  }
  return Hole;
}

TGeCurve2D* TFlyHoles::AddHole(TGeCurve2D* GeCurve) {
  return AddHole(std::unique_ptr<TGeCurve2D>(GeCurve));
}

void TFlyHoles::RemoveHole(const TGeCurve2D* GeCurve) {
  TGeCurve2D* const Hole = FDic.Find(GeCurve);
  if (!Hole) return;
  FRTree.Remove(Hole);  // before the dictionary frees its key
  FDic.Remove(Hole);
}

}  // namespace tarnalgo
