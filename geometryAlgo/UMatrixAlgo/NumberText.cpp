#include "geometryAlgo/UMatrixAlgo/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>

#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

/// 309 digits before the point and 18 behind it, with some to spare.
using TDigits = std::array<char, 352>;

/// The number that `from_chars` found beyond the range of a double is too large, not too small.
bool IsTooLarge(std::string_view Number) {
  const std::size_t E = Number.find_first_of("eE");
  const std::string_view Digits = Number.substr(0, E);
  // The power of ten of its first digit that is not 0, as far as the digits tell.
  const std::size_t First = Digits.find_first_of("123456789");
  const std::size_t Point = std::min(Digits.find('.'), Digits.size());
  const bool IsBehindPoint = First > Point;
  if (E == std::string_view::npos) return !IsBehindPoint;
  double Power = IsBehindPoint ? -static_cast<double>(First - Point)
                               : static_cast<double>(Point - First) - 1.0;
  long long Exponent = 0;
  std::string_view Tail = Number.substr(E + 1);
  if (Tail.front() == '+') Tail.remove_prefix(1);
  if (std::from_chars(Tail.data(), Tail.data() + Tail.size(), Exponent).ec == std::errc()) {
    Power += static_cast<double>(Exponent);
  } else {
    Power = Tail.front() == '-' ? -1.0 : 1.0;
  }
  return Power > 0.0;
}

}  // namespace

void AppendScientific(std::string& Text, double Value) {
  TDigits Digits;
  char* const End = std::to_chars(Digits.data(), Digits.data() + Digits.size(), Value,
                                  std::chars_format::scientific, 16)
                        .ptr;
  const std::size_t Start = Text.size();
  Text.append(Digits.data(), End);
  if (const std::size_t E = Text.find('e', Start); E != std::string::npos) Text[E] = 'E';
}

void AppendFixed(std::string& Text, double Value, int Width, int Decimals) {
  TDigits Digits;
  char* const End = std::to_chars(Digits.data(), Digits.data() + Digits.size(), Value,
                                  std::chars_format::fixed, Decimals)
                        .ptr;
  const auto Length = static_cast<int>(End - Digits.data());
  if (Length < Width) Text.append(static_cast<std::size_t>(Width - Length), ' ');
  Text.append(Digits.data(), End);
}

void TNumberReader::ToNumber() {
  while (FAt != FEnd && (*FAt == ' ' || *FAt == '\t' || *FAt == '\r' || *FAt == '\n')) ++FAt;
  const bool HasPlus = FAt != FEnd && *FAt == '+';
  if (HasPlus && FEnd - FAt > 1 && FAt[1] != '-') ++FAt;  // which from_chars does not know
}

int TNumberReader::ReadCount() {
  ToNumber();
  int Count = -1;
  const auto Result = std::from_chars(FAt, FEnd, Count);
  if (Result.ec != std::errc() || Count < 0) RaiseError<EInOutError>(FWhere, "no count");
  FAt = Result.ptr;
  return Count;
}

double TNumberReader::ReadReal() {
  ToNumber();
  double Value = 0.0;
  const auto Result = std::from_chars(FAt, FEnd, Value);
  if (Result.ec == std::errc::result_out_of_range) {
    const std::string_view Number(FAt, static_cast<std::size_t>(Result.ptr - FAt));
    if (IsTooLarge(Number)) RaiseError<EInOutError>(FWhere, "the number is too large");
    Value = Number.front() == '-' ? -0.0 : 0.0;
  } else if (Result.ec != std::errc()) {
    RaiseError<EInOutError>(FWhere, "no number");
  }
  FAt = Result.ptr;
  return Value;
}

bool TNumberReader::Skip(char Due) {
  if (FAt == FEnd || *FAt != Due) return false;
  ++FAt;
  return true;
}

std::string ReadTextFile(std::string_view Where, const std::string& FileName) {
  std::ifstream File(FileName, std::ios::binary);
  std::string Text;
  std::string Chunk(std::size_t{1} << 18, '\0');
  while (File.good()) {
    File.read(Chunk.data(), static_cast<std::streamsize>(Chunk.size()));
    Text.append(Chunk, 0, static_cast<std::size_t>(File.gcount()));
  }
  if (!File.eof()) RaiseError<EInOutError>(Where, "无法读取文件 " + FileName);
  return Text;
}

void WriteTextFile(std::string_view Where, const std::string& FileName, std::string_view Text) {
  std::ofstream File;
  std::array<char, 4096> Buffer;  // its own one would take memory when the old text is gone already
  File.rdbuf()->pubsetbuf(Buffer.data(), Buffer.size());
  File.open(FileName, std::ios::binary);
  File.write(Text.data(), static_cast<std::streamsize>(Text.size()));
  File.close();
  if (!File) RaiseError<EInOutError>(Where, "无法写入文件 " + FileName);
}

}  // namespace tarnalgo
