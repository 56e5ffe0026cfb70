#include "geometryAlgo/GeometryExtend/PathUtils.h"
#include "geometryAlgo/GeometryExtend/RoundedPoint.h"
#include "geometryAlgo/GeometryExtend/WideInteger.h"
#include "host/Cadutils.h"

namespace tarnalgo {

int TPathUtils::TParamComparer::operator()(const TTempRec& A, const TTempRec& B) const {
  return CompareExact(A.Param, B.Param);
}

TIntPoint TPathUtils::CreateIntPoint(std::int64_t X, std::int64_t Y) {
  return TIntPoint(X, Y);
}

TIntPoint TPathUtils::CreateIntPoint(const TPoint2D& P, double Scale) {
  return ScaledIntPoint(P, Scale);
}

TPoint2D TPathUtils::CreatePoint2D(const TIntPoint& P, double Scale) {
  return {static_cast<double>(P.X) / Scale, static_cast<double>(P.Y) / Scale};
}

TPointL2D TPathUtils::CreatePointL2D(const TIntPoint& P) {
  return {P.X, P.Y};
}

bool TPathUtils::Equal(const TIntPoint& A, const TIntPoint& B) {
  return A == B;
}

TIntPoint TPathUtils::Sub(const TIntPoint& A, const TIntPoint& B) {
  return A - B;
}

double TPathUtils::PointMul(const TIntPoint& A, const TIntPoint& B) {
  return static_cast<double>(Dot(A, B));
}

TIntPoint TPathUtils::PointMul(const TIntPoint& V, double K) {
  return RoundedPoint(static_cast<long double>(V.X) * K, static_cast<long double>(V.Y) * K);
}

TIntPoint TPathUtils::Divide(const TIntPoint& V, double K) {
  return RoundedPoint(static_cast<long double>(V.X) / K, static_cast<long double>(V.Y) / K);
}

TIntPoint TPathUtils::Negative(const TIntPoint& V) {
  return TIntPoint() - V;
}

TIntPoint TPathUtils::Rotate(const TIntPoint& V, double A) {
  const long double Cos = std::cos(static_cast<long double>(A));
  const long double Sin = std::sin(static_cast<long double>(A));
  const auto X = static_cast<long double>(V.X);
  const auto Y = static_cast<long double>(V.Y);
  return RoundedPoint(X * Cos - Y * Sin, X * Sin + Y * Cos);
}

TIntPoint TPathUtils::Strech(const TIntPoint& V, double Length) {
  const auto X = static_cast<long double>(V.X);
  const auto Y = static_cast<long double>(V.Y);
  const long double Own = std::sqrt(X * X + Y * Y);
  if (Own == 0.0L) return V;
  return RoundedPoint(X / Own * Length, Y / Own * Length);
}

bool TPathUtils::SameVector(const TIntPoint& A, const TIntPoint& B) {
  const TIntPoint Zero;
  if (A == Zero || B == Zero) return A == B;
  return Cross(A, B) == 0 && Dot(A, B) > 0;
}

double TPathUtils::Angle(const TIntPoint& A, const TIntPoint& B) {
  return CreatePoint2D(B, kIntegerScale).AngleFrom(CreatePoint2D(A, kIntegerScale));
}

bool TPathUtils::PointInRect(const TIntPoint& P, const TIntRect& Rect) {
  return P.X >= Rect.Left && P.X <= Rect.Right && P.Y >= Rect.Bottom && P.Y <= Rect.Top;
}

}  // namespace tarnalgo
