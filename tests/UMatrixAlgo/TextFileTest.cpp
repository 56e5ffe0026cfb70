#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "geometryAlgo/UMatrixAlgo.h"
#include "host/Exceptions.h"
#include "tests/support/Matrices.h"
#include "tests/support/Raises.h"
#include "tests/support/TempFile.h"

namespace tarnalgo {
namespace {

using test::MatrixOf;
using test::TTempFile;

TEST(MatrixFile, HasTheStatedBytes) {
  const TTempFile File;
  MatrixOf({{1, -0.1, 1e100}, {0, -0.0, 5e-324}}).SaveToFile(File.Path());
  EXPECT_EQ(
      "2 3\r\n"
      "1.0000000000000000E+00 -1.0000000000000001E-01 1.0000000000000000E+100 \r\n"
      "0.0000000000000000E+00 -0.0000000000000000E+00 4.9406564584124654E-324 \r\n",
      File.Read());
  TFloatMatrix().SaveToFile(File.Path());
  EXPECT_EQ("0 0\r\n", File.Read());
  test::ExpectRaises<EInOutError>(
      [&] { TFloatMatrix(1).SaveToFile(File.Path() + "/none"); },
      "[Error] TFloatMatrix.SaveToFile: 无法写入文件 " + File.Path() + "/none");
}

TEST(MatrixFile, ReadsBackTheSameBits) {
  std::mt19937_64 Random(3);
  TFloatMatrix A(40, 50);
  for (int I = 0; I < 40; ++I) {
    for (int J = 0; J < 50; ++J) {
      double Item = std::bit_cast<double>(Random());
      if (!std::isfinite(Item)) Item = std::numeric_limits<double>::max();
      A.SetItem(I, J, Item);
    }
  }
  const TTempFile File;
  A.SaveToFile(File.Path());
  TFloatMatrix B(3);
  const TFloatMatrix Shared = B;
  B.LoadFromFile(File.Path());
  EXPECT_EQ(A, B);
  EXPECT_EQ(TFloatMatrix(3), Shared);
}

TEST(MatrixFile, IsReadAsStated) {
  const struct {
    const char* Name;
    std::string Bytes;
    TFloatMatrix Expected;
  } Cases[] = {
      {"plain", "2 3\r\n1 2 3 \r\n4 5 6 \r\n", MatrixOf({{1, 2, 3}, {4, 5, 6}})},
      {"other notations", " +1 3\r\n\t+1.5E+0000 -.5  2.e-1 \r\n", MatrixOf({{1.5, -0.5, 0.2}})},
      {"too small", "1 2\r\n-1e-99999999999999999999 0.000001e-320 \r\n", MatrixOf({{-0.0, 0}})},
      {"too small behind many zeros", "1 1\r\n" + std::string(200, '0') + "1e-350 \r\n",
       TFloatMatrix(1, 1)},
      {"no line feeds, a tail", "1 1\r7 \rrest", MatrixOf({{7}})},
      {"rows without columns", "2 0\r\n\r\n\r\n", TFloatMatrix(2, 0)},
      {"nothing", "0 4\r\n", TFloatMatrix()},
  };
  const TTempFile File;
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Name);
    File.Write(Case.Bytes);
    TFloatMatrix A(5);
    A.LoadFromFile(File.Path());
    EXPECT_EQ(Case.Expected, A);
  }
}

TEST(MatrixFile, LeavesTheMatrixAloneWhereItIsWrong) {
  const struct {
    const char* Bytes;
    const char* Message;  // of an assertion the line
  } Cases[] = {
      {"2\t3\r\n", "1410"},
      {"2", "1410"},
      {"2 3\n", "1413"},
      {"2 3 \r\n", "1413"},
      {"1 2\r\n1 2\r\n", "1422"},
      {"1 2\r\n1x 2 \r\n", "1422"},
      {"1 2\r\n1e 2 \r\n", "1422"},
      {"1 2\r\n1 2  \r\n", "1426"},
      {"1 1\r\n1 ", "1426"},
      {"2000000000 0\r\n", "1426"},
      {"", "no count"},
      {"-1 3\r\n", "no count"},
      {"99999999999 3\r\n", "no count"},
      {"2000000000 2000000000\r\n1 ", "no number"},
      {"1 1\r\n+-1 \r\n", "no number"},
      {"1 1\r\n-1e+400 \r\n", "the number is too large"},
      {"1 1\r\n9e309\r\n", "the number is too large"},
      {"1 1\r\n0.001e99999999999999999999 \r\n", "the number is too large"},
  };
  const TTempFile File;
  File.Write("1 2\r\n0." + std::string(400, '0') + "1 7 \r\n");
  TFloatMatrix Tiny;
  Tiny.LoadFromFile(File.Path());
  EXPECT_EQ(MatrixOf({{0, 7}}), Tiny);
  for (const auto& Case : Cases) {
    SCOPED_TRACE(Case.Bytes);
    File.Write(Case.Bytes);
    TFloatMatrix A(2);
    const std::string Text = Case.Message;
    if (std::isdigit(static_cast<unsigned char>(Text[0])) != 0) {
      test::ExpectRaises<EAssertionFailed>(
          [&] { A.LoadFromFile(File.Path()); },
          "Assertion failure (geometryAlgo/UMatrixAlgo, line " + Text + ")");
    } else {
      test::ExpectRaises<EInOutError>([&] { A.LoadFromFile(File.Path()); },
                                      "[Error] TFloatMatrix.LoadFromFile: " + Text);
    }
    EXPECT_EQ(TFloatMatrix(2), A);
  }
  TFloatMatrix A(2);
  A.LoadFromFile(File.Path() + "none");
  EXPECT_EQ(TFloatMatrix(2), A);
  EXPECT_THROW(A.LoadFromFile(testing::TempDir()), EInOutError);
}

TEST(VectorFile, IsWrittenOverAnExistingOneOnly) {
  const TTempFile File;
  const TFloatVector V{1, -0.1, 1e22};
  test::ExpectRaises<EInOutError>([&] { V.SaveToFile(File.Path(), true); },
                                  "[Error] TFloatVector.SaveToFile: 文件未打开 " + File.Path());
  EXPECT_FALSE(std::filesystem::exists(File.Path()));
  File.Write(
      "something much longer than what is written over it, so that its tail would show, too");
  V.SaveToFile(File.Path(), true);
  EXPECT_EQ(
      "1.000000000000000000 \r\n"
      "-0.100000000000000006 \r\n"
      "10000000000000000000000.000000000000000000 \r\n",
      File.Read());
  TFloatVector({1, 2}).SaveToFile(File.Path(), false);
  EXPECT_EQ(" 1.000000000000000000  2.000000000000000000 \r\n", File.Read());
  TFloatVector().SaveToFile(File.Path(), true);
  EXPECT_EQ("", File.Read());
  TFloatVector().SaveToFile(File.Path(), false);
  EXPECT_EQ("\r\n", File.Read());
  TFloatVector Read{3};
  EXPECT_FALSE(Read.LoadFromFile(File.Path(), true));
  EXPECT_EQ(TFloatVector{3}, Read);
}

}  // namespace
}  // namespace tarnalgo
