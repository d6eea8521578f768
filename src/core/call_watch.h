// What a line source reports beside the pipeline, for whoever shows the course of a call: the pipeline knows only that
// a call has ended, and dialled calls never enter it.
#pragma once

#include <cstdint>

#include "core/oDataCall.h"

namespace vorlix {

class CallWatch {
 public:
  virtual ~CallWatch() = default;
  // An own telephone dials.
  virtual void OnDialled(const oDataCall& call) = 0;
  virtual void OnAnswered(const oDataCall& call) = 0;
  // AVMCallperiod is the connected time; NewCall is still true for a call that nobody took.
  virtual void OnEnded(const oDataCall& call) = 0;
  // The ringing is over; the source cannot tell whether somebody took the call.
  virtual void OnOver(std::int32_t PLCI) = 0;
};

class NoCallWatch : public CallWatch {
 public:
  void OnDialled(const oDataCall&) override {}
  void OnAnswered(const oDataCall&) override {}
  void OnEnded(const oDataCall&) override {}
  void OnOver(std::int32_t) override {}
};

}  // namespace vorlix
