#pragma once  // geometryAlgo/VedaType/Point.h

#include <cmath>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "geometryAlgo/VedaType/DebugText.h"
#include "geometryAlgo/VedaType/Enums.h"
#include "host/Cadtypes/Point.h"
#include "host/Cadutils.h"
#include "host/Zeblib.h"

namespace tarnalgo {

struct TVLine2D;

/// A point that may be absent: `HasValue`, `Value`. Made empty, or from a point.
using TNullablePoint2D = TNullable<TPoint2D>;

/// A vertex of a light-weight polyline: a point and the bulge of the piece that starts there
/// (tan of a quarter of its signed sweep, 0 for a straight piece, negative for clockwise).
struct TLWPoint2D {
  TPoint2D Pt;         ///< The vertex.
  double Bulge = 0.0;  ///< Of the piece to the next vertex.

  constexpr TLWPoint2D() = default;
  /// A vertex that a straight piece leaves.
  constexpr explicit TLWPoint2D(const TPoint2D& APt) : Pt(APt) {}
  /// A vertex and the bulge of the piece that leaves it.
  constexpr TLWPoint2D(const TPoint2D& APt, double ABulge) : Pt(APt), Bulge(ABulge) {}
};

// Lists of vertices hold these 24 bytes and nothing else.
static_assert(sizeof(TLWPoint2D) == 24);

/// For calls that must not compile: at least one of the two is a floating-point number.
template <class T, class TOther>
concept TNotIntegers = std::floating_point<T> || std::floating_point<TOther>;

/// A point of an integer lattice: two signed 64-bit integers.
///
/// A plain value of 16 bytes without padding, so that a bytewise hash or comparison is an exact
/// one. Sums and negatives that leave the 64 bits wrap round.
struct TPointL2D {
  std::int64_t X = 0;  ///< To the right, lattice units.
  std::int64_t Y = 0;  ///< Upwards, lattice units.

  constexpr TPointL2D() = default;
  /// The point of these integers.
  constexpr TPointL2D(std::int64_t AX, std::int64_t AY) : X(AX), Y(AY) {}
  /// Coordinates that are not integers need the rounding of `TPointL2D(TPoint2D)`.
  template <class TY, TNotIntegers<TY> TX>
  TPointL2D(TX AX, TY AY) = delete;
  /// Each coordinate rounded to the nearest integer, exact halves to even. Beyond the 64 bits the
  /// nearest integer that exists; NaN gives 0.
  explicit TPointL2D(const TPoint2D& P);
  /// The host's point, exact.
  constexpr explicit TPointL2D(const Cadtypes::TIntPoint& P) : X(P.X), Y(P.Y) {}

  friend constexpr bool operator==(const TPointL2D&, const TPointL2D&) = default;

  /// The opposite vector.
  constexpr TPointL2D operator-() const { return TPointL2D() - *this; }
  /// Componentwise sum.
  constexpr TPointL2D operator+(const TPointL2D& B) const {
    return {Wrap(Bits(X) + Bits(B.X)), Wrap(Bits(Y) + Bits(B.Y))};
  }
  /// Componentwise difference.
  constexpr TPointL2D operator-(const TPointL2D& B) const {
    return {Wrap(Bits(X) - Bits(B.X)), Wrap(Bits(Y) - Bits(B.Y))};
  }

  /// The same point with real coordinates; beyond 2^53 the nearest double.
  constexpr TPoint2D ToPoint2D() const { return {static_cast<double>(X), static_cast<double>(Y)}; }
  /// The host's 32-bit point; a coordinate beyond 32 bits becomes the nearest that fits.
  Cadtypes::TIntPoint ToCADIntPoint() const;

  /// Length of the vector.
  double Length() const { return ToPoint2D().Mag(); }
  /// Polar angle of the vector in [0, 2π), 0 for the zero vector.
  double Angle() const { return ToPoint2D().Angle(); }
  /// Euclidean distance; the differences are taken exactly, however far apart the points are.
  double DistanceTo(const TPointL2D& P) const;
  /// The vector turned counter-clockwise by 90° and by 270°.
  constexpr TPointL2D RotateBy90() const { return {(-*this).Y, X}; }
  /// The vector turned by 270°.
  constexpr TPointL2D RotateBy270() const { return {Y, (-*this).X}; }

 private:
  static constexpr std::uint64_t Bits(std::int64_t Value) {
    return static_cast<std::uint64_t>(Value);
  }
  static constexpr std::int64_t Wrap(std::uint64_t Bits) { return static_cast<std::int64_t>(Bits); }
};

// Members of hash sets that compare bytes.
static_assert(sizeof(TPointL2D) == 16);

/// Small operations on points and vectors.
class TPoint2DUtils {
 public:
  /// Coordinate `CoorId` of the point: 0 = X, 1 = Y.
  /// Errors: any other index, `EParamError` "[Error] TPoint2DUtils.GetCoor: 参数错误".
  static double GetCoor(const TPoint2D& Point, int CoorId);

  /// Both coordinates are finite.
  static bool IsFinite(const TPoint2D& P) { return std::isfinite(P.X) && std::isfinite(P.Y); }

  /// Lexicographic order by exact signs, X then Y: −1, 0 or 1.
  static int CompareByXY(const TPoint2D& A, const TPoint2D& B) {
    if (const int Sign = CompareExact(A.X, B.X)) return Sign;
    return CompareExact(A.Y, B.Y);
  }
  /// The same by Y, then X.
  static int CompareByYX(const TPoint2D& A, const TPoint2D& B);

  /// The quadrant of a vector, 1..4 counter-clockwise. Each quadrant has its first half axis and
  /// not the next one: +X is in 1, +Y in 2, −X in 3, −Y in 4. The zero vector and NaN are in none:
  /// 0.
  static int Quadrant(const TPoint2D& Vector);

  /// Mirrored in the Y axis: (−X, Y).
  static constexpr TPoint2D YMirror(const TPoint2D& P) { return {-P.X, P.Y}; }
  /// Mirrored in the infinite line through `Axis`; an axis of no length changes nothing.
  static TPoint2D Mirror(const TPoint2D& P, const TVLine2D& Axis);
  /// The vector scaled to the given length, turned round by a negative one. The zero vector has no
  /// direction and stays what it is.
  static TPoint2D Stretch(const TPoint2D& Vector, double Length);

  /// Unsigned angle between the two vectors, in [0, π].
  static double AbsAngle(const TPoint2D& Vec1, const TPoint2D& Vec2);
  /// Area of the triangle, positive when A, B, C run counter-clockwise; without sign if `IsAbs`.
  static double TriangleArea(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C, bool IsAbs);
  /// Centre of the circle inscribed in the triangle. Of collinear points the limit, a point on
  /// their line; of three equal points that point.
  static TPoint2D InCenter(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C);
  /// (B.X − A.X)(C.Y − A.Y) − (C.X − A.X)(B.Y − A.Y): positive when C is left of A→B. Twice the
  /// signed area of the triangle, not normalised.
  static constexpr double IsLeft(const TPoint2D& A, const TPoint2D& B, const TPoint2D& C) {
    return (B.X - A.X) * (C.Y - A.Y) - (C.X - A.X) * (B.Y - A.Y);
  }

  /// For inspection: a line with the colour, then the point's debug text.
  /// Errors: the file cannot be written, `EInOutError`.
  static void WriteToFile(const TPoint2D& P, const std::string& FileName,
                          std::string_view Colour = kDrawingColour);
};

/// Operations on the eight compass directions. Y grows upwards; `drAny` is no direction, so that
/// every operation on it raises its 参数错误.
class TDirUtils {
 public:
  /// The direction of a host window's edge or corner, by the window manager's sizing codes:
  /// 1 left, 2 right, 3 up, 4 left-up, 5 right-up, 6 down, 7 left-down, 8 right-down.
  /// Errors: another code, "[Error] TDirUtils.WindowsDirToDir: 参数错误".
  static TDir WindowsDirToDir(int WindowsDir);
  /// The inverse of `WindowsDirToDir`.
  /// Errors: no direction, "[Error] TDirUtils.DirToWindowsDir: 参数错误".
  static int DirToWindowsDir(TDir Dir);
  /// One step of the lattice in that direction: coordinates −1, 0 or 1, so that a diagonal one has
  /// length √2.
  /// Errors: no direction, "[Error] TDirUtils.DirToVec: 参数错误".
  static TPoint2D DirToVec(TDir Dir);
  /// The remainder that has the sign of the divisor: in [0, Divisor) for a positive one. 0 when the
  /// divisor is 0.
  static int ModWithDivisor(int Dividend, int Divisor);
  /// The opposite direction.
  /// Errors: no direction, "[Error] TDirUtils.Reverse: 参数错误".
  static TDir Reverse(TDir Dir);
  /// `OriDir` turned by `N` times 90°, counter-clockwise for positive `N`.
  /// Errors: no direction, "[Error] TDirUtils.RotateN90Degrees: 参数错误".
  static TDir RotateN90Degrees(TDir OriDir, int N);
};

}  // namespace tarnalgo
