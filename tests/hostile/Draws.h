#pragma once  // tests/hostile/Draws.h

#include <array>
#include <functional>
#include <initializer_list>
#include <polyclipping/clipper.hpp>
#include <span>
#include <string>
#include <string_view>

#include "containers/Container.h"
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
#include "host/Cadtypes.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"
#include "host/Zeblib.h"
#include "host/tarnds.h"
#include "tests/hostile/Hostile.h"

namespace tarnalgo::test {

// --- Standard types ---

template <class T>
struct TDraw<T*> {
  static std::unique_ptr<T*> New(THostile& H) { return std::make_unique<T*>(H.Pointer<T>()); }
};

template <>
inline void* THostile::Pointer<void>() {
  return Pick(5) == 0 ? nullptr : &Keep(std::make_unique<char>('x'));
}

template <class T>
struct TDraw<std::unique_ptr<T>> {
  static std::unique_ptr<std::unique_ptr<T>> New(THostile& H) {
    return std::make_unique<std::unique_ptr<T>>(H.Pick(8) == 0 ? nullptr : H.Draw<T>());
  }
};

template <class TFirst, class TSecond>
struct TDraw<std::pair<TFirst, TSecond>> {
  static std::unique_ptr<std::pair<TFirst, TSecond>> New(THostile& H) {
    TFirst First = H.Take<TFirst>();
    return std::make_unique<std::pair<TFirst, TSecond>>(std::move(First), H.Take<TSecond>());
  }
};

template <class T>
struct TDraw<std::vector<T>> {
  static std::unique_ptr<std::vector<T>> New(THostile& H) {
    auto Result = std::make_unique<std::vector<T>>();
    if constexpr (std::is_trivially_copyable_v<T> && !std::is_pointer_v<T>) {
      if (H.Long() > 0) {
        Result->assign(static_cast<std::size_t>(H.Long()), H.Take<T>());
        return Result;
      }
    }
    for (int Count = H.ListSize(); Count > 0; --Count) {
      if constexpr (std::is_copy_constructible_v<T>) {
        if (!Result->empty() && H.Pick(6) == 0) {
          const T Again =
              (*Result)[static_cast<std::size_t>(H.Pick(static_cast<int>(Result->size())))];
          Result->push_back(Again);
          continue;
        }
      }
      Result->push_back(H.Take<T>());
    }
    return Result;
  }
};

template <>
struct TDraw<std::string> {
  static std::unique_ptr<std::string> New(THostile& H) {
    return std::make_unique<std::string>(H.Text());
  }
};

template <>
struct TDraw<std::string_view> {
  static std::unique_ptr<std::string_view> New(THostile& H) {
    return std::make_unique<std::string_view>(H.Ref<std::string>());
  }
};

template <>
struct TDraw<std::span<bool>> {
  static std::unique_ptr<std::span<bool>> New(THostile& H) {
    auto& Items = H.Keep(std::make_unique<std::array<bool, 64>>());
    return std::make_unique<std::span<bool>>(Items.data(), static_cast<std::size_t>(H.ListSize()));
  }
};

template <class T>
struct TDraw<std::span<const T>> {
  static std::unique_ptr<std::span<const T>> New(THostile& H) {
    return std::make_unique<std::span<const T>>(H.Ref<std::vector<T>>());
  }
};

/// A callable without sense: its answers have nothing to do with what it is asked.
template <class TResult, class... TArgs>
struct TDraw<std::function<TResult(TArgs...)>> {
  static std::unique_ptr<std::function<TResult(TArgs...)>> New(THostile& H) {
    auto Result = std::make_unique<std::function<TResult(TArgs...)>>();
    if (H.Pick(5) == 0) return Result;
    if constexpr (std::is_void_v<TResult>) {
      *Result = [](TArgs...) {};
    } else {
      *Result = [&H](TArgs...) { return H.Take<TResult>(); };
    }
    return Result;
  }
};

// --- The clipping library's ---

template <>
struct TDraw<ClipperLib::IntPoint> {
  static std::unique_ptr<ClipperLib::IntPoint> New(THostile& H) {
    const std::int64_t X = H.Integer();
    return std::make_unique<ClipperLib::IntPoint>(X, H.Integer());
  }
};

template <>
struct TDraw<ClipperLib::PolyTree> {
  static std::unique_ptr<ClipperLib::PolyTree> New(THostile& H) {
    auto Result = std::make_unique<ClipperLib::PolyTree>();
    ClipperLib::Clipper Clipper;
    try {
      Clipper.AddPaths(H.Ref<TPaths>(), ClipperLib::ptSubject, true);
      Clipper.Execute(ClipperLib::ctUnion, *Result);
    } catch (const ClipperLib::clipperException&) {
      throw TNoValue();
    }
    return Result;
  }
};

template <>
struct TDraw<ClipperLib::PolyNode> {
  static ClipperLib::PolyNode& Keep(THostile& H) {
    ClipperLib::PolyTree& Tree = H.Ref<ClipperLib::PolyTree>();
    return Tree.Total() > 0 && H.Coin() ? *Tree.GetFirst() : Tree;
  }
};

// --- Families: any class of them ---

template <class TBase, class... TClasses>
std::unique_ptr<TBase> DrawOneOf(THostile& H) {
  std::unique_ptr<TBase> Result;
  int Left = H.Pick(static_cast<int>(sizeof...(TClasses)));
  static_cast<void>(((Left-- == 0 ? (Result = H.Draw<TClasses>(), true) : false) || ...));
  return Result;
}

template <>
struct TDraw<TGeCurve2D> {
  static std::unique_ptr<TGeCurve2D> New(THostile& H) {
    return DrawOneOf<TGeCurve2D, TGeLine2D, TGeCircularArc2D, TGePolyline2D, TGePolyBezier2D,
                     TGeCompositeCurve2D>(H);
  }
};

template <>
struct TDraw<TGeObject> {
  static std::unique_ptr<TGeObject> New(THostile& H) { return H.Draw<TGeCurve2D>(); }
};

template <>
struct TDraw<TCollectionBase> {
  static std::unique_ptr<TCollectionBase> New(THostile& H) {
    return H.Draw<TCollection<TPointL2D>>();
  }
};

template <>
struct TDraw<TRTree<>> {
  static std::unique_ptr<TRTree<>> New(THostile& H) { return H.Draw<TRRTree2D>(); }
};

template <>
struct TDraw<TVPoint2DList> {
  static std::unique_ptr<TVPoint2DList> New(THostile& H) {
    if (H.Coin()) return std::make_unique<TVPoint2DList>(H.Take<std::vector<TPoint2D>>());
    return DrawOneOf<TVPoint2DList, TVPolyline2D, TMChainExtend>(H);
  }
};

/// Half of them closed.
template <>
struct TDraw<TVPolyline2D> {
  static std::unique_ptr<TVPolyline2D> New(THostile& H) {
    auto Result = std::make_unique<TVPolyline2D>(H.Take<std::vector<TPoint2D>>());
    if (!Result->IsEmpty() && H.Coin()) Result->Add(TPoint2D(Result->First()));
    return Result;
  }
};

template <>
struct TDraw<IVGeometry2D> {
  static std::unique_ptr<IVGeometry2D> New(THostile& H) {
    return DrawOneOf<IVGeometry2D, TVPoint2DList, TVPolyline2D, TVPolyline2DList, TVHPolygon,
                     TVHPolygonList, TLABPolyline, TLABPolylineList, TLABHPolygon, TLABHPolygonList,
                     TMChainExtend>(H);
  }
};

template <>
struct TDraw<TGeCompositeCurve2D> {
  static std::unique_ptr<TGeCompositeCurve2D> New(THostile& H) {
    if (H.Coin()) {
      return H.Made([&H] {
        return std::make_unique<TGeCompositeCurve2D>(H.Ref<std::vector<TGeCurve2D*>>(), false);
      });
    }
    auto Result = std::make_unique<TGeCompositeCurve2D>();
    for (int Count = H.ListSize(); Count > 0; --Count) Result->AddCurve(H.Draw<TGeCurve2D>());
    return Result;
  }
};

// --- Containers of objects ---

template <class TList, class TItem>
std::unique_ptr<TList> DrawList(THostile& H) {
  auto Result = std::make_unique<TList>();
  for (int Count = H.ListSize(); Count > 0; --Count) {
    if (Result->OwnsObjects()) {
      Result->Add(H.Draw<TItem>());
    } else {
      Result->Add(&H.Ref<TItem>());
    }
  }
  return Result;
}

template <class T>
struct TDraw<TObjectList<T>> {
  static std::unique_ptr<TObjectList<T>> New(THostile& H) { return DrawList<TObjectList<T>, T>(H); }
};
template <class T>
struct TDraw<TVGeometry2DList<T>> {
  static std::unique_ptr<TVGeometry2DList<T>> New(THostile& H) {
    return DrawList<TVGeometry2DList<T>, T>(H);
  }
};

template <class K, class V>
struct TDraw<TOwnValueDic<K, V>> {
  static std::unique_ptr<TOwnValueDic<K, V>> New(THostile& H) {
    auto Result = std::make_unique<TOwnValueDic<K, V>>();
    for (int Count = H.ListSize(); Count > 0; --Count) {
      Result->AddOrSetValue(H.Take<K>(), H.Draw<V>());
    }
    return Result;
  }
};

template <class TList, class TItem>
struct TDrawList {
  static std::unique_ptr<TList> New(THostile& H) { return DrawList<TList, TItem>(H); }
};
template <>
struct TDraw<TVPolyline2DList> : TDrawList<TVPolyline2DList, TVPolyline2D> {};
template <>
struct TDraw<TVHPolygon> : TDrawList<TVHPolygon, TVPolyline2D> {};
template <>
struct TDraw<TVHPolygonList> : TDrawList<TVHPolygonList, TVHPolygon> {};
template <>
struct TDraw<TLABPolylineList> : TDrawList<TLABPolylineList, TLABPolyline> {};
template <>
struct TDraw<TLABHPolygon> : TDrawList<TLABHPolygon, TLABPolyline> {};
template <>
struct TDraw<TLABHPolygonList> : TDrawList<TLABHPolygonList, TLABHPolygon> {};
template <>
struct TDraw<TLinearSegments> : TDrawList<TLinearSegments, TLinearSegment> {};
template <>
struct TDraw<TLinearSegmentList> : TDrawList<TLinearSegmentList, TLinearSegment> {};
template <>
struct TDraw<TSegmentGroups> : TDrawList<TSegmentGroups, TLinearSegmentList> {};
template <>
struct TDraw<TMultiTreeList<int>> : TDrawList<TMultiTreeList<int>, TMultiTree<int>> {};

template <>
struct TDraw<TMChainExtend> {
  static std::unique_ptr<TMChainExtend> New(THostile& H) {
    return std::make_unique<TMChainExtend>(H.Take<std::vector<TPoint2D>>());
  }
};

template <>
struct TDraw<TTopoLinks> {
  static std::unique_ptr<TTopoLinks> New(THostile& H) {
    return std::make_unique<TTopoLinks>(TTopoLinks::CreateTopoLink(H.Ref<TMChainExtends>()));
  }
};

template <>
struct TDraw<TOwningFlyCurves> {
  static std::unique_ptr<TOwningFlyCurves> New(THostile& H) {
    auto Result = std::make_unique<TOwningFlyCurves>();
    for (int Count = H.ListSize(); Count > 0; --Count) {
      auto Piece = H.Draw<TFlyCurve>();
      Piece->SetGeCurve(H.Draw<TGeCurve2D>().release());
      Result->Add(std::move(Piece));
    }
    return Result;
  }
};

/// Passes own their curves here, so that nothing leaks.
template <>
struct TDraw<TFlyCurves> {
  static std::unique_ptr<TFlyCurves> New(THostile& H) { return H.Draw<TOwningFlyCurves>(); }
};

template <class TPiece, class TCurve>
struct TDrawPiece {
  static std::unique_ptr<TPiece> New(THostile& H) {
    auto Result = std::make_unique<TPiece>();
    Result->SetGeCurve(H.Coin() ? H.Pointer<TCurve>() : H.Pointer<TGeCurve2D>());
    return Result;
  }
};
template <>
struct TDraw<TFlyLine> : TDrawPiece<TFlyLine, TGeLine2D> {};
template <>
struct TDraw<TFlyCircle> : TDrawPiece<TFlyCircle, TGeCircularArc2D> {};

// --- Nodes: of a tree that is kept ---

template <>
struct TDraw<TGeneralSBTree<double, int>> {
  static std::unique_ptr<TGeneralSBTree<double, int>> New(THostile& H) {
    auto Result = H.Coin() ? std::make_unique<TGeneralSBTree<double, int>>(CompareExact<double>)
                           : std::make_unique<TGeneralSBTree<double, int>>(
                                 H.Take<std::function<int(const double&, const double&)>>());
    for (int Count = H.ListSize(); Count > 0; --Count) Result->Insert(H.Double(), Count);
    return Result;
  }
};
template <>
struct TDraw<TGeneralSBTreeNode<double, int>> {
  static TGeneralSBTreeNode<double, int>& Keep(THostile& H) {
    auto& Tree = H.Ref<TGeneralSBTree<double, int>>();
    return *Tree.Insert(H.Double(), 0);
  }
};

template <>
struct TDraw<TMultiTree<int>> {
  static std::unique_ptr<TMultiTree<int>> New(THostile& H) {
    if (H.Pick(8) == 0) return std::make_unique<TMultiTree<int>>();
    auto Result = std::make_unique<TMultiTree<int>>(H.Take<int>());
    TTreeNode<int>* Node = Result->Root();
    for (int Count = H.ListSize(); Count > 0; --Count) {
      auto* const Child = Result->AddChildNode(Node, std::make_unique<TTreeNode<int>>(Count));
      if (H.Coin()) Node = Child;
    }
    return Result;
  }
};
template <>
struct TDraw<TTreeNode<int>> {
  static TTreeNode<int>& Keep(THostile& H) {
    auto* const Root = H.Ref<TMultiTree<int>>().Root();
    if (!Root) throw TNoValue();
    const auto Nodes = Root->PreorderTraversal();
    return *Nodes[static_cast<std::size_t>(H.Pick(static_cast<int>(Nodes.size())))];
  }
  static std::unique_ptr<TTreeNode<int>> New(THostile& H) {
    return std::make_unique<TTreeNode<int>>(H.Take<int>());
  }
};

template <>
struct TDraw<TRTree<int>> {
  static std::unique_ptr<TRTree<int>> New(THostile& H) {
    auto Result = std::make_unique<TRTree<int>>(4);
    for (int Count = H.ListSize(); Count > 0; --Count) Result->Insert(Count, H.Take<TVRect2D>());
    return Result;
  }
};
template <>
struct TDraw<TRTree<TGeCurve2D*>> {
  static TRTree<TGeCurve2D*>& Keep(THostile& H) {
    return const_cast<TRTree<TGeCurve2D*>&>(H.Ref<TFlyHoles>().RTree());  // taken as const
  }
};

}  // namespace tarnalgo::test
