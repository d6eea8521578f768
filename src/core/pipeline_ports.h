// What the call pipeline needs of the rest of the system. It knows what happens to a call and in which order; these
// small interfaces do it. Each has a null object that does what a system without that part would do, so a program can
// be put together from any subset.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/number_analysis.h"
#include "core/oDataCall.h"
#include "services/clsCollection.h"

namespace vorlix {

// Per-number switches of the own numbers.
enum MSNFunction : int { kMSNDisplay = 0, kMSNLogJournal = 1, kMSNLogBook = 2, kMSNProg = 3, kMSNSound = 4 };

class OwnNumbers {
 public:
  virtual ~OwnNumbers() = default;
  // True for every function (0 to 4) of an MSN that is not in the table.
  virtual bool IsMSNFunctionActiv(const std::string& MSN, int function) = 0;
  // Whether the table has a row of that number.
  virtual bool IsOwnNumber(const std::string& MSN) = 0;
  // The table, for the fields that a call takes over from its own number.
  virtual const clsCollection& Table() = 0;
};

class PhoneBook {
 public:
  virtual ~PhoneBook() = default;
  // Fills name, address and book fields; gives the BookKnowledge. Whether a missing number is added, and whether the
  // call counts, is the caller's to say.
  virtual int GetNumberData(oDataCall& call, bool addIfMissing, bool countCall) = 0;
  // Counts a dialled number, if the book has it, and saves the counters.
  virtual void CountDialled(const std::string& number) = 0;
};

class TeleControl {
 public:
  virtual ~TeleControl() = default;
  // Sets Fernwirk on the call when it is a remote-control call, and does what it asks for.
  virtual void FernwirkAction(oDataCall& call) = 0;
};

class Blocking {
 public:
  virtual ~Blocking() = default;
  // Judges the call: sets Blocked and BlockFunction.
  virtual void FuncBlocking_GetStatus(oDataCall& call) = 0;
  virtual std::string FuncBlocking_GetDescription(int code) = 0;
};

class Schedules {
 public:
  virtual ~Schedules() = default;
  // The fallback for a period that does not exist or is not active.
  virtual bool IsTimePeriodActiv(std::string_view name, bool fallback) = 0;
};

class CallCopy {
 public:
  virtual ~CallCopy() = default;
  virtual void CopyFunctionNew(const oDataCall& call) = 0;
};

// The journal's writing side.
class CallRecords {
 public:
  virtual ~CallRecords() = default;
  virtual std::string GetCallDataAsMailString(const oDataCall& call) = 0;
  virtual std::string GetCallDataAsFileString(const oDataCall& call) = 0;
  virtual void WriteCallDataToJournalFile(const std::string& line) = 0;
  // Rewrites the file of the calls in progress.
  virtual void WriteCallActiveData(const clsCollection& activeCalls) = 0;
  // Enters the connected time of an answered call into its line.
  virtual void SetCallPeriodInJournalFile(const oDataCall& call) = 0;
};

// Export runs: element 1 at the start of a call, 2 at its end, 3 for the table file.
class ExportStarter {
 public:
  virtual ~ExportStarter() = default;
  virtual void EnableExportStart(int element) = 0;
};

class MailQueue {
 public:
  virtual ~MailQueue() = default;
  virtual bool FuncMail_AddMailToCollection(const std::string& callData, const std::string& MSN) = 0;
  virtual void FuncMail_MailSend(const std::string& first, const std::string& second) = 0;
};

// How a started program deals with a reverse search that is still to come.
enum class RunTiming {
  kNow,
  kAfterSearch,        // it waits for the result
  kNowAndAfterSearch,  // it runs now, and once more with the name found
};

// One program start that a call asks for.
struct oDataRunProg {
  std::string Key;
  std::string DataNumber;
  DateTime CallDateTime;
  std::string MSN;
  std::string Name;
  std::string Address;
  std::int16_t CIP = 0;
  bool RunWait = false;
};

class ProgramStarter {
 public:
  virtual ~ProgramStarter() = default;
  virtual void Add(const oDataRunProg& run, RunTiming timing) = 0;
};

class ReverseSearch {
 public:
  virtual ~ReverseSearch() = default;
  // False also when there is no search at all.
  virtual bool IsActive() = 0;
  virtual bool Exists() = 0;
};

// What a line's hang-up button is: it refuses the call, or it empties the display.
enum class HangUpMode : int { kNone = 0, kStop = 1, kEraser = 2 };

// What the large window says of a call that is over.
enum class EndMark : int { kNone = 0, kEnded = 1, kBlocked = 2 };

// The caller display with its buttons. A place is that of the call in the pipeline's list, from 0; with no call left,
// place 0 is the line that stays.
class CallDisplay {
 public:
  virtual ~CallDisplay() = default;
  // Rebuilds all lines; `search` allows the automatic reverse search.
  virtual void DisplayUpdate(bool search) = 0;
  virtual void DisplayResize() = 0;
  // One idle text in place of the state.
  virtual void ChangeDisplayData(const std::string& idleText) = 0;
  virtual void DisplayWidth() = 0;
  virtual void ButtonEnableBell(int place, bool enabled) = 0;
  virtual void ButtonEnableHangUp(int place, HangUpMode mode, bool enabled) = 0;
  // Puts the block mark on the line of the call with that id.
  virtual void MarkBlocked(std::int32_t PLCI, const std::string& reason) = 0;
};

// The tray's balloon.
class TrayBalloon {
 public:
  virtual ~TrayBalloon() = default;
  // True while a balloon of a call was set up and is not dismissed.
  virtual bool IsShown() = 0;
  virtual void CreateTrayInfo(const std::string& text, int seconds) = 0;
};

class JournalWindow {
 public:
  virtual ~JournalWindow() = default;
  virtual bool IsOpen() = 0;
  virtual void ViewDataByCall(const oDataCall& call) = 0;
  virtual void CallReset(std::int32_t PLCI) = 0;
  virtual void AddItemToDataSource(const oDataCall& call) = 0;
  virtual void SetCallPeriod(const oDataCall& call) = 0;
};

class NewCallsWindow {
 public:
  virtual ~NewCallsWindow() = default;
  virtual bool IsOpen() = 0;
  virtual void AddItemToDataSource(const oDataCall& call) = 0;
  virtual void loadNewCalls() = 0;
};

class MaxiDisplay {
 public:
  virtual ~MaxiDisplay() = default;
  virtual bool IsOpen() = 0;
  virtual bool IsVisible() = 0;
  virtual void Hide() = 0;
  virtual void SetEndMark(EndMark mark) = 0;
};

class CardWindow {
 public:
  virtual ~CardWindow() = default;
  virtual bool IsOpen() = 0;
  virtual void BringVcardToTop() = 0;
};

class Sound {
 public:
  virtual ~Sound() = default;
  virtual void Play(const std::string& file) = 0;
  // Plays the sound bound to a number and forgets it; false when there is none.
  virtual bool PlayPersonal(const std::string& number) = 0;
  // Whether the caller is a known person.
  virtual bool IsVip(const std::string& number) = 0;
};

class Maps {
 public:
  virtual ~Maps() = default;
  virtual void GotoMaps(const std::string& address, bool route) = 0;
  // True while a game has the screen and nothing may pop up (fAnzeigeVerboten).
  virtual bool IsForbidden() = 0;
};

// The line of the driver.
class CapiLine {
 public:
  virtual ~CapiLine() = default;
  // Takes the call, to drop it once it is connected. Without a registered application nothing reaches a driver; a
  // simulated call goes on to "connected" at once.
  virtual void CAPIResponse(bool accept, std::int32_t PLCI, bool simulated, int reason) = 0;
  virtual void CAPIReset() = 0;
};

class PrefixInput {
 public:
  virtual ~PrefixInput() = default;
  // Asks for the own country and area code.
  virtual void Open() = 0;
  // True while the prefix is being found out by a test call: real calls are dropped.
  virtual bool IsAsking() = 0;
};

class SimulationWindow {
 public:
  virtual ~SimulationWindow() = default;
  virtual bool IsOpen() = 0;
  // Whether a simulated call of that id runs.
  virtual bool HasCall(std::int32_t) { return IsOpen(); }
  // Ends a simulated call.
  virtual void cmdTrennen_Click(std::int32_t PLCI) = 0;
};

}  // namespace vorlix
