// Rings the running program without a line: forges the very message that the active source would deliver and hands it
// to that source's own routine. While the simulation is open no real call of any source is seen.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "core/pipeline_ports.h"
#include "data/Settings.h"
#include "services/DateTime.h"

namespace vorlix {

class fSimulation : public SimulationWindow {
 public:
  static constexpr int kSlots = 16;

  // What a simulated message of the driver is about.
  struct Call {
    std::string DataNumber;
    std::string MSN;
    std::int32_t PLCI = 0;
  };

  struct Ports {
    const CivilClock& clock;
    Settings& settings;
    OwnNumbers& ownNumbers;
    // The receiving routines of the three sources. Event 0 is a ring, 2 the end of a call.
    std::function<void(int event)> CAPI_GetMessage;
    std::function<void(const std::string& line)> AVM_GetMessage;
    std::function<void(const std::string& line)> NCID_GetMessage;
    std::function<int()> countBChannels;
    std::function<void()> resetDisplay;
    std::function<void()> saveSettings = {};  // after SimWrite has changed
  };

  // All ports must outlive the object.
  explicit fSimulation(Ports ports) : ports_(std::move(ports)) {}

  void Form_Load();
  // Ends every simulated call, resets the display and lets real calls through again.
  void cmdCancel_Click();

  // Called after each change of the lines or of the window's state; the view is drawn anew. The routine may be empty.
  void OnChange(std::function<void()> changed) { changed_ = std::move(changed); }

  // Whether a simulated call reaches journal, counters and the rest.
  bool SimWrite() const { return ports_.settings.General.SimWrite; }
  void chkSimWrite_Click(bool write);

  // What stands in front of the number as it is typed.
  static std::string labPraefix(bool isNational) { return isNational ? "0" : "00"; }

  // The own number that is proposed: the first of the table that has one.
  std::string ProposedMSN();

  // Rings: a number as typed behind the prefix, which is that of a national or of a foreign call; what cannot be
  // dialled is left out. False when all lines are in use.
  bool cmdSim_Click(const std::string& typed, const std::string& MSN, bool isNational);
  // How many calls there can be at a time.
  int Lines() const;
  // Whether a further call can be made.
  bool CanRing() const { return FreeSlot() >= 0; }
  bool IsUsed(int slot) const { return slots_.at(static_cast<std::size_t>(slot)).used; }
  // What a slot's line shows; empty for a free one.
  const std::string& Label(int slot) const { return slots_.at(static_cast<std::size_t>(slot)).label; }

  bool IsOpen() override { return SimulationOpen_; }
  bool HasCall(std::int32_t PLCI) override { return PLCI >= 0 && PLCI < kSlots && IsUsed(PLCI); }
  void cmdTrennen_Click(std::int32_t slot) override;

  // The call that the next message of the driver is about.
  const Call& GetSimulationsData() const { return current_; }

 private:
  struct Slot {
    bool used = false;
    std::string label;
  };

  int FreeSlot() const;
  void Forge(const Call& call);
  void ForgeEnd();
  std::string Stamp() const;

  void TellChange() const;

  Ports ports_;
  std::function<void()> changed_;
  bool SimulationOpen_ = false;
  std::array<Slot, kSlots> slots_;
  Call current_;
};

}  // namespace vorlix
