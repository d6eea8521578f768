#include "data/journal_line.h"

#include <algorithm>
#include <optional>

#include "data/record_text.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr char kTab = '\t';
constexpr std::size_t kFewestFields = 8;
constexpr std::size_t kMostPlainDigits = 9;
constexpr std::size_t kSortTextSize = 18;  // day and time

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
    return OneField(line->DateText, kTab) + kTab + OneField(line->TimeText, kTab);
  }
  return call.CallDateView() + kTab + call.CallTimeView();
}

bool IsPlainNumber(std::string_view text) {
  return text.size() <= kMostPlainDigits && IsDigits(text);
}

int PlainNumber(std::string_view digits) {
  int value = 0;
  for (const char digit : digits)
    value = value * 10 + (digit - '0');
  return value;
}

// Like IsNumeric with LeadingInteger; nearly every number of a journal is a few digits.
std::optional<int> NumberOf(std::string_view text) {
  if (IsPlainNumber(text)) return PlainNumber(text);
  return IsNumeric(text) ? LeadingInteger(text).value_or(0) : std::optional<int>();
}

template <class Number>
void ReadNumber(std::string_view text, Number& member) {
  if (const auto number = NumberOf(text)) member = HeldIn<Number>(*number);
}

bool IsDateSeparator(char character) {
  return character == '.' || character == '/' || character == '-';
}

// Date and time as the program writes them. A year that begins with "0" may be meant with two digits.
bool IsFiled(std::string_view date, std::string_view time) {
  return date.size() == 10 && IsDigits(date.substr(0, 2)) && IsDateSeparator(date[2]) && IsDigits(date.substr(3, 2)) &&
         IsDateSeparator(date[5]) && IsDigits(date.substr(6)) && date[6] != '0' && time.size() == 8 &&
         IsDigits(time.substr(0, 2)) && time[2] == ':' && IsDigits(time.substr(3, 2)) && time[5] == ':' &&
         IsDigits(time.substr(6));
}

DateTime FiledDate(std::string_view date, std::string_view time) {
  return DateTime::FromCivil(PlainNumber(date.substr(6)), PlainNumber(date.substr(3, 2)),
                             PlainNumber(date.substr(0, 2)), PlainNumber(time.substr(0, 2)),
                             PlainNumber(time.substr(3, 2)), PlainNumber(time.substr(6)));
}

// The day of a filed date, year first.
std::string FiledSortDate(std::string_view date) {
  std::string text;
  text.reserve(kSortTextSize);
  text.append(date.substr(6)) += GetLimiter();
  text.append(date.substr(3, 2)) += GetLimiter();
  text.append(date.substr(0, 2));
  return text;
}

// When the call was, as a date, as a text to sort by, and as the texts of the line where they make no date.
void ReadStamp(std::string_view date, std::string_view time, oJournalLine& call) {
  const bool filed = IsFiled(date, time);
  call.CallDateTime = filed ? FiledDate(date, time) : CDateNew(date, time);
  if (!call.CallDateTime) {
    call.DateText = date;
    call.TimeText = time;
  }
  call.BookSortString =
      filed && call.CallDateTime ? FiledSortDate(date) : GetFormatedDateByDate(CDateNew(date, {}), 0, true);
  call.BookSortString.append(time);
}

}  // namespace

JournalFields::JournalFields(std::string_view line) {
  while (count < text.size()) {
    const auto tab = line.find(kTab);
    text[count++] = line.substr(0, tab);
    if (tab == std::string_view::npos) break;
    line.remove_prefix(tab + 1);
  }
}

bool J_CheckItem(JournalFields& fields) {
  auto& text = fields.text;
  if (fields.count < kFewestFields) return false;
  if (text[kDate].empty() || text[kTime].empty() || text[kNumber].empty()) return false;
  if (!NumberOf(text[kBlock]) || !NumberOf(text[kCIP])) return false;
  if (text[kNew].empty()) text[kNew] = "0";
  return true;
}

std::string NotizParsing(bool toFile, std::string_view text) {
  return toFile ? Replace(Replace(text, kLineEnd, "<CR>"), "\t", "<TB>")
                : Replace(Replace(text, "<CR>", kLineEnd), "<TB>", "\t");
}

std::string JournalLineHead(const oDataCall& call) {
  return Stamp(call) + kTab + OneField(call.DataNumber(), kTab) + kTab + OneField(call.MSN, kTab);
}

std::string JournalLineTail(const oDataCall& call) {
  return OneField(NotizParsing(true, call.Notiz()), kTab) + kTab + std::to_string(static_cast<int>(call.AVMDirection)) +
         kTab + std::to_string(call.AVMCallperiod);
}

// A rewritten line carries the value that was read into BlockIndex, where a live line carries the rule that ran; and
// any mark but none becomes "1".
std::string RewrittenJournalLine(const oDataCall& call, bool resetViewed) {
  const char* mark = call.NewCall && !resetViewed ? "1" : "0";
  return JournalLineHead(call) + kTab + std::to_string(call.BlockIndex) + kTab + std::to_string(call.CIP) + kTab +
         mark + kTab + JournalLineTail(call) + std::string(kLineEnd);
}

std::shared_ptr<oDataCall> ReadJournalLine(std::string_view line, NumberAnalysis& analysis) {
  JournalFields fields(line);
  if (!J_CheckItem(fields)) return nullptr;
  const auto& text = fields.text;
  auto call = std::make_shared<oJournalLine>(&analysis);
  ReadStamp(text[kDate], text[kTime], *call);
  call->DataNumber(std::string(text[kNumber]));
  call->MSN = text[kMSN];
  ReadNumber(text[kBlock], call->BlockIndex);
  ReadNumber(text[kCIP], call->CIP);
  call->NewCallByService = text[kNew] == "2";
  call->NewCall = text[kNew] == "1" || call->NewCallByService;
  call->Notiz(std::string(text[kNotiz]));
  std::int16_t direction = 0;
  ReadNumber(text[kDirection], direction);
  call->AVMDirection = CallDirection{direction};
  ReadNumber(text[kPeriod], call->AVMCallperiod);
  return call;
}

std::vector<std::string_view> JournalLines(std::string_view text) {
  std::vector<std::string_view> lines;
  text = Trim(text);
  while (!text.empty()) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    while (line.ends_with('\r'))
      line.remove_suffix(1);
    lines.push_back(line);
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return lines;
}

}  // namespace vorlix
