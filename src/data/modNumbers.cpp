#include "data/modNumbers.h"

#include <algorithm>

#include "core/call_events.h"
#include "core/oDataNumber.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kStatesFile = R"(\base\states\state.codes)";
constexpr std::string_view kStateImages = R"(\base\states\images\)";
constexpr std::string_view kProviderImages = R"(\base\provider\images\)";
constexpr std::string_view kCacheFile = R"(\data\cache.ovw)";

constexpr std::size_t kLongestNumber = 32;
// With its zero an area code has fewer than nine characters; a longer one is an error in the table.
constexpr std::size_t kLongestAreaCode = 7;

// The word for "unknown" is a word in every language, so a number of digits need not be searched for it.
bool IsUnknown(std::string_view number) {
  if (number.starts_with('+')) number.remove_prefix(1);
  return !IsDigits(number) && IsUnknownNumber(number);
}

std::string PrefixOf(int source, const std::string& myVWOP) {
  if (source == kSourceCAPI) return myVWOP;
  return source == kSourceAVM || source == kSourceNCID ? "0" : "";
}

std::string WithHead(std::string_view head, std::string_view rest) {
  std::string number(head);
  number += rest;
  return number;
}

std::string Question(const std::string& prefix, const std::string& rawNumber) {
  const std::string lineEnd(kLineEnd);
  const std::string blankLine = lineEnd + lineEnd;
  return LoadLangKey("Display_Msg_CorrectCrucial",
                     "Die richtige Angabe des Prefixes ist entscheidend für die Erkennung!"_ansi) +
         lineEnd +
         LoadLangKey("Display_Msg_CallerNational", "Der übermittelte Anruf kommt vermutlich aus dem Inland!?"_ansi) +
         blankLine + "  " + LoadLangKey("Display_Msg_ReceivedNumber", "Übermittelte Nummer"_ansi) + ": " +
         WithoutControls(rawNumber) + blankLine + "  " +
         LoadLangKey("Display_Msg_RecommendPrefix", "Empfohlener Prefix für Rufe aus dem Inland"_ansi) + ": " +
         (prefix.empty() ? "NICHTS" : "\"" + prefix + "\"") + blankLine +
         LoadLangKey("Display_Msg_RecommendSetting", "Die empfohlene Einstellung übernehmen?"_ansi);
}

}  // namespace

modNumbers::modNumbers(const Ports& ports)
    : ports_(ports),
      speedBuffer_(ports.files, ports.folders.GetMainPath(kCacheFile)),
      AOVW_(ports.files, ports.folders) {}

std::string modNumbers::fVW(int source, const std::string& rawNumber) {
  std::string result = rawNumber;
  Trapped(
      "fMain.fVW",
      [&] {
        if (StaysAsDelivered(rawNumber) || ports_.ownNumbers.IsOwnNumber(rawNumber)) return;
        const std::string prefix = PrefixOf(source, ports_.settings.General.myVWOP);
        result = Decided(source, prefix, Spelled(rawNumber, prefix.size()), rawNumber);
      },
      source, rawNumber);
  return result;
}

bool modNumbers::StaysAsDelivered(const std::string& number) const {
  const auto longestInternal = static_cast<std::size_t>(std::max(ports_.settings.General.TKnum, 0));
  return number.size() <= longestInternal || IsUnknown(number);
}

// The number with zeros in place of every sign that stands for them.
std::string modNumbers::Spelled(std::string_view rawNumber, std::size_t prefixLength) const {
  const std::string& special = ports_.settings.General.SpezialPrefix;
  const auto cut = static_cast<std::size_t>(std::max(ports_.settings.General.SpezialCutt, 0));
  const std::size_t needed = cut + std::max(kLongestNumber, special.size());
  std::string text(rawNumber.substr(0, needed));
  for (auto plus = text.find('+'); plus != std::string::npos && plus < needed; plus = text.find('+', plus)) {
    text.replace(plus, 1, prefixLength + 1, '0');
  }
  text.erase(0, cut);
  if (text.starts_with(special)) text.replace(0, special.size(), special.size(), '0');
  text.resize(std::min(text.size(), kLongestNumber));
  return text;
}

std::string modNumbers::Decided(int source, std::string_view prefix, std::string_view spelled,
                                const std::string& rawNumber) {
  const std::size_t zeros = std::min(spelled.find_first_not_of('0'), spelled.size());
  const std::string_view rest = spelled.substr(zeros);
  const auto& general = ports_.settings.General;
  if (zeros > prefix.size()) {
    // A country code that was never told begins no number, else a foreign one would pass for national.
    const bool isOwnCountry = !general.myVWL.empty() && rest.starts_with(general.myVWL);
    return isOwnCountry ? WithHead("0", rest.substr(general.myVWL.size())) : WithHead("00", rest);
  }
  if (spelled.substr(0, zeros) == prefix) return WithHead("0", rest);
  if (ports_.simulation.IsOpen()) return rawNumber;
  // The prefix is the driver's: a router's or a server's number says nothing about it.
  const bool isDoubtful = source == kSourceCAPI && LastPrefix.size() < general.myVWOP.size();
  if (!general.PrefixAutoCheck || !isDoubtful) return std::string(rest);
  return AcceptsPrefix(rawNumber) ? rawNumber : WithHead("0", rest);
}

bool modNumbers::AcceptsPrefix(const std::string& rawNumber) {
  // A copy: the next call may bring another prefix while the question stands, and what was shown is what is meant.
  const std::string prefix = LastPrefix;
  if (ports_.messages.MsgBoxModal(Question(prefix, rawNumber), kMsgYesNo + kMsgQuestion) != MsgBoxAnswer::kYes) {
    return false;
  }
  ports_.settings.General.myVWOP = prefix;
  if (PrefixChanged) PrefixChanged(prefix);
  ports_.ini.SetSettStr("General", "myVWOP", prefix.empty() ? "-" : prefix);
  return true;
}

NumberTexts modNumbers::GetOVW(const std::string& number) {
  NumberTexts texts;
  bool found = false;
  Trapped(
      "modNumbers.GetOVW",
      [&] {
        if (StaysAsDelivered(number)) return;
        if (const oDataNumber* kept = speedBuffer_.Find(number)) {
          texts = *kept;
          found = true;
        } else if (AnalyseForeign(number, texts) || AnalyseNational(number, texts)) {
          found = true;
          Keep(number, texts);
        } else {
          texts.VW_FormatedLocation = UnknownNumberWord();
        }
        if (found) NoteForJournal(number, texts);
      },
      number);
  if (!found) texts.VW_FormatedFull = texts.VW_FormatedNumber = number;
  return texts;
}

bool modNumbers::AnalyseForeign(const std::string& number, NumberTexts& texts) {
  if (!number.starts_with("00")) return false;
  const StateRow* state = LVW_.Find(number);
  if (state == nullptr) return false;
  NumberParts parts{.state = state->Code, .stateName = {}, .city = {}, .cityName = {}, .number = number};
  parts.number.remove_prefix(parts.state.size());
  const CodeTable<AreaRow>* areas = AOVW_.Load(state->Code);
  const AreaRow* area = areas == nullptr ? nullptr : areas->Find(parts.number);
  if (area != nullptr) {
    parts.city = area->Code;
    parts.number.remove_prefix(parts.city.size());
  }
  if (!ports_.settings.General.NoIVW) {
    parts.stateName = state->Name;
    if (area != nullptr) parts.cityName = area->Name;
    texts.VW_FormatedLocation = area == nullptr ? state->Name : area->Name + " (" + state->Name + ")";
  }
  texts.VW_Only = number.substr(0, number.size() - parts.number.size());
  Fill(texts, parts);
  return true;
}

bool modNumbers::AnalyseNational(const std::string& number, NumberTexts& texts) const {
  if (!number.starts_with('0')) return false;
  const AreaRow* area = OVW_.Find(std::string_view(number).substr(1));
  // A bare area code is nobody's number, whatever row further up may begin it.
  if (area == nullptr || area->Code.size() + 1 == number.size()) return false;
  NumberParts parts{.state = {}, .stateName = {}, .city = area->Code, .cityName = {}, .number = number};
  parts.number.remove_prefix(area->Code.size() + 1);
  if (!ports_.settings.General.NoNVW) {
    parts.cityName = area->Name;
    texts.VW_FormatedLocation = area->Name;
  }
  texts.VW_Only = number.substr(0, area->Code.size() + 1);
  Fill(texts, parts);
  return true;
}

void modNumbers::Fill(NumberTexts& texts, const NumberParts& parts) const {
  const auto& general = ports_.settings.General;
  ShownNumber shown = FormatWithAndWithoutNames(
      parts, {general.NumberFormatIndexState, general.NumberFormatIndexCity, general.NumberFormatIndexNumber});
  texts.VW_FormatedFull = std::move(shown.full);
  texts.VW_FormatedNumber = std::move(shown.number);
  texts.VW_NumberOnly = std::string(parts.number);
  texts.VW_StateName = std::string(parts.stateName);
  texts.VW_CityName = std::string(parts.cityName);
}

void modNumbers::Keep(const std::string& number, const NumberTexts& texts) {
  if (ports_.simulation.IsOpen()) return;
  speedBuffer_.Keep(number, texts);
  if (CountChanged) CountChanged(speedBuffer_.Count());
}

void modNumbers::NoteForJournal(const std::string& number, const NumberTexts& texts) {
  if (!ports_.journalFlags.JournalLoading) return;
  ports_.journalCache.SpeedBuffer_Journal_Set(number, nullptr, texts.VW_FormatedFull);
}

std::string modNumbers::GetNumberFormated(std::string_view state, std::string_view stateName, std::string_view city,
                                          std::string_view cityName, std::string_view number, int indexState,
                                          int indexCity, int indexNumber) const {
  const auto& general = ports_.settings.General;
  return FormatNumber({state, stateName, city, cityName, number},
                      {indexState == -1 ? general.NumberFormatIndexState : indexState,
                       indexCity == -1 ? general.NumberFormatIndexCity : indexCity,
                       indexNumber == -1 ? general.NumberFormatIndexNumber : indexNumber});
}

void modNumbers::loadLVW() {
  Trapped("modNumbers.loadLVW", [&] { LVW_ = CodeTable(ReadStates(TextOf(kStatesFile))); });
}

void modNumbers::loadOVW(std::string_view country) {
  Trapped(
      "modNumbers.loadOVW", [&] { OVW_ = CodeTable(ReadAreas(TextOf(AreaFileName(country))), kLongestAreaCode); },
      country);
}

bool modNumbers::loadAOVW(std::string_view code) {
  return Trapped(
      "modNumbers.loadAOVW", [&] { return AOVW_.Load(code) != nullptr; }, code);
}

void modNumbers::LoadProvider() {
  Trapped("modNumbers.LoadProvider", [&] {
    provider_ = Provider(TextOf(R"(\base\provider\provider_)" + ports_.settings.General.myVWL + ".ini"));
  });
}

std::string modNumbers::TextOf(std::string_view file) const {
  int lines = 0;
  return ports_.files.fOpenFileToStream(ports_.folders.GetMainPath(file), lines);
}

std::string modNumbers::ExistingImage(std::string_view folder, std::string_view name) const {
  std::string path = ports_.folders.GetMainPath(std::string(folder) + std::string(name));
  return ports_.files.FileExist(path) ? path : std::string();
}

std::string modNumbers::Get_ProviderFile(const std::string& number) {
  return Trapped(
      "modNumbers.Get_ProviderFile", [&] { return ExistingImage(kProviderImages, provider_.ImageOf(number)); }, number);
}

std::string modNumbers::Get_StateFlagFile(const std::string& number) const {
  return Trapped(
      "modNumbers.Get_StateFlagFile",
      [&] {
        const std::vector<StateRow>& rows = LVW_.Rows();
        for (auto row = rows.rbegin(); row != rows.rend() && number.starts_with("00"); ++row) {
          if (!number.starts_with(row->Code)) continue;
          if (std::string path = ExistingImage(kStateImages, row->Flag); !path.empty()) return path;
        }
        return std::string();
      },
      number);
}

}  // namespace vorlix
