// Runs a callback of the loop: whatever it throws becomes a line of the error log under that routine's name. Unlike
// Trapped() it leaves no trace entry; one for each tick and each packet would bury the others.
#pragma once

#include <string_view>
#include <utility>

#include "services/clsErrorHandling.h"

namespace vorlix {

template <class Callback>
void RunCallback(std::string_view routine, Callback&& callback) {
  try {
    std::forward<Callback>(callback)();
  } catch (...) {
    trap::Report(routine, {});
  }
}

}  // namespace vorlix
