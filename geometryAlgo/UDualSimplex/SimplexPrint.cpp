#include <string>

#include "geometryAlgo/UDualSimplex/SimplexAndDualMethod.h"
#include "geometryAlgo/VedaType/DebugText.h"
#include "host/Zeblib.h"

namespace tarnalgo {

void TSimplexAndDualMethod::PrintFMA() const {
  for (int I = 0; I < FTable.RowCnt(); ++I) {
    std::string Line;
    for (int J = 0; J < FTable.ColCnt(); ++J) Line += DebugText(FTable.Item(I, J), ddShort) + " ";
    OutputDebugStr(Line);
  }
}

void TSimplexAndDualMethod::PrintIntVec(const TIntegerVec& Vec) {
  std::string Line;
  for (int I = 0; I < Vec.GetSize(); ++I) Line += std::to_string(Vec[I]) + " ";
  OutputDebugStr(Line);
}

void TSimplexAndDualMethod::PrintResult() const {
  std::string Line = DebugText(FObjective, ddShort) + ": ";
  for (int I = 0; I < FX.GetSize(); ++I) Line += DebugText(FX[I], ddShort) + " ";
  OutputDebugStr(Line);
}

}  // namespace tarnalgo
