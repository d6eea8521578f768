// Contact cards of the phone book: a name, up to three dated terms, a note and a picture, kept as one text inside the
// book's line:
//
//   active;link;name;active;term;date/year;active;term;date/year;active;term;date/year;note;;picture
//
// A card that links to another number has nothing behind its link; the entry of that number holds the master card.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "core/oDataCall.h"
#include "data/Settings.h"
#include "services/clsCollection.h"

namespace vorlix {

// The card's text stands between these two in the book's line.
inline constexpr std::string_view kVCardBegin = "[vcd(";
inline constexpr std::string_view kVCardEnd = ")vcd]";

// The window that tells how far the start has come.
class LoadProgress {
 public:
  virtual ~LoadProgress() = default;
  virtual bool IsUp() = 0;
  virtual void Show(const std::string& text) = 0;
};

class NoLoadProgress : public LoadProgress {
 public:
  bool IsUp() override { return false; }
  void Show(const std::string&) override {}
};

// A text as it may stand in a field: what could end the field, the line or a card becomes a blank.
std::string FieldText(std::string_view text, char separator);

// The text of the card for the book's line; empty for an item with neither link nor card. A link to the item's own
// number is cleared.
std::string BookEditMakeVCardString(oDataCall& item);

// Fills the card's fields from BookVCardData and gives the item back; empty data leaves them as they are, and a linked
// card all but switch and link.
oDataCall& BookAddVCardToItem(oDataCall& item);

// Clears the card of every entry that links to `number`, the entries stay.
void vCardsRemove_LinksWithoutMaster(clsCollection& collection, std::string_view number);

// Whether a term's date, its year left out, lies within the days of reminder around today.
bool VCardDateCheck(std::string_view date, const Settings& settings, const CivilClock& clock);

// The card collection: the book's entries that carry a master card, for the card window and the reminders.
class modVCard {
 public:
  using BookCollection = std::function<const clsCollection&()>;

  // `progress` must outlive the object.
  modVCard(BookCollection book, LoadProgress& progress) : book_(std::move(book)), progress_(progress) {}

  // Builds the collection anew.
  void LoadVCardArray();
  // Shares its entries with the book.
  const clsCollection& VCardArray() const { return VCardArray_; }

 private:
  BookCollection book_;
  LoadProgress& progress_;
  clsCollection VCardArray_;
};

}  // namespace vorlix
