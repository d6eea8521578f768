#include "core/oDataCall.h"

#include <utility>

#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {

void oDataCall::DataNumber(std::string number) {
  dataNumber_ = std::move(number);
  isLoadedVW_ = false;
  isLoadedBookData_ = false;
}

const NumberTexts& oDataCall::Texts() const {
  if (!isLoadedVW_) {
    texts_ = analysis_ == nullptr ? NumberTexts{}
                                  : Trapped("oDataCall_LoadVW", [&] { return analysis_->GetOVW(dataNumber_); });
    isLoadedVW_ = true;
  }
  return texts_;
}

void oDataCall::SetTexts(NumberTexts texts) {
  texts_ = std::move(texts);
  isLoadedVW_ = true;
}

const CallCard& oDataCall::Card() const {
  static const CallCard none;
  return card_ ? *card_ : none;
}

CallCard& oDataCall::MutableCard() {
  if (!card_) card_ = std::make_shared<CallCard>();
  if (card_.use_count() > 1) card_ = std::make_shared<CallCard>(*card_);
  return *card_;
}

bool oDataCall::HaveVCard() const {
  const CallCard& card = Card();
  const std::string* texts[] = {&card.BookVCardData,   &card.BookVCsName,      &card.BookVCsNote,
                                &card.BookVCsImage,    &card.BookVCsTermName1, &card.BookVCsTermName2,
                                &card.BookVCsTermName3};
  for (const std::string* text : texts) {
    if (!text->empty()) return true;
  }
  return false;
}

std::string oDataCall::CallDateView() const {
  return GetFormatedDateByDate(CallDateTime);
}

std::string oDataCall::CallTimeView() const {
  return GetFormatedTime(CallDateTime);
}

std::string oDataCall::BookVCsDateFormated(int which, const CivilClock& clock) const {
  const CallCard& card = Card();
  const std::string& date = which == 1 ? card.BookVCsDate1 : which == 2 ? card.BookVCsDate2 : card.BookVCsDate3;
  if (date.empty()) return {};
  return GetFormatedDateByString(date + Padded(clock.Now().Year(), 4), clock);
}

std::string oDataCall::ToolTippHead() const {
  return NameMode == kNamed ? Name() : VW_FormatedFull();
}

std::string oDataCall::ToolTippText() const {
  const std::string lineEnd(kLineEnd);
  std::string text;
  if (NameMode == kNamed) text = Address() + lineEnd + VW_FormatedFull() + lineEnd;
  return text + "MSN " + MSNAlias + " " + MSN;
}

void oDataCall::GetMSNData(const clsCollection& ownNumbers) {
  const auto own = ownNumbers.ItemByKeyAs<oDataMSN>(MSN);
  if (own) {
    MSNAlias = own->Alias.empty() ? MSN : own->Alias;
    MSNColor = static_cast<std::uint32_t>(own->color);
  } else {
    MSNAlias = MSN;
    MSNColor = kMSNColorUnknown;
  }
  const auto row = own ? own : ownNumbers.ItemByKeyAs<oDataMSN>("all");
  if (!row) return;
  MSN_BlockNoNumber = row->BlockByMSN_b_BlockNoNumber;
  MSN_BlockKennung = row->BlockByMSN_i_Kennung;
  MSN_BlockNoName = row->BlockByMSN_b_BlockNoName;
  MSN_BlockMainMenu = row->BlockByMSN_b_BlockMainMenu;
}

void oDataCall::ClearBookItem() {
  BookType = 0;
  name_.clear();
  notiz_.clear();
}

void oDataCall::ClearVCard(const CivilClock& clock) {
  CallCard& card = MutableCard();
  card = CallCard{};
  card.BookVCsDate1 = "01" + Padded(clock.Now().Year(), 4);
}

void CallCounting(oDataCall& entry, int direction) {
  if (direction == 0) ++entry.CallCountIn;
  if (direction == 1) ++entry.CallCountOut;
}

}  // namespace vorlix
