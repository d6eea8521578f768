// What the commands of the main menu, the hot key and the buttons of the calls do, whatever display they stand on: the
// refusal of a ringing call by hand, the check marks, the resets.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "core/CallPipeline.h"
#include "data/Settings.h"

namespace vorlix {

class DisplayCommands {
 public:
  // Hooks may be left empty.
  struct Ports {
    Settings& settings;  // the check marks live here; they are saved with what the program saves of itself at its end
    PipelineState& state;
    CallDisplay& display;
    CapiLine& capi;
    SimulationWindow& simulation;
    std::function<void()> silentModeChanged;
    std::function<void()> resetDisplay;
    std::function<void()> resetCAPI;  // as asked for by the user
  };

  // All ports must outlive the object.
  explicit DisplayCommands(Ports ports) : ports_(std::move(ports)) {}

  // Refuses the first ringing call. False when nothing rings that could be refused: only the line of a driver takes a
  // refusal.
  bool ClickFromToolbar();
  // Refuses the call of that line id: a display may show calls that are over, so no position tells which is meant.
  bool RejectCall(std::int32_t PLCI);

  // The check marks, each on its own.
  void mnuBlockAll_Click() { ToggleReject(ports_.settings.General.BlockAll); }
  void mnuBlockAllByTime_Click() { ToggleReject(ports_.settings.General.BlockAllByTime); }
  void mnuSilentMode_Click();
  void mnuNoFunctionMail_Click() { Toggle(ports_.settings.General.MenuNoMail); }
  void mnuNoFunctionBatch_Click() { Toggle(ports_.settings.General.MenuNoBatch); }

  void mnuReset_Click();
  // Does nothing while no driver is in use.
  void mnuCAPIReset_Click();

 private:
  static void Toggle(bool& mark) { mark = !mark; }
  void ToggleReject(bool& mark);
  bool Reject(std::size_t line);
  std::shared_ptr<oDataCall> CallOf(std::size_t line) const;

  Ports ports_;
};

}  // namespace vorlix
