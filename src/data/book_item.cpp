#include "data/book_item.h"

#include <algorithm>

#include "data/modVCard.h"
#include "data/record_text.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kFewestFields = 8;
constexpr char kSeparator = ';';
constexpr char kSearchSeparator = '|';

enum Field : std::size_t { kName, kNumber, kCallsIn, kNew, kBlock, kInvers, kAddress, kPeriod, kType, kCallsOut };

template <class Number>
void ReadNumber(const std::vector<std::string>& fields, Field field, Number& member) {
  if (field >= fields.size() || !IsNumeric(fields[field])) return;
  member = HeldIn<Number>(LeadingInteger(fields[field]).value_or(0));
}

// Where the text of the eighth field begins; a line that is checked has one.
std::size_t PlainLength(std::string_view line) {
  std::size_t at = 0;
  for (std::size_t field = 0; field < kPeriod; ++field) {
    at = line.find(kSeparator, at) + 1;
  }
  return at;
}

// The text between the marks; a mark in a name is none.
std::string CardOf(std::string_view line) {
  const auto begin = line.find(kVCardBegin, PlainLength(line));
  if (begin == std::string_view::npos) return {};
  const auto end = line.find(kVCardEnd, begin);
  const auto text = begin + kVCardBegin.size();
  return end == std::string_view::npos ? std::string() : std::string(line.substr(text, end - text));
}

// Cuts off the field with the card's mark and all behind it: parts of a card are no counters.
void DropCard(std::vector<std::string>& fields) {
  const auto card = std::find_if(fields.begin() + kPeriod, fields.end(),
                                 [](const std::string& field) { return field.find(kVCardBegin) != std::string::npos; });
  fields.erase(card, fields.end());
}

// A single blank means "not to be kept" in a name or an address: a text must not become one on its way.
std::string PlainText(std::string_view text, char separator) {
  std::string plain = FieldText(text, separator);
  return plain == " " ? std::string() : plain;
}

}  // namespace

bool BookData_CheckItem(const std::vector<std::string>& fields) {
  return fields.size() >= kFewestFields && IsNumeric(fields[kNumber]);
}

BookItem BookData_MakeItem(std::string_view line, NumberAnalysis& numbers,
                           const std::function<bool(const std::string&)>& haveCallerSoundFile) {
  std::vector<std::string> fields = Split(line, std::string_view(&kSeparator, 1));
  if (!BookData_CheckItem(fields)) return nullptr;
  DropCard(fields);
  auto item = std::make_shared<oDataCall>(&numbers);
  item->Name(fields[kName]);
  item->DataNumber(fields[kNumber]);
  item->Key = item->DataNumber();
  ReadNumber(fields, kCallsIn, item->CallCountIn);
  item->NewCall = fields[kNew] == "1";
  ReadNumber(fields, kBlock, item->BlockIndex);
  item->Blocked = item->BlockIndex != 0;
  item->BookInversMark = fields[kInvers] == "1";
  item->Address(fields[kAddress]);
  if (fields.size() > kPeriod) item->BookTimeName = fields[kPeriod];
  ReadNumber(fields, kType, item->BookType);
  item->CallCountOut = 1;
  ReadNumber(fields, kCallsOut, item->CallCountOut);
  item->SoundFileFound = haveCallerSoundFile && haveCallerSoundFile(item->DataNumber());
  if (std::string card = CardOf(line); !card.empty()) item->MutableCard().BookVCardData = std::move(card);
  BookAddVCardToItem(*item);
  return item;
}

BookItem SearchResultItem(std::string_view line, NumberAnalysis& numbers) {
  const std::vector<std::string> fields = Split(line, std::string_view(&kSearchSeparator, 1));
  if (fields.size() < 3) return nullptr;
  auto item = std::make_shared<oDataCall>(&numbers);
  item->BookType = kBookTypeSearch;
  item->DataNumber(fields[0]);
  item->Key = item->DataNumber();
  item->Name(fields[1]);
  item->Address(fields[2]);
  return item;
}

bool IsKeptEntry(const oDataCall& entry) {
  return !entry.Deleted && !entry.DataNumber().empty() && entry.Name() != " " && entry.Address() != " ";
}

std::string BookLine(const oDataCall& entry) {
  const auto text = [](std::string_view value) { return PlainText(value, kSeparator) + kSeparator; };
  const auto number = [](std::int32_t value) { return std::to_string(value) + kSeparator; };
  const auto flag = [](bool value) { return std::string(value ? "1;" : "0;"); };
  std::string line = text(entry.Name()) + text(entry.DataNumber()) + number(entry.CallCountIn) + flag(entry.NewCall) +
                     number(entry.BlockIndex) + flag(entry.BookInversMark) + text(entry.Address()) +
                     text(entry.BookTimeName) + number(kBookTypeUser) + number(entry.CallCountOut) + ";;;";
  line += kVCardBegin;
  line += OneField(Replace(entry.Card().BookVCardData, kVCardEnd, " vcd]"), '\n');
  line += kVCardEnd;
  return line += kLineEnd;
}

std::string SearchResultLine(const oDataCall& entry) {
  const auto text = [](std::string_view value) { return PlainText(value, kSearchSeparator); };
  return text(entry.DataNumber()) + kSearchSeparator + text(entry.Name()) + kSearchSeparator + text(entry.Address()) +
         std::string(kLineEnd);
}

}  // namespace vorlix
