// The one pipeline through which every call travels. Each line source turns what it receives into the numbered events
// of core/call_events.h; here a new call is looked up, judged, shown, reported and, at its end, journalled. The order
// of the steps is the behaviour, so each event reads from top to bottom as the list of its steps.
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

  // Runs under the error trap: a failing step ends the event, and the next one proceeds.
  DateTime CAPI_FunctionsForwarder(int source, int event, std::int32_t PLCI, std::int16_t CIP, std::string& number,
                                   const std::string& MSN, bool simulated) override;

 private:
  struct Event {
    int source;
    int event;
    std::int32_t PLCI;
    std::int16_t CIP;
    std::string& number;
    const std::string& MSN;
    bool simulated;
  };
  // A call on its way through an event, with what the steps decide once.
  struct Passage {
    std::shared_ptr<oDataCall> call;
    bool display = false;
    bool log = false;
    bool hide = false;
    bool noBatch = false;
    bool mayWrite = false;
    bool simulated = false;
  };

  DateTime CAPI_FunctionsHelper(const Event& event);

  // State of the lines (line_events.cpp).
  void SocketState(bool connected);
  void DriverFailure(const Event& event);
  void DriverRegistered();
  void DriverInitEnd();
  void ListenFailed();
  void CheckOwnPrefix();
  void ShowDisplay(bool search = true);
  void Message(const std::string& first, const std::string& second);
  void Lock();
  void Unlock();

  // A new call (new_call.cpp).
  DateTime NewCall(const Event& event);
  std::shared_ptr<oDataCall> MakeCall(const Event& event);
  void JudgeCall(oDataCall& call);
  void BlockByMainMenu(oDataCall& call);
  void StopClock(const Passage& passage);
  void CopyCall(const Passage& passage);
  void StartExport();
  void MailAtStart(const Passage& passage);
  void StartProgram(const Passage& passage);
  void ShowCall(const Passage& passage);
  void RejectCall(const Passage& passage);
  void RingCall(const Passage& passage);
  void ShowCard(const Passage& passage);
  void OpenMaps(const Passage& passage);

  // The end of a call (call_end.cpp).
  void CallEnd(const Event& event);
  void WriteEnd(const Passage& passage);
  void ShowOtherCalls(const Passage& passage);
  void LastCallEnded(const Passage& passage);
  void EndBalloon(const Passage& passage);
  void SendEndMail(const Passage& passage);
  void EndMaxiDisplay(const Passage& passage);
  void EndExports(const Passage& passage);
  void TellWindows(const Passage& passage);

  // The accepted call is connected, and the sound of a ringing one (call_sound.cpp).
  void ConnectActive(const Event& event);
  void PlayBlockSound(const oDataCall& call);
  void SoundRepeat();
  void PlayCallSound();

  Passage PassageOf(std::shared_ptr<oDataCall> call, bool simulated);
  std::shared_ptr<oDataCall> FindCall(std::int32_t PLCI) const;

  PipelinePorts ports_;
  PipelineState& state_;
  PipelineOptions options_;  // read anew at the beginning of each event and of each tick of the sound
};

}  // namespace vorlix
