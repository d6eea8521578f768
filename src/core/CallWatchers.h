// Several who watch the course of the calls, in the place of one.
#pragma once

#include <utility>
#include <vector>

#include "core/call_watch.h"

namespace vorlix {

class CallWatchers : public CallWatch {
 public:
  // All must outlive the object; they are told in this order.
  explicit CallWatchers(std::vector<CallWatch*> watchers) : watchers_(std::move(watchers)) {}

  void OnDialled(const oDataCall& call) override {
    for (CallWatch* watcher : watchers_)
      watcher->OnDialled(call);
  }
  void OnAnswered(const oDataCall& call) override {
    for (CallWatch* watcher : watchers_)
      watcher->OnAnswered(call);
  }
  void OnEnded(const oDataCall& call) override {
    for (CallWatch* watcher : watchers_)
      watcher->OnEnded(call);
  }
  void OnOver(std::int32_t PLCI) override {
    for (CallWatch* watcher : watchers_)
      watcher->OnOver(PLCI);
  }

 private:
  std::vector<CallWatch*> watchers_;
};

}  // namespace vorlix
