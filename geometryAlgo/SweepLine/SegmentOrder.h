#pragma once  // geometryAlgo/SweepLine/SegmentOrder.h

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "geometryAlgo/VedaType/Line.h"

namespace tarnalgo {

/// Segments in an order that the caller makes. Internal to the pages of this unit.
///
/// Blocks of up to 256 copies, so that a search touches little memory: among a million segments a
/// tree waits for it at almost every node.
/// Cost: a search O(log n); each change moves within a block, and one in a hundred within the list
/// of blocks. O(n) memory.
class TSegmentOrder {
  static constexpr std::size_t kMost = 256;

  struct TBlock {
    TBlock* Below = nullptr;
    TBlock* Above = nullptr;
    std::size_t Count = 0;
    std::array<int, kMost> Segments;
    std::array<TVLine2D, kMost> Lines;
  };

 public:
  /// A place in the order, good until the next change but for `Exchange`.
  class TSpot {
   public:
    /// There is a segment here.
    explicit operator bool() const { return FBlock != nullptr; }
    int Segment() const { return FBlock->Segments[FIndex]; }
    const TVLine2D& Line() const { return FBlock->Lines[FIndex]; }

    TSpot Below() const {
      if (FIndex > 0) return {FBlock, FIndex - 1};
      return FBlock->Below != nullptr ? TSpot(FBlock->Below, FBlock->Below->Count - 1) : TSpot();
    }
    TSpot Above() const {
      return FIndex + 1 < FBlock->Count ? TSpot(FBlock, FIndex + 1) : TSpot(FBlock->Above, 0);
    }

   private:
    friend class TSegmentOrder;
    TSpot() = default;
    TSpot(TBlock* Block, std::size_t Index) : FBlock(Block), FIndex(Index) {}

    TBlock* FBlock = nullptr;
    std::size_t FIndex = 0;
  };

  /// For segments 0 .. `Count` − 1.
  explicit TSegmentOrder(std::size_t Count) : FBlockOf(Count, nullptr) {}

  bool Has(int Segment) const { return FBlockOf[static_cast<std::size_t>(Segment)] != nullptr; }
  /// Of a segment that is in the order.
  TSpot SpotOf(int Segment) const {
    TBlock* const Block = FBlockOf[static_cast<std::size_t>(Segment)];
    const auto Found = std::find(Block->Segments.begin(), Block->Segments.end(), Segment);
    return {Block, static_cast<std::size_t>(Found - Block->Segments.begin())};
  }

  /// Puts the segment above those for whose line `IsBelow` holds, which come first in the order.
  template <class TIsBelow>
  TSpot Insert(int Segment, const TVLine2D& Line, TIsBelow IsBelow) {
    return InsertAt(Find(IsBelow), Segment, Line);
  }
  /// The topmost segment for whose line `IsBelow` holds, and the one above it.
  template <class TIsBelow>
  void FindNeighbours(TIsBelow IsBelow, TSpot& Below, TSpot& Above) const;

  void Remove(const TSpot& Spot);
  /// Two segments change places.
  void Exchange(const TSpot& A, const TSpot& B);

  static TSpot None() { return {}; }

 private:
  /// The block to insert into, and the place in it.
  struct TPlace {
    std::size_t Block;
    std::size_t Index;
  };
  template <class TIsBelow>
  TPlace Find(TIsBelow IsBelow) const;
  TSpot InsertAt(TPlace Place, int Segment, const TVLine2D& Line);
  void Split(std::size_t Block);

  std::vector<std::unique_ptr<TBlock>> FBlocks;  // none of them empty
  std::vector<TBlock*> FBlockOf;                 // of each segment, null outside the order
};

template <class TIsBelow>
TSegmentOrder::TPlace TSegmentOrder::Find(TIsBelow IsBelow) const {
  const auto After = std::partition_point(
      FBlocks.begin(), FBlocks.end(),
      [&](const std::unique_ptr<TBlock>& Block) { return IsBelow(Block->Lines[0]); });
  if (After == FBlocks.begin()) return {0, 0};
  const TBlock& Block = **(After - 1);
  const auto First = Block.Lines.begin();
  const auto Place =
      std::partition_point(First + 1, First + static_cast<std::ptrdiff_t>(Block.Count), IsBelow);
  return {static_cast<std::size_t>(After - FBlocks.begin()) - 1,
          static_cast<std::size_t>(Place - First)};
}

template <class TIsBelow>
void TSegmentOrder::FindNeighbours(TIsBelow IsBelow, TSpot& Below, TSpot& Above) const {
  Below = Above = TSpot();
  if (FBlocks.empty()) return;
  const TPlace Place = Find(IsBelow);
  TBlock* const Block = FBlocks[Place.Block].get();
  if (Place.Index == 0) {
    Above = TSpot(Block, 0);
  } else {
    Below = TSpot(Block, Place.Index - 1);
    Above = Below.Above();
  }
}

}  // namespace tarnalgo
