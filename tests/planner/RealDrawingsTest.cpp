#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "examples/sheet_planner/DxfReader.h"
#include "tests/planner/PlanChecks.h"

namespace sheet_planner {

namespace {

namespace fs = std::filesystem;

/// Drawings found in the field; they are no part of the project.
std::vector<fs::path> Drawings() {
  const char* const Variable = std::getenv("TARNALGO_DRAWINGS");
  const fs::path Folder = Variable ? Variable : SHEET_PLANNER_DRAWINGS;
  std::vector<fs::path> Found;
  std::error_code Error;
  for (const auto& Entry : fs::recursive_directory_iterator(Folder, Error)) {
    if (Entry.path().extension() == ".dxf") Found.push_back(Entry.path());
  }
  std::sort(Found.begin(), Found.end());
  return Found;
}

TEST(RealDrawings, ArePlannedSoundly) {
  const std::vector<fs::path> Files = Drawings();
  if (Files.empty()) GTEST_SKIP() << "no drawings in " << SHEET_PLANNER_DRAWINGS;
  for (const fs::path& File : Files) {
    SCOPED_TRACE(File.string());
    const TDrawing Drawing = ReadDxfFile(File.string(), 0.05);
    TPrepOptions Options;
    Options.LayersAsPorts = true;
    for (const double Snap : {0.01, 1e-6}) {
      SCOPED_TRACE(Snap);
      Options.Snap = Snap;
      test::ExpectSoundPlan(Drawing, Options);
    }
  }
}

}  // namespace

}  // namespace sheet_planner
