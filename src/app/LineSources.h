// Where calls come from, put together: router, NCID server, CAPI driver, the simulation of all three, and the service
// that may hold the driver. Members stand in the order in which they depend on each other; who names the simulation,
// which needs them all, uses it only once the program runs.
#pragma once

#include "app/KnownNumbers.h"
#include "app/SettingsSwitches.h"
#include "core/MainTimers.h"
#include "core/ShutDown.h"
#include "data/SpecSwitches.h"
#include "lines/AVM_monitor.h"
#include "lines/CAPI_session.h"
#include "lines/NCID_monitor.h"
#include "lines/ServiceLink.h"
#include "lines/modCallFunctions_CAPI.h"
#include "lines/modProcMessage.h"
#include "screens/fInputVorwahl.h"
#include "screens/fSimulation.h"

namespace vorlix {

struct LineSources {
  struct System {
    MessageLoop& loop;
    MessageLink& link;         // to the helper programs
    MessageLink& serviceLink;  // to the service
    Processes& processes;
    FileStore& files;
    CapiDriver& driver;
    LogStore& logs;
    const Folders& folders;
    modAPI_INI& ini;
    Settings& settings;
    modSettings& settingsStore;
    const SpecSwitches& spec;
    MainTimers& timers;
    PipelineState& state;
    modAll_MsgBox& messages;
    KnownNumbers& known;
    CallEvents& events;
    CallRecords& records;
    JournalWindow& journalWindow;
    NewCallsWindow& newCallsWindow;
    fInputVorwahl& prefixInput;
    CallDisplay& display;
    CallWatch& watch;
    std::function<void()> resetDisplay;
  };

  explicit LineSources(const System& parts);

  void Attach(StartUp& startUp);
  void Attach(ClockJobs& jobs);
  void Attach(ShutDown& shutDown);

  System system;
  LineSettings switches;
  modProcMessage helpers;
  AVM_monitor router;
  NCID_monitor ncid;
  CAPI_session capiSession;
  modCallFunctions_CAPI capi;
  fSimulation simulation;
  ServiceLink service;

 private:
  modCallFunctions_CAPI::Ports CapiPorts();
  fSimulation::Ports SimulationPorts();
  void RegisterSource(int source, bool& mode);
};

}  // namespace vorlix
