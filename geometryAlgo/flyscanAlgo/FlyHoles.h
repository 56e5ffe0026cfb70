#pragma once  // geometryAlgo/flyscanAlgo/FlyHoles.h

#include <memory>
#include <unordered_map>
#include <utility>

#include "geometryAlgo/VedaType/RTree.h"
#include "host/Cadgeometry.h"
#include "host/Exceptions.h"

namespace tarnalgo {

/// A dictionary from host curve (by identity) to something that goes with it.
///
/// Ownership: owns the curves that are its keys and frees them on removal; refers to the data.
template <class TData>
class TGeToDataDic {
 public:
  TGeToDataDic() = default;
  TGeToDataDic(const TGeToDataDic&) = delete;
  TGeToDataDic& operator=(const TGeToDataDic&) = delete;

  int Count() const { return static_cast<int>(FEntries.size()); }  ///< Keys present.
  /// The very curve is a key.
  bool ContainsKey(const TGeCurve2D* Key) const { return FEntries.contains(Key); }
  /// The data of `Key`, `nullptr` when it is absent.
  TData* Find(const TGeCurve2D* Key) const {
    const auto Found = FEntries.find(Key);
    return Found == FEntries.end() ? nullptr : Found->second.Data;
  }
  /// Errors: a key that is present, `EParamError`; the dictionary keeps the curve then.
  void Add(std::unique_ptr<TGeCurve2D> Key, TData* Data) {
    const auto [Entry, IsNew] = FEntries.try_emplace(Key.get(), TEntry{nullptr, Data});
    if (!IsNew) {
      static_cast<void>(Key.release());  // the same object is owned here already
      RaiseError<EParamError>("TGeToDataDic.Add", "the key is present already");
    }
    Entry->second.Key = std::move(Key);
  }
  /// Removes `Key` and frees it; nothing happens when it is absent.
  void Remove(const TGeCurve2D* Key) { FEntries.erase(Key); }
  /// Frees all curves; the data are not touched.
  void Clear() { FEntries.clear(); }

 private:
  struct TEntry {
    std::unique_ptr<TGeCurve2D> Key;
    TData* Data;
  };

  std::unordered_map<const TGeCurve2D*, TEntry> FEntries;
};

/// The holes of a sheet that connections must not cross, found by their bounding boxes.
///
///     TFlyHoles Holes;
///     Holes.AddHole(std::make_unique<TGeCircularArc2D>(Center, Radius, 0.0, kFullTurn));
///     if (TCrossTool::CheckCrossWithHoles(Connection, Holes.RTree())) ...
///
/// A hole is indexed under the box it has when it is added; do not change it afterwards.
/// Ownership: owns the hole curves.
class TFlyHoles {
 public:
  TFlyHoles();
  ~TFlyHoles();
  TFlyHoles(const TFlyHoles&) = delete;
  TFlyHoles& operator=(const TFlyHoles&) = delete;

  int Count() const { return FDic.Count(); }  ///< Holes held, those without extent included.
  /// The very curve is a hole here.
  bool Contains(const TGeCurve2D* GeCurve) const { return FDic.ContainsKey(GeCurve); }
  /// The index, for `TCrossTool::CheckCrossWithHoles` and searches of the host's own.
  const TRTree<TGeCurve2D*>& RTree() const { return FRTree; }

  /// Adds a hole, unless it is present (the very object) or there is none; the curve, for
  /// `RemoveHole`. A hole without extent is held but never found.
  /// Ownership: takes the curve, also when the call raises (the curve is freed then).
  TGeCurve2D* AddHole(std::unique_ptr<TGeCurve2D> GeCurve);
  /// The same for a raw pointer, which the holes own from here on.
  TGeCurve2D* AddHole(TGeCurve2D* GeCurve);
  /// Removes a hole and frees its curve; nothing happens when it is absent.
  void RemoveHole(const TGeCurve2D* GeCurve);

 private:
  TRTree<TGeCurve2D*> FRTree;
  TGeToDataDic<TGeCurve2D> FDic;
};

}  // namespace tarnalgo
