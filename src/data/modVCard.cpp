#include "data/modVCard.h"

#include <algorithm>
#include <memory>
#include <vector>

#include "data/TimePeriods.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kLineBreak = "<CR>";
constexpr std::size_t kFields = 15;

enum Field : std::size_t { kCallActive, kLink, kName, kFirstTerm, kNote = 12, kOldNote, kImage };

struct Term {
  bool CallCard::*active;
  std::string CallCard::*name;
  std::string CallCard::*date;
  std::string CallCard::*year;
};

constexpr Term kTerms[] = {
    {&CallCard::BookVCbActiv1, &CallCard::BookVCsTermName1, &CallCard::BookVCsDate1, &CallCard::BookVCsYear1},
    {&CallCard::BookVCbActiv2, &CallCard::BookVCsTermName2, &CallCard::BookVCsDate2, &CallCard::BookVCsYear2},
    {&CallCard::BookVCbActiv3, &CallCard::BookVCsTermName3, &CallCard::BookVCsDate3, &CallCard::BookVCsYear3},
};

std::string Flag(bool value) {
  return value ? "1" : "0";
}

std::string CardText(std::string_view text) {
  return FieldText(text, ';');
}

// Date and year share a field: a "/" of their own would move the year.
std::string DateText(std::string_view text) {
  return CardText(Replace(text, "/", "."));
}

std::string NoteText(std::string_view note) {
  std::string text = Replace(note, kLineEnd, kLineBreak);
  for (const char* lineEnd : {"\r", "\n"}) {
    text = Replace(text, lineEnd, kLineBreak);
  }
  return CardText(text);
}

std::string LinkedCard(const CallCard& card) {
  return Flag(card.BookVCbCallActive) + ";" + CardText(card.BookVCardLinkNumber) + std::string(kFields - 2, ';');
}

std::string MasterCard(const CallCard& card) {
  std::string text = Flag(card.BookVCbCallActive) + ";;" + CardText(card.BookVCsName);
  for (const Term& term : kTerms) {
    text += ";" + Flag(card.*term.active) + ";" + CardText(card.*term.name) + ";" + DateText(card.*term.date) + "/" +
            DateText(card.*term.year);
  }
  return text + ";" + NoteText(card.BookVCsNote) + ";;" + CardText(card.BookVCsImage);
}

// The fields of a card in their present places.
std::vector<std::string> CardFields(std::string_view text) {
  std::vector<std::string> fields = Split(text, ";");
  const bool isOld = fields.size() < kFields;
  fields.resize(std::max(fields.size(), kFields));
  // The first term used to be the birthday, and had no name of its own.
  if (isOld) fields.insert(fields.begin() + kFirstTerm + 1, "Geburtstag");
  return fields;
}

void ReadTerm(CallCard& card, const Term& term, const std::string* fields) {
  const std::vector<std::string> date = Split(fields[2] + "/", "/");
  card.*term.active = fields[0] == "1";
  card.*term.name = fields[1];
  card.*term.date = date[0];
  card.*term.year = date[1];
}

void ReadMasterCard(CallCard& card, const std::vector<std::string>& fields) {
  card.BookVCsName = fields[kName];
  const std::string* next = &fields[kFirstTerm];
  for (const Term& term : kTerms) {
    ReadTerm(card, term, next);
    next += 3;
  }
  card.BookVCsNote = Replace(fields[kNote], kLineBreak, kLineEnd);
  if (!fields[kOldNote].empty()) card.BookVCsNote = fields[kNote] + std::string(kLineEnd) + fields[kOldNote];
  card.BookVCsImage = fields[kImage];
}

}  // namespace

std::string FieldText(std::string_view text, char separator) {
  return Replace(Replace(OneField(text, separator), kVCardBegin, "[vcd "), kVCardEnd, " vcd]");
}

std::string BookEditMakeVCardString(oDataCall& item) {
  return Trapped(
      "modVCard.BookEditMakeVCardString",
      [&] {
        const std::string& link = item.Card().BookVCardLinkNumber;
        if (!link.empty() && link == item.DataNumber()) item.MutableCard().BookVCardLinkNumber.clear();
        if (!item.Card().BookVCardLinkNumber.empty()) return LinkedCard(item.Card());
        return item.HaveVCard() ? MasterCard(item.Card()) : std::string();
      },
      item.DataNumber());
}

oDataCall& BookAddVCardToItem(oDataCall& item) {
  if (item.Card().BookVCardData.empty()) return item;
  CallCard& card = item.MutableCard();
  const std::vector<std::string> fields = CardFields(card.BookVCardData);
  card.BookVCbCallActive = fields[kCallActive] == "1";
  card.BookVCardLinkNumber = fields[kLink];
  if (card.BookVCardLinkNumber.empty()) ReadMasterCard(card, fields);
  card.BookVCardLogo = !card.BookVCsImage.empty();
  return item;
}

void vCardsRemove_LinksWithoutMaster(clsCollection& collection, std::string_view number) {
  if (number.empty()) return;  // every master card has an empty link
  Trapped(
      "modVCard.vCardsRemove_LinksWithoutMaster",
      [&] {
        for (const auto& entry : collection.GetCollection()) {
          const auto* object = std::get_if<clsCollection::Object>(&entry.value);
          const auto item = object == nullptr ? nullptr : std::dynamic_pointer_cast<oDataCall>(*object);
          if (item && item->Card().BookVCardLinkNumber == number) item->MutableCard() = {};
        }
      },
      number);
}

// Cards and alerts remind within the same days.
bool VCardDateCheck(std::string_view date, const Settings& settings, const CivilClock& clock) {
  return fAlertDateCheck(date, settings, clock);
}

void modVCard::LoadVCardArray() {
  Trapped("modVCard.LoadVCardArray", [&] {
    const clsCollection& book = book_();
    clsCollection cards;
    for (std::size_t i = 1; i <= book.Count(); ++i) {
      const auto item = book.ItemByIndexAs<oDataCall>(i);
      if (!item) continue;
      if (BookAddVCardToItem(*item).Card().BookVCardLinkNumber.empty() && item->HaveVCard()) cards.Add(item);
      if (!progress_.IsUp()) continue;
      progress_.Show(LoadLangKey("SplashScreen_Msg_SearchVCards", "suche Visitenkarten..."_ansi) + " " +
                     std::to_string(i) + "/" + std::to_string(book.Count()));
    }
    VCardArray_ = std::move(cards);
  });
}

}  // namespace vorlix
