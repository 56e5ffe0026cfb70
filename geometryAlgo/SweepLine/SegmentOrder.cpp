#include "geometryAlgo/SweepLine/SegmentOrder.h"

#include <utility>

namespace tarnalgo {

TSegmentOrder::TSpot TSegmentOrder::InsertAt(TPlace Place, int Segment, const TVLine2D& Line) {
  if (FBlocks.empty()) FBlocks.push_back(std::make_unique<TBlock>());
  if (FBlocks[Place.Block]->Count == kMost) {
    Split(Place.Block);
    if (Place.Index > kMost / 2) Place = {Place.Block + 1, Place.Index - kMost / 2};
  }
  TBlock& Block = *FBlocks[Place.Block];
  const std::size_t End = Block.Count++;
  const auto Open = [&](auto& Items) {
    const auto First = Items.begin();
    const auto At = [&](std::size_t I) { return First + static_cast<std::ptrdiff_t>(I); };
    std::move_backward(At(Place.Index), At(End), At(End + 1));
  };
  Open(Block.Segments);
  Open(Block.Lines);
  Block.Segments[Place.Index] = Segment;
  Block.Lines[Place.Index] = Line;
  FBlockOf[static_cast<std::size_t>(Segment)] = &Block;
  return {&Block, Place.Index};
}

/// The upper half of a full block becomes one of its own.
void TSegmentOrder::Split(std::size_t Block) {
  constexpr std::size_t kHalf = kMost / 2;
  auto Upper = std::make_unique<TBlock>();
  TBlock& Lower = *FBlocks[Block];
  std::copy(Lower.Segments.begin() + kHalf, Lower.Segments.end(), Upper->Segments.begin());
  std::copy(Lower.Lines.begin() + kHalf, Lower.Lines.end(), Upper->Lines.begin());
  Lower.Count = Upper->Count = kHalf;
  for (std::size_t I = 0; I < kHalf; ++I) {
    FBlockOf[static_cast<std::size_t>(Upper->Segments[I])] = Upper.get();
  }
  Upper->Below = &Lower;
  Upper->Above = std::exchange(Lower.Above, Upper.get());
  if (Upper->Above != nullptr) Upper->Above->Below = Upper.get();
  FBlocks.insert(FBlocks.begin() + static_cast<std::ptrdiff_t>(Block) + 1, std::move(Upper));
}

void TSegmentOrder::Remove(const TSpot& Spot) {
  TBlock& Block = *Spot.FBlock;
  FBlockOf[static_cast<std::size_t>(Spot.Segment())] = nullptr;
  const auto Close = [&](auto& Items) {
    const auto At = [&](std::size_t I) { return Items.begin() + static_cast<std::ptrdiff_t>(I); };
    std::move(At(Spot.FIndex + 1), At(Block.Count), At(Spot.FIndex));
  };
  Close(Block.Segments);
  Close(Block.Lines);
  if (--Block.Count > 0) return;
  if (Block.Below != nullptr) Block.Below->Above = Block.Above;
  if (Block.Above != nullptr) Block.Above->Below = Block.Below;
  FBlocks.erase(std::find_if(FBlocks.begin(), FBlocks.end(),
                             [&](const auto& Other) { return Other.get() == &Block; }));
}

void TSegmentOrder::Exchange(const TSpot& A, const TSpot& B) {
  std::swap(A.FBlock->Segments[A.FIndex], B.FBlock->Segments[B.FIndex]);
  std::swap(A.FBlock->Lines[A.FIndex], B.FBlock->Lines[B.FIndex]);
  FBlockOf[static_cast<std::size_t>(A.Segment())] = A.FBlock;
  FBlockOf[static_cast<std::size_t>(B.Segment())] = B.FBlock;
}

}  // namespace tarnalgo
