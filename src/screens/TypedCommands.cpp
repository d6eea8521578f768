#include "screens/TypedCommands.h"

#include <algorithm>
#include <utility>

#include "core/call_events.h"
#include "data/journal_line.h"
#include "screens/call_texts.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kLabelWidth = 12;
constexpr std::size_t kNameWidth = 28;
constexpr std::size_t kNumberWidth = 20;
constexpr std::size_t kJournalLines = 10;
constexpr std::size_t kMostJournalLines = 1000;
constexpr std::size_t kMostBookLines = 20;

std::string Column(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text + " ";
}

// People write numbers with blanks, slashes and brackets; lines deliver digits. Nothing if the text is no number.
std::string DigitsOf(std::string_view typed) {
  std::string number;
  for (const char c : typed) {
    if ((c >= '0' && c <= '9') || c == '*' || c == '#' || (c == '+' && number.empty())) {
      number += c;
    } else if (std::string_view(" -/().").find(c) == std::string_view::npos) {
      return {};
    }
  }
  return number == "+" ? std::string() : number;
}

// The word in front and what follows it.
std::pair<std::string_view, std::string_view> FirstWord(std::string_view line) {
  const std::size_t blank = line.find(' ');
  if (blank == std::string_view::npos) return {line, {}};
  return {line.substr(0, blank), Trim(line.substr(blank))};
}

bool Mentions(const oDataCall& entry, std::string_view search) {
  return ContainsNoCase(entry.Name(), search) || ContainsNoCase(entry.Address(), search) ||
         entry.DataNumber().find(search) != std::string::npos;
}

std::string NameOrMark(const oDataCall& call) {
  if (call.NameMode == kNamed) return call.Name();
  return call.NameMode == kNoNameShown ? LoadLangKey("Console_String_NoNameShown", "Eintrag ohne Namen"_ansi)
                                       : LoadLangKey("Console_String_NotInBook", "nicht im Telefonbuch"_ansi);
}

}  // namespace

void TypedCommands::Run(std::string_view line) {
  Trapped("TypedCommands.Run", [&] {
    const std::string clean = WithoutControls(line);
    const auto [word, rest] = FirstWord(Trim(clean));
    if (word.empty()) return;
    if (EqualNoCase(word, "journal")) return ShowJournal(rest);
    if (EqualNoCase(word, "book")) return ShowBook(rest);
    if (EqualNoCase(word, "ring")) return Ring(rest);
    if (EqualNoCase(word, "hang")) return HangUp();
    const std::string number = DigitsOf(Trim(clean));
    if (number.empty()) return ShowHelp();
    ShowNumber(number);
  });
}

void TypedCommands::ShowHelp() {
  const std::string text = LoadLangKey("Console_Info_Commands",
                                       "NUMMER          zeigt Ort, Land und Telefonbucheintrag einer Rufnummer<CR>"
                                       "journal [N]     zeigt die letzten N Anrufe (10)<CR>"
                                       "book [TEXT]     zeigt die Einträge des Telefonbuchs, in denen TEXT steht<CR>"
                                       "ring [NUMMER [MSN]]  simuliert einen Anruf, NUMMER mit 0 oder 00<CR>"
                                       "hang up         beendet die Simulation"_ansi);
  for (const std::string& line : Split(text, kLineEnd)) {
    ports_.view.ShowLine(line);
  }
}

void TypedCommands::ShowNumber(const std::string& typed) {
  oDataCall call(&ports_.numbers);
  // A person writes numbers as a router does: "0" in front of an area code, "00" or "+" in front of a country.
  call.DataNumber(ports_.numbers.fVW(kSourceAVM, typed));
  call.NameMode = static_cast<std::int16_t>(ports_.book.GetNumberData(call, false, false));
  ShowPair(LoadLangKey("Console_Label_Number", "Nummer"_ansi),
           call.VW_FormatedNumber() + "  [" + call.DataNumber() + "]");
  ShowPair(LoadLangKey("Console_Label_Place", "Ort"_ansi), call.VW_FormatedLocation());
  ShowPair(LoadLangKey("Console_Label_Name", "Name"_ansi), NameOrMark(call));
  if (call.NameMode == kNamed) ShowPair(LoadLangKey("Console_Label_Address", "Adresse"_ansi), call.Address());
  if (const auto entry = ports_.bookCollection().ItemByKeyAs<oDataCall>(call.DataNumber())) {
    ShowPair(LoadLangKey("Console_Label_Calls", "Anrufe"_ansi),
             std::to_string(entry->CallCountIn) + " " + LoadLangKey("Console_String_In", "ein"_ansi) + ", " +
                 std::to_string(entry->CallCountOut) + " " + LoadLangKey("Console_String_Out", "aus"_ansi));
  }
}

void TypedCommands::ShowJournal(std::string_view argument) {
  const int wanted = LeadingInteger(argument).value_or(static_cast<int>(kJournalLines));
  const auto count = static_cast<std::size_t>(std::clamp(wanted, 1, static_cast<int>(kMostJournalLines)));
  Calls calls = ports_.readJournal(count);
  if (calls.empty()) {
    return ports_.view.ShowLine(LoadLangKey("Journal_Msg_NoDataInJournal", "Es befinden keine Daten im Journal!"_ansi));
  }
  // The newest stands last, where a terminal's eye is.
  std::for_each(calls.rbegin(), calls.rend(), [&](const auto& call) {
    call->GetMSNData(ports_.ownNumbers.Table());
    ports_.view.ShowLine(WithoutControls(JournalLine(*call)));
  });
}

std::string TypedCommands::JournalLine(const oDataCall& call) {
  const bool incoming = call.AVMDirection == CallDirection::kIncoming;
  // The day and time as they stand in the file, also where they are none.
  const std::vector<std::string> head = Split(JournalLineHead(call), "\t");
  std::string text = head[0] + " " + head[1] + "  ";
  text += Column(
      incoming ? LoadLangKey("Console_String_In", "ein"_ansi) : LoadLangKey("Console_String_Out", "aus"_ansi), 4);
  text += PartyOf(call) + " ";
  text += incoming ? LoadLangKey("Display_Label_CallTo", "an"_ansi) : LoadLangKey("Console_Label_From", "von"_ansi);
  text += " " + OwnNumberOf(call);
  if (call.AVMCallperiod > 0) text += ", " + PeriodText(call.AVMCallperiod);
  if (call.BlockIndex > 0) text += ", " + ports_.blocking.FuncBlocking_GetDescription(call.BlockIndex);
  if (call.NewCall && incoming) text += ", " + LoadLangKey("Console_String_New", "neu"_ansi);
  return text;
}

void TypedCommands::ShowBook(std::string_view search) {
  std::size_t found = 0;
  const clsCollection& book = ports_.bookCollection();
  for (std::size_t i = 1; i <= book.Count(); ++i) {
    const auto entry = book.ItemByIndexAs<oDataCall>(i);
    if (!entry || !Mentions(*entry, search) || ++found > kMostBookLines) continue;
    ports_.view.ShowLine(WithoutControls(Column(entry->Name(), kNameWidth) + Column(entry->DataNumber(), kNumberWidth) +
                                         entry->Address()));
  }
  if (found == 0) {
    ports_.view.ShowLine(LoadLangKey("Console_Msg_NothingFound", "Kein Eintrag gefunden."_ansi));
  } else if (found > kMostBookLines) {
    ports_.view.ShowLine("... " + std::to_string(found - kMostBookLines) + " " +
                         LoadLangKey("Console_String_More", "weitere"_ansi));
  }
}

// A number is typed as it is dialled; the simulation takes it behind its prefix. Without a number it is withheld.
void TypedCommands::Ring(std::string_view argument) {
  const auto [first, rest] = FirstWord(argument);
  std::string number = DigitsOf(first);
  const bool isForeign = number.starts_with("00") || number.starts_with("+");
  number.erase(0, number.find_first_not_of("+0"));
  if (number.empty() && !first.empty()) return ShowHelp();
  const std::string MSN = rest.empty() ? ports_.simulation.ProposedMSN() : DigitsOf(rest);
  if (!ports_.simulation.IsOpen() && ports_.isBusy()) {
    return ports_.view.ShowLine(
        LoadLangKey("Console_Msg_CallRuns", "Gerade läuft ein Anruf: die Simulation würde ihn verlieren."_ansi));
  }
  if (!ports_.simulation.IsOpen()) {
    ports_.simulation.Form_Load();
    isTypedSimulation_ = true;
    ports_.view.ShowLine(
        LoadLangKey("Console_Msg_Simulation", "Simulation: bis \"hang up\" werden echte Anrufe nicht gesehen."_ansi));
  }
  simulationSeconds_ = 0;
  if (!ports_.simulation.cmdSim_Click(number, MSN, !isForeign)) {
    ports_.view.ShowLine(LoadLangKey("Console_Msg_NoFreeLine", "Keine Leitung frei."_ansi));
  }
}

void TypedCommands::HangUp() {
  isTypedSimulation_ = false;
  if (ports_.simulation.IsOpen()) ports_.simulation.cmdCancel_Click();
}

void TypedCommands::TimerTick() {
  isTypedSimulation_ = isTypedSimulation_ && ports_.simulation.IsOpen();
  if (isTypedSimulation_ && ++simulationSeconds_ >= kSecondsOfASimulation) HangUp();
}

void TypedCommands::ShowPair(const std::string& label, const std::string& text) {
  ports_.view.ShowLine(WithoutControls(Column(label, kLabelWidth) + (text.empty() ? "-" : text)));
}

}  // namespace vorlix
