#include "reactions/modFunction_Blocking.h"

#include "core/pipeline_trace.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

// CIP values of a voice call from an ISDN telephone: speech, and telephony.
bool IsSpeech(std::int16_t CIP) {
  return CIP == 1 || CIP == 16;
}

// Which services the rule for calls without a number applies to.
bool IsServiceMeant(std::int16_t kennung, std::int16_t CIP) {
  switch (kennung) {
    case 0:
      return true;
    case 1:
      return IsSpeech(CIP);
    case 2:
      return !IsSpeech(CIP);
    default:
      return false;
  }
}

}  // namespace

void modFunction_Blocking::FuncBlocking_GetStatus(oDataCall& call) {
  Trapped(
      "modFunction_Blocking.FuncBlocking_GetStatus",
      [&] {
        if (BlockNoNumber(call) || BlockNoName(call)) return;
        BlockByList(call);
      },
      call.DataNumber(), call.MSN);
}

bool modFunction_Blocking::BlockNoNumber(oDataCall& call) {
  if (!IsUnknownNumber(call.DataNumber()) || !call.MSN_BlockNoNumber) return false;
  if (!IsServiceMeant(call.MSN_BlockKennung, call.CIP)) return false;
  Judge(call, "<BlockUnknown>", kRejectNoNumber, "Block unknown");
  return true;
}

bool modFunction_Blocking::BlockNoName(oDataCall& call) {
  if (!call.MSN_BlockNoName || IsUnknownNumber(call.DataNumber()) || call.NameMode == kNamed) return false;
  Judge(call, "<BlockNoEntry>", kRejectNoName, "Block no name");
  return true;
}

void modFunction_Blocking::BlockByList(oDataCall& call) {
  const auto match = list_.Find(call.DataNumber(), call.MSN);
  if (!match) return;
  const char* step = match->kind == BlacklistKind::kAnywhere     ? "Block by list *"
                     : match->kind == BlacklistKind::kBehindFree ? "Block by list ?"
                                                                 : "Block by list";
  Judge(call, "<BlockBlackList>", kRejectBlacklist, step);
}

// A rule without a schedule holds at all times. What a schedule would make of the reason is not kept: the record gets
// the plain one.
void modFunction_Blocking::Judge(oDataCall& call, std::string_view period, RejectReason reason,
                                 std::string_view trace) {
  if (ErrorHandling().Switches.LogOther) trace::Blocking(std::string(trace) + " (check time)");
  call.Blocked = schedules_.IsTimePeriodActiv(period, true);
  if (!call.Blocked) return;
  trace::Blocking(trace);
  call.BlockFunction = reason;
}

std::string modFunction_Blocking::FuncBlocking_GetDescription(int code) {
  switch (code) {
    case 0:
      return {};
    case 1:
      return LoadLangKey("DeclareProg_Info_RejectCause1", "Abgewiesen durch Funktion \"Alle abweisen\""_ansi);
    case 2:
      return LoadLangKey("DeclareProg_Info_RejectCause2", "Abgewiesen durch \"Telefonbuch-Eintrag\""_ansi);
    case 3:
      return LoadLangKey("DeclareProg_Info_RejectCause3", "Abgewiesen durch Funktion \"Abweisen ohne Rufnummer\""_ansi);
    case 4:
      return LoadLangKey("DeclareProg_Info_RejectCause4", "Abgewiesen durch Funktion \"Abweisen ohne Namen\""_ansi);
    case 5:
      return LoadLangKey("DeclareProg_Info_RejectCause5", "Abgewiesen manuell durch Benutzer"_ansi);
    case 6:
      return LoadLangKey("DeclareProg_Info_RejectCause6", "Abgewiesen durch Eintrag in Blackliste"_ansi);
    case 7:
      return LoadLangKey("DeclareProg_Info_RejectCause7",
                         "Abgewiesen durch Funktion \"Alle abweisen\" im Zeitfenster"_ansi);
    case 8:
      return LoadLangKey("DeclareProg_Info_RejectCause8",
                         "Abgewiesen durch \"Telefonbuch-Eintrag\" im Zeitfenster"_ansi);
    case 9:
      return LoadLangKey("DeclareProg_Info_RejectCause9",
                         "Abgewiesen durch Funktion \"Abweisen ohne Rufnummer\" im Zeitfenster"_ansi);
    case 10:
      return LoadLangKey("DeclareProg_Info_RejectCause10",
                         "Abgewiesen durch Funktion \"Abweisen ohne Namen\" im Zeitfenster"_ansi);
    case 11:
      return LoadLangKey("DeclareProg_Info_RejectCause11", "Abgewiesen zur Bestätigung einer Fernwirkaktion"_ansi);
    default:
      return LoadLangKey("DeclareProg_Info_RejectCause0", "Abgewiesen"_ansi);
  }
}

std::string modFunction_Blocking::FuncBlocking_GetFunctionName(int code) {
  switch (code) {
    case 1:
      return LoadLangKey("Export_FunctionAll", "Funktion \"Alle\""_ansi);
    case 2:
      return LoadLangKey("Export_FunctionBook", "Telefonbuch-Eintrag"_ansi);
    case 3:
      return LoadLangKey("Export_FunctionNoNumber", "Funktion \"ohne Rufnummer\""_ansi);
    case 4:
      return LoadLangKey("Export_FunctionNoName", "Funktion \"ohne Namen\""_ansi);
    case 5:
      return LoadLangKey("Export_FunctionUser", "Benutzer manuell"_ansi);
    case 6:
      return LoadLangKey("Export_FunctionList", "Eintrag in Sperrliste"_ansi);
    case 7:
      return LoadLangKey("Export_FunctionTimeSlotAll", "Funktion \"Alle\" im Zeitfenster"_ansi);
    case 8:
      return LoadLangKey("Export_FunctionTimeSlotBook", "Telefonbuch-Eintrag im Zeitfenster"_ansi);
    case 9:
      return LoadLangKey("Export_FunctionTimeSlotNoNumber", "Funktion \"ohne Rufnummer\" im Zeitfenster"_ansi);
    case 10:
      return LoadLangKey("Export_FunctionTimeSlotNoName", "Funktion \"ohne Namen\" im Zeitfenster"_ansi);
    case 11:
      return LoadLangKey("Export_FunctionTelecontrol", "Bestätigung einer Fernwirkaktion"_ansi);
    default:
      return {};
  }
}

}  // namespace vorlix
