// The calls in progress, in the order of the lines.
#pragma once

#include <memory>
#include <vector>

#include "core/CallPipeline.h"

namespace vorlix {

inline std::vector<std::shared_ptr<oDataCall>> ActiveCalls(const PipelineState& state) {
  std::vector<std::shared_ptr<oDataCall>> calls;
  for (const auto& entry : state.ActiveCallList.GetCollection()) {
    if (auto call = state.ActiveCallList.ItemByKeyAs<oDataCall>(entry.key)) calls.push_back(std::move(call));
  }
  return calls;
}

}  // namespace vorlix
