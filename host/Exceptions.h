#pragma once  // host/Exceptions.h

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarnalgo {

/// The general failure of the library; every other class of failure derives from it.
class Exception : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A host geometry operation was given data for which it has no answer.
class EGeometry : public Exception {
 public:
  using Exception::Exception;
};

/// An argument lies outside its range: an index, a key that is present already, a bad count.
class EParamError : public Exception {
 public:
  using Exception::Exception;
};

/// A text file could not be read or written.
class EInOutError : public Exception {
 public:
  using Exception::Exception;
};

/// A consistency check of the library does not hold. Checked in every build type.
class EAssertionFailed : public Exception {
 public:
  using Exception::Exception;
};

/// "[Error] Where: Text", `Where` being class and method ("TVPolyline2D.Line").
std::string ErrorMessage(std::string_view Where, std::string_view Text);

/// "Assertion failure (Unit, line Line)", with a text "Assertion failure: Text (Unit, line Line)".
std::string AssertionMessage(std::string_view Text, std::string_view Unit, int Line);

/// Raises `E` with the message "[Error] Where: Text".
template <class E = Exception>
[[noreturn]] void RaiseError(std::string_view Where, std::string_view Text) {
  throw E(ErrorMessage(Where, Text));
}

/// Raises `E` with `Text` as it stands; for the few messages without the usual head.
template <class E = Exception>
[[noreturn]] void RaiseText(std::string_view Text) {
  throw E(std::string(Text));
}

/// Raises `EAssertionFailed`, naming the unit and a line, unless `Holds`.
inline void AssertThat(bool Holds, std::string_view Unit, int Line = __builtin_LINE()) {
  if (!Holds) throw EAssertionFailed(AssertionMessage({}, Unit, Line));
}

/// The same check with a text of its own.
inline void AssertThat(bool Holds, std::string_view Text, std::string_view Unit,
                       int Line = __builtin_LINE()) {
  if (!Holds) throw EAssertionFailed(AssertionMessage(Text, Unit, Line));
}

}  // namespace tarnalgo
