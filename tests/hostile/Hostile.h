#pragma once  // tests/hostile/Hostile.h

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tarnalgo::test {

/// How values of a type are drawn: `New` answers one to be owned, or `Keep` a reference to one that
/// something kept by the call owns. Makers by hand are in Draws.h, the others are generated.
template <class T>
struct TDraw;

/// No value could be drawn; the call is passed over.
struct TNoValue {};

/// The source of the arguments of one call, and the owner of what it hands out by reference.
///
/// The first calls of a row draw one kind of number only (all NaN, all infinite, ...), the later
/// ones by turns any hostile number, a small grid with a hostile number here and there, and the
/// small grid alone, where equal, collinear and touching things abound.
class THostile {
 public:
  static int Kinds();

  /// Starts call `Call` of the row `Row`. The same two give the same values. `Long` > 0: lists of
  /// plain values hold that many, all equal, and numbers come from the small grid.
  void Begin(std::uint64_t Row, int Call, int Long);
  /// Frees everything handed out: the object under test, if there is one (it was drawn first), then
  /// the others, last first.
  void End(bool HasObject);

  double Double();
  /// Any integer: small ones above all, the ends of the range now and then.
  std::int64_t Integer();
  /// A count: mostly the favourite one of this call, so that sizes fit together.
  int Size();
  /// How many items a list is given.
  int ListSize();
  /// How many equal items a list of plain values is to hold; 0: as `ListSize` says.
  int Long() const { return FLong; }
  std::string Text();
  /// 0 .. Bound − 1.
  int Pick(int Bound);
  bool Coin() { return Pick(2) == 0; }
  /// Values are to come from constructors alone, fields are not filled with nonsense.
  bool IsPlain() { return FDepth > 4 || Coin(); }
  /// An argument of the class under test is to be the object itself.
  bool IsAlias() { return Pick(6) == 0; }

  /// A value that lives until the end of the call.
  template <class T>
  T& Ref() {
    if constexpr (std::is_const_v<T>) {
      return Ref<std::remove_const_t<T>>();
    } else if constexpr (requires { TDraw<T>::Keep(*this); }) {
      return TDraw<T>::Keep(*this);
    } else {
      return Keep(Draw<T>());
    }
  }
  template <class T>
  T Take() {
    return std::move(*Draw<T>());
  }
  /// Mostly the address of such a value, null now and then.
  template <class T>
  T* Pointer() {
    return Pick(5) == 0 ? nullptr : &Ref<T>();
  }
  template <class T>
  T& Keep(std::unique_ptr<T> Value) {
    if (!Value) throw TNoValue();
    T& Result = *Value;
    FKept.push_back(std::shared_ptr<T>(std::move(Value)));
    return Result;
  }
  template <class T>
  std::unique_ptr<T> Draw() {
    ++FDepth;
    if (FDepth > 12) {
      --FDepth;
      throw TNoValue();
    }
    std::unique_ptr<T> Result;
    try {
      if constexpr (std::is_floating_point_v<T>) {
        Result = std::make_unique<T>(static_cast<T>(Double()));
      } else if constexpr (std::is_same_v<T, bool>) {
        Result = std::make_unique<T>(Coin());
      } else if constexpr (std::is_integral_v<T>) {
        Result = std::make_unique<T>(static_cast<T>(IntegerWithin(sizeof(T))));
      } else {
        Result = TDraw<T>::New(*this);
      }
    } catch (...) {
      --FDepth;
      throw;
    }
    --FDepth;
    return Result;
  }
  template <class T>
  std::unique_ptr<T> ByDefault() {
    if constexpr (std::is_default_constructible_v<T>) {
      return std::make_unique<T>();
    } else {
      throw TNoValue();
    }
  }
  /// What `Make` makes, tried again where its constructor refuses the arguments.
  template <class TMake>
  auto Made(TMake Make) -> decltype(Make()) {
    for (int Attempt = 0; Attempt < 6; ++Attempt) {
      try {
        return Make();
      } catch (const std::runtime_error&) {}
    }
    throw TNoValue();
  }

  /// Looks at a result.
  template <class T>
  void Use(T&& Result) {
    using TResult = std::remove_cvref_t<T>;
    if constexpr (std::is_trivially_copyable_v<TResult> && !std::is_pointer_v<TResult>) {
      const volatile TResult* const Seen = &Result;
      static_cast<void>(reinterpret_cast<const volatile char*>(Seen)[sizeof(TResult) - 1]);
    } else if constexpr (requires { Result.begin() != Result.end(); }) {
      for (auto It = Result.begin(); It != Result.end(); ++It) ++FSeen;
    }
  }

 private:
  std::int64_t IntegerWithin(std::size_t Bytes);

  std::mt19937_64 FRandom;
  int FMode = 0;
  int FKind = 0;
  int FFavourite = 0;
  int FDepth = 0;
  int FLong = 0;
  std::size_t FSeen = 0;
  std::vector<std::shared_ptr<void>> FKept;
};

}  // namespace tarnalgo::test
