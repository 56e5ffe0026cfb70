#pragma once  // tests/support/MatrixMarket.h

#include <filesystem>
#include <fstream>
#include <string>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"

namespace tarnalgo::test {

/// A real matrix in the Matrix Market form: array or coordinate, general or symmetric.
inline TFloatMatrix ReadMatrixMarket(const std::filesystem::path& Path) {
  std::ifstream File(Path);
  std::string Head;
  std::getline(File, Head);
  const bool IsArray = Head.find("array") != std::string::npos;
  const bool IsSymmetric = Head.find("symmetric") != std::string::npos;
  while (File.peek() == '%') std::getline(File, Head);
  int Rows = 0;
  int Columns = 0;
  int Entries = 0;
  File >> Rows >> Columns;
  TFloatMatrix Result(Rows, Columns);
  const auto Set = [&](int I, int J, double Value) {
    Result.SetItem(I, J, Value);
    if (IsSymmetric) Result.SetItem(J, I, Value);
  };
  double Value = 0.0;
  if (IsArray) {
    for (int J = 0; J < Columns; ++J) {
      for (int I = IsSymmetric ? J : 0; I < Rows && File >> Value; ++I) Set(I, J, Value);
    }
    return Result;
  }
  File >> Entries;
  int I = 0;
  int J = 0;
  while (File >> I >> J >> Value) Set(I - 1, J - 1, Value);
  return Result;
}

}  // namespace tarnalgo::test
