#pragma once  // host/Cadtypes/SortFew.h

#include <utility>

namespace tarnalgo {

/// Sorts a handful of numbers ascending, in place, by insertion. For arrays of a few elements:
/// `std::sort` brings its whole machinery, and GCC 12 then warns about a part of it that such an
/// array can never reach.
template <class T>
void SortFew(T* First, T* Last) {
  for (T* Next = First; Next != Last; ++Next) {
    for (T* Place = Next; Place != First && *Place < *(Place - 1); --Place) {
      std::swap(*Place, *(Place - 1));
    }
  }
}

}  // namespace tarnalgo
