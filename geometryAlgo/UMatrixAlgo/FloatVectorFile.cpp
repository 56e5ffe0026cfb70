#include <filesystem>

#include "geometryAlgo/UMatrixAlgo/FloatVector.h"
#include "geometryAlgo/UMatrixAlgo/NumberText.h"
#include "host/Exceptions.h"
#include "host/Zeblib.h"

namespace tarnalgo {

void TFloatVector::SaveToFile(const std::string& FileName, bool OnePerLine) const {
  constexpr std::string_view kWhere = "TFloatVector.SaveToFile";
  std::error_code Unknown;
  if (!std::filesystem::exists(FileName, Unknown)) {
    RaiseError<EInOutError>(kWhere, "文件未打开 " + FileName);
  }
  std::string Text;
  for (int I = 0; I < GetSize(); ++I) {
    if (!OnePerLine) Text += ' ';
    AppendFixed(Text, Data()[I], 20, 18);
    Text += OnePerLine ? " \r\n" : " ";
  }
  if (!OnePerLine) Text += "\r\n";
  WriteTextFile(kWhere, FileName, Text);
}

bool TFloatVector::LoadFromFile(const std::string& /*FileName*/, bool /*OnePerLine*/) {
  return false;
}

void TFloatVector::TestShow() const {
  std::string Text;
  for (int I = 0; I < GetSize(); ++I) {
    if (I > 0) Text += ' ';
    AppendFixed(Text, Data()[I], 0, 6);
  }
  OutputDebugStr(Text);
}

}  // namespace tarnalgo
