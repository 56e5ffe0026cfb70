#pragma once  // geometryAlgo/UMatrixAlgo/FloatVector.h

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarnalgo {

/// The unit that its assertions name.
inline constexpr std::string_view kMatrixUnit = "geometryAlgo/UMatrixAlgo";

/// A vector of doubles over a shared buffer.
///
///     TFloatVector A(3, 1.0);
///     TFloatVector B = A;        // shares the elements
///     B.SetItem(0, 5.0);         // A[0] is 5 too
///     B.SetSize(4);              // B has a buffer of its own from here on
///
/// Ownership: copies share the elements, and see each other's element writes. Whatever changes the
/// size (`SetSize`, `Expand`, `FreeData`) gives this handle a buffer of its own and leaves the
/// other handles as they are. Every result is new and shares with nothing. A moved-from vector is
/// empty.
/// Errors: an index out of range, a negative size or one beyond `kMostItems`, `EParamError`; two
/// operands of different size where the sizes must agree, `EAssertionFailed`.
class TFloatVector {
 public:
  TFloatVector() = default;
  /// `Size` zeros.
  explicit TFloatVector(int Size) : TFloatVector(Size, 0.0) {}
  /// Every element `Value`.
  TFloatVector(int Size, double Value);
  /// A copy of the numbers.
  TFloatVector(std::initializer_list<double> Items);
  /// A copy of the array.
  explicit TFloatVector(const std::vector<double>& Items);

  /// Elements; 0 without a buffer.
  int GetSize() const { return FItems ? static_cast<int>(FItems->size()) : 0; }
  /// Keeps what fits; new elements are 0.
  void SetSize(int Size);
  /// The element at `Index`, from 0 on.
  double GetItem(int Index) const { return *Checked(Index); }
  /// Writes the shared element.
  void SetItem(int Index, double Value) { *Checked(Index) = Value; }
  /// `GetItem`.
  double operator[](int Index) const { return GetItem(Index); }

  /// The shared elements, for inner loops: valid until the size of this handle changes.
  const double* Data() const { return FItems ? FItems->data() : nullptr; }
  double* Data() { return FItems ? FItems->data() : nullptr; }  ///< The same, to write.

  ///@{
  /// New vectors; the operands stay as they are. A division by 0 gives infinities and NaN.
  TFloatVector Add(const TFloatVector& Other) const;
  TFloatVector Subtract(const TFloatVector& Other) const;
  TFloatVector Multiply(double Factor) const;
  TFloatVector Divide(double Divisor) const;
  TFloatVector Negative() const;
  ///@}

  friend TFloatVector operator+(const TFloatVector& A, const TFloatVector& B) { return A.Add(B); }
  friend TFloatVector operator-(const TFloatVector& A, const TFloatVector& B) {
    return A.Subtract(B);
  }
  friend TFloatVector operator+(const TFloatVector& A) { return A.Clone(); }
  friend TFloatVector operator-(const TFloatVector& A) { return A.Negative(); }
  friend TFloatVector operator*(const TFloatVector& A, double Factor) { return A.Multiply(Factor); }
  friend TFloatVector operator*(double Factor, const TFloatVector& A) { return A.Multiply(Factor); }
  friend TFloatVector operator/(const TFloatVector& A, double Divisor) { return A.Divide(Divisor); }
  /// The dot product; eight partial sums, the same on every machine.
  friend double operator*(const TFloatVector& A, const TFloatVector& B);
  /// Exact: equal sizes and elements; a NaN equals nothing.
  friend bool operator==(const TFloatVector& A, const TFloatVector& B);

  /// Equal sizes, and each pair of elements equal.
  /// Tolerance: `Eps` on the elements, a difference of just `Eps` included.
  bool Equls(const TFloatVector& Other, double Eps) const;

  ///@{
  /// Appends one element, or those of a list or vector (this vector itself too).
  void Expand(double Value);
  void Expand(const std::vector<double>& Values);
  void Expand(const TFloatVector& Other);
  ///@}
  /// `Count` elements from `First`.
  /// Errors: the run leaves the vector, `EParamError`.
  TFloatVector SubVector(int First, int Count) const;
  /// All elements but the one at `Index`.
  TFloatVector ExceptItem(int Index) const;

  /// The largest magnitude, 0 when empty; NaN elements count as nothing.
  double GetAbsMax() const;
  /// Euclidean length; squares neither overflow nor vanish.
  double Mag() const;
  /// The square of `Mag`, summed plainly: may overflow or vanish where `Mag` does not.
  double MagSqr() const;
  ///@{
  /// Sum of the magnitudes, Euclidean length, largest magnitude.
  double Norm1() const;
  double Norm2() const { return Mag(); }
  double NormInf() const { return GetAbsMax(); }
  ///@}
  /// Divides the (shared) elements by `Mag`; a zero vector stays as it is.
  void Normalize();

  /// An independent copy.
  TFloatVector Clone() const;
  /// Lets go of the buffer: this vector is empty, other handles keep theirs.
  void FreeData() { FItems.reset(); }

  // --- Text (FloatVectorFile.cpp) ---

  /// Writes over a file that exists: "%20.18f " for each element on a line of its own, or
  /// " %20.18f " for each on one line. Lines end in CR LF; decimal points whatever the locale.
  /// Errors: no file there yet, or it cannot be written, `EInOutError`.
  void SaveToFile(const std::string& FileName, bool OnePerLine) const;
  /// Reads nothing; always false.
  bool LoadFromFile(const std::string& FileName, bool OnePerLine);
  /// The elements to the debug output, on one line.
  void TestShow() const;

 private:
  double* Checked(int Index) const;

  std::shared_ptr<std::vector<double>> FItems;  // none = empty
};

}  // namespace tarnalgo
