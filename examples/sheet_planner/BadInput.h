#pragma once  // examples/sheet_planner/BadInput.h

#include <stdexcept>

namespace sheet_planner {

/// The drawing cannot be planned; the message is one line for the user.
class EBadInput : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace sheet_planner
