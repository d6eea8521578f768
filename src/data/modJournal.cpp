#include "data/modJournal.h"

#include <algorithm>
#include <cmath>

#include "data/journal_line.h"
#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr char kTab = '\t';
constexpr double kPeriodWithinDays = 2.0;
constexpr std::size_t kFewestLinesToReverse = 3;

// Whether a line of the file, if it is one, may be that of the call: it was written under the call's number, as the
// file has it, in the same direction and within two days.
bool IsLineOf(const std::shared_ptr<oDataCall>& line, const oDataCall& call) {
  return line && std::abs(line->CallDateTime.DaysSince(call.CallDateTime)) < kPeriodWithinDays &&
         line->AVMDirection == call.AVMDirection && line->DataNumber() == WithoutControls(call.DataNumber());
}

// The date of the first line that has one: a date that cannot be read tells nothing about the order.
template <class Iterator>
DateTime FirstDate(Iterator line, Iterator end, NumberAnalysis& analysis) {
  for (; line != end; ++line) {
    const auto item = ReadJournalLine(*line, analysis);
    if (item && item->CallDateTime) return item->CallDateTime;
  }
  return {};
}

std::string Joined(const std::vector<std::string_view>& lines) {
  std::string text;
  for (const std::string_view line : lines) {
    if (!text.empty()) text += kLineEnd;
    text += line;
  }
  return text;
}

// A live line holds what a network said: terminal commands and the like have no place in it, a file's own bytes stay.
std::string FromALine(std::string fields) {
  std::replace_if(
      fields.begin(), fields.end(), [](unsigned char c) { return (c < ' ' && c != kTab) || c == 127; }, ' ');
  return fields;
}

}  // namespace

void LineCounter::BeforeLine(const std::string& path) {
  current_ = current_ && files_.Store().Stat(path) == known_;
}

void LineCounter::AfterLine(const std::string& path) {
  known_ = files_.Store().Stat(path);
  ++count_;
  if (!current_) count_ = files_.GetFileRowCount(path);
  current_ = true;
}

std::string JournalPathIn(const Folders& folders) {
  return folders.BookPath() + "Vorlixjournal.txt";
}

std::string modJournal::JournalPath() const {
  return JournalPathIn(ports_.folders);
}

std::string modJournal::GetCallDataAsMailString(const oDataCall& call) {
  return FromALine(JournalLineHead(call)) + kTab + std::to_string(call.BlockFunction) + kTab + std::to_string(call.CIP);
}

std::string modJournal::GetCallDataAsFileString(const oDataCall& call) {
  const std::string line = GetCallDataAsMailString(call) + kTab + "1" + kTab;
  return call.Fernwirk ? line : line + FromALine(JournalLineTail(call));
}

void modJournal::WriteCallDataToJournalFile(const std::string& line) {
  Trapped(
      "modJournal.WriteCallDataToJournalFile",
      [&] {
        const std::string path = JournalPath();
        lines_.BeforeLine(path);
        if (!ports_.files.FileWrite_Data(path, line, ports_.backupCount())) return;
        lines_.AfterLine(path);
        if (lines_.Count() < kMostLines) return;
        ErrorHandling().LogDebug_Export("Call end - Archive data by MAX J BEGIN");
        const DateTime now = ports_.clock.Now();
        ports_.archive.JournalAuslagern(false, YearMonth(now.Year(), now.Month()), true);
        ErrorHandling().LogDebug_Export("Call end - Archive data by MAX J END");
      },
      line);
}

void modJournal::WriteCallActiveData(const clsCollection& activeCalls) {
  WriteCallActiveData(ports_.folders.GetMainPath(R"(\data\Vorlixactive.txt)"), activeCalls);
}

void modJournal::WriteCallActiveData(const std::string& path, const clsCollection& activeCalls) {
  if (path.empty()) return;
  Trapped(
      "modJournal.WriteCallActiveData",
      [&] {
        std::string text;
        for (std::size_t i = 1; i <= activeCalls.Count(); ++i) {
          const auto call = activeCalls.ItemByIndexAs<oDataCall>(i);
          if (!call) continue;
          text += JournalLineHead(*call) + kTab + "0" + kTab + std::to_string(call->CIP) + kTab + "0" + kTab +
                  std::string(kLineEnd);
        }
        const IoResult written = OverwriteMakingFolder(ports_.files.Store(), path, text);
        if (!written) throw Fault(written.error, written.text);
      },
      path);
}

modJournal::Item modJournal::J_MakeItem(std::string_view line, bool noLookup) {
  return Trapped("modJournal.J_MakeItem", [&] {
    Item call = ItemOf(line);
    if (call && !noLookup && !IsUnknownNumber(call->DataNumber())) ports_.names.Fill(*call);
    return call;
  });
}

// Lets a fault through: a rewrite that runs out of memory must end, not go on without the line.
modJournal::Item modJournal::ItemOf(std::string_view line) {
  return ReadJournalLine(line, ports_.numbers);
}

bool modJournal::WriteJournalData(const std::string& path, const std::vector<Item>& items, bool resetViewed) {
  return Trapped(
      "modJournal.WriteJournalData",
      [&] {
        std::string text;
        std::for_each(items.rbegin(), items.rend(), [&](const Item& item) {
          if (item && !item->DataNumber().empty()) text += RewrittenJournalLine(*item, resetViewed);
        });
        return Rewrite(path, text);
      },
      path);
}

// A rewrite never makes a journal: an archived one is gone until the next call.
bool modJournal::Rewrite(const std::string& path, std::string_view text) {
  if (ports_.blocks.JournalWriteBlocked || path.empty() || !ports_.files.FileExist(path)) return false;
  const IoResult written = ports_.files.Store().Overwrite(path, text);
  if (!written) ErrorHandling().ErrorLogWithMsgBox("modJournal.WriteJournalData", {path}, written.error, written.text);
  return static_cast<bool>(written);
}

// What cannot be read is no empty journal: the fault ends the routine before anything is written.
std::string modJournal::ReadText(const std::string& path) {
  std::string text;
  if (!ports_.files.FileExist(path)) return text;
  const IoResult read = ports_.files.Store().Read(path, text);
  if (!read) throw Fault(read.error, read.text);
  return text;
}

// Newest first.
std::vector<modJournal::Item> modJournal::ReadItems(const std::string& path) {
  const std::string text = ReadText(path);
  std::vector<Item> items;
  for (const std::string_view line : JournalLines(text)) {
    if (Item item = ItemOf(line)) items.push_back(std::move(item));
  }
  std::reverse(items.begin(), items.end());
  return items;
}

std::optional<std::vector<modJournal::Item>> modJournal::ReadJournal(const std::string& path, bool noLookup) {
  return Trapped(
      "modJournal.ReadJournal",
      [&] {
        std::vector<Item> items = ReadItems(path);
        if (!noLookup) FillNames(items);
        return std::optional(std::move(items));
      },
      path, noLookup);
}

void modJournal::FillNames(const std::vector<Item>& items) {
  const JournalNames::Load load(ports_.names);
  const std::string unknown = UnknownNumberWord();
  for (const Item& item : items) {
    // Nearly all are plain digits, and no word is.
    const std::string& number = item->DataNumber();
    if (IsDigits(number) || !ContainsNoCase(number, unknown)) ports_.names.Fill(*item);
  }
}

void modJournal::ResetViewedInJournalFile(const std::string& path) {
  Trapped(
      "modVorlix_ResetViewedInJournalFile",
      [&] {
        const std::vector<Item> items = ReadItems(path);
        if (std::none_of(items.begin(), items.end(), [](const Item& item) { return item->NewCall; })) return;
        WriteJournalData(path, items, true);
      },
      path);
}

void modJournal::CheckReverseOfJournal() {
  Trapped("modJournal.CheckReverseOfJournal", [&] {
    const std::string text = ReadText(JournalPath());
    std::vector<std::string_view> lines = JournalLines(text);
    if (lines.size() < kFewestLinesToReverse) return;
    const DateTime first = FirstDate(lines.begin(), lines.end(), ports_.numbers);
    const DateTime last = FirstDate(lines.rbegin(), lines.rend(), ports_.numbers);
    if (first <= last) return;
    std::erase_if(lines, [](std::string_view line) { return Trim(line).empty(); });
    std::reverse(lines.begin(), lines.end());
    // Two dates decide, and a clock that was wrong once may have written one of them.
    ports_.files.FileMakeBackup(JournalPath(), ports_.backupCount());
    ports_.files.MakeFile(JournalPath(), Joined(lines), false);
  });
}

void modJournal::SetCallPeriodInJournalFile(const oDataCall& call) {
  SetCallPeriodInJournalFile(JournalPath(), call);
}

void modJournal::SetCallPeriodInJournalFile(const std::string& path, const oDataCall& call) {
  // The label is the one that users of the log know for this walk and its sister.
  Trapped(
      "modVorlix_ResetViewedInJournalFile ArrayReverse",
      [&] {
        const std::string before = ReadText(path);
        const std::vector<std::string_view> lines = JournalLines(before);
        const auto match = std::find_if(lines.rbegin(), lines.rend(),
                                        [&](std::string_view line) { return IsLineOf(ItemOf(line), call); });
        if (match == lines.rend()) return;
        std::string text;
        for (const std::string_view& line : lines) {
          const Item item = ItemOf(line);
          if (!item) continue;  // what no reader takes for a record goes with the rewrite
          if (&line == &*match) item->AVMCallperiod = call.AVMCallperiod;
          text += RewrittenJournalLine(*item, false);
        }
        Rewrite(path, text);
      },
      path, call.DataNumber());
}

}  // namespace vorlix
