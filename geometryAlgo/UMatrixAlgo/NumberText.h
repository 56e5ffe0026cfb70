#pragma once  // geometryAlgo/UMatrixAlgo/NumberText.h

#include <string>
#include <string_view>

namespace tarnalgo {

// Numbers and text files, independent of the locale. Internal to the matrix unit.

/// "%.16E": 17 digits, enough to read the same double back.
void AppendScientific(std::string& Text, double Value);

/// "%*.*f" of `Width` and `Decimals`.
void AppendFixed(std::string& Text, double Value, int Width, int Decimals);

/// Reads numbers from a text, and single characters between them.
class TNumberReader {
 public:
  /// `Where` is named by its failures. `Text` must outlive the reader.
  TNumberReader(std::string_view AWhere, std::string_view Text)
      : FWhere(AWhere), FAt(Text.data()), FEnd(Text.data() + Text.size()) {}

  /// The longest number that starts here, blanks, tabs and line ends skipped; what follows it is
  /// not touched. A number too small for a double is 0.
  /// Errors: no number, one too large, a negative count, `EInOutError`.
  int ReadCount();
  double ReadReal();

  /// Steps over the next character if it is this one.
  bool Skip(char Due);

 private:
  void ToNumber();

  std::string_view FWhere;
  const char* FAt;
  const char* FEnd;
};

/// The whole contents.
/// Errors: the file cannot be read, `EInOutError` that names `Where`.
std::string ReadTextFile(std::string_view Where, const std::string& FileName);

/// Writes `Text` as the whole contents.
/// Errors: the file cannot be written, `EInOutError` that names `Where`.
void WriteTextFile(std::string_view Where, const std::string& FileName, std::string_view Text);

}  // namespace tarnalgo
