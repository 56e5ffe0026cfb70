#include "geometryAlgo/VedaType/Polyline.h"

#include <polyclipping/clipper.hpp>

namespace tarnalgo {

TVPolyline2D::TVPolyline2D(const TVRect2D& Rect)
    : TVPoint2DList{Rect.GetTopRight(), Rect.GetTopLeft(), Rect.GetBottomLeft(),
                    Rect.GetBottomRight(), Rect.GetTopRight()} {}

TVPolyline2D::TVPolyline2D(const TPath& Path, double Scale) {
  FPoints.reserve(Path.size());
  for (const TIntPoint& P : Path) {
    FPoints.emplace_back(static_cast<double>(P.X) / Scale, static_cast<double>(P.Y) / Scale);
  }
}

TPath TVPolyline2D::ToPath(double Scale) const {
  TPath Path(FPoints.size());
  ScaleIntPoints(FPoints.data(), FPoints.size(), Scale, Path.data());
  return Path;
}

std::string TVPolyline2D::ToString() const {
  std::string Text;
  for (const TPoint2D& P : FPoints) Text.append(DebugText(P)).append(", ");
  return Text;
}

void TVPolyline2D::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  WriteDebugFile("TVPolyline2D.WriteToFile", FileName, DebugDrawing(FPoints, Colour));
}

TVLine2D TVPolyline2D::Line(int I) const {
  if (I < 0 || I >= Count() - 1) RaiseError("TVPolyline2D.Line", "下标越界");
  const auto Start = FPoints.begin() + I;
  return TVLine2D(Start[0], Start[1]);
}

bool TVPolyline2D::IsClosed(double Eps) const {
  return !FPoints.empty() && FPoints.front().Equals(FPoints.back(), Eps);
}

void TVPolyline2D::SetIsClockwise(bool Clockwise) {
  if (!FPoints.empty() && Clockwise != IsClockwise()) Negative();
}

}  // namespace tarnalgo
