#include "geometryAlgo/UPolygonGetter/CompareTool.h"

#include <polyclipping/clipper.hpp>

#include "host/Cadutils.h"

namespace tarnalgo {

int TCompareTool::CompareByYX(const TIntPoint& A, const TIntPoint& B) {
  if (const int Sign = CompareExact(A.Y, B.Y)) return Sign;
  return CompareExact(B.X, A.X);  // swapped: the greater X first
}

int TCompareTool::CompareByValue(int A, int B) {
  return CompareExact(A, B);
}

int TCompareTool::CompareByParam(const TCutNode& A, const TCutNode& B) {
  return CompareExact(A.Param, B.Param);
}

int TCompareTool::CompareByAngleMin(const TMChainExtend& A, const TMChainExtend& B) {
  return CompareExact(A.AngleToXAxis(), B.AngleToXAxis());
}

int TCompareTool::CompareByAngleMax(const TMChainExtend& A, const TMChainExtend& B) {
  return CompareByAngleMin(B, A);
}

int TCompareTool::CompareByPolygonArea(const TPartPolygon& A, const TPartPolygon& B) {
  return CompareExact(A.Area(), B.Area());
}

}  // namespace tarnalgo
