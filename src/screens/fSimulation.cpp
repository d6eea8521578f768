#include "screens/fSimulation.h"

#include <algorithm>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr int kRing = 0;
constexpr int kEnd = 2;
constexpr int kFewestLines = 2;
constexpr int kMostLines = 5;

// What can be dialled: nothing else gets into the message that is forged.
std::string Dialled(std::string text) {
  std::erase_if(text, [](char c) { return std::string_view("0123456789*#").find(c) == std::string_view::npos; });
  return text;
}

}  // namespace

void fSimulation::Form_Load() {
  slots_ = {};
  SimulationOpen_ = true;
  TellChange();
}

void fSimulation::TellChange() const {
  if (changed_) changed_();
}

void fSimulation::chkSimWrite_Click(bool write) {
  ports_.settings.General.SimWrite = write;
  if (ports_.saveSettings) ports_.saveSettings();
}

void fSimulation::cmdCancel_Click() {
  Trapped("fSimulation.cmdCancel_Click", [&] {
    for (int slot = 0; slot < kSlots; ++slot) {
      if (IsUsed(slot)) cmdTrennen_Click(slot);
    }
    ports_.resetDisplay();
  });
  SimulationOpen_ = false;
  TellChange();
}

std::string fSimulation::ProposedMSN() {
  const clsCollection& table = ports_.ownNumbers.Table();
  for (std::size_t i = 1; i <= table.Count(); ++i) {
    const auto row = table.ItemByIndexAs<oDataMSN>(i);
    if (row && ports_.ownNumbers.IsOwnNumber(row->MSN)) return row->MSN;
  }
  return {};
}

int fSimulation::Lines() const {
  const int lines = ports_.countBChannels();
  return lines < 1 ? kFewestLines : std::min(lines, kMostLines);
}

int fSimulation::FreeSlot() const {
  const int lines = Lines();
  for (int slot = 0; slot < lines; ++slot) {
    if (!IsUsed(slot)) return slot;
  }
  return -1;
}

bool fSimulation::cmdSim_Click(const std::string& typed, const std::string& MSN, bool isNational) {
  return Trapped(
      "fSimulation.cmdSim_Click",
      [&] {
        const int free = FreeSlot();
        if (!SimulationOpen_ || free < 0) return false;
        const auto& general = ports_.settings.General;
        // Only a driver puts a prefix of its own in front; a router and a server write numbers as they are dialled.
        const std::string prefix = general.CallMode_CAPI || !general.myVWOP.empty() ? general.myVWOP : "0";
        const std::string number = Dialled(typed);
        Call call{number, Dialled(MSN), free};
        std::string label = UnknownNumberWord();
        if (!number.empty() && number.size() <= static_cast<std::size_t>(general.TKnum)) {
          label = number + " (" + LoadLangKey("Simulation_String_Internal", "interne Nummer"_ansi) + ")";
        } else if (!number.empty()) {
          call.DataNumber = (isNational ? prefix : "0" + prefix) + number;
          label = labPraefix(isNational) + number;
        }
        slots_.at(static_cast<std::size_t>(free)) = {true, label};
        TellChange();
        Forge(call);
        return true;
      },
      typed, MSN);
}

void fSimulation::Forge(const Call& call) {
  const auto& general = ports_.settings.General;
  if (general.CallMode_CAPI) {
    current_ = call;
    ports_.CAPI_GetMessage(kRing);
  } else if (general.CallMode_AVM) {
    ports_.AVM_GetMessage(Stamp() + ";RING;0;" + call.DataNumber + ";" + call.MSN + ";ISDN;");
  } else if (general.CallMode_NCID) {
    ports_.NCID_GetMessage("CID: *DATE*11022010*TIME*1941*LINE*" + call.MSN + "*NMBR*" + call.DataNumber +
                           "*MESG*NONE*NAME*NO NAME*");
  }
}

void fSimulation::cmdTrennen_Click(std::int32_t slot) {
  Trapped(
      "fSimulation.cmdTrennen_Click",
      [&] {
        if (slot < 0 || slot >= kSlots) return;
        slots_.at(static_cast<std::size_t>(slot)) = {};
        TellChange();
        current_.PLCI = slot;
        ForgeEnd();
      },
      slot);
}

// Every source that is on gets its end, not only the one that rang.
void fSimulation::ForgeEnd() {
  const auto& general = ports_.settings.General;
  if (general.CallMode_CAPI) ports_.CAPI_GetMessage(kEnd);
  if (general.CallMode_AVM) ports_.AVM_GetMessage(Stamp() + ";DISCONNECT;0;15;");
  if (general.CallMode_NCID) ports_.NCID_GetMessage({});
}

std::string fSimulation::Stamp() const {
  const DateTime now = ports_.clock.Now();
  return GetFormatedDateByDate(now) + " " + GetFormatedTime(now);
}

}  // namespace vorlix
