// Whether a call is to be refused by the rules of its own number or by the blacklist. The order of the tests is the
// rule: the first whose condition holds decides, also when its schedule then lets the call through.
#pragma once

#include "core/RejectReason.h"
#include "core/pipeline_ports.h"
#include "reactions/Blacklist.h"

namespace vorlix {

class modFunction_Blocking : public Blocking {
 public:
  // Both must outlive the object.
  modFunction_Blocking(const Blacklist& list, Schedules& schedules) : list_(list), schedules_(schedules) {}

  void FuncBlocking_GetStatus(oDataCall& call) override;
  // The text of a reason; empty for 0, "Abgewiesen" for one that is not known.
  std::string FuncBlocking_GetDescription(int code) override;
  // The short name of the rule behind a reason.
  static std::string FuncBlocking_GetFunctionName(int code);

 private:
  bool BlockNoNumber(oDataCall& call);
  bool BlockNoName(oDataCall& call);
  void BlockByList(oDataCall& call);
  void Judge(oDataCall& call, std::string_view period, RejectReason reason, std::string_view trace);

  const Blacklist& list_;
  Schedules& schedules_;
};

}  // namespace vorlix
