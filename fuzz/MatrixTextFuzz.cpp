// The text file of a matrix, from any bytes: what is read agrees with a plain parser, is written
// and read again to the same bytes, and what cannot be read changes nothing.

#include <unistd.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/Bytes.h"
#include "geometryAlgo/UMatrixAlgo.h"
#include "host/Exceptions.h"

namespace {

using namespace tarnalgo;
using fuzz::Require;
using fuzz::TBytes;

/// The one file of this process, removed when it ends.
class TTextFile {
 public:
  ~TTextFile() { std::filesystem::remove(FPath); }

  const std::string& Path() const { return FPath; }
  void Write(const std::string& Text) const { std::ofstream(FPath, std::ios::binary) << Text; }
  std::string Read() const {
    std::ifstream File(FPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(File), {}};
  }

 private:
  std::string FPath =
      std::filesystem::temp_directory_path() / ("MatrixTextFuzz." + std::to_string(getpid()));
};

enum class TOutcome { Loads, Raises, Special };

/// The form of the file, read character by character; numbers by the C library.
class TPlainParser {
 public:
  explicit TPlainParser(const std::string& Text) : FText(Text) {}

  int Rows = 0;
  int Columns = 0;
  std::vector<double> Items;

  TOutcome Parse() {
    if (!Count(Rows) || !Take(' ') || !Count(Columns) || !LineEnd()) return TOutcome::Raises;
    for (int I = 0; I < Rows; ++I) {
      for (int J = 0; J < Columns; ++J) {
        if (const TOutcome Number = Real(); Number != TOutcome::Loads) return Number;
        if (!Take(' ')) return TOutcome::Raises;
      }
      if (!LineEnd()) return TOutcome::Raises;
    }
    return TOutcome::Loads;
  }

 private:
  char Now() const { return FAt < FText.size() ? FText[FAt] : '\0'; }
  bool Take(char Due) { return FAt < FText.size() && FText[FAt] == Due && ++FAt > 0; }
  bool LineEnd() {
    if (!Take('\r')) return false;
    Take('\n');
    return true;
  }
  std::string Digits() {
    std::string Result;
    while (Now() >= '0' && Now() <= '9') Result += FText[FAt++];
    return Result;
  }
  std::string Sign() {
    while (Take(' ') || Take('\t') || Take('\r') || Take('\n')) continue;
    if (Take('-')) return "-";
    Take('+');
    return "";
  }
  bool Count(int& Value) {
    const bool IsNegative = !Sign().empty();
    const std::string Number = Digits();
    if (Number.empty()) return false;
    const long double Wide = std::strtold(Number.c_str(), nullptr);
    Value = Wide <= 2147483647.0L ? static_cast<int>(Wide) : -1;
    return Value >= 0 && (!IsNegative || Value == 0);
  }
  TOutcome Real() {
    std::string Number = Sign();
    if (std::string("iInN").find(Now()) != std::string::npos && Now() != '\0') {
      return TOutcome::Special;  // infinities and NaN have several spellings
    }
    const std::string Whole = Digits();
    std::string Fraction;
    if (Take('.')) Fraction = Digits();
    if (Whole.empty() && Fraction.empty()) return TOutcome::Raises;
    Number += Whole + '.' + Fraction;
    const std::size_t Back = FAt;
    if (Take('e') || Take('E')) {
      const std::string Head = Take('-') ? "-" : Take('+') ? "+" : "";
      const std::string Exponent = Digits();
      if (Exponent.empty()) FAt = Back;
      if (!Exponent.empty()) Number += 'e' + Head + Exponent;
    }
    Items.push_back(std::strtod(Number.c_str(), nullptr));
    return std::isinf(Items.back()) ? TOutcome::Raises : TOutcome::Loads;
  }

  const std::string& FText;
  std::size_t FAt = 0;
};

bool Load(TFloatMatrix& A, const TTextFile& File) {
  try {
    A.LoadFromFile(File.Path());
    return true;
  } catch (const EInOutError&) {
  } catch (const EAssertionFailed&) {}
  return false;
}

void CheckAgainstParser(const TFloatMatrix& A, bool IsLoaded, const std::string& Text) {
  TPlainParser Parser(Text);
  const TOutcome Outcome = Parser.Parse();
  if (Outcome == TOutcome::Special) return;
  Require(IsLoaded == (Outcome == TOutcome::Loads), "it loads where the form is kept");
  if (!IsLoaded || Parser.Rows == 0) return;
  Require(A.GetRowCnt() == Parser.Rows && A.GetColCnt() == Parser.Columns, "the counts are read");
  for (std::size_t K = 0; K < Parser.Items.size(); ++K) {
    const auto Place = static_cast<int>(K);
    const double Item = A(Place / Parser.Columns, Place % Parser.Columns);
    Require(std::bit_cast<std::uint64_t>(Item) == std::bit_cast<std::uint64_t>(Parser.Items[K]),
            "an element has the bits of the C library's");
  }
}

/// Any doubles at all.
TFloatMatrix AnyMatrix(TBytes& Bytes) {
  TFloatMatrix Result(Bytes.Below(5), Bytes.Below(5));
  for (int I = 0; I < Result.GetRowCnt(); ++I) {
    for (int J = 0; J < Result.GetColCnt(); ++J) Result.SetItem(I, J, Bytes.Anything());
  }
  return Result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* Data, std::size_t Size) {
  static const TTextFile File;
  TBytes Bytes(Data, Size);
  if (Bytes.Below(4) == 0) {
    AnyMatrix(Bytes).SaveToFile(File.Path());
  } else {
    File.Write(Size < 1 ? "" : std::string(Data + 1, Data + Size));
  }
  const std::string Text = File.Read();
  const TFloatMatrix Before(2, 3, 0.5);
  TFloatMatrix A = Before.Clone();
  const bool IsLoaded = Load(A, File);
  CheckAgainstParser(A, IsLoaded, Text);
  if (!IsLoaded) {
    Require(A == Before, "what cannot be read changes nothing");
    return 0;
  }
  A.SaveToFile(File.Path());
  const std::string Saved = File.Read();
  TFloatMatrix Again;
  Require(Load(Again, File), "what was written can be read");
  Again.SaveToFile(File.Path());
  Require(File.Read() == Saved, "reading and writing is stable");
  return 0;
}
