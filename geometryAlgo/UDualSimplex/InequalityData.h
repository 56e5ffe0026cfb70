#pragma once  // geometryAlgo/UDualSimplex/InequalityData.h

#include <vector>

#include "geometryAlgo/UDualSimplex/IntegerVec.h"
#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

namespace tarnalgo {

inline constexpr int kAtMost = -1;  ///< Sense of a constraint in a `TIntegerVec`: <=.
inline constexpr int kAtLeast = 1;  ///< Sense of a constraint in a `TIntegerVec`: >=.

/// A bound on one variable.
struct TInequalityData {
  int Variable = 0;     ///< Column of the constraint matrix, from 1 on.
  double Value = 0.0;   ///< The bound itself.
  int Sense = kAtMost;  ///< `kAtMost` or `kAtLeast`.
};

/// Bounds that are added to a program.
class TInequalityDataList {
 public:
  int Count() const { return static_cast<int>(FItems.size()); }  ///< Bounds in the list.
  /// The bound added as number `Index`, from 0 on; `EParamError` outside.
  const TInequalityData& operator[](int Index) const;

  /// Appends a bound. Nothing is checked before `AddDatato`.
  void AddData(int Variable, double Value, int Sense) {
    FItems.push_back({Variable, Value, Sense});
  }
  /// An independent copy.
  TInequalityDataList Clone() const { return *this; }

  /// Appends a row for each bound to `A`, whose column 0 holds the right-hand sides: the bound's
  /// value there, 1 at the variable, 0 elsewhere; and its sense to `Senses`.
  /// Ownership: both handles get buffers of their own; other handles keep their size.
  /// Errors: a variable outside 1 .. columns − 1, `EParamError`, with nothing changed.
  void AddDatato(TFloatMatrix& A, TIntegerVec& Senses) const;

 private:
  std::vector<TInequalityData> FItems;
};

}  // namespace tarnalgo
