#pragma once  // fuzz/DxfMaker.h

#include <algorithm>
#include <string>

#include "examples/sheet_planner/Drawing.h"
#include "fuzz/Bytes.h"

namespace tarnalgo::fuzz {

/// Writes a DXF text; counts the entities that must be read from model space, blocks left out.
class TDxfMaker {
 public:
  explicit TDxfMaker(TBytes& Bytes) : FBytes(Bytes) {}

  std::string Run() {
    Group(0, "SECTION");
    Group(2, "BLOCKS");
    for (int Block = 0; Block < 2; ++Block) {
      Group(0, "BLOCK");
      Group(2, "B" + std::to_string(Block));
      Place(10);
      Entities(4);
      Group(0, "ENDBLK");
    }
    Group(0, "ENDSEC");
    Group(0, "SECTION");
    Group(2, "ENTITIES");
    FCounts = true;
    Entities(24);
    Group(0, "ENDSEC");
    Group(0, "EOF");
    return FText;
  }
  const sheet_planner::TCensus& Written() const { return FWritten; }

 private:
  void Group(int Code, const std::string& Value) {
    FText += std::to_string(Code) + (FBytes.Below(16) == 0 ? "\r\n" : "\n") + Value + "\n";
  }
  void Number(int Code, double Value) { Group(Code, std::to_string(Value)); }
  void Place(int Code) {
    Number(Code, FBytes.Coordinate());
    Number(Code + 10, FBytes.Coordinate());
  }
  void Begin(const char* Kind) {
    Group(0, Kind);
    Group(8, "L" + std::to_string(FBytes.Below(3)));
  }
  void Count(const char* Kind) {
    if (FCounts) ++FWritten[Kind];
  }

  void Entities(int Most) {
    for (int Left = FBytes.Below(Most); Left > 0; --Left) Entity();
  }
  void Entity() {
    switch (FBytes.Below(8)) {
      case 0:
        Begin("ARC");
        Place(10);
        Number(40, 0.5 * (1 + FBytes.Below(20)));
        Number(50, 15.0 * FBytes.Below(50));
        Number(51, 15.0 * FBytes.Below(50));
        return Count("ARC");
      case 1:
        Begin("CIRCLE");
        Place(10);
        Number(40, 0.5 * (1 + FBytes.Below(20)));
        return Count("CIRCLE");
      case 2:
        return Polyline();
      case 3:
        return Spline();
      case 4:
        Begin("ELLIPSE");
        Place(10);
        Place(11);
        Number(40, FBytes.Below(20) / 10.0);
        Number(41, FBytes.Below(8));
        return Number(42, FBytes.Below(8));
      case 5:
        Begin("INSERT");
        Group(2, "B" + std::to_string(FBytes.Below(3)));
        Place(10);
        Number(41, FBytes.Around(2));
        Number(42, FBytes.Around(2));
        Number(50, 15.0 * FBytes.Below(24));
        Group(70, std::to_string(FBytes.Below(4)));
        Number(44, FBytes.Below(16));
        return;
      default:
        Begin("LINE");
        Place(10);
        Place(11);
        return Count("LINE");
    }
  }
  void Polyline() {
    Begin("LWPOLYLINE");
    Group(90, std::to_string(FBytes.Byte()));  // a count that nobody may believe
    Group(70, std::to_string(FBytes.Below(2)));
    for (int Left = FBytes.Below(6); Left > 0; --Left) {
      Place(10);
      if (FBytes.Below(4) == 0) Number(42, FBytes.Around(8) / 4.0);
    }
  }
  void Spline() {
    Begin("SPLINE");
    const int Degree = 1 + FBytes.Below(4);
    const int Controls = Degree + 1 + FBytes.Below(4);
    Group(71, std::to_string(Degree));
    for (int I = 0; I <= Controls + Degree; ++I) {
      Number(40, std::clamp(I - Degree, 0, Controls - Degree));
    }
    for (int I = 0; I < Controls; ++I) Place(10);
  }

  TBytes& FBytes;
  std::string FText;
  sheet_planner::TCensus FWritten;
  bool FCounts = false;
};

}  // namespace tarnalgo::fuzz
