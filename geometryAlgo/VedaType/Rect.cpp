#include "geometryAlgo/VedaType/Rect.h"

#include <algorithm>

#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// `Inner` lies in `Outer`, each side with slack.
bool Covers(const TVRect2D& Outer, const TVRect2D& Inner, double Eps) {
  return TMathUtils::FloatLessEquals(Outer.Left, Inner.Left, Eps) &&
         TMathUtils::FloatGreaterEquals(Outer.Right, Inner.Right, Eps) &&
         TMathUtils::FloatLessEquals(Outer.Bottom, Inner.Bottom, Eps) &&
         TMathUtils::FloatGreaterEquals(Outer.Top, Inner.Top, Eps);
}

/// A box of that size fits into `Outer`.
bool FitsSize(const TVRect2D& Outer, double Width, double Height, double Eps) {
  return Outer.IsValid() && TMathUtils::FloatLessEquals(Width, Outer.Width(), Eps) &&
         TMathUtils::FloatLessEquals(Height, Outer.Height(), Eps);
}

}  // namespace

double TVRect2D::GetCoor(int Index) const {
  switch (Index) {
    case 0:
      return Left;
    case 1:
      return Right;
    case 2:
      return Top;
    case 3:
      return Bottom;
    default:
      RaiseError("TVRect2D.GetCoor", "参数错误");
  }
}

void TVRect2D::SetTopLeft(const TPoint2D& P) {
  Left = P.X;
  Top = P.Y;
}

void TVRect2D::SetBottomRight(const TPoint2D& P) {
  Right = P.X;
  Bottom = P.Y;
}

double TVRect2D::HypotLength() const {
  return IsValid() ? TPoint2D(Width(), Height()).Mag() : 0.0;
}

double TVRect2D::Ratio() const {
  return IsValid() && Height() > 0.0 ? Width() / Height() : 0.0;
}

TVRect2D TVRect2D::Rotate(double A) const {
  return Rotate(A, TPoint2D::FZero);
}

TVRect2D TVRect2D::Rotate(double A, const TPoint2D& Centre) const {
  if (!IsValid()) return *this;
  TVRect2D Result;
  for (const TPoint2D& Corner : {GetTopLeft(), GetTopRight(), GetBottomLeft(), GetBottomRight()}) {
    Result.ExpandInPlace(Centre + (Corner - Centre).RotateBy(A));
  }
  return Result;
}

TVRect2D TVRect2D::Translate(const TPoint2D& V) const {
  return Offset(V.X, V.Y);
}

TVRect2D TVRect2D::Offset(double DX, double DY) const {
  if (!IsValid()) return *this;  // a huge step would round both sides to the same place
  return {Left + DX, Right + DX, Top + DY, Bottom + DY};
}

TVRect2D TVRect2D::Zoom(double K) const {
  return Zoom(K, TPoint2D::FZero);
}

TVRect2D TVRect2D::Zoom(double K, const TPoint2D& Centre) const {
  if (!IsValid()) return *this;  // a negative factor would turn it right side out
  return {Centre + (GetBottomLeft() - Centre) * K, Centre + (GetTopRight() - Centre) * K};
}

bool TVRect2D::IsPointIn(const TPoint2D& P, double Eps) const {
  return IsValid() && TMathUtils::IsInFloatRange(P.X, Left, Right, true, true, Eps) &&
         TMathUtils::IsInFloatRange(P.Y, Bottom, Top, true, true, Eps);
}

TShapeRelation TVRect2D::RelationWith(const TPoint2D& P, double Eps) const {
  if (!IsPointIn(P, Eps)) return srOut;
  const bool Inside = TMathUtils::IsInFloatRange(P.X, Left, Right, false, false, Eps) &&
                      TMathUtils::IsInFloatRange(P.Y, Bottom, Top, false, false, Eps);
  return Inside ? srIn : srOn;
}

TShapeRelation TVRect2D::RelationWith(const TVRect2D& R, double Eps) const {
  if (!IsValid() || !R.IsValid()) return srDeviate;
  if (SameAs(R, Eps)) return srEqual;
  if (Covers(*this, R, Eps)) return srContained;
  if (Covers(R, *this, Eps)) return srContain;
  // Of the four ways in which one box can lie beyond a side of the other, the one that comes
  // farthest: 1 past it, 0 at it, −1 short of it.
  const int Beyond = std::max(
      {TMathUtils::CompareFloat(R.Left, Right, Eps), TMathUtils::CompareFloat(Left, R.Right, Eps),
       TMathUtils::CompareFloat(R.Bottom, Top, Eps), TMathUtils::CompareFloat(Bottom, R.Top, Eps)});
  if (Beyond > 0) return srDeviate;
  return Beyond == 0 ? srOn : srCross;
}

TShapeRelation TVRect2D::RelationWithRectangle(const TVRect2D& R, double Eps) const {
  return RelationWith(R, Eps);
}

bool TVRect2D::Holds(const TVRect2D& R, double Eps) const {
  return !R.IsValid() || FitsSize(*this, R.Width(), R.Height(), Eps);
}

bool TVRect2D::Holds90(const TVRect2D& R, double Eps) const {
  return !R.IsValid() || FitsSize(*this, R.Height(), R.Width(), Eps);
}

bool TVRect2D::SameAs(const TVRect2D& R, double Eps) const {
  if (!IsValid() || !R.IsValid()) return IsValid() == R.IsValid();
  return TMathUtils::FloatEquals(Left, R.Left, Eps) &&
         TMathUtils::FloatEquals(Right, R.Right, Eps) && TMathUtils::FloatEquals(Top, R.Top, Eps) &&
         TMathUtils::FloatEquals(Bottom, R.Bottom, Eps);
}

bool TVRect2D::SizeEquals(const TVRect2D& R, double Eps) const {
  if (!IsValid() || !R.IsValid()) return IsValid() == R.IsValid();
  return TMathUtils::FloatEquals(Width(), R.Width(), Eps) &&
         TMathUtils::FloatEquals(Height(), R.Height(), Eps);
}

}  // namespace tarnalgo
