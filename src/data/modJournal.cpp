#include "data/modJournal.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr char kTab = '\t';
constexpr std::size_t kFewestFields = 8;
constexpr double kPeriodWithinDays = 2.0;

enum Field : std::size_t {
  kDate,
  kTime,
  kNumber,
  kMSN,
  kBlock,
  kCIP,
  kNew,
  kNotiz,
  kDirection,
  kPeriod,
};

// A record read from the file, with its date and time as they stand there when they are none: the line stays.
class oJournalLine : public oDataCall {
 public:
  using oDataCall::oDataCall;
  std::string DateText, TimeText;
  std::shared_ptr<CollectionItem> Clone() const override { return std::make_shared<oJournalLine>(*this); }
};

std::string Stamp(const oDataCall& call) {
  const auto* line = dynamic_cast<const oJournalLine*>(&call);
  if (line != nullptr && !line->CallDateTime) {
    return WithoutControls(line->DateText) + kTab + WithoutControls(line->TimeText);
  }
  return call.CallDateView() + kTab + call.CallTimeView();
}

// Fields 0 to 3, the same in every form of a line.
std::string Head(const oDataCall& call) {
  return Stamp(call) + kTab + WithoutControls(call.DataNumber()) + kTab + WithoutControls(call.MSN);
}

std::string Tail(const oDataCall& call) {
  return WithoutControls(NotizParsing(true, call.Notiz())) + kTab +
         std::to_string(static_cast<int>(call.AVMDirection)) + kTab + std::to_string(call.AVMCallperiod);
}

// A rewritten line carries the value that was read into BlockIndex, where a live line carries the rule that ran; and
// any mark but none becomes "1".
std::string RewrittenLine(const oDataCall& call, bool resetViewed) {
  const char* mark = call.NewCall && !resetViewed ? "1" : "0";
  return Head(call) + kTab + std::to_string(call.BlockIndex) + kTab + std::to_string(call.CIP) + kTab + mark + kTab +
         Tail(call) + std::string(kLineEnd);
}

// Whether a line of the file, if it is one, may be that of the call: it was written under the call's number, as the
// file has it, within two days.
bool IsLineOf(const std::shared_ptr<oDataCall>& line, const oDataCall& call) {
  return line && std::abs(line->CallDateTime.DaysSince(call.CallDateTime)) < kPeriodWithinDays &&
         line->DataNumber() == WithoutControls(call.DataNumber());
}

// A number too large for its member is held at the nearest end: it must not turn into some other valid one.
template <class Number>
void ReadNumber(const std::vector<std::string>& fields, Field field, Number& member) {
  using Limits = std::numeric_limits<Number>;
  if (field >= fields.size() || !IsNumeric(fields[field])) return;
  member =
      static_cast<Number>(std::clamp<int>(LeadingInteger(fields[field]).value_or(0), Limits::min(), Limits::max()));
}

}  // namespace

std::string NotizParsing(bool toFile, std::string_view text) {
  return toFile ? Replace(Replace(text, kLineEnd, "<CR>"), "\t", "<TB>")
                : Replace(Replace(text, "<CR>", kLineEnd), "<TB>", "\t");
}

void LineCounter::BeforeLine(const std::string& path) {
  current_ = current_ && files_.Store().Stat(path) == known_;
}

void LineCounter::AfterLine(const std::string& path) {
  known_ = files_.Store().Stat(path);
  ++count_;
  if (!current_) count_ = files_.GetFileRowCount(path);
  current_ = true;
}

std::string modJournal::JournalPath() const {
  return ports_.folders.BookPath() + "Vorlixjournal.txt";
}

std::string modJournal::GetCallDataAsMailString(const oDataCall& call) {
  return Head(call) + kTab + std::to_string(call.BlockFunction) + kTab + std::to_string(call.CIP);
}

std::string modJournal::GetCallDataAsFileString(const oDataCall& call) {
  const std::string line = GetCallDataAsMailString(call) + kTab + "1" + kTab;
  return call.Fernwirk ? line : line + Tail(call);
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
        ports_.archive.JournalAuslagern(false, Padded(now.Year(), 4) + Padded(now.Month(), 2), true);
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
          const auto call = std::dynamic_pointer_cast<oDataCall>(activeCalls.GetItemByIndex(i));
          if (!call) continue;
          text +=
              Head(*call) + kTab + "0" + kTab + std::to_string(call->CIP) + kTab + "0" + kTab + std::string(kLineEnd);
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

// The day of the call, year first. Reading a date is what a line costs most: it is done again only where the date gave
// none together with its time.
std::string modJournal::SortDate(const oDataCall& call, const std::string& date) const {
  return call.CallDateTime ? GetFormatedDateByDate(call.CallDateTime, 0, true)
                           : GetFormatedDateByString(date, ports_.clock, 0, true);
}

// Lets a fault through: a rewrite that runs out of memory must end, not go on without the line.
modJournal::Item modJournal::ItemOf(std::string_view line) {
  if (line.find(kTab) == std::string_view::npos) return nullptr;
  std::vector<std::string> fields = Split(line, "\t");
  if (!J_CheckItem(fields)) return nullptr;
  auto call = std::make_shared<oJournalLine>(&ports_.numbers);
  call->CallDateTime = CDateNew(fields[kDate], fields[kTime]);
  if (!call->CallDateTime) {
    call->DateText = fields[kDate];
    call->TimeText = fields[kTime];
  }
  call->BookSortString = SortDate(*call, fields[kDate]) + fields[kTime];
  call->DataNumber(fields[kNumber]);
  call->MSN = fields[kMSN];
  ReadNumber(fields, kBlock, call->BlockIndex);
  ReadNumber(fields, kCIP, call->CIP);
  call->NewCallByService = fields[kNew] == "2";
  call->NewCall = fields[kNew] == "1" || call->NewCallByService;
  call->Notiz(fields[kNotiz]);
  std::int16_t direction = 0;
  ReadNumber(fields, kDirection, direction);
  call->AVMDirection = CallDirection{direction};
  ReadNumber(fields, kPeriod, call->AVMCallperiod);
  return call;
}

bool modJournal::J_CheckItem(std::vector<std::string>& fields) {
  if (fields.size() < kFewestFields) return false;
  if (fields[kDate].empty() || fields[kTime].empty() || fields[kNumber].empty()) return false;
  if (!IsNumeric(fields[kBlock]) || !IsNumeric(fields[kCIP])) return false;
  if (fields[kNew].empty()) fields[kNew] = "0";
  return true;
}

bool modJournal::WriteJournalData(const std::string& path, const std::vector<Item>& items, bool resetViewed) {
  return Trapped(
      "modJournal.WriteJournalData",
      [&] {
        std::string text;
        std::for_each(items.rbegin(), items.rend(), [&](const Item& item) {
          if (item && !item->DataNumber().empty()) text += RewrittenLine(*item, resetViewed);
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

// Oldest first.
std::vector<std::string> modJournal::ReadLines(const std::string& path) {
  int count = 0;
  // An editor may have left LF alone, and the lines since then end in CR LF: both kinds end a record.
  std::string stream = Replace(ports_.files.fOpenFileToStream(path, count), kLineEnd, "\n");
  return clsFiles::fStreamToArray(stream);
}

void modJournal::SetCallPeriodInJournalFile(const oDataCall& call) {
  SetCallPeriodInJournalFile(JournalPath(), call);
}

void modJournal::SetCallPeriodInJournalFile(const std::string& path, const oDataCall& call) {
  // The label is the one that users of the log know for this walk and its sister.
  Trapped(
      "modVorlix_ResetViewedInJournalFile ArrayReverse",
      [&] {
        const std::vector<std::string> lines = ReadLines(path);
        const auto match = std::find_if(lines.rbegin(), lines.rend(),
                                        [&](const std::string& line) { return IsLineOf(ItemOf(line), call); });
        if (match == lines.rend()) return;
        std::string text;
        for (const std::string& line : lines) {
          const Item item = ItemOf(line);
          if (!item) continue;
          if (&line == &*match) item->AVMCallperiod = call.AVMCallperiod;
          text += RewrittenLine(*item, false);
        }
        Rewrite(path, text);
      },
      path, call.DataNumber());
}

}  // namespace vorlix
