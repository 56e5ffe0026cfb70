#pragma once  // bench/Inputs.h

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "geometryAlgo/VedaType/Polyline.h"

// Inputs that several programs measure on.

namespace tarnalgo::bench {

inline double Draw(std::mt19937& Random, double Low, double High) {
  return std::uniform_real_distribution<double>(Low, High)(Random);
}

/// An open ring of waves about a circle, as a sampled contour comes from a drawing.
inline TVPolyline2D Wave(int Count, double Phase = 0.0) {
  TVPolyline2D Ring;
  for (int I = 0; I < Count; ++I) {
    const double Angle = kFullTurn * I / Count;
    Ring.Add(TPoint2D(1000.0 + 50.0 * std::sin(Phase + 40.0 * Angle), 0.0).RotateBy(Angle));
  }
  return Ring;
}

/// The same, closed: the first point stands at the end again.
inline TVPolyline2D ClosedWave(int Count, double Phase = 0.0) {
  TVPolyline2D Ring = Wave(Count, Phase);
  Ring.Add(Ring.First());
  return Ring;
}

using TRing = std::vector<TPoint2D>;

/// The open outlines of a solved nest and, first, of its sheet, where the file is given by the
/// variable `TARNALGO_NEST`; else fifty rough parts on a sheet.
inline std::vector<TRing> Nest() {
  std::vector<TRing> Rings;
  if (const char* const Name = std::getenv("TARNALGO_NEST")) {
    std::ifstream File(Name);
    std::string Word;
    while (File >> Word) {
      int Number = 0;
      if (Word == "part") File >> Number;
      std::size_t Count = 0;
      File >> Count;
      TRing Ring(Count);
      for (TPoint2D& P : Ring) File >> P.X >> P.Y;
      Rings.push_back(std::move(Ring));
    }
  }
  if (!Rings.empty()) return Rings;
  Rings = {{{0, 0}, {16000, 0}, {16000, 20000}, {0, 20000}}};
  std::mt19937 Random(4);
  for (int Part = 0; Part < 50; ++Part) {
    const TPoint2D Centre(1000.0 + 2000.0 * (Part % 7), 1250.0 + 2500.0 * (Part / 7));
    TRing Ring;
    for (int I = 0; I < 75; ++I) {
      Ring.push_back(Centre + TPoint2D(Draw(Random, 900, 1000), 0).RotateBy(kFullTurn * I / 75.0));
    }
    Rings.push_back(std::move(Ring));
  }
  return Rings;
}

/// Nests side by side with about `Size` edges in all: neighbouring sheets share an edge.
inline std::vector<TRing> Sheet(int Size) {
  static const std::vector<TRing> Parts = Nest();
  std::size_t Edges = 0;
  for (const TRing& Ring : Parts) Edges += Ring.size();
  const int Columns = static_cast<int>(
      std::lround(std::ceil(std::sqrt(static_cast<double>(Size) / static_cast<double>(Edges)))));
  const TPoint2D Pitch = Parts[0][2] - Parts[0][0];
  std::vector<TRing> Result;
  std::size_t Count = 0;
  for (int Column = 0; Column < Columns; ++Column) {
    for (int Row = 0; Row < Columns && Count < static_cast<std::size_t>(Size); ++Row) {
      const TPoint2D Shift(Pitch.X * Column, Pitch.Y * Row);
      for (const TRing& Part : Parts) {
        TRing& Ring = Result.emplace_back();
        for (const TPoint2D& P : Part) Ring.push_back(P + Shift);
        Count += Part.size();
      }
    }
  }
  return Result;
}

}  // namespace tarnalgo::bench
