#include "geometryAlgo/UMatrixAlgo/FloatVector.h"

#include <algorithm>
#include <cmath>

#include "geometryAlgo/UMatrixAlgo/RowKernels.h"
#include "host/Cadutils.h"
#include "host/Exceptions.h"

namespace tarnalgo {

namespace {

std::size_t CheckedSize(int Size) {
  if (Size < 0) RaiseError<EParamError>("TFloatVector", "the size is negative");
  if (Size > kMostItems) RaiseError<EParamError>("TFloatVector", "the size is too large");
  return static_cast<std::size_t>(Size);
}

void CheckSameSize(const TFloatVector& A, const TFloatVector& B, int Line = __builtin_LINE()) {
  AssertThat(A.GetSize() == B.GetSize(), kMatrixUnit, Line);
}

/// The vector of `Element(i)`.
template <class TElement>
TFloatVector Elementwise(int Size, TElement&& Element) {
  TFloatVector Result(Size);
  double* const To = Result.Data();
  for (int I = 0; I < Size; ++I) To[I] = Element(I);
  return Result;
}

}  // namespace

TFloatVector::TFloatVector(int Size, double Value)
    : FItems(std::make_shared<std::vector<double>>(CheckedSize(Size), Value)) {}

TFloatVector::TFloatVector(std::initializer_list<double> Items)
    : FItems(std::make_shared<std::vector<double>>(Items)) {}

TFloatVector::TFloatVector(const std::vector<double>& Items)
    : FItems(std::make_shared<std::vector<double>>(Items)) {}

double* TFloatVector::Checked(int Index) const {
  if (Index < 0 || Index >= GetSize()) {
    RaiseError<EParamError>("TFloatVector", "index out of range");
  }
  return FItems->data() + Index;
}

void TFloatVector::SetSize(int Size) {
  auto Items = std::make_shared<std::vector<double>>();
  Items->reserve(CheckedSize(Size));
  if (FItems) Items->assign(FItems->begin(), FItems->begin() + std::min(Size, GetSize()));
  Items->resize(CheckedSize(Size));
  FItems = std::move(Items);
}

TFloatVector TFloatVector::Add(const TFloatVector& Other) const {
  CheckSameSize(*this, Other);
  return Elementwise(GetSize(), [A = Data(), B = Other.Data()](int I) { return A[I] + B[I]; });
}

TFloatVector TFloatVector::Subtract(const TFloatVector& Other) const {
  CheckSameSize(*this, Other);
  return Elementwise(GetSize(), [A = Data(), B = Other.Data()](int I) { return A[I] - B[I]; });
}

TFloatVector TFloatVector::Multiply(double Factor) const {
  return Elementwise(GetSize(), [A = Data(), Factor](int I) { return A[I] * Factor; });
}

TFloatVector TFloatVector::Divide(double Divisor) const {
  return Elementwise(GetSize(), [A = Data(), Divisor](int I) { return A[I] / Divisor; });
}

TFloatVector TFloatVector::Negative() const {
  return Elementwise(GetSize(), [A = Data()](int I) { return -A[I]; });
}

double operator*(const TFloatVector& A, const TFloatVector& B) {
  CheckSameSize(A, B);
  return RowDot(A.Data(), B.Data(), static_cast<std::size_t>(A.GetSize()));
}

bool operator==(const TFloatVector& A, const TFloatVector& B) {
  return std::equal(A.Data(), A.Data() + A.GetSize(), B.Data(), B.Data() + B.GetSize());
}

bool TFloatVector::Equls(const TFloatVector& Other, double Eps) const {
  const auto Same = [Eps](double A, double B) { return TMathUtils::FloatEquals(A, B, Eps); };
  return std::equal(Data(), Data() + GetSize(), Other.Data(), Other.Data() + Other.GetSize(), Same);
}

void TFloatVector::Expand(double Value) {
  const int Size = GetSize();
  SetSize(Size + 1);
  SetItem(Size, Value);
}

void TFloatVector::Expand(const std::vector<double>& Values) {
  Expand(TFloatVector(Values));
}

void TFloatVector::Expand(const TFloatVector& Other) {
  // Keeps the elements where `Other` is this vector.
  const TFloatVector Tail = Other;  // NOLINT(performance-unnecessary-copy-initialization)
  const int Size = GetSize();
  SetSize(Size + Tail.GetSize());
  std::copy_n(Tail.Data(), Tail.GetSize(), Data() + Size);
}

TFloatVector TFloatVector::SubVector(int First, int Count) const {
  if (First < 0 || Count < 0 || First > GetSize() || Count > GetSize() - First) {
    RaiseError<EParamError>("TFloatVector.SubVector", "index out of range");
  }
  return Elementwise(Count, [A = Data() + First](int I) { return A[I]; });
}

TFloatVector TFloatVector::ExceptItem(int Index) const {
  Checked(Index);
  return Elementwise(GetSize() - 1,
                     [A = Data(), Index](int I) { return A[I < Index ? I : I + 1]; });
}

double TFloatVector::GetAbsMax() const {
  double Max = 0.0;
  for (int I = 0; I < GetSize(); ++I) Max = std::max(Max, std::abs(Data()[I]));
  return Max;
}

double TFloatVector::MagSqr() const {
  return RowDot(Data(), Data(), static_cast<std::size_t>(GetSize()));
}

double TFloatVector::Mag() const {
  return RowMag(Data(), static_cast<std::size_t>(GetSize()));
}

double TFloatVector::Norm1() const {
  double Sum = 0.0;
  for (int I = 0; I < GetSize(); ++I) Sum += std::abs(Data()[I]);
  return Sum;
}

void TFloatVector::Normalize() {
  const double Length = Mag();
  if (Length == 0.0) return;  // exact: any other length divides
  for (int I = 0; I < GetSize(); ++I) Data()[I] /= Length;
}

TFloatVector TFloatVector::Clone() const {
  TFloatVector Result;
  if (FItems) Result.FItems = std::make_shared<std::vector<double>>(*FItems);
  return Result;
}

}  // namespace tarnalgo
