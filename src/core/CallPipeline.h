// The one pipeline through which every call travels. Each line source turns what it receives into the numbered events of
// core/call_events.h; here a new call is looked up, judged, shown, reported and, at its end, journalled. The order of
// the steps is the behaviour, so each event reads from top to bottom as the list of its steps.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/MainTimers.h"
#include "core/call_events.h"
#include "core/pipeline_options.h"
#include "core/pipeline_ports.h"
#include "platform/MessageLoop.h"
#include "services/clsCollection.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

// Everything the pipeline talks to; all must outlive it.
struct PipelinePorts {
  MessageLoop& loop;
  MainTimers& timers;
  PipelineSwitches& switches;
  modAll_MsgBox& messages;
  NumberAnalysis& numbers;
  OwnNumbers& ownNumbers;
  PhoneBook& book;
  TeleControl& teleControl;
  Blocking& blocking;
  Schedules& schedules;
  CallCopy& copy;
  CallRecords& records;
  ExportStarter& exports;
  MailQueue& mail;
  ProgramStarter& programs;
  ReverseSearch& search;
  CallDisplay& display;
  TrayBalloon& balloon;
  JournalWindow& journalWindow;
  NewCallsWindow& newCallsWindow;
  MaxiDisplay& maxiDisplay;
  CardWindow& cardWindow;
  Sound& sound;
  Maps& maps;
  CapiLine& capi;
  PrefixInput& prefixInput;
  SimulationWindow& simulation;
};

// State that belongs to the pipeline and that others look at.
struct PipelineState {
  clsCollection ActiveCallList;  // of oDataCall, keyed by the decimal PLCI
  bool PipelineBusy = false;     // between events 11 and 13
  std::string LastNumber;        // normal form of the newest call's number
  bool SocketConnected = false;
  int SoundRepeatCount = 0;
  bool ExitInProgress = false;
};

class CallPipeline : public CallEvents {
 public:
  CallPipeline(PipelinePorts ports, PipelineState& state);

  // Makes the form's dispatcher run under the error trap: a failing step ends the event, and the next proceeds.
  DateTime CAPI_FunctionsForwarder(int source, int event, std::int32_t PLCI, std::int16_t CIP, std::string& number,
                                   const std::string& MSN, bool simulated) override;
};

}  // namespace vorlix
