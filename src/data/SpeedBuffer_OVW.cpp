#include "data/SpeedBuffer_OVW.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "data/paths.h"
#include "data/record_text.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr int kLinesOfOldFormat = 11;

using Fields = std::array<std::string_view, 5>;

bool IsOldFormat(std::string_view text) {
  for (int i = 0; i < kLinesOfOldFormat && !text.empty(); ++i) {
    std::string_view line = TakeLine(text);
    if (line.find(';') == std::string_view::npos) continue;
    if (IsNumeric(TakeUpTo(line, ';')) && !TakeUpTo(line, ';').empty()) return true;
  }
  return false;
}

bool CanBeFiled(const Fields& fields) {
  return std::all_of(fields.begin(), fields.end(), [](std::string_view field) {
    return field.find_first_of(std::string_view("|\r\n\0", 4)) == std::string_view::npos;
  });
}

}  // namespace

const oDataNumber* SpeedBuffer_OVW::Find(const std::string& number) const {
  // Only records of this kind go in.
  const auto* record = static_cast<const oDataNumber*>(records_.ItemByKey(number).get());
  return record != nullptr && !record->VW_Only.empty() ? record : nullptr;
}

void SpeedBuffer_OVW::Keep(const std::string& number, const NumberTexts& texts) {
  auto record = std::make_shared<oDataNumber>();
  record->Key = record->DataNumber = number;
  static_cast<NumberTexts&>(*record) = texts;
  if (records_.Add(record)) return;
  records_.RemoveByKeyName(number);
  records_.Add(record);
}

void SpeedBuffer_OVW::Load() {
  Trapped("modNumbers.SpeedBuffer_OVW_Load", [&] {
    int lines = 0;
    const std::string text = files_.fOpenFileToStream(path_, lines);
    if (IsOldFormat(text)) {
      files_.FileDelete(path_);
      Clear();
      return;
    }
    for (std::string_view rest = text; !rest.empty();) {
      std::string_view line = TakeLine(rest);
      if (line.find('|') == std::string_view::npos) continue;
      auto record = std::make_shared<oDataNumber>();
      for (std::string* field : {&record->DataNumber, &record->VW_FormatedFull, &record->VW_FormatedLocation,
                                 &record->VW_FormatedNumber, &record->VW_Only}) {
        *field = WithoutControls(TakeUpTo(line, '|'));
      }
      record->Key = record->DataNumber;
      records_.Add(record);
    }
  });
}

void SpeedBuffer_OVW::Save() {
  Trapped("modNumbers.SpeedBuffer_OVW_Save", [&] {
    std::string text;
    for (const clsCollection::Entry& entry : records_.GetCollection()) {
      const auto& record = static_cast<const oDataNumber&>(*std::get<clsCollection::Object>(entry.value));
      const Fields fields{record.DataNumber, record.VW_FormatedFull, record.VW_FormatedLocation,
                          record.VW_FormatedNumber, record.VW_Only};
      if (!CanBeFiled(fields)) continue;
      for (const std::string_view field : fields) {
        text += field;
        text += '|';
      }
      text += kLineEnd;
    }
    const IoResult written = OverwriteMakingFolder(files_.Store(), path_, text);
    if (!written) throw Fault(written.error, written.text);
  });
}

}  // namespace vorlix
