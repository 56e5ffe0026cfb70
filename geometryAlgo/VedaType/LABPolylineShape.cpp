#include <algorithm>
#include <array>
#include <cmath>

#include "geometryAlgo/VedaType/LABPolyline.h"
#include "geometryAlgo/VedaType/RingIndex.h"
#include "host/Cadgeometry/Sampling.h"
#include "host/Cadutils.h"

namespace tarnalgo {

namespace {

/// θ − sin θ without the cancellation of small angles.
double AngleLessSine(double Angle) {
  if (std::abs(Angle) > 0.5) return Angle - std::sin(Angle);
  const double Square = Angle * Angle;
  double Series = 1.0;
  for (int N = 17; N >= 5; N -= 2) Series = 1.0 - Series * Square / ((N - 1.0) * N);
  return Angle * Square / 6.0 * Series;
}

/// Area of a ring and first moment of its region, both signed, summed piece by piece (Green): of
/// each piece what it sweeps seen from the origin.
class TRegionSum {
 public:
  explicit TRegionSum(const TPoint2D& Origin) : FOrigin(Origin), FLast(Origin) {}

  void AddLine(const TPoint2D& End) {
    const TPoint2D From = FLast - FOrigin;
    const TPoint2D To = End - FOrigin;
    const double Cross = From.CrossMul(To);
    FArea += Cross / 2;
    FMoment = FMoment + (From + To) * (Cross / 6);
    FPerimeter += FLast.DistanceTo(End);
    FLast = End;
  }

  void Add(const TLABSegline& Seg) {
    AddLine(Seg.P1);
    if (Seg.SegType == stArc) {
      AddArc(Seg.ToArc());
    } else if (Seg.SegType == stBezier) {
      AddBezier(Seg.ToBezierSegment());
    } else {
      AddLine(Seg.P4);
    }
  }

  double Area() const { return FArea; }
  /// Thinner than the tolerance all along.
  bool IsThin() const { return !(std::abs(FArea) > kLinearTolerance * FPerimeter / 2); }
  TPoint2D Gravity() const { return FOrigin + FMoment / FArea; }

 private:
  /// The chord, and the segment of the circle between chord and arc.
  void AddArc(const TVArc2D& Arc) {
    const double Sweep = Arc.AngleRange();
    const double Radius = Arc.Radius();
    const bool EndIsOnCircle = TMathUtils::FloatEquals(Arc.Center.DistanceTo(Arc.EndPoint), Radius);
    AddLine(EndIsOnCircle ? Arc.EndPoint : Arc.CalcPointByParam(1.0));
    const double Segment = Radius * Radius * AngleLessSine(Sweep) / 2;
    const double HalfSine = Radius * std::sin(Sweep / 2);
    const TPoint2D Middle = Arc.CalcPointByParam(0.5) - Arc.Center;
    FArea += Segment;
    FMoment = FMoment + (Arc.Center - FOrigin) * Segment +
              Middle.Normal() * (HalfSine * HalfSine * HalfSine * 2.0 / 3.0);
    FPerimeter += std::abs(Sweep) * Radius;
  }

  /// Both integrands are polynomials, of degree 5 and 8: five Gauss nodes are exact.
  void AddBezier(const TBezierSegment2D& Curve) {
    constexpr std::array<double, 5> kNodes = {-0.9061798459386640, -0.5384693101056831, 0.0,
                                              0.5384693101056831, 0.9061798459386640};
    constexpr std::array<double, 5> kWeights = {0.2369268850561891, 0.4786286704993665,
                                                0.5688888888888889, 0.4786286704993665,
                                                0.2369268850561891};
    for (std::size_t I = 0; I < kNodes.size(); ++I) {
      const double T = 0.5 + kNodes[I] / 2;
      const TPoint2D P = Curve.EvalPoint(T) - FOrigin;
      const TPoint2D Derivative = Curve.Derivative(T);
      const double Cross = P.CrossMul(Derivative) * kWeights[I] / 2;
      FArea += Cross / 2;
      FMoment = FMoment + P * (Cross / 3);
      FPerimeter += Derivative.Mag() * kWeights[I] / 2;
    }
    FLast = Curve.P3;
  }

  TPoint2D FOrigin;
  TPoint2D FLast;
  double FArea = 0.0;
  TPoint2D FMoment;
  double FPerimeter = 0.0;
};

TRegionSum SumOf(const std::vector<TLABSegline>& Segs) {
  TRegionSum Sum(Segs.front().P1);
  for (const TLABSegline& Seg : Segs) Sum.Add(Seg);
  Sum.AddLine(Segs.front().P1);
  return Sum;
}

TVPolyline2D SampleOf(const TLABSegline& Seg, double ChordError) {
  if (Seg.SegType != stBezier || Seg.IsLine()) return Seg.Sample(ChordError);
  return Seg.Sample(1.0 / BezierChordCount(Seg.ToBezierSegment(), ChordError));
}

std::string TextOf(const TLABSegline& Seg) {
  const auto Text = [](const TPoint2D& P) { return " " + DebugText(P, ddExact); };
  switch (Seg.SegType) {
    case stLine:
      return "line" + Text(Seg.P1) + Text(Seg.P4);
    case stArc:
      return "arc" + Text(Seg.P1) + Text(Seg.P4) + " centre" + Text(Seg.P2) + " bulge " +
             DebugText(Seg.Bulge, ddExact);
    case stBezier:
      return "bezier" + Text(Seg.P1) + Text(Seg.P2) + Text(Seg.P3) + Text(Seg.P4);
  }
  return {};
}

}  // namespace

TVPolyline2D TLABPolyline::Sample(double ChordError) const {
  return SampleWithoutClone(ChordError);
}

const TVPolyline2D& TLABPolyline::SampleWithoutClone(double ChordError) const {
  if (FSample && FSampleError == ChordError) return *FSample;  // exact: the same request
  std::vector<TPoint2D> Points;
  for (const TLABSegline& Seg : FSegs) {
    const TVPolyline2D Part = SampleOf(Seg, ChordError);
    const bool GoesOn = !Points.empty() && Points.back().Equals(Part.First());
    Points.insert(Points.end(), Part.begin() + (GoesOn ? 1 : 0), Part.end());
  }
  FSample = std::make_shared<const TVPolyline2D>(std::move(Points));
  FSampleError = ChordError;
  return *FSample;
}

double TLABPolyline::Area() const {
  return FSegs.empty() ? 0.0 : SumOf(FSegs).Area();
}

TPoint2D TLABPolyline::Gravity() const {
  if (FSegs.empty()) return TPoint2D::FZero;
  const TRegionSum Sum = SumOf(FSegs);
  return Sum.IsThin() ? Sample().Gravity() : Sum.Gravity();
}

TVRect2D TLABPolyline::BoundBox() const {
  TVRect2D Box;
  for (const TLABSegline& Seg : FSegs) Box.ExpandInPlace(Seg.BoundBox());
  return Box;
}

std::vector<TVLine2D> TLABPolyline::GetLines() const {
  std::vector<TVLine2D> Lines;
  for (const TLABSegline& Seg : FSegs) {
    if (Seg.IsLine()) Lines.push_back(Seg.ToLine());
  }
  return Lines;
}

TShapeRelation TLABPolyline::RelationWithPoint(const TPoint2D& P, double Eps) const {
  if (!FIndex) FIndex = std::make_shared<const TRingIndex>(FSegs);
  return FIndex->RelationWithPoint(P, Eps);
}

std::unique_ptr<TGeCompositeCurve2D> TLABPolyline::ToGeCurve2D() const {
  auto Curve = std::make_unique<TGeCompositeCurve2D>();
  for (const TLABSegline& Seg : FSegs) Curve->AddCurve(Seg.ToGeCurve2D());
  return Curve;
}

void TLABPolyline::WriteToFile(const std::string& FileName, std::string_view Colour) const {
  WriteDebugFile("TLABPolyline.WriteToFile", FileName, ToString(Colour));
}

std::string TLABPolyline::ToString(std::string_view Colour) const {
  std::string Text(Colour);
  Text += '\n';
  for (const TLABSegline& Seg : FSegs) Text.append(TextOf(Seg)).append("\n");
  return Text;
}

}  // namespace tarnalgo
