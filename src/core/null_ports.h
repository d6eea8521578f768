// Null objects behind the pipeline's ports: what a system without that part does, which is nothing.
#pragma once

#include "core/pipeline_ports.h"

namespace vorlix {

class NoOwnNumbers : public OwnNumbers {
 public:
  bool IsMSNFunctionActiv(const std::string&, int function) override { return function >= 0 && function <= 4; }
  bool IsOwnNumber(const std::string&) override { return false; }
  const clsCollection& Table() override { return empty_; }

 private:
  clsCollection empty_;
};

class NoPhoneBook : public PhoneBook {
 public:
  int GetNumberData(oDataCall&, bool, bool) override { return kNoEntry; }
  void CountDialled(const std::string&) override {}
};

class NoTeleControl : public TeleControl {
 public:
  void FernwirkAction(oDataCall&) override {}
};

class NoBlocking : public Blocking {
 public:
  void FuncBlocking_GetStatus(oDataCall&) override {}
  std::string FuncBlocking_GetDescription(int) override { return {}; }
};

class NoSchedules : public Schedules {
 public:
  bool IsTimePeriodActiv(std::string_view, bool fallback) override { return fallback; }
};

class NoCallCopy : public CallCopy {
 public:
  void CopyFunctionNew(const oDataCall&) override {}
};

class NoExportStarter : public ExportStarter {
 public:
  void EnableExportStart(int) override {}
};

class NoMailQueue : public MailQueue {
 public:
  bool FuncMail_AddMailToCollection(const std::string&, const std::string&) override { return false; }
  void FuncMail_MailSend(const std::string&, const std::string&) override {}
};

class NoProgramStarter : public ProgramStarter {
 public:
  void Add(const oDataRunProg&, RunTiming) override {}
};

class NoReverseSearch : public ReverseSearch {
 public:
  bool IsActive() override { return false; }
  bool Exists() override { return false; }
};

class NoTrayBalloon : public TrayBalloon {
 public:
  bool IsShown() override { return false; }
  void CreateTrayInfo(const std::string&, int) override {}
};

class NoJournalWindow : public JournalWindow {
 public:
  bool IsOpen() override { return false; }
  void ViewDataByCall(const oDataCall&) override {}
  void CallReset(std::int32_t) override {}
  void AddItemToDataSource(const oDataCall&) override {}
  void SetCallPeriod(const oDataCall&) override {}
};

class NoNewCallsWindow : public NewCallsWindow {
 public:
  bool IsOpen() override { return false; }
  void AddItemToDataSource(const oDataCall&) override {}
  void loadNewCalls() override {}
};

class NoMaxiDisplay : public MaxiDisplay {
 public:
  bool IsOpen() override { return false; }
  bool IsVisible() override { return false; }
  void Hide() override {}
  void SetEndMark(EndMark) override {}
};

class NoCardWindow : public CardWindow {
 public:
  bool IsOpen() override { return false; }
  void BringVcardToTop() override {}
};

class NoSound : public Sound {
 public:
  void Play(const std::string&) override {}
  bool PlayPersonal(const std::string&) override { return false; }
  bool IsVip(const std::string&) override { return false; }
};

class NoMaps : public Maps {
 public:
  void GotoMaps(const std::string&, bool) override {}
  bool IsForbidden() override { return false; }
};

class NoCapiLine : public CapiLine {
 public:
  void CAPIResponse(bool, std::int32_t, bool, int) override {}
  void CAPIReset() override {}
};

class NoPrefixInput : public PrefixInput {
 public:
  void Open() override {}
  bool IsAsking() override { return false; }
};

class NoSimulationWindow : public SimulationWindow {
 public:
  bool IsOpen() override { return false; }
  void cmdTrennen_Click(std::int32_t) override {}
};

}  // namespace vorlix
