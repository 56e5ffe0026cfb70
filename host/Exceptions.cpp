#include "host/Exceptions.h"

namespace tarnalgo {

std::string ErrorMessage(std::string_view Where, std::string_view Text) {
  std::string Message = "[Error] ";
  Message.append(Where).append(": ").append(Text);
  return Message;
}

std::string AssertionMessage(std::string_view Text, std::string_view Unit, int Line) {
  std::string Message = "Assertion failure";
  if (!Text.empty()) Message.append(": ").append(Text);
  Message.append(" (").append(Unit).append(", line ").append(std::to_string(Line)).append(")");
  return Message;
}

}  // namespace tarnalgo
