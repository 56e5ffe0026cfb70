#pragma once  // tests/support/Restore.h

#include <utility>

namespace tarnalgo::test {

/// Gives a process-wide variable its value back at the end of the scope.
template <class T>
class TRestore {
 public:
  explicit TRestore(T& Variable) : FVariable(Variable), FValue(Variable) {}
  ~TRestore() { FVariable = std::move(FValue); }
  TRestore(const TRestore&) = delete;
  TRestore& operator=(const TRestore&) = delete;

 private:
  T& FVariable;
  T FValue;
};

}  // namespace tarnalgo::test
