#include "data/JournalCache.h"

#include <utility>

namespace vorlix {
namespace {

NumberTexts TextsOf(const oDataCall& call) {
  return {call.VW_Only(),           call.VW_NumberOnly(),       call.VW_FormatedFull(),
          call.VW_FormatedNumber(), call.VW_FormatedLocation(), call.VW_StateName(),
          call.VW_CityName()};
}

// An analysis always gives the number as shown; an entry without it holds the formatted number alone.
bool IsAnalysed(const oDataCall& entry) {
  return !entry.VW_FormatedNumber().empty();
}

// Takes what `source` had analysed, and the formatted number over it.
void TakeTexts(oDataCall& entry, const oDataCall* source, const std::string& formatted) {
  const bool hasMore = source != nullptr && source->IsLoadedVW();
  NumberTexts texts = TextsOf(hasMore ? *source : entry);
  texts.VW_FormatedFull = formatted.empty() ? entry.VW_FormatedFull() : formatted;
  entry.SetTexts(std::move(texts));
}

// A record has either all texts of its number or none. What the entry lacks comes from the call's own analysis, once
// for all lines of the number.
void GiveTexts(oDataCall& call, oDataCall& entry) {
  if (entry.VW_FormatedFull().empty()) return;
  if (!IsAnalysed(entry)) {
    NumberTexts texts = TextsOf(call);
    texts.VW_FormatedFull = entry.VW_FormatedFull();
    entry.SetTexts(std::move(texts));
  }
  call.SetTexts(TextsOf(entry));
}

}  // namespace

void JournalCache::SpeedBuffer_Journal_Clear() {
  entries_.Clear();
}

void JournalCache::SpeedBuffer_Journal_Set(const std::string& number, const oDataCall* source,
                                           const std::string& formatted) {
  auto entry = entries_.ItemByKeyAs<oDataCall>(number);
  if (!entry) {
    entry = std::make_shared<oDataCall>();
    entry->Key = number;
    entry->DataNumber(number);
    if (!entries_.Add(entry)) return;
  }
  TakeTexts(*entry, source, formatted);
  if (source == nullptr) return;
  if (!source->Name().empty()) entry->Name(source->Name());
  if (!source->Address().empty()) entry->Address(source->Address());
  if (!source->Card().BookVCardData.empty()) SpeedBuffer_Journal_BookItemCopy(*entry, *source);
}

void JournalCache::SpeedBuffer_Journal_Get(oDataCall& call) const {
  const auto entry = entries_.ItemByKeyAs<oDataCall>(call.DataNumber());
  if (!entry) return;
  call.Name(entry->Name());
  call.Address(entry->Address());
  GiveTexts(call, *entry);
  if (!entry->Name().empty() || !entry->Address().empty()) call.NameMode = kNamed;
  if (!entry->Card().BookVCardData.empty()) SpeedBuffer_Journal_BookItemCopy(call, *entry);
}

void JournalCache::SpeedBuffer_Journal_BookItemCopy(oDataCall& target, const oDataCall& source) {
  target.MutableCard() = source.Card();
}

}  // namespace vorlix
