// The settings that decide which calls a line source passes on, as plain values asked for anew at each line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/pipeline_ports.h"

namespace vorlix {

// Every call of a socket source has this bearer service.
inline constexpr std::int16_t kSocketCIP = 16;

struct LineOptions {
  bool CallMode_CAPI = false;
  bool AVM_SaveOutgoingCalls = false;
  bool Debug = false;  // log what the driver delivers
  bool DebugAVM = false;
  bool DebugNCID = false;
  bool SpezialCuttNull = false;
  bool NoIntern = false;
  bool MSNLO = false;
  int TKnum = 4;
  int LogCount = 25;  // kilobytes
  std::string myVWO;
  std::string myVWOP;
  bool BusyOnBusy = false;
  bool SpezialAddAreaCodeIfHide = false;
  bool CapiReleaseByShutdown = false;
  std::string ControllerActive = "10000";
};

class LineSwitches {
 public:
  virtual ~LineSwitches() = default;
  virtual LineOptions Read() const = 0;
};

// The number as the pipeline is to get it: a suppressed number travels as the unknown word, and one trailing "0" goes
// where SpezialCuttNull says so.
std::string PreparedNumber(std::string_view number, const LineOptions& options);

// Whether a call is passed on: internal numbers and foreign own numbers may be switched off.
bool IsForwarded(const std::string& number, const std::string& MSN, const LineOptions& options, OwnNumbers& ownNumbers);

}  // namespace vorlix
