#include "geometryAlgo/UMatrixAlgo/BlockProduct.h"

#include <algorithm>

#include "geometryAlgo/UMatrixAlgo/Pack.h"

namespace tarnalgo {

namespace {

// The product is formed in tiles whose sums stay in registers. Both factors are copied first, so
// that a tile reads them in order: A in slices of kTileRows rows, B in slices of kTileColumns.

constexpr int kTileRows = 4;
constexpr int kTileColumns = 8;
/// A slice of B stays in the first cache, a block of A in the second.
constexpr int kDepth = 256;
constexpr int kBlockRows = 96;
constexpr int kBlockColumns = 512;
/// Products of fewer terms are not worth the copies.
constexpr int kLeastPacked = 512;

int SlicesOf(int Count, int Width) {
  return (Count + Width - 1) / Width;
}

/// `Rows` x `Depth` of A, slice by slice, each column by column; missing rows are 0.
void PackA(TBlockView A, int Rows, std::ptrdiff_t Depth, double* To) {
  for (int I = 0; I < Rows; I += kTileRows, To += Depth * kTileRows) {
    const int Height = std::min(kTileRows, Rows - I);
    if (Height < kTileRows) std::fill_n(To, Depth * kTileRows, 0.0);
    for (int R = 0; R < Height; ++R) {
      const double* From = A.Items + (I + R) * A.RowStep;
      for (int K = 0; K < Depth; ++K, From += A.ColumnStep) To[K * kTileRows + R] = *From;
    }
  }
}

/// `Depth` x `Columns` of B, slice by slice, each row by row; missing columns are 0.
void PackB(TBlockView B, std::ptrdiff_t Depth, int Columns, double* To) {
  for (int J = 0; J < Columns; J += kTileColumns, To += Depth * kTileColumns) {
    const int Width = std::min(kTileColumns, Columns - J);
    if (Width < kTileColumns) std::fill_n(To, Depth * kTileColumns, 0.0);
    const double* From = B.Items + J * B.ColumnStep;
    if (B.ColumnStep == 1) {
      for (std::ptrdiff_t K = 0; K < Depth; ++K, From += B.RowStep) {
        std::copy_n(From, Width, To + K * kTileColumns);
      }
      continue;
    }
    for (int C = 0; C < Width; ++C, From += B.ColumnStep) {
      for (int K = 0; K < Depth; ++K) To[K * kTileColumns + C] = From[K * B.RowStep];
    }
  }
}

/// Sum := Sum ± X·Y.
template <bool kIsNegative, class TPack>
[[gnu::always_inline]] inline void AddTo(TPack& Sum, double X, const TPack& Y) {
  if constexpr (kIsNegative) {
    Sum -= X * Y;
  } else {
    Sum += X * Y;
  }
}

/// One tile of kTileRows rows and two packs of columns: C := C ± A·B.
template <bool kIsNegative, class TPack>
[[gnu::always_inline]] inline void MultiplyTile(int Depth, const double* A, const double* B,
                                                double* C, std::ptrdiff_t CStep) {
  constexpr int kStep = kLanes<TPack>;
  TPack Sum00, Sum01, Sum10, Sum11, Sum20, Sum21, Sum30, Sum31;
  Load(Sum00, C);
  Load(Sum01, C + kStep);
  Load(Sum10, C + CStep);
  Load(Sum11, C + CStep + kStep);
  Load(Sum20, C + 2 * CStep);
  Load(Sum21, C + 2 * CStep + kStep);
  Load(Sum30, C + 3 * CStep);
  Load(Sum31, C + 3 * CStep + kStep);
  for (int K = 0; K < Depth; ++K, A += kTileRows, B += kTileColumns) {
    TPack B0, B1;
    Load(B0, B);
    Load(B1, B + kStep);
    AddTo<kIsNegative>(Sum00, A[0], B0);
    AddTo<kIsNegative>(Sum01, A[0], B1);
    AddTo<kIsNegative>(Sum10, A[1], B0);
    AddTo<kIsNegative>(Sum11, A[1], B1);
    AddTo<kIsNegative>(Sum20, A[2], B0);
    AddTo<kIsNegative>(Sum21, A[2], B1);
    AddTo<kIsNegative>(Sum30, A[3], B0);
    AddTo<kIsNegative>(Sum31, A[3], B1);
  }
  Store(C, Sum00);
  Store(C + kStep, Sum01);
  Store(C + CStep, Sum10);
  Store(C + CStep + kStep, Sum11);
  Store(C + 2 * CStep, Sum20);
  Store(C + 2 * CStep + kStep, Sum21);
  Store(C + 3 * CStep, Sum30);
  Store(C + 3 * CStep + kStep, Sum31);
}

/// Packed blocks and the block of C that they change.
struct TBlockJob {
  int Rows;
  int Columns;
  int Depth;
  const double* A;
  const double* B;
  double* C;
  std::ptrdiff_t CStep;
};

/// kTileRows x kTileColumns of C, in as many tiles as that takes.
template <bool kIsNegative, class TPack>
[[gnu::always_inline]] inline void MultiplySlices(int Depth, const double* A, const double* B,
                                                  double* C, std::ptrdiff_t CStep) {
  for (int J = 0; J < kTileColumns; J += 2 * kLanes<TPack>) {
    MultiplyTile<kIsNegative, TPack>(Depth, A, B + J, C + J, CStep);
  }
}

template <bool kIsNegative, class TPack>
[[gnu::always_inline]] inline void MultiplyBlock(const TBlockJob& Job) {
  for (int J = 0; J < Job.Columns; J += kTileColumns) {
    const int Width = std::min(kTileColumns, Job.Columns - J);
    const double* const B = Job.B + static_cast<std::ptrdiff_t>(J) * Job.Depth;
    for (int I = 0; I < Job.Rows; I += kTileRows) {
      const int Height = std::min(kTileRows, Job.Rows - I);
      const double* const A = Job.A + static_cast<std::ptrdiff_t>(I) * Job.Depth;
      double* const C = Job.C + I * Job.CStep + J;
      if (Height == kTileRows && Width == kTileColumns) {
        MultiplySlices<kIsNegative, TPack>(Job.Depth, A, B, C, Job.CStep);
        continue;
      }
      double Edge[kTileRows * kTileColumns] = {};
      for (std::ptrdiff_t R = 0; R < Height; ++R)
        std::copy_n(C + R * Job.CStep, Width, Edge + R * kTileColumns);
      MultiplySlices<kIsNegative, TPack>(Job.Depth, A, B, Edge, kTileColumns);
      for (std::ptrdiff_t R = 0; R < Height; ++R)
        std::copy_n(Edge + R * kTileColumns, Width, C + R * Job.CStep);
    }
  }
}

template <bool kIsNegative>
void MultiplyNarrow(const TBlockJob& Job) {
  MultiplyBlock<kIsNegative, TPack2>(Job);
}

template <bool kIsNegative>
TARNALGO_WIDE_CODE void MultiplyWide(const TBlockJob& Job) {
  MultiplyBlock<kIsNegative, TPack4>(Job);
}

template <bool kIsNegative>
void Multiply(const TBlockJob& Job) {
  HasWidePacks() ? MultiplyWide<kIsNegative>(Job) : MultiplyNarrow<kIsNegative>(Job);
}

/// The plain loops, for blocks too small to copy.
void MultiplySmall(bool IsNegative, int Rows, int Columns, int Depth, TBlockView A, TBlockView B,
                   double* C, std::ptrdiff_t CStep) {
  for (int I = 0; I < Rows; ++I) {
    for (int K = 0; K < Depth; ++K) {
      const double Item = A.Items[I * A.RowStep + K * A.ColumnStep];
      const double Factor = IsNegative ? -Item : Item;
      const double* From = B.Items + K * B.RowStep;
      for (int J = 0; J < Columns; ++J, From += B.ColumnStep) C[I * CStep + J] += Factor * *From;
    }
  }
}

/// At least `Count` doubles.
double* Grown(std::vector<double>& Buffer, int Count) {
  if (static_cast<int>(Buffer.size()) < Count) Buffer.resize(static_cast<std::size_t>(Count));
  return Buffer.data();
}

}  // namespace

TBlockProduct::TRoom TBlockProduct::RoomFor(int Rows, int Columns, int Depth) {
  const int MostDepth = std::min(Depth, kDepth);
  const int MostRows = SlicesOf(std::min(Rows, kBlockRows), kTileRows) * kTileRows;
  const int MostColumns = SlicesOf(std::min(Columns, kBlockColumns), kTileColumns) * kTileColumns;
  return {Grown(FPackedA, MostRows * MostDepth), Grown(FPackedB, MostColumns * MostDepth)};
}

void TBlockProduct::Prepare(int Rows, int Columns, int Depth) {
  if (static_cast<double>(Rows) * Columns * Depth >= kLeastPacked) RoomFor(Rows, Columns, Depth);
}

void TBlockProduct::Run(bool IsNegative, int Rows, int Columns, int Depth, TBlockView A,
                        TBlockView B, double* C, std::ptrdiff_t CStep) {
  if (static_cast<double>(Rows) * Columns * Depth < kLeastPacked) {
    MultiplySmall(IsNegative, Rows, Columns, Depth, A, B, C, CStep);
    return;
  }
  const auto Multiply = IsNegative ? tarnalgo::Multiply<true> : tarnalgo::Multiply<false>;
  const auto [PackedA, PackedB] = RoomFor(Rows, Columns, Depth);
  for (int J = 0; J < Columns; J += kBlockColumns) {
    const int Width = std::min(kBlockColumns, Columns - J);
    for (int K = 0; K < Depth; K += kDepth) {  // ascending: the order of the sums
      const int Deep = std::min(kDepth, Depth - K);
      PackB({B.Items + K * B.RowStep + J * B.ColumnStep, B.RowStep, B.ColumnStep}, Deep, Width,
            PackedB);
      for (int I = 0; I < Rows; I += kBlockRows) {
        const int Height = std::min(kBlockRows, Rows - I);
        PackA({A.Items + I * A.RowStep + K * A.ColumnStep, A.RowStep, A.ColumnStep}, Height, Deep,
              PackedA);
        Multiply({Height, Width, Deep, PackedA, PackedB, C + I * CStep + J, CStep});
      }
    }
  }
}

}  // namespace tarnalgo
