#include "geometryAlgo/UDualSimplex/LinearProgramMethod.h"

#include <algorithm>

#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"
#include "host/Exceptions.h"

namespace tarnalgo {

bool TLinearProgramMethod::Solve(const TFloatMatrix& A, const TIntegerVec& Senses,
                                 const TFloatVector& C, bool Maximise, bool Integer,
                                 TFloatVector& X, double& Objective) {
  constexpr bool kRevised = false;
  constexpr int kDefaultLimit = 0;
  TSimplexAndDualMethod Method(A, Senses, C, Maximise, Integer, kRevised, kDefaultLimit);
  const bool Solved = Method.Solve();
  X = Method.X();
  Objective = Method.Objective();
  return Solved;
}

bool TLinearProgramMethod::Solve(const TFloatMatrix& A, const TFloatVector& B,
                                 const TIntegerVec& Senses, const TFloatVector& C, bool Maximise,
                                 bool Integer, TFloatVector& X, double& Objective) {
  AssertThat(B.GetSize() == A.GetRowCnt(), kSimplexUnit);
  AssertThat(C.GetSize() == A.GetColCnt() || A.GetRowCnt() == 0, kSimplexUnit);
  TFloatMatrix Packed(A.GetRowCnt(), C.GetSize() + 1);
  for (int I = 0; I < A.GetRowCnt(); ++I) {
    Packed.Row(I)[0] = B[I];
    std::copy_n(A.Row(I), A.GetColCnt(), Packed.Row(I) + 1);
  }
  TFloatVector Costs(1);
  Costs.Expand(C);
  TFloatVector PackedX;
  double Found = 0.0;
  const bool Solved = Solve(Packed, Senses, Costs, Maximise, Integer, PackedX, Found);
  X = PackedX.ExceptItem(0);
  Objective = Found;
  return Solved;
}

}  // namespace tarnalgo
