// One call in progress, one journal line or one book entry: the record that everything passes around. Plain members
// only store; what follows from a number is worked out on first reading, through the analysis the record was made with.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "core/number_analysis.h"
#include "core/oDataMSN.h"
#include "services/DateTime.h"
#include "services/clsCollection.h"

namespace vorlix {

// The colour of a line whose own number is not in the table: the system's window text.
inline constexpr std::uint32_t kMSNColorUnknown = 0x80000008u;

// What the telephone book knows of a number; the values of `NameMode`.
enum BookKnowledge : std::int16_t {
  kNoEntry = 0,
  kNamed = 1,
  kNoNameShown = 2,  // the entry is there to show no name
};

// Direction of a call from a router.
enum class CallDirection : std::int16_t { kIncoming = 0, kOutgoing = 1 };

// The vCard part of a book entry. Most records have none, so it is made when it is first written to.
struct CallCard {
  std::string BookVCardData;
  std::string BookVCardLinkNumber;
  bool BookVCardLogo = false;
  bool BookVCbCallActive = false;
  bool BookVCbActiv1 = false, BookVCbActiv2 = false, BookVCbActiv3 = false;
  std::string BookVCsDate1, BookVCsDate2, BookVCsDate3;
  std::string BookVCsYear1, BookVCsYear2, BookVCsYear3;
  std::string BookVCsName;
  std::string BookVCsTermName1, BookVCsTermName2, BookVCsTermName3;
  std::string BookVCsNote;
  std::string BookVCsImage;
};

class oDataCall : public CollectionItem {
 public:
  // The analysis must outlive the record; without one the VW_ texts stay empty.
  explicit oDataCall(NumberAnalysis* analysis = nullptr) : analysis_(analysis) {}
  oDataCall(const oDataCall& other) = default;
  oDataCall& operator=(const oDataCall&) = delete;

  DateTime CallDateTime;  // time of the ring
  bool Deleted = false;
  bool MoveToBlacklist = false;
  std::string DataCallerView;  // the number as to be shown
  std::int16_t NameMode = kNoEntry;
  std::string MSN;
  std::string MSNAlias;
  std::uint32_t MSNColor = 0;
  bool MSN_BlockNoNumber = false;
  std::int16_t MSN_BlockKennung = 0;
  bool MSN_BlockNoName = false;
  std::int16_t MSN_BlockMainMenu = 0;  // 0 none, 1 mnuBlockAll, 2 mnuBlockAllByTime, 3 both
  std::int32_t PLCI = 0;
  std::int32_t NCCI = 0;
  bool Blocked = false;   // the call was refused
  bool Active = false;    // ringing and not refused
  bool Fernwirk = false;  // remote-control call
  std::int16_t CIP = 0;
  std::uint8_t BlockFunction = 0;  // which rule refused it
  CallDirection AVMDirection = CallDirection::kIncoming;
  std::int32_t AVMCallperiod = 0;  // connected time in seconds
  std::int32_t ID = 0;
  std::int16_t BlockIndex = 0;
  bool NewCall = false;  // not yet answered or seen
  bool NewCallByService = false;
  bool SoundFileFound = false;
  std::int16_t BookType = 0;
  std::string BookSortString;
  bool BookCanged = false;
  std::int32_t BookCellIndex = 0;
  std::int32_t CallCountIn = 0;
  std::int32_t CallCountOut = 0;
  bool BookInversMark = false;
  std::string BookTimeName;

  // A changed number invalidates all that was derived from it.
  const std::string& DataNumber() const { return dataNumber_; }
  void DataNumber(std::string number);

  bool IsLoadedVW() const { return isLoadedVW_; }
  bool IsLoadedBookData() const { return isLoadedBookData_; }

  // Reading marks the book data as loaded; no look-up happens here, that is the book's work.
  const std::string& Name() const { return BookText(name_); }
  void Name(std::string text) { name_ = std::move(text); }
  const std::string& Address() const { return BookText(address_); }
  void Address(std::string text) { address_ = std::move(text); }
  const std::string& Notiz() const { return BookText(notiz_); }
  void Notiz(std::string text) { notiz_ = std::move(text); }

  // Reading any of these runs the analysis first, once for each number.
  const std::string& VW_Only() const { return Texts().VW_Only; }
  const std::string& VW_NumberOnly() const { return Texts().VW_NumberOnly; }
  const std::string& VW_FormatedFull() const { return Texts().VW_FormatedFull; }
  const std::string& VW_FormatedNumber() const { return Texts().VW_FormatedNumber; }
  const std::string& VW_FormatedLocation() const { return Texts().VW_FormatedLocation; }
  const std::string& VW_StateName() const { return Texts().VW_StateName; }
  const std::string& VW_CityName() const { return Texts().VW_CityName; }
  // Sets the analysis from elsewhere, such as a cache.
  void SetTexts(NumberTexts texts);

  const CallCard& Card() const;
  CallCard& MutableCard();
  bool HaveVCard() const;

  // Day, month and year, or the time, of the call as the program shows and files them.
  std::string CallDateView() const;
  std::string CallTimeView() const;
  // The vCard date 1 to 3 completed with the current year; empty for an empty date.
  std::string BookVCsDateFormated(int which, const CivilClock& clock) const;
  // The name when one is known, else the formatted number.
  std::string ToolTippHead() const;
  // Address and number when a name is known, then the own number with its alias, a line each.
  std::string ToolTippText() const;

  // Fills alias, colour and block fields from the table entry of MSN, or from the entry "all" (block fields only).
  void GetMSNData(const clsCollection& ownNumbers);

  void ClearBookItem();
  void ClearVCard(const CivilClock& clock);

  std::shared_ptr<CollectionItem> Clone() const override { return std::make_shared<oDataCall>(*this); }

 private:
  const NumberTexts& Texts() const;
  const std::string& BookText(const std::string& text) const {
    isLoadedBookData_ = true;
    return text;
  }

  NumberAnalysis* analysis_;
  std::string dataNumber_;
  std::string name_, address_, notiz_;
  mutable NumberTexts texts_;
  mutable bool isLoadedVW_ = false;
  mutable bool isLoadedBookData_ = false;
  std::shared_ptr<CallCard> card_;  // shared by copies until one of them writes
};

// Adds one to the entry's counter of that direction: 0 CallCountIn, 1 CallCountOut; any other changes nothing.
void CallCounting(oDataCall& entry, int direction);

}  // namespace vorlix
