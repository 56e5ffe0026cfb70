#pragma once  // tests/hostile/Table.h

#include <cstddef>
#include <vector>

#include "tests/hostile/Hostile.h"

namespace tarnalgo::test {

/// One public operation: how it is called with hostile arguments.
struct TRow {
  const char* Name;
  const char* Class;  // of the object it is called on; null: none
  bool Mutates;       // may change that object
  void (*Call)(THostile& H, void* Self);
  void* (*MakeSelf)(THostile& H);
};

template <class T>
void* MakeSelf(THostile& H) {
  return &H.Ref<T>();
}

/// All rows of the program.
std::vector<TRow>& AllRows();

/// Adds rows to the table, before the program starts.
struct TRegisterRows {
  template <std::size_t N>
  explicit TRegisterRows(const TRow (&Rows)[N]) {
    AllRows().insert(AllRows().end(), Rows, Rows + N);
  }
};

}  // namespace tarnalgo::test

/// A row by hand for the operation `Name` (as generate.py names it); the body follows.
#define ROW(Name, Id)                                             \
  void Id(THostile& H, void*);                                    \
  const TRow Id##Rows[] = {{Name, nullptr, false, &Id, nullptr}}; \
  const TRegisterRows Id##Registered(Id##Rows);                   \
  void Id([[maybe_unused]] THostile& H, void*)
