#pragma once  // geometryAlgo/ClipperCall.h

#include <polyclipping/clipper.hpp>
#include <string_view>

#include "host/Exceptions.h"

namespace tarnalgo {

/// Runs `Action`; a failure of the clipping library becomes ours, "[Error] Where: text of the
/// library". Internal to sources that call the library.
template <class TAction>
auto CallClipper(std::string_view Where, TAction&& Action) {
  try {
    return Action();
  } catch (const ClipperLib::clipperException& Failure) {
    RaiseError(Where, Failure.what());
  }
}

}  // namespace tarnalgo
