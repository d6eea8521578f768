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

}  // namespace

void CallFeed::ShowLines(const DisplayContent& content) {
  Trapped("CallFeed.ShowLines", [&] {
    ShowState(content.lineState);
    for (const DisplayLine& line : content.lines) {
      if (!line.isActive) continue;
      const auto [shown, isNew] = shown_.try_emplace(line.PLCI);
      if (!isNew && shown->second.rang == line.rang) continue;
      shown->second = {line.rang, line.caller, line.isRefused};
      ShowRing(line);
    }
  });
}

void CallFeed::OnDialled(const oDataCall& call) {
  oDataCall known = call;
  if (identify) identify(known);
  shown_[call.PLCI] = {call.CallDateTime, PartyOf(known)};
  Show(LoadLangKey("Console_String_Dialled", "Gewählt"_ansi),
       PartyOf(known) + " " + LoadLangKey("Console_Label_From", "von"_ansi) + " " + OwnNumberOf(known));
}

void CallFeed::OnAnswered(const oDataCall& call) {
  const auto shown = shown_.find(call.PLCI);
  if (shown != shown_.end()) Show(LoadLangKey("Console_String_Answered", "Angenommen"_ansi), shown->second.party);
}

// The source's own record knows no name: what was shown with the ring holds.
void CallFeed::OnEnded(const oDataCall& call) {
  const auto ended = shown_.extract(call.PLCI);
  if (!ended) return;
  const auto& [rang, party, isRefused] = ended.mapped();
  if (!call.NewCall) {
    Show(LoadLangKey("Console_String_Ended", "Beendet"_ansi), party + ", " + PeriodText(call.AVMCallperiod));
  } else if (isRefused) {
    Show(LoadLangKey("Console_String_Ended", "Beendet"_ansi), party);
  } else if (call.AVMDirection == CallDirection::kIncoming) {
    Show(LoadLangKey("Console_String_Missed", "Entgangen"_ansi), party);
  } else {
    Show(LoadLangKey("Console_String_NotReached", "Erfolglos"_ansi), party);
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

void CallFeed::ShowRing(const DisplayLine& line) {
  Show(LoadLangKey("Console_String_Ring", "Anruf"_ansi),
       line.caller + " " + LoadLangKey("Display_Label_CallTo", "an"_ansi) + " " + line.ownNumber);
  if (!line.isRefused) return;
  Show(LoadLangKey("Console_String_Refused", "Abgewiesen"_ansi),
       line.blockReason.empty() ? line.caller : line.caller + ", " + line.blockReason);
}

void CallFeed::Show(const std::string& what, const std::string& text) {
  const DateTime now = clock_.Now();
  std::string line = GetFormatedDateByDate(now) + " " + GetFormatedTime(now) + "  " + what;
  if (what.size() < kWhatWidth) line.append(kWhatWidth - what.size(), ' ');
  view_.ShowLine(WithoutControls(line + text));
}

}  // namespace vorlix
