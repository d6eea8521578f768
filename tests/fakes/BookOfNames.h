// A telephone book of names that feeds the journal's cache while a journal is loaded, and counts what it was asked.
#pragma once

#include <map>
#include <string>

#include "core/null_ports.h"
#include "data/JournalCache.h"

namespace vorlix {

class BookOfNames : public NoPhoneBook {
 public:
  BookOfNames(JournalCache& cache, const JournalFlags& flags) : cache_(cache), flags_(flags) {}

  std::map<std::string, std::string> names;
  int lookups = 0;

  int GetNumberData(oDataCall& call, bool, bool) override {
    ++lookups;
    const auto entry = names.find(call.DataNumber());
    call.NameMode = entry == names.end() ? 0 : 1;
    call.Name(entry == names.end() ? std::string() : entry->second);
    if (call.NameMode == kNamed && flags_.JournalLoading) {
      cache_.SpeedBuffer_Journal_Set(call.DataNumber(), &call, std::string(call.VW_FormatedFull()));
    }
    return call.NameMode;
  }

 private:
  JournalCache& cache_;
  const JournalFlags& flags_;
};

// Shows a number with its first four digits as the place, and counts.
class CountingNumbers : public PlainNumbers {
 public:
  int analyses = 0;

  NumberTexts GetOVW(const std::string& number) override {
    ++analyses;
    NumberTexts texts = PlainNumbers::GetOVW(number);
    texts.VW_FormatedLocation = "Ort " + number.substr(0, 4);
    texts.VW_FormatedFull = texts.VW_FormatedLocation + " " + number;
    return texts;
  }
};

}  // namespace vorlix
