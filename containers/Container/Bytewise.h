#pragma once  // containers/Container/Bytewise.h

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <span>
#include <type_traits>

namespace tarnalgo {

namespace detail {

// A constant expression only when every byte of a T carries a value: reading a byte of padding is
// not allowed in one. Tells records of doubles without padding, too.
template <class T>
constexpr int SumOfBytes() {
  const auto Bytes = std::bit_cast<std::array<unsigned char, sizeof(T)>>(T{});
  return std::accumulate(Bytes.begin(), Bytes.end(), 0);
}

/// The bytes of a value; their number is a constant.
template <class T>
auto BytesOf(const T& Value) noexcept {
  return std::as_bytes(std::span<const T, 1>(&Value, 1));
}

template <class T>
concept TReadableToTheLastByte = requires {
  std::bool_constant<(SumOfBytes<T>(), true)>{};
};

}  // namespace detail

/// Every byte of a `T` is part of its value, so that two records with equal members are equal byte
/// for byte. Found out by the compiler for numbers, enumerations, pointers and plain records that
/// are constructible in a constant expression; specialise it for another record that is known to
/// be without padding. `long double` has padding (inside a record GCC does not see it).
template <class T>
inline constexpr bool kHasNoPadding = [] {
  if constexpr (!std::is_trivially_copyable_v<T> || std::is_same_v<T, long double>)
    return false;
  else if constexpr (std::has_unique_object_representations_v<T>)
    return true;
  else
    return detail::TReadableToTheLastByte<T>;
}();

/// A record that can be compared by its bytes.
template <class T>
concept TBytewiseComparable = std::is_trivially_copyable_v<T> && kHasNoPadding<T>;

/// Exact equality of all bytes: 0.0 differs from −0.0, a NaN equals a NaN of the same bits.
template <TBytewiseComparable T>
struct TBytewiseEqual {
  /// All bytes are the same.
  bool operator()(const T& A, const T& B) const noexcept {
    return std::memcmp(&A, &B, detail::BytesOf(A).size()) == 0;
  }
};

/// A hash of all bytes, the same in every run. Each bit of the record reaches each bit of the hash.
template <TBytewiseComparable T>
struct TBytewiseHash {
  /// The same for records of the same bytes.
  std::size_t operator()(const T& Value) const noexcept {
    const auto Bytes = detail::BytesOf(Value);
    std::uint64_t Hash = Bytes.size();
    for (std::size_t At = 0; At < Bytes.size(); At += sizeof(std::uint64_t)) {
      std::uint64_t Word = 0;
      std::memcpy(&Word, Bytes.data() + At, std::min(sizeof(Word), Bytes.size() - At));
      Hash = Mix(Hash ^ Word);
    }
    return static_cast<std::size_t>(Hash);
  }

 private:
  // The finaliser of SplitMix64.
  static std::uint64_t Mix(std::uint64_t X) {
    X += 0x9E3779B97F4A7C15u;
    X = (X ^ (X >> 30)) * 0xBF58476D1CE4E5B9u;
    X = (X ^ (X >> 27)) * 0x94D049BB133111EBu;
    return X ^ (X >> 31);
  }
};

}  // namespace tarnalgo
