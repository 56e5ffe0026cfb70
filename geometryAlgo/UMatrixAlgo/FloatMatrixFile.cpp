#include <algorithm>
#include <filesystem>

#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/NumberText.h"
#include "host/Exceptions.h"
#include "host/Zeblib.h"

namespace tarnalgo {

namespace {

/// The lines that the checks of the file's form are known by.
constexpr int kRowCountLine = 1410;
constexpr int kColumnCountLine = 1413;
constexpr int kElementLine = 1422;
constexpr int kRowEndLine = 1426;

constexpr std::string_view kLineEnd = "\r\n";

/// Steps over a line end; the LF may be missing.
void SkipLineEnd(TNumberReader& Reader, int Line) {
  AssertThat(Reader.Skip('\r'), kMatrixUnit, Line);
  Reader.Skip('\n');
}

}  // namespace

void TFloatMatrix::SaveToFile(const std::string& FileName) const {
  std::string Text = std::to_string(GetRowCnt()) + ' ' + std::to_string(GetColCnt());
  Text += kLineEnd;
  for (int I = 0; I < GetRowCnt(); ++I) {
    for (int J = 0; J < GetColCnt(); ++J) {
      AppendScientific(Text, Row(I)[J]);
      Text += ' ';
    }
    Text += kLineEnd;
  }
  WriteTextFile("TFloatMatrix.SaveToFile", FileName, Text);
}

void TFloatMatrix::LoadFromFile(const std::string& FileName) {
  constexpr std::string_view kWhere = "TFloatMatrix.LoadFromFile";
  std::error_code Unknown;
  if (!std::filesystem::exists(FileName, Unknown)) return;
  const std::string Text = ReadTextFile(kWhere, FileName);
  TNumberReader Reader(kWhere, Text);
  const int Rows = Reader.ReadCount();
  AssertThat(Reader.Skip(' '), kMatrixUnit, kRowCountLine);
  const int Columns = Reader.ReadCount();
  SkipLineEnd(Reader, kColumnCountLine);
  std::vector<double> Items;  // grows as the file bears it out: the counts may be anything
  for (int I = 0; I < Rows; ++I) {
    for (int J = 0; J < Columns; ++J) {
      Items.push_back(Reader.ReadReal());
      AssertThat(Reader.Skip(' '), kMatrixUnit, kElementLine);
    }
    SkipLineEnd(Reader, kRowEndLine);
  }
  TFloatMatrix Loaded(Rows, Columns);
  for (int I = 0; I < Rows; ++I) {
    std::copy_n(Items.begin() + static_cast<std::ptrdiff_t>(I) * Columns, Columns, Loaded.Row(I));
  }
  *this = std::move(Loaded);
}

void TFloatMatrix::TestShow() const {
  std::string Text;
  for (int I = 0; I < GetRowCnt(); ++I) {
    for (int J = 0; J < GetColCnt(); ++J) {
      AppendFixed(Text, Row(I)[J], 0, 6);
      Text += J + 1 < GetColCnt() ? " " : "";
    }
    Text += '\n';
  }
  OutputDebugStr(Text);
}

}  // namespace tarnalgo
