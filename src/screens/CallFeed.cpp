#include "screens/CallFeed.h"

#include "screens/call_texts.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kWhatWidth = 12;

std::string StateText(const LineStates& states) {
  struct Row {
    LineStates::One state;
    std::string ok, error;
  };
  const Row rows[] = {
      {states.CAPI, LoadLangKey("DeclareAll_Const_CAPIOk", "CAPI2.0 Init OK"_ansi),
       LoadLangKey("DeclareAll_Const_CAPIError", "CAPI2.0 Init Fehler"_ansi)},
      {states.AVM, LoadLangKey("DeclareAll_Const_AVMOk", "AVM OK"_ansi),
       LoadLangKey("DeclareAll_Const_AVMError", "AVM Fehler"_ansi)},
      {states.NCID, LoadLangKey("DeclareAll_Const_NCIDOk", "NCID OK"_ansi),
       LoadLangKey("DeclareAll_Const_NCIDError", "NCID Fehler"_ansi)},
  };
  std::string text;
  for (const Row& row : rows) {
    if (!row.state.used) continue;
    if (!text.empty()) text += "/";
    text += row.state.up ? row.ok : row.error;
  }
  return text;
}

}  // namespace

std::string CallFeed::Display_NoCall() const {
  std::string text = StateText(ports_.lines.Read());
  return text.empty() ? LoadLangKey("DeclareAll_Const_NoCall", "kein Anruf"_ansi) : text;
}

void CallFeed::DisplayUpdate(bool) {
  Trapped("CallFeed.DisplayUpdate", [&] {
    ShowState(Display_NoCall());
    for (const auto& entry : ports_.state.ActiveCallList.GetCollection()) {
      const auto call = ports_.state.ActiveCallList.ItemByKeyAs<oDataCall>(entry.key);
      if (!call) continue;
      const auto [shown, isNew] = shown_.try_emplace(call->PLCI);
      if (!isNew && shown->second.rang == call->CallDateTime) continue;
      shown->second = {call->CallDateTime, PartyOf(*call)};
      ShowRing(*call);
    }
  });
}

void CallFeed::ChangeDisplayData(const std::string& idleText) {
  ShowState(idleText);
}

void CallFeed::MarkBlocked(std::int32_t, const std::string&) {
  // The refusal was shown with the ring: a terminal has no logo to mark afterwards.
}

void CallFeed::OnDialled(const oDataCall& call) {
  shown_[call.PLCI] = {call.CallDateTime, PartyOf(call)};
  Show(LoadLangKey("Console_String_Dialled", "Gewählt"_ansi),
       PartyOf(call) + " " + LoadLangKey("Console_Label_From", "von"_ansi) + " " + OwnNumberOf(call));
}

void CallFeed::OnAnswered(const oDataCall& call) {
  if (shown_.contains(call.PLCI)) Show(LoadLangKey("Console_String_Answered", "Angenommen"_ansi), PartyOf(call));
}

void CallFeed::OnEnded(const oDataCall& call) {
  if (shown_.erase(call.PLCI) == 0) return;
  if (!call.NewCall) {
    Show(LoadLangKey("Console_String_Ended", "Beendet"_ansi), PartyOf(call) + ", " + PeriodText(call.AVMCallperiod));
  } else if (call.AVMDirection == CallDirection::kIncoming) {
    Show(LoadLangKey("Console_String_Missed", "Entgangen"_ansi), PartyOf(call));
  } else {
    Show(LoadLangKey("Console_String_NotReached", "Erfolglos"_ansi), PartyOf(call));
  }
}

void CallFeed::OnOver(std::int32_t PLCI) {
  const auto ended = shown_.extract(PLCI);
  if (ended) Show(LoadLangKey("Console_String_Ended", "Beendet"_ansi), ended.mapped().party);
}

void CallFeed::ShowState(const std::string& text) {
  if (text == shownState_) return;
  shownState_ = text;
  Show(LoadLangKey("Console_String_Line", "Leitung"_ansi), text);
}

void CallFeed::ShowRing(const oDataCall& call) {
  const std::string text =
      PartyOf(call) + " " + LoadLangKey("Display_Label_CallTo", "an"_ansi) + " " + OwnNumberOf(call);
  Show(LoadLangKey("Console_String_Ring", "Anruf"_ansi), text);
  if (!call.Blocked) return;
  const std::string reason = ports_.blocking.FuncBlocking_GetDescription(call.BlockFunction);
  Show(LoadLangKey("Console_String_Refused", "Abgewiesen"_ansi),
       reason.empty() ? PartyOf(call) : PartyOf(call) + ", " + reason);
}

void CallFeed::Show(const std::string& what, const std::string& text) {
  const DateTime now = ports_.clock.Now();
  std::string line = GetFormatedDateByDate(now) + " " + GetFormatedTime(now) + "  " + what;
  if (what.size() < kWhatWidth) line.append(kWhatWidth - what.size(), ' ');
  ports_.view.ShowLine(WithoutControls(line + text));
}

}  // namespace vorlix
