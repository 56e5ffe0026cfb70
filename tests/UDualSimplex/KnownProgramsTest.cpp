#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "geometryAlgo/UDualSimplex.h"
#include "tests/support/DataFolder.h"
#include "tests/support/Programs.h"

namespace tarnalgo {
namespace {

namespace fs = std::filesystem;

struct TKnownProgram : test::TProgram {
  TIntegerVec IntegerColumns;
};

/// "min|max variables rows constant", then lines "cost J value", "int J" and
/// "row sense right-hand-side J value J value ...", J from 0.
TKnownProgram Read(const fs::path& File) {
  std::ifstream Stream(File);
  std::string Word;
  int Variables = 0;
  int Rows = 0;
  double Constant = 0.0;
  TKnownProgram Program;
  Stream >> Word >> Variables >> Rows >> Constant;
  Program.Maximise = Word == "max";
  Program.A = TFloatMatrix(Rows, Variables + 1);
  Program.Senses = TIntegerVec(Rows);
  Program.C = TFloatVector(Variables + 1);
  Program.C.SetItem(0, Constant);
  Program.IntegerColumns = TIntegerVec(Variables + 1);
  int Row = 0;
  int J = 0;
  double Number = 0.0;
  for (std::string Text; std::getline(Stream, Text);) {
    std::istringstream Line(Text);
    Line >> Word;
    if (Text.empty()) continue;
    if (Word == "cost" && Line >> J >> Number) Program.C.SetItem(J + 1, Number);
    if (Word == "int" && Line >> J) Program.IntegerColumns.SetItem(J + 1, 1);
    if (Word != "row") continue;
    int Sense = 0;
    Line >> Sense >> Number;
    Program.Senses.SetItem(Row, Sense);
    Program.A.SetItem(Row, 0, Number);
    while (Line >> J >> Number) Program.A.SetItem(Row, J + 1, Number);
    ++Row;
  }
  return Program;
}

struct TKnownOptimum {
  const char* Name;
  double Relaxed;
  double Whole;  // 0 = not searched here
};

class KnownPrograms : public testing::TestWithParam<TKnownOptimum> {};

TEST_P(KnownPrograms, AreSolvedToTheirPublishedOptima) {
  const TKnownOptimum& Known = GetParam();
  const fs::path File = test::DataFolder((std::string(Known.Name) + ".plain.txt").c_str());
  if (!fs::exists(File)) GTEST_SKIP() << "no program " << File;
  const TKnownProgram Program = Read(File);
  TSimplexAndDualMethod Method(Program.A, Program.Senses, Program.C, Program.Maximise, true, false,
                               0);
  ASSERT_TRUE(Method.Solve(Program.A, Program.Senses, Program.C, Program.Maximise));
  EXPECT_NEAR(1.0, (Method.Objective() + 1.0) / (Known.Relaxed + 1.0), 1e-6);
  EXPECT_TRUE(Program.Holds(Method.X(), 1e-6));
  if (Known.Whole == 0.0) return;
  Method.SetIntegerColumns(Program.IntegerColumns);
  ASSERT_TRUE(Method.Solve());
  EXPECT_NEAR(1.0, Method.Objective() / Known.Whole, 1e-6);
  EXPECT_TRUE(Program.Holds(Method.X(), 2e-6));
}

INSTANTIATE_TEST_SUITE_P(
    Published, KnownPrograms,
    testing::Values(
        TKnownOptimum{"lp/adlittle", 2.2549496316e5, 0},
        TKnownOptimum{"lp/afiro", -4.6475314286e2, 0},
        TKnownOptimum{"lp/blend", -3.0812149846e1, 0}, TKnownOptimum{"lp/kb2", -1.7499001299e3, 0},
        TKnownOptimum{"lp/recipe", -2.66616e2, 0}, TKnownOptimum{"lp/sc50a", -6.4575077059e1, 0},
        TKnownOptimum{"lp/sc50b", -70, 0}, TKnownOptimum{"lp/share2b", -4.1573224074e2, 0},
        TKnownOptimum{"lp/stocfor1", -4.1131976219e4, 0}, TKnownOptimum{"ip/bell5", 8608417.95, 0},
        TKnownOptimum{"ip/egout", 149.588766, 0}, TKnownOptimum{"ip/enigma", 0, 0},
        TKnownOptimum{"ip/flugpl", 1167185.73, 1201500}, TKnownOptimum{"ip/lseu", 834.682353, 0},
        TKnownOptimum{"ip/p0033", 2520.57174, 3089}, TKnownOptimum{"ip/stein27", 13, 0}),
    [](const auto& Info) {
      std::string Name = Info.param.Name;
      Name[2] = '_';
      return Name;
    });

}  // namespace
}  // namespace tarnalgo
