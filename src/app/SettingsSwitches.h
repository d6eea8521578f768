// The settings in the words of those who ask for them: each room has its own small set of values.
#pragma once

#include "core/ProgramClock.h"
#include "core/pipeline_options.h"
#include "data/Settings.h"
#include "lines/CAPI_session.h"
#include "lines/line_options.h"
#include "lines/modProcMessage.h"
#include "screens/LineStates.h"

namespace vorlix {

class PipelineSettings : public PipelineSwitches {
 public:
  PipelineSettings(const Settings& settings, bool bookRefresh, bool startedByAuto)
      : settings_(settings), bookRefresh_(bookRefresh), startedByAuto_(startedByAuto) {}
  PipelineOptions Read() const override;

 private:
  const Settings& settings_;
  bool bookRefresh_;
  bool startedByAuto_;
};

class LineSettings : public LineSwitches {
 public:
  explicit LineSettings(const Settings& settings) : settings_(settings) {}
  LineOptions Read() const override;

 private:
  const Settings& settings_;
};

class SourceStates : public LineStateSource {
 public:
  SourceStates(const Settings& settings, const modProcMessage& helpers, const CAPI_session& capi)
      : settings_(settings), helpers_(helpers), capi_(capi) {}
  LineStates Read() const override;

 private:
  const Settings& settings_;
  const modProcMessage& helpers_;
  const CAPI_session& capi_;
};

ClockOptions ClockSettings(const Settings& settings);

}  // namespace vorlix
