#pragma once  // host/tarnds/ListUtils.h

#include <cstddef>
#include <utility>
#include <vector>

namespace tarnalgo {

/// A pair of values.
template <class T1, class T2 = T1>
struct Tuple2 {
  /// One of the pair.
  T1 Value1{};
  T2 Value2{};  ///< The other.

  friend bool operator==(const Tuple2&, const Tuple2&) = default;
};

/// Takes back what is appended to a list from here on unless `Keep` is called: for operations that
/// append item by item and leave the list as it was when they raise.
///
///     TAppendGuard Guard(Points);
///     for (...) Points.push_back(...);
///     Guard.Keep();
template <class T>
class TAppendGuard {
 public:
  /// Watches `Items` from here on; refers to them.
  explicit TAppendGuard(std::vector<T>& Items) : FItems(Items), FCount(Items.size()) {}
  TAppendGuard(const TAppendGuard&) = delete;
  TAppendGuard& operator=(const TAppendGuard&) = delete;
  ~TAppendGuard() {
    if (!FIsKept) FItems.erase(FItems.begin() + static_cast<std::ptrdiff_t>(FCount), FItems.end());
  }

  /// What was appended stays.
  void Keep() { FIsKept = true; }

 private:
  std::vector<T>& FItems;
  std::size_t FCount;
  bool FIsKept = false;
};

/// Lists of integers, and what lists of owners need.
class TListUtils {
 public:
  /// Frees the nodes of trees that own each other, given by their tops, without recursion and
  /// without taking memory. `ChildrenOf(Node)` is a pointer to the list of owners (those of the
  /// tops) below a node, `nullptr` where there is none.
  template <class TOwner, class TChildrenOf>
  static void FreeNested(std::vector<TOwner> Nodes, TChildrenOf ChildrenOf);

  /// The integers 0 .. N − 1; empty for N <= 0.
  /// Errors: `N` beyond `kMostItems`, `EParamError`.
  static std::vector<int> CreateOrderList(int N);
};

// A node with something below it keeps what is left of its own list while that is freed, and waits
// in the place of its first child, which is the last one to be reached.
template <class TOwner, class TChildrenOf>
void TListUtils::FreeNested(std::vector<TOwner> Nodes, TChildrenOf ChildrenOf) {
  while (!Nodes.empty()) {
    TOwner Node = std::move(Nodes.back());
    Nodes.pop_back();
    for (;;) {
      std::vector<TOwner>* const Below = ChildrenOf(Node);
      if (!Below || Below->empty()) break;
      Nodes.swap(*Below);
      if (Below->empty()) break;  // nothing is left to come back to
      std::swap(Node, Nodes.front());
    }
  }
}

}  // namespace tarnalgo
