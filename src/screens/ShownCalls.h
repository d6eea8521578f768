// The calls in progress that the display may show, in the order of the lines. A refused call that the settings hide, or
// one for an own number without display, is none of them: no other call's coming or going brings it out.
#pragma once

#include <memory>
#include <vector>

#include "core/CallPipeline.h"
#include "data/Settings.h"

namespace vorlix {

class ShownCalls {
 public:
  // All must outlive the object.
  ShownCalls(const PipelineState& state, const Settings& settings, OwnNumbers& ownNumbers)
      : state_(state), settings_(settings), ownNumbers_(ownNumbers) {}

  std::vector<std::shared_ptr<oDataCall>> Read() const;
  bool IsEmpty() const { return Read().empty(); }
  // The call is in progress, be it shown or not.
  bool IsInProgress(const oDataCall& call) const;
  // A call in progress that is not shown.
  bool HasHidden() const { return Read().size() < state_.ActiveCallList.Count(); }
  // The call at a place of the pipeline's list, from 0; nothing outside.
  std::shared_ptr<oDataCall> Listed(int place) const;

  // Whether two records are of the same call: a line id is used again.
  static bool IsSame(const oDataCall& one, const oDataCall& other) {
    return one.PLCI == other.PLCI && one.CallDateTime == other.CallDateTime;
  }

 private:
  bool IsHidden(const oDataCall& call) const;

  const PipelineState& state_;
  const Settings& settings_;
  OwnNumbers& ownNumbers_;
};

}  // namespace vorlix
