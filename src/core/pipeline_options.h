// The settings and menu states that the pipeline reads, as plain values. They are asked for anew at each event, so a
// setting that changes counts from the next call on.
#pragma once

#include <cstdint>
#include <string>

namespace vorlix {

struct PipelineOptions {
  // General
  bool CallMode_CAPI = false;
  bool SimWrite = false;
  bool RejectedCallsDontShow = false;
  bool RejectedCallsDontBatch = false;
  bool HideAllw = false;
  bool AsBaloon = false;
  bool AutoSearch = false;
  bool NewCalls = false;
  bool CAPIReset = false;
  bool BookRefresh = false;
  int CopyOption = 0;
  int CopyOptionMode = 0;
  int HideTimeTray = 60;  // seconds
  std::string myVWL;
  std::string myVWO;
  // Journal, Export, Maps, MaxiDisplay
  bool ViewDataByCall = false;
  bool Export = false;
  bool ExportCSV = false;
  bool AutoOpenPlan = false;
  bool AutoOpenRoute = false;
  bool HideByCall = false;
  // Sound
  bool ByCall = false;
  bool ByBlock = false;
  bool Repeat = false;
  bool PersonalUse = false;
  bool PersonalFail = false;
  std::string SndCall, SndVipCall, SndBlock;
  // Mail and program start
  bool MailActive = false;  // the mail function is on
  bool SendPrio = false;
  bool SendAll = false;
  bool MailInversDelay = false;
  int InversDelayTime = 0;  // seconds
  bool Run = false;
  bool RunInversDelay = false;
  bool RunInversRefresh = false;
  // Checked entries of the main menu
  bool mnuBlockAll = false;
  bool mnuBlockAllByTime = false;
  bool mnuNoFunctionBatch = false;
  bool mnuNoFunctionMail = false;
  bool mnuSilentMode = false;
  // The program was started with the word "auto".
  bool startedByAuto = false;
};

class PipelineSwitches {
 public:
  virtual ~PipelineSwitches() = default;
  virtual PipelineOptions Read() const = 0;
};

}  // namespace vorlix
