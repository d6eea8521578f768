#include "data/modMSN.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <vector>

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kSection = "MSN";
constexpr std::string_view kAll = "all";
constexpr std::string_view kDefaultRow = ";;0;;|||;1;1;1;1;0;0";
constexpr int kFirstVersionOfForm = 210;
constexpr int kLastKey = 64;
constexpr int kLastKeyOfOldForm = 8;
constexpr std::size_t kFieldsWithBook = 11;
constexpr std::size_t kEmptyBlockString = 3;
constexpr int kHotKeys = 6;
constexpr int kCopyByMSN = 2;

// By the number of the function.
constexpr bool oDataMSN::*kFunctions[] = {
    &oDataMSN::FunctionsByMSN_b_Display, &oDataMSN::FunctionsByMSN_b_LogJournal, &oDataMSN::FunctionsByMSN_b_LogBook,
    &oDataMSN::FunctionsByMSN_b_Prog,    &oDataMSN::FunctionsByMSN_b_Sound,
};

// "v2.21" is 221; 0 for what is no version.
int StoredVersion(const std::string& text) {
  const std::string lower = Lower(text);
  return LeadingInteger(Replace(lower.substr(lower.find('v') + 1), ".", "")).value_or(0);
}

bool IsOn(std::string_view field) {
  return LeadingInteger(field).value_or(0) != 0;
}

std::int16_t Small(std::string_view field) {
  using Limits = std::numeric_limits<std::int16_t>;
  return static_cast<std::int16_t>(std::clamp<int>(LeadingInteger(field).value_or(0), Limits::min(), Limits::max()));
}

// The fields of a stored row, those completed that older versions did not write.
std::vector<std::string> Fields(const std::string& stored) {
  std::vector<std::string> fields = Split(stored, ";");
  // One switch once stood for journal and book, and the row that is assumed has that one only.
  const bool ownBookSwitch = fields.size() >= kFieldsWithBook && stored != kDefaultRow;
  if (fields.size() < 9) {
    fields.resize(9);
    std::fill(fields.begin() + 5, fields.end(), "1");
  }
  fields.resize(std::max(fields.size(), kFieldsWithBook));
  if (!ownBookSwitch) fields[10] = fields[6];
  return fields;
}

void ReadBlocks(const std::string& stored, oDataMSN& row) {
  if (stored.size() <= kEmptyBlockString) return;
  std::vector<std::string> fields = Split(stored, "|");
  fields.resize(4);
  row.BlockByMSN_b_BlockNoNumber = IsOn(fields[0]);
  row.BlockByMSN_i_Kennung = Small(fields[1]);
  row.BlockByMSN_b_BlockNoName = IsOn(fields[2]);
  row.BlockByMSN_b_BlockMainMenu = IsNumeric(fields[3]) ? Small(fields[3]) : std::int16_t{0};
}

std::string Flag(bool on) {
  return on ? "1" : "0";
}

std::string BlockString(const oDataMSN& row) {
  return Flag(row.BlockByMSN_b_BlockNoNumber) + "|" + std::to_string(row.BlockByMSN_i_Kennung) + "|" +
         Flag(row.BlockByMSN_b_BlockNoName) + "|" + std::to_string(row.BlockByMSN_b_BlockMainMenu);
}

// A ";" would begin the next field. Between mail addresses it means what their own separator does.
std::string RowText(const oDataMSN& row) {
  const std::string mailAdds = Replace(row.MailAdds, ";", "|");
  if (row.MSN == kAll) return ";;0;" + mailAdds + ";" + BlockString(row) + ";0;0;0;0;0;0";
  return Join({Replace(row.MSN, ";", ","), Replace(row.Alias, ";", ","), std::to_string(row.color), mailAdds,
               BlockString(row), Flag(row.FunctionsByMSN_b_Display), Flag(row.FunctionsByMSN_b_LogJournal),
               Flag(row.FunctionsByMSN_b_Prog), Flag(row.FunctionsByMSN_b_Sound),
               std::to_string(row.FunctionsByMSN_i_HotKeyID), Flag(row.FunctionsByMSN_b_LogBook)},
              ";");
}

}  // namespace

void modMSN::MSNRead() {
  Trapped("modMSN.MSNRead", [&] {
    const modAPI_INI::Batch once(ports_.ini);
    table_.Clear();
    const bool isOldForm =
        StoredVersion(ports_.ini.GetSettStr("Vorlix-Version", "Version", "v0.00")) < kFirstVersionOfForm;
    const int lastKey = isOldForm ? kLastKeyOfOldForm : kLastKey;
    for (int key = 0; key <= lastKey; ++key) {
      const std::string stored = ports_.ini.GetSettStr(kSection, std::to_string(key), kDefaultRow, {}, true);
      if (key == 0 || stored != kDefaultRow) AddRow(stored);
    }
    // The settings may not be loaded yet.
    if (isOldForm) Write(ports_.ini.GetSettLng("General", "CopyOption", 0));
  });
}

void modMSN::AddRow(const std::string& stored) {
  const std::vector<std::string> fields = Fields(stored);
  const auto row = std::make_shared<oDataMSN>();
  row->MSN = row->Key = fields[0].empty() ? std::string(kAll) : fields[0];
  row->Alias = fields[1];
  row->color = LeadingInteger(fields[2]).value_or(0);
  row->MailAdds = fields[3];
  ReadBlocks(fields[4], *row);
  row->FunctionsByMSN_b_Display = IsOn(fields[5]);
  row->FunctionsByMSN_b_LogJournal = IsOn(fields[6]);
  row->FunctionsByMSN_b_Prog = IsOn(fields[7]);
  row->FunctionsByMSN_b_Sound = IsOn(fields[8]);
  row->FunctionsByMSN_i_HotKeyID = Small(fields[9]);
  row->FunctionsByMSN_b_LogBook = IsOn(fields[10]);
  if (!table_.Add(row)) return;
  const int hotKey = row->FunctionsByMSN_i_HotKeyID;
  if (ports_.tieHotKey && hotKey >= 1 && hotKey <= kHotKeys) ports_.tieHotKey(hotKey - 1, row->MSN);
}

void modMSN::MSNWrite() {
  Trapped("modMSN.MSNWrite", [&] { Write(ports_.settings.General.CopyOption); });
}

void modMSN::Write(int copyOption) {
  if (ports_.blocks.SettingsWriteBlocked) return;
  const modAPI_INI::Batch once(ports_.ini);
  ports_.ini.DeleteSection(kSection);
  int key = 0;
  for (std::size_t index = 1; index <= table_.Count(); ++index) {
    const auto row = table_.ItemByIndexAs<oDataMSN>(index);
    if (!row) continue;
    if (row->MSN != kAll && copyOption != kCopyByMSN) row->FunctionsByMSN_i_HotKeyID = 0;
    ports_.ini.SetSettStr(kSection, std::to_string(key++), RowText(*row));
  }
}

bool modMSN::IsMSNFunctionActiv(const std::string& msn, int function) {
  return Trapped(
      "modMSN.IsMSNFunctionActiv",
      [&] {
        if (function < 0 || function >= static_cast<int>(std::size(kFunctions))) return false;
        const auto row = IsOwnNumber(msn) ? table_.ItemByKeyAs<oDataMSN>(msn) : nullptr;
        if (!row) return true;
        return (*row).*kFunctions[function];
      },
      msn, function);
}

bool modMSN::IsOwnNumber(const std::string& msn) {
  return msn != kAll && table_.ItemByKeyAs<oDataMSN>(msn) != nullptr;
}

}  // namespace vorlix
