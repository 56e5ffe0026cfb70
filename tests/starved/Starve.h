#pragma once  // tests/starved/Starve.h

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "containers/Container/NodePool.h"  // which tells sanitized builds
#include "geometryAlgo/UMatrixAlgo/FloatMatrix.h"
#include "geometryAlgo/UMatrixAlgo/FloatVector.h"
#include "host/Cadgeometry.h"
#include "tests/support/AllocationCount.h"

#ifdef TARNALGO_NODE_POOL_POISONS
#include <sanitizer/lsan_interface.h>
#endif

namespace tarnalgo::test {

/// Writes all that a value holds, numbers bit by bit, so that texts tell whether two are the same.
/// A type that is not understood offers `State()`, something that is.
template <class T>
void Describe(std::ostream& Out, const T& Value) {
  if constexpr (std::is_convertible_v<const T&, std::string>) {
    Out << '"' << std::string(Value) << '"';
  } else if constexpr (std::is_floating_point_v<T>) {
    Out << std::hexfloat << Value;
  } else if constexpr (std::is_enum_v<T>) {
    Out << static_cast<long long>(Value);
  } else if constexpr (std::is_arithmetic_v<T>) {
    Out << +Value;
  } else if constexpr (requires { Value.State(); }) {
    Describe(Out, Value.State());
  } else if constexpr (std::is_pointer_v<T> || requires { Value.get(); }) {
    if (Value) Describe(Out << '*', *Value);
  } else if constexpr (std::is_base_of_v<TGeCurve2D, T>) {
    Describe(Out << typeid(Value).name(), Value.Sample(0.01));
  } else if constexpr (requires { Value.SegType; }) {
    Describe(Out, std::tie(Value.SegType, Value.P1, Value.P2, Value.P3, Value.P4, Value.Bulge));
  } else if constexpr (requires { Value.P0; }) {
    Describe(Out, std::tie(Value.P0, Value.P1, Value.P2, Value.P3));
  } else if constexpr (requires { Value.StartPoint.X; }) {
    Describe(Out, std::tie(Value.StartPoint, Value.EndPoint));
  } else if constexpr (requires { Value.GetLineStart(); }) {
    Describe(Out, std::make_pair(Value.GetLineStart(), Value.GetLineEnd()));
  } else if constexpr (requires { Value.X, Value.Y; }) {
    Describe(Out, std::tie(Value.X, Value.Y));
  } else if constexpr (std::is_same_v<T, TFloatVector>) {
    for (int I = 0; I < Value.GetSize(); ++I) Describe(Out << ' ', Value[I]);
  } else if constexpr (std::is_same_v<T, TFloatMatrix>) {
    for (int I = 0; I < Value.GetRowCnt(); ++I) Describe(Out << '\n', Value.GetRow(I));
  } else if constexpr (requires { Value.Keys(); }) {
    Describe(Out, std::pair(Value.Keys(), Value.Values()));
  } else if constexpr (requires { Value.begin(); }) {
    Out << '[';
    for (const auto& Item : Value) Describe(Out << ' ', Item);
    Out << ']';
  } else if constexpr (requires { Value.has_value(); }) {
    if (Value) Describe(Out << '*', *Value);
  } else {
    Out << '(';
    std::apply([&Out](const auto&... Items) { (Describe(Out << ' ', Items), ...); }, Value);
    Out << ')';
  }
}

template <class T>
std::string TextOf(const T& Value) {
  std::ostringstream Out;
  Describe(Out, Value);
  return std::move(Out).str();
}

/// What must hold of the subject after a call that raised.
enum class TPromise {
  Unchanged,        // it is as it was
  Usable,           // it serves as well as one just made: the call, repeated, has the same result
  UnchangedButLost  // it is as it was; the clipping library may have lost memory of its own
};

/// Leaks within its life are not reported by LeakSanitizer.
class TLeaksAllowed {
 public:
#ifdef TARNALGO_NODE_POOL_POISONS
  explicit TLeaksAllowed(bool AreAllowed) : FAreAllowed(AreAllowed) {
    if (FAreAllowed) __lsan_disable();
  }
  ~TLeaksAllowed() {
    if (FAreAllowed) __lsan_enable();
  }
#else
  explicit TLeaksAllowed(bool AreAllowed) : FAreAllowed(AreAllowed) {}
#endif
  TLeaksAllowed(const TLeaksAllowed&) = delete;
  TLeaksAllowed& operator=(const TLeaksAllowed&) = delete;

 private:
  [[maybe_unused]] bool FAreAllowed;
};

/// Runs `Run` on what `Make` makes again and again, and each time lets another allocation fail,
/// until none does. After each failure nothing may have leaked and the promise must hold; the call
/// is then repeated and must do what it does in peace.
///
/// All failures up to the 200th are tried, of more only some (all when TARNALGO_STARVE_ALL is set);
/// each is tried alone and with nothing but failures after it.
template <class TMake, class TRun>
class TStarvation {
 public:
  TStarvation(const char* Name, TMake Make, TRun Run, TPromise Promise)
      : FName(Name), FMake(Make), FRun(Run), FPromise(Promise) {
    static const char* Present = nullptr;
    Present = Name;
    std::set_terminate([] {
      std::cerr << "terminated while starving " << Present << std::endl;
      std::abort();
    });
  }

  void Go() {
    {
      auto Subject = FMake();
      FExpected = Perform(Subject);
    }
    for (const TShortage Shortage : {TShortage::Once, TShortage::FromThenOn}) {
      for (int Nth = 1; TryFailure(Nth, Shortage); Nth += StepFrom(Nth)) {}
    }
  }

 private:
  static int StepFrom(int Nth) {
    static const bool TriesAll = std::getenv("TARNALGO_STARVE_ALL") != nullptr;
    return TriesAll || Nth < 200 ? 1 : Nth / 10;
  }

  template <class TSubject>
  std::string Perform(TSubject& Subject) {
    std::string Result;
    if constexpr (std::is_void_v<std::invoke_result_t<TRun&, decltype(*Subject)>>) {
      FRun(*Subject);
    } else {
      Result = TextOf(FRun(*Subject));
    }
    return TextOf(*Subject) + " gives " + Result;
  }

  /// False when no allocation was refused, or something is wrong.
  bool TryFailure(int Nth, TShortage Shortage) {
    const int Before = LiveAllocations();
    const char* Complaint = nullptr;
    const bool WasRefused = RunStarved(Nth, Shortage, Complaint);
    const bool MayLeak = FPromise == TPromise::UnchangedButLost;
    if (!Complaint && !MayLeak && LiveAllocations() != Before) Complaint = "leaks";
    if (!Complaint) return WasRefused;
    ADD_FAILURE() << FName << " " << Complaint << " when allocation " << Nth << " fails"
                  << (Shortage == TShortage::FromThenOn ? " and all later ones" : "") << FDetails;
    return false;
  }

  bool RunStarved(int Nth, TShortage Shortage, const char*& Complaint) {
    auto Subject = FMake();
    const std::string Before = TextOf(*Subject);
    std::string Result;
    bool HasRaised = false;
    StarveAt(Nth, Shortage);
    try {
      const TLeaksAllowed Allowed(FPromise == TPromise::UnchangedButLost);
      FRun(*Subject);
    } catch (const std::bad_alloc&) {
      HasRaised = true;
    } catch (...) {
      Complaint = "raises something else";
    }
    const bool WasRefused = EndShortage();
    if (Complaint) return WasRefused;
    if (HasRaised) {
      const std::string After = TextOf(*Subject);
      if (FPromise != TPromise::Usable && After != Before) {
        FDetails = "\nbefore " + Before + "\nafter  " + After;
        Complaint = "is half-changed";
      } else if (std::string Again = Perform(Subject); Again != FExpected) {
        FDetails = "\nin peace " + FExpected + "\nrepeated " + Again;
        Complaint = "does not recover";
      }
    }
    return WasRefused;
  }

  const char* FName;
  TMake FMake;
  TRun FRun;
  TPromise FPromise;
  std::string FExpected;
  std::string FDetails;
};

/// `Make` answers a pointer to the subject; everything that the call could change belongs to it.
template <class TMake, class TRun>
void Starve(const char* Name, TMake Make, TRun Run, TPromise Promise = TPromise::Unchanged) {
  TStarvation<TMake, TRun>(Name, Make, Run, Promise).Go();
}

/// The same on a copy of a value.
template <class T, class TRun>
void StarveOn(const char* Name, const T& Value, TRun Run, TPromise Promise = TPromise::Unchanged) {
  Starve(
      Name, [&Value] { return std::make_unique<T>(Value); }, Run, Promise);
}

}  // namespace tarnalgo::test
