// The window of the simulated calls. It shows what fSimulation says after each change, whoever made it.
#pragma once

#include <memory>

#include "desktop/dialogs/DialogPlace.h"
#include "screens/fSimulation.h"

namespace vorlix {

class SimulationDialog {
 public:
  // Both must outlive the object, which takes the simulation's OnChange().
  SimulationDialog(fSimulation& simulation, DialogPlace place);
  // Without the end of the simulation: that is Close(), or the user's.
  ~SimulationDialog();
  SimulationDialog(const SimulationDialog&) = delete;
  SimulationDialog& operator=(const SimulationDialog&) = delete;

  // Begins the simulation and opens the window, or brings it to the front.
  void Open();
  // Also done when the window closes.
  void KeepPlace();
  void Close();

 private:
  class Window;
  void ShowState();

  fSimulation& simulation_;
  DialogPlace place_;
  std::unique_ptr<Window> window_;  // while it is open or was once
};

}  // namespace vorlix
