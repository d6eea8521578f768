#include "app/LineSources.h"

#include "services/clsErrorHandling.h"

namespace vorlix {

LineSources::LineSources(const System& parts)
    : system(parts),
      switches(parts.settings),
      helpers({parts.link, parts.processes, parts.files, parts.events, parts.state}, parts.folders.ProgramFolder()),
      router({parts.loop.GetClock(), parts.logs, switches, parts.events, parts.known.numbers, parts.known.ownNumbers,
              parts.known.book, parts.records, parts.journalWindow, parts.newCallsWindow, parts.prefixInput, simulation,
              parts.watch}),
      ncid({parts.loop.GetClock(), parts.logs, switches, parts.events, parts.known.numbers, parts.known.ownNumbers,
            parts.prefixInput, simulation, parts.watch}),
      capiSession({parts.driver, parts.events, switches, parts.loop,
                   [this] { return LoadSpecSwitches(system.ini, system.folders).CAPI; },
                   [this] { system.display.DisplayUpdate(false); }},
                  parts.spec.CAPI),
      capi(CapiPorts()),
      simulation(SimulationPorts()),
      service({parts.serviceLink, parts.processes, parts.files, parts.timers, parts.logs, parts.messages, parts.state,
               [this] { return system.spec.LogMode.NTService; }, [this] { return system.settings.General.LogCount; }},
              parts.folders.ProgramFolder(), parts.folders.ProgramData()) {
  helpers.Bind(kSourceAVM, router);
  helpers.Bind(kSourceNCID, ncid);
  system.timers.tmCAPI->SetTick([this] { capi.tmCAPI_Timer(*system.timers.tmCAPI); });
}

modCallFunctions_CAPI::Ports LineSources::CapiPorts() {
  return {capiSession,
          system.loop.GetClock(),
          system.logs,
          switches,
          system.events,
          system.known.ownNumbers,
          system.prefixInput,
          simulation,
          system.watch,
          [this](const std::string& prefix) { system.known.numbers.LastPrefix = prefix; },
          [this](const std::string& number, const std::string& infoPrefix, const std::string& zeros) {
            system.prefixInput.DataToPrefixCheck(number, infoPrefix, zeros);
          },
          [this](std::string& number, std::string& MSN, std::int32_t& PLCI) {
            const fSimulation::Call& call = simulation.GetSimulationsData();
            number = call.DataNumber;
            MSN = call.MSN;
            PLCI = call.PLCI;
          }};
}

fSimulation::Ports LineSources::SimulationPorts() {
  return {system.loop.GetClock(),
          system.settings,
          system.known.ownNumbers,
          [this](int event) { capi.CAPI_GetMessage(true, event); },
          [this](const std::string& line) { router.AVM_GetMessage(line, true); },
          [this](const std::string& line) { ncid.NCID_GetMessage(line, true); },
          [this] { return capiSession.CountBChannels(); },
          [this] { system.resetDisplay(); },
          [this] { system.settingsStore.SaveSimWrite(); }};
}

void LineSources::Attach(StartUp& startUp) {
  auto& general = system.settings.General;
  startUp.When(StartPhase::kRegisterCAPI, [&general] { return general.CallMode_CAPI; });
  startUp.Do(StartPhase::kRegisterCAPI, [this] { capiSession.CAPIInit(false); });
  startUp.When(StartPhase::kRegisterAVM, [&general] { return general.CallMode_AVM; });
  startUp.Do(StartPhase::kRegisterAVM, [this] { RegisterSource(kSourceAVM, system.settings.General.CallMode_AVM); });
  startUp.When(StartPhase::kRegisterNCID, [&general] { return general.CallMode_NCID; });
  startUp.Do(StartPhase::kRegisterNCID, [this] { RegisterSource(kSourceNCID, system.settings.General.CallMode_NCID); });
}

void LineSources::Attach(ClockJobs& jobs) {
  jobs.everySecond.emplace_back([this] { ncid.TimerTick(); });
  jobs.everySecond.emplace_back([this] { helpers.TimerTick(); });
}

void LineSources::Attach(ShutDown& shutDown) {
  shutDown.On(UnloadStep::kReleaseCAPI,
              [this](UnloadReason reason) { capiSession.CAPIRelease(reason == UnloadReason::kSystem); });
  shutDown.On(UnloadStep::kTerminateHelpers, [this](UnloadReason) { helpers.Socket_Proc_Terminate(); });
}

// A helper program that is missing costs that source only.
void LineSources::RegisterSource(int source, bool& mode) {
  if (helpers.Socket_Proc_Init(source)) return;
  mode = false;
  ErrorHandling().ErrorLogForceWrite("modProcMessage.Socket_Proc_Init", {source});
  system.display.DisplayUpdate(false);
}

}  // namespace vorlix
