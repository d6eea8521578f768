// The pipeline's surroundings as one tape: every port writes down what it was asked, in order.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/CallPipeline.h"
#include "core/null_ports.h"
#include "fakes/ManualReactor.h"

namespace vorlix {

class RecordingPorts : public PipelineSwitches,
                       public NumberAnalysis,
                       public NoOwnNumbers,
                       public PhoneBook,
                       public TeleControl,
                       public Blocking,
                       public Schedules,
                       public CallCopy,
                       public CallRecords,
                       public ExportStarter,
                       public MailQueue,
                       public ProgramStarter,
                       public ReverseSearch,
                       public CallDisplay,
                       public TrayBalloon,
                       public JournalWindow,
                       public NewCallsWindow,
                       public Sound,
                       public Maps,
                       public CapiLine,
                       public PrefixInput,
                       public SimulationWindow,
                       public MsgBoxDoor {
 public:
  std::vector<std::string> tape;
  std::vector<std::string> Taken() { return std::exchange(tape, {}); }

  // What the world is like.
  PipelineOptions options;
  std::string functionsOff;  // digits of the own number's functions that are off
  bool isRemote = false;
  std::string name, address;
  bool isRefused = false;
  bool isPeriodOn = true;
  bool isJournalOpen = false;
  bool isNewCallsOpen = false;
  bool isBalloonShown = false;
  bool isSearching = false;
  std::string personalSound;
  clsCollection ownNumbers;

  void Note(const std::string& text) { tape.push_back(text); }

  PipelineOptions Read() const override { return options; }
  std::string fVW(int source, const std::string& number) override {
    return number.starts_with("+") ? "00" + number.substr(1) : number + (source == 16 ? "" : "!");
  }
  NumberTexts GetOVW(const std::string&) override { return {}; }
  bool IsMSNFunctionActiv(const std::string&, int function) override {
    return functionsOff.find(std::to_string(function)) == std::string::npos;
  }
  const clsCollection& Table() override { return ownNumbers; }
  int GetNumberData(oDataCall& call, bool add, bool count) override {
    Note("book " + call.DataNumber() + (add ? " add" : "") + (count ? " count" : ""));
    call.Name(name);
    call.Address(address);
    return 0;
  }
  void CountDialled(const std::string&) override {}
  void FernwirkAction(oDataCall& call) override { call.Fernwirk = isRemote; }
  void FuncBlocking_GetStatus(oDataCall& call) override {
    Note("judge");
    call.Blocked = isRefused;
    if (isRefused) call.BlockFunction = 3;
  }
  std::string FuncBlocking_GetDescription(int code) override { return "reason " + std::to_string(code); }
  bool IsTimePeriodActiv(std::string_view period, bool) override {
    Note("period " + std::string(period));
    return isPeriodOn;
  }
  void CopyFunctionNew(const oDataCall&) override { Note("copy"); }
  std::string GetCallDataAsMailString(const oDataCall& call) override { return "mail of " + call.DataNumber(); }
  std::string GetCallDataAsFileString(const oDataCall& call) override { return "line of " + call.DataNumber(); }
  void WriteCallDataToJournalFile(const std::string& line) override { Note("journal " + line); }
  void WriteCallActiveData(const clsCollection& calls) override { Note("active " + std::to_string(calls.Count())); }
  void SetCallPeriodInJournalFile(const oDataCall&) override {}
  void EnableExportStart(int element) override { Note("export " + std::to_string(element)); }
  bool FuncMail_AddMailToCollection(const std::string& data, const std::string&) override {
    Note("add " + data);
    return true;
  }
  void FuncMail_MailSend(const std::string&, const std::string&) override { Note("send mail"); }
  void Add(const oDataRunProg& run, RunTiming timing) override {
    Note("run " + run.DataNumber + " " + std::to_string(static_cast<int>(timing)));
  }
  bool IsActive() override { return isSearching; }
  bool Exists() override { return isSearching; }
  void DisplayUpdate(bool search) override { Note(search ? "display" : "display without search"); }
  void DisplayResize() override { Note("resize"); }
  void ChangeDisplayData(const std::string& text) override { Note("idle " + text); }
  void DisplayWidth() override { Note("width"); }
  void ButtonEnableBell(int line, bool on) override { Note("bell " + std::to_string(line) + (on ? " on" : " off")); }
  void ButtonEnableHangUp(int line, HangUpMode mode, bool on) override {
    Note("hang-up " + std::to_string(line) + " " + std::to_string(static_cast<int>(mode)) + (on ? " on" : " off"));
  }
  void MarkBlocked(std::int32_t PLCI, const std::string& reason) override {
    Note("mark " + std::to_string(PLCI) + " " + reason);
  }
  bool IsShown() override { return isBalloonShown; }
  void CreateTrayInfo(const std::string& text, int) override { Note("balloon " + text); }
  void ViewDataByCall(const oDataCall&) override { Note("journal window view"); }
  void CallReset(std::int32_t) override { Note("journal window reset"); }
  void SetCallPeriod(const oDataCall&) override {}
  void Play(const std::string& file) override { Note("play " + file); }
  bool PlayPersonal(const std::string& number) override {
    if (personalSound != number) return false;
    Note("play personal");
    return true;
  }
  bool IsVip(const std::string&) override { return !name.empty(); }
  void GotoMaps(const std::string& where, bool route) override { Note((route ? "route " : "plan ") + where); }
  bool IsForbidden() override { return false; }
  void CAPIResponse(bool, std::int32_t PLCI, bool, int) override { Note("refuse " + std::to_string(PLCI)); }
  void CAPIReset() override { Note("CAPI reset"); }
  void Open() override { Note("ask prefix"); }
  bool IsAsking() override { return false; }
  void cmdTrennen_Click(std::int32_t PLCI) override { Note("end simulated " + std::to_string(PLCI)); }
  void loadNewCalls() override { Note("new calls"); }
  // Journal window, new-calls window and simulation share these; the tests open one at a time.
  bool IsOpen() override { return isJournalOpen || isNewCallsOpen; }
  void AddItemToDataSource(const oDataCall&) override { Note("window add"); }
  MsgBoxAnswer Show(std::string_view text, int, std::string_view, bool) override {
    Note("box " + std::string(text.substr(0, text.find('\r'))));
    return MsgBoxAnswer::kOk;
  }
};

}  // namespace vorlix
