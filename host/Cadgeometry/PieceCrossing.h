#pragma once  // host/Cadgeometry/PieceCrossing.h

#include <array>

#include "host/Cadgeometry/CurvePiece.h"

namespace tarnalgo {

/// A place where two pieces meet, in their own parameters.
struct TPieceContact {
  double U1 = 0.0;  ///< Parameter U on the first piece.
  double U2 = 0.0;  ///< Parameter U on the second piece.
};

/// A stretch along which two pieces run within the tolerance of each other: ascending in U1, in
/// either sense in U2.
struct TPieceOverlap {
  TPieceContact From;  ///< Its end with the smaller U1.
  TPieceContact To;    ///< Its end with the larger U1.
  TPieceContact Best;  ///< What names the place, should the stretch turn out to be one place.
};

/// Where two pieces meet.
///
///     const TPieceCrossing Crossing(A, B, kLinearTolerance);
///     for (const TPieceContact& Contact : Crossing.Contacts()) Mark(A.Eval(Contact.U1));
///
/// Pieces meet wherever they come within `Tol` of each other. A stretch along which they stay
/// within `Tol` is one contact; it is an overlap when both its ends are ends of one of the pieces
/// and lie more than `Tol` apart. So a tangent counts once, and so do two crossings with less than
/// `Tol` between the curves from one to the other. An end of a piece within `Tol` of the other
/// piece is named exactly (U = 0 or 1) in preference to a crossing beside it.
/// Tolerance: `Tol` is a length, not negative; the rounding of the coordinates is added.
/// Coordinates should keep their fourth powers finite (`TCurvePiece::Scaled`).
/// Cost: no allocation for lines and arcs. Two cubics: bounded subdivision, down to pieces as flat
/// as the tolerance at worst.
class TPieceCrossing {
 public:
  /// Computes all meetings of the two.
  TPieceCrossing(const TCurvePiece& A, const TCurvePiece& B, double Tol);

  /// A list in place.
  template <class T, int Capacity>
  class TShortList {
   public:
    ///@{
    /// The items in the order of addition.
    const T* begin() const { return FItems.data(); }
    const T* end() const { return FItems.data() + FCount; }
    T* begin() { return FItems.data(); }
    T* end() { return FItems.data() + FCount; }
    ///@}
    int Count() const { return FCount; }                ///< Items present.
    bool IsFull() const { return FCount == Capacity; }  ///< No room for another item.
    ///@{
    /// Item `Index`, which is not checked.
    T& operator[](int Index) { return FItems[static_cast<std::size_t>(Index)]; }
    const T& operator[](int Index) const { return FItems[static_cast<std::size_t>(Index)]; }
    ///@}
    /// Beyond the capacity an item is dropped.
    void Add(const T& Item) {
      if (!IsFull()) FItems[static_cast<std::size_t>(FCount++)] = Item;
    }
    /// Drops the items from `Count` on.
    void Truncate(int Count) { FCount = Count; }

   private:
    std::array<T, static_cast<std::size_t>(Capacity)> FItems{};
    int FCount = 0;
  };

  /// More than any two pieces can have: two cubics cross nine times, and each has two ends.
  static constexpr int kMostContacts = 32;
  /// Meetings in single places.
  using TContacts = TShortList<TPieceContact, kMostContacts>;
  /// Meetings along a stretch.
  using TOverlaps = TShortList<TPieceOverlap, 4>;

  /// Ascending in U1, none of them within an overlap.
  const TContacts& Contacts() const { return FContacts; }
  /// Ascending in U1.
  const TOverlaps& Overlaps() const { return FOverlaps; }
  /// The pieces do not meet.
  bool IsEmpty() const { return FContacts.Count() == 0 && FOverlaps.Count() == 0; }

 private:
  TContacts FContacts;
  TOverlaps FOverlaps;
};

/// `Tol` with what coordinates of that magnitude round to; 0 where it is negative or NaN.
double ToleranceWithRounding(double Tol, double Magnitude);

}  // namespace tarnalgo
