#pragma once  // tests/support/TempFile.h

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace tarnalgo::test {

/// The path of a file of the running test, which is not there before it nor after it.
class TTempFile {
 public:
  TTempFile()
      : FPath(testing::TempDir() + "tarnalgo_" +
              testing::UnitTest::GetInstance()->current_test_info()->name()) {
    std::filesystem::remove(FPath);
  }
  ~TTempFile() { std::filesystem::remove(FPath); }
  TTempFile(const TTempFile&) = delete;
  TTempFile& operator=(const TTempFile&) = delete;

  const std::string& Path() const { return FPath; }
  void Write(std::string_view Bytes) const {
    std::ofstream File(FPath, std::ios::binary);
    File << Bytes;
  }
  std::string Read() const {
    std::ifstream File(FPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(File), {}};
  }

 private:
  std::string FPath;
};

}  // namespace tarnalgo::test
