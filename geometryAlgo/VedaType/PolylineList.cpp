#include <polyclipping/clipper.hpp>

#include "geometryAlgo/VedaType/Polyline.h"

namespace tarnalgo {

TPaths TVPolyline2DList::ToPaths(double Scale) const {
  TPaths Paths;
  Paths.reserve(static_cast<std::size_t>(Count()));
  for (const TVPolyline2D* Item : *this) Paths.push_back(Item->ToPath(Scale));
  return Paths;
}

double TVPolyline2DList::DistanceTo(const TPoint2D& P, TPoint2D& Nearest) const {
  Nearest = TPoint2D::FZero;
  double Least = kStartOfMinimum;
  for (const TVPolyline2D* Item : *this) {
    TPoint2D Foot;
    const double Dist = Item->DistTo(P, Foot);
    if (!(Dist < Least)) continue;
    Least = Dist;
    Nearest = Foot;
  }
  return Least;
}

double TVPolyline2DList::DistanceTo(const TPoint2D& P) const {
  TPoint2D Nearest;
  return DistanceTo(P, Nearest);
}

void TVPolyline2DList::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  std::string Text;
  for (const TVPolyline2D* Item : *this) Text += DebugDrawing(Item->Points(), Colour);
  WriteDebugFile("TVPolyline2DList.WriteToFile", FileName, Text);
}

}  // namespace tarnalgo
