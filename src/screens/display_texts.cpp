#include "screens/display_texts.h"

#include <algorithm>
#include <array>
#include <vector>

#include "screens/call_texts.h"
#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

struct SourceTexts {
  std::string ok, error;
};

// CAPI, AVM and NCID, in the order in which they are shown.
std::array<SourceTexts, 3> TextsOfSources() {
  return {{{LoadLangKey("DeclareAll_Const_CAPIOk", "CAPI2.0 Init OK"_ansi),
            LoadLangKey("DeclareAll_Const_CAPIError", "CAPI2.0 Init Fehler"_ansi)},
           {LoadLangKey("DeclareAll_Const_AVMOk", "AVM OK"_ansi),
            LoadLangKey("DeclareAll_Const_AVMError", "AVM Fehler"_ansi)},
           {LoadLangKey("DeclareAll_Const_NCIDOk", "NCID OK"_ansi),
            LoadLangKey("DeclareAll_Const_NCIDError", "NCID Fehler"_ansi)}}};
}

bool IsIdleText(std::string_view text) {
  if (text == NoCallText()) return true;
  return std::ranges::any_of(TextsOfSources(),
                             [&](const SourceTexts& source) { return text == source.ok || text == source.error; });
}

}  // namespace

std::string NoCallText() {
  return LoadLangKey("DeclareAll_Const_NoCall", "kein Anruf"_ansi);
}

std::string StateText(const LineStates& states) {
  const auto texts = TextsOfSources();
  const LineStates::One sources[] = {states.CAPI, states.AVM, states.NCID};
  std::vector<std::string> parts;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (sources[i].used) parts.push_back(sources[i].up ? texts[i].ok : texts[i].error);
  }
  return parts.empty() ? std::string() : Join(parts, "/");
}

bool IsCallInDisplay(std::string_view text) {
  if (text.find("CAPI2.0") != std::string_view::npos) return false;
  const auto parts = Split(text, "/");
  return !std::ranges::all_of(parts, [](const std::string& part) { return IsIdleText(part); });
}

std::string BracketText(const oDataCall& call, bool nameViewNumber) {
  if (!nameViewNumber || call.DataCallerView == NumberView(call)) return {};
  return " (" + call.VW_FormatedNumber() + ")";
}

std::string LineTip(const oDataCall& call, bool nameViewNumber, bool nameViewAdress) {
  std::string tip = call.DataCallerView;
  if (nameViewAdress && !call.Address().empty()) tip += "  " + call.Address();
  return tip + BracketText(call, nameViewNumber) + " " + LoadLangKey("Display_Label_CallTo", "an"_ansi) + " " +
         (call.MSNAlias.empty() ? call.MSN : call.MSNAlias);
}

void SetBaloonInfoCall(const oDataCall& call, const std::string& alert, std::string& title, std::string& text) {
  const std::string lineEnd(kLineEnd);
  title = LoadLangKey("Display_Balloon_CallFor", "Anruf für"_ansi) + " " + call.MSN;
  // Without an alias of its own a number is its own alias.
  if (!call.MSNAlias.empty() && call.MSNAlias != call.MSN) title += " (" + call.MSNAlias + ")";
  title = WithoutControls(title);
  text = alert + call.CallDateView() + " " + call.CallTimeView() + lineEnd + lineEnd +
         LoadLangKey("Display_Balloon_Caller", "Anrufer:"_ansi) + lineEnd + WithoutControls(NumberView(call)) +
         lineEnd + lineEnd + WithoutControls(call.Name());
  if (!call.Name().empty() && !call.Address().empty()) text += lineEnd;
  text += WithoutControls(call.Address());
}

}  // namespace vorlix
