#include <algorithm>
#include <utility>

#include "geometryAlgo/VedaType/LABPolyline.h"

namespace tarnalgo {

namespace {

/// `Next` goes on with a line where the line `Seg` ends.
bool GoesOnStraight(const TLABSegline& Seg, const TLABSegline& Next) {
  return Seg.SegType == stLine && Next.SegType == stLine && Next.P1.Equals(Seg.P4);
}

/// Appends a run of lines with the vertices dropped that a straight way passes.
void AppendMerged(const TVPolyline2D& Run, double Eps, std::vector<TLABSegline>& Segs) {
  TVPolyline2D Course = Run;
  Course.CollinearSmooth(Eps);
  for (int I = 0; I + 1 < Course.Count(); ++I) Segs.emplace_back(Course.Line(I));
  if (Course.Count() == 1) Segs.emplace_back(Course.First(), Course.First());
}

/// A closed chain begins behind a vertex where two lines do not follow each other, so that no run
/// of lines goes over its joint; a chain of lines only stays, `CollinearSmooth` moves its joint.
void MoveJointBehindCurve(std::vector<TLABSegline>& Segs) {
  if (!GoesOnStraight(Segs.back(), Segs.front())) return;
  for (std::size_t I = 1; I < Segs.size(); ++I) {
    if (GoesOnStraight(Segs[I - 1], Segs[I])) continue;
    std::rotate(Segs.begin(), Segs.begin() + static_cast<std::ptrdiff_t>(I), Segs.end());
    return;
  }
}

/// The segments without those that are points. Steps too short to count add up: where a run of
/// them has led away from the last vertex kept, a line goes there.
std::vector<TLABSegline> WithoutPoints(const std::vector<TLABSegline>& Segs) {
  std::vector<TLABSegline> Kept;
  TPoint2D Vertex = Segs.front().P1;
  TPoint2D End = Vertex;
  for (const TLABSegline& Seg : Segs) {
    if (!Seg.P1.Equals(End)) Vertex = Seg.P1;  // behind a gap
    End = Seg.P4;
    if (Seg.IsPoint() && End.Equals(Vertex)) continue;
    Kept.push_back(Seg.IsPoint() ? TLABSegline(Vertex, End) : Seg);
    Vertex = End;
  }
  if (Kept.empty()) Kept.push_back(Segs.back());
  // The end stays where it was, so that no closed chain opens.
  TLABSegline Last = Kept.back();
  Last.P4 = End;
  if (Last.SegType != stArc && !Last.IsPoint()) Kept.back() = Last;
  return Kept;
}

bool IsClosedChain(const std::vector<TLABSegline>& Segs) {
  return Segs.front().P1.Equals(Segs.back().P4);
}

/// The course with one line for each straight way.
std::vector<TLABSegline> WithMergedLines(std::vector<TLABSegline> Course, double Eps) {
  if (Course.size() < 2) return Course;
  if (IsClosedChain(Course)) MoveJointBehindCurve(Course);
  std::vector<TLABSegline> Merged;
  Merged.reserve(Course.size());
  for (std::size_t I = 0; I < Course.size();) {
    std::size_t Last = I;
    while (Last + 1 < Course.size() && GoesOnStraight(Course[Last], Course[Last + 1])) ++Last;
    if (Last == I) {
      Merged.push_back(Course[I]);
    } else {
      TVPolyline2D Run{Course[I].P1};
      for (std::size_t J = I; J <= Last; ++J) Run.Add(Course[J].P4);
      AppendMerged(Run, Eps, Merged);
    }
    I = Last + 1;
  }
  return Merged;
}

/// The Bezier stays within 1e-6 of its chord, without running beyond its ends.
bool RunsAlongChord(const TLABSegline& Seg) {
  if (Seg.SegType != stBezier || !Seg.IsLine()) return false;
  const TVLine2D Chord(Seg.P1, Seg.P4);
  return Chord.IsPointNearBySegment(Seg.P2) && Chord.IsPointNearBySegment(Seg.P3);
}

}  // namespace

template <class TMap>
void TLABPolyline::MapEach(TMap Map) {
  for (TLABSegline& Seg : FSegs) Seg = Map(Seg);
  ClearSamplePolyline();
}

void TLABPolyline::RoundTo(int Accuracy) {
  MapEach([&](const TLABSegline& Seg) { return Seg.RoundTo(Accuracy); });
}

void TLABPolyline::Translate(const TPoint2D& Vector) {
  MapEach([&](const TLABSegline& Seg) { return Seg.Translate(Vector); });
}

void TLABPolyline::Rotate(double Angle) {
  MapEach([&](const TLABSegline& Seg) { return Seg.Rotate(Angle); });
}

void TLABPolyline::Rotate(double Angle, const TPoint2D& Centre) {
  MapEach([&](const TLABSegline& Seg) { return Seg.Rotate(Angle, Centre); });
}

void TLABPolyline::RotateBy90() {
  MapEach([](const TLABSegline& Seg) { return Seg.RotateBy90(); });
}

void TLABPolyline::RotateBy_90() {
  MapEach([](const TLABSegline& Seg) { return Seg.RotateBy_90(); });
}

void TLABPolyline::YMirror() {
  MapEach([](const TLABSegline& Seg) { return Seg.YMirror(); });
}

void TLABPolyline::Transform(const TMatrix2D& Matrix) {
  MapEach([&](const TLABSegline& Seg) { return Seg.Transform(Matrix); });
}

void TLABPolyline::Reverse() {
  std::reverse(FSegs.begin(), FSegs.end());
  MapEach([](const TLABSegline& Seg) { return Seg.Reverse(); });
}

void TLABPolyline::ConnectHeadTail(double Eps) {
  if (!FSegs.empty() && !IsClosed(Eps)) Add({FSegs.back().P4, FSegs.front().P1});
}

void TLABPolyline::MergeCollinearLines(double Eps) {
  if (Count() < 2) return;
  FSegs = WithMergedLines(FSegs, Eps);
  ClearSamplePolyline();
}

void TLABPolyline::CollinearSmooth(double Eps) {
  if (IsEmpty()) return;
  std::vector<TLABSegline> Course = WithoutPoints(FSegs);
  for (TLABSegline& Seg : Course) {
    if (RunsAlongChord(Seg)) Seg.TryToLine();
  }
  FSegs = WithMergedLines(std::move(Course), Eps);
  ClearSamplePolyline();
}

}  // namespace tarnalgo
