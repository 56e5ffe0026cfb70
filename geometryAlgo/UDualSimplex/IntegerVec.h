#pragma once  // geometryAlgo/UDualSimplex/IntegerVec.h

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

namespace tarnalgo {

/// A vector of 32-bit integers over a shared buffer.
///
/// Ownership: copies share the elements, and see each other's element writes. `SetSize` and
/// `FreeData` give this handle a buffer of its own and leave the other handles as they are. A
/// moved-from vector is empty.
/// Errors: an index out of range, a negative size or one beyond `kMostItems`, `EParamError`.
class TIntegerVec {
 public:
  TIntegerVec() = default;
  /// `Size` zeros.
  explicit TIntegerVec(int Size) { SetSize(Size); }
  /// A copy of the numbers.
  TIntegerVec(std::initializer_list<int> Items);
  explicit TIntegerVec(const std::vector<int>& Items);  ///< A copy of the numbers.

  /// Elements; 0 without a buffer.
  int GetSize() const { return FItems ? static_cast<int>(FItems->size()) : 0; }
  /// Keeps what fits; new elements are 0.
  void SetSize(int Size);
  /// The element at `Index`.
  int GetItem(int Index) const { return *Checked(Index); }
  /// Writes the shared element.
  void SetItem(int Index, int Value) { *Checked(Index) = Value; }
  /// `GetItem`.
  int operator[](int Index) const { return GetItem(Index); }

  /// An independent copy.
  TIntegerVec Clone() const;
  /// Lets go of the buffer: this vector is empty, other handles keep theirs.
  void FreeData() { FItems.reset(); }

 private:
  int* Checked(int Index) const;

  std::shared_ptr<std::vector<int>> FItems;  // none = empty
};

}  // namespace tarnalgo
