#pragma once  // tests/support/DataFolder.h

#include <cstdlib>
#include <filesystem>

namespace tarnalgo::test {

/// A folder of data found in the field, which is no part of the project: a test that finds it
/// missing skips. The environment variable TARNALGO_DATA leads elsewhere.
inline std::filesystem::path DataFolder(const char* Name) {
  const char* const Variable = std::getenv("TARNALGO_DATA");
  return std::filesystem::path(Variable != nullptr ? Variable : TARNALGO_DATA) / Name;
}

}  // namespace tarnalgo::test
