#include "geometryAlgo/UDualSimplex/InequalityData.h"

#include <cstddef>

#include "host/Exceptions.h"

namespace tarnalgo {

const TInequalityData& TInequalityDataList::operator[](int Index) const {
  if (Index < 0 || Index >= Count()) {
    RaiseError<EParamError>("TInequalityDataList", "index out of range");
  }
  return FItems[static_cast<std::size_t>(Index)];
}

void TInequalityDataList::AddDatato(TFloatMatrix& A, TIntegerVec& Senses) const {
  for (const TInequalityData& Bound : FItems) {
    if (Bound.Variable < 1 || Bound.Variable >= A.GetColCnt()) {
      RaiseError<EParamError>("TInequalityDataList.AddDatato", "there is no such variable");
    }
  }
  int Row = A.GetRowCnt();
  int Place = Senses.GetSize();
  TFloatMatrix Longer = A;
  Longer.SetRowCnt(Row + Count());
  Senses.SetSize(Place + Count());
  A = Longer;
  for (const TInequalityData& Bound : FItems) {
    A.SetItem(Row, 0, Bound.Value);
    A.SetItem(Row++, Bound.Variable, 1.0);
    Senses.SetItem(Place++, Bound.Sense);
  }
}

}  // namespace tarnalgo
