#include "host/Cadtypes/Matrix.h"

#include <cmath>

namespace tarnalgo {

void TMatrix2D::Translate(double ADX, double ADY) {
  DX += ADX;
  DY += ADY;
}

void TMatrix2D::Rotate(double A) {
  const double Cos = std::cos(A);
  const double Sin = std::sin(A);
  Append({Cos, -Sin, Sin, Cos, 0.0, 0.0});
}

void TMatrix2D::Rotate(double A, const TPoint2D& Centre) {
  Translate(-Centre.X, -Centre.Y);
  Rotate(A);
  Translate(Centre.X, Centre.Y);
}

void TMatrix2D::Scale(double KX, double KY) {
  Append({KX, 0.0, 0.0, KY, 0.0, 0.0});
}

void TMatrix2D::Append(const TMatrix2D& Next) {
  const TPoint2D Column1 = Next.TransformVector({M11, M21});
  const TPoint2D Column2 = Next.TransformVector({M12, M22});
  const TPoint2D Offset = Next.Transform({DX, DY});
  *this = {Column1.X, Column2.X, Column1.Y, Column2.Y, Offset.X, Offset.Y};
}

}  // namespace tarnalgo
