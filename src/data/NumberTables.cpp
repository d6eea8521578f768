#include "data/NumberTables.h"

#include <array>

#include "data/record_text.h"
#include "services/text.h"

namespace vorlix {
namespace {

// The records of a table, whatever its line ends, without comments and empty lines. One without a code, such as a line
// of blanks, is left out by the readers: an empty code would begin every number.
template <class Take>
void ForEachRecord(std::string_view text, const Take& take) {
  text = WithoutByteOrderMark(text);
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (!line.empty() && !line.starts_with(';')) take(line);
  }
}

template <std::size_t N>
std::array<std::string, N> Fields(std::string_view line) {
  std::array<std::string, N> fields;
  for (std::string& field : fields) {
    field = Trim(WithoutControls(TakeUpTo(line, '|')));
  }
  return fields;
}

}  // namespace

std::vector<StateRow> ReadStates(std::string_view text) {
  std::vector<StateRow> rows;
  ForEachRecord(text, [&](std::string_view line) {
    auto [code, second, name, flag] = Fields<4>(line);
    if (code.empty()) return;
    rows.push_back({std::move(code), std::move(second), std::move(name), std::move(flag)});
  });
  rows.shrink_to_fit();
  return rows;
}

std::vector<AreaRow> ReadAreas(std::string_view text) {
  std::vector<AreaRow> rows;
  ForEachRecord(text, [&](std::string_view line) {
    auto [code, name] = Fields<2>(line);
    if (code.empty()) return;
    rows.push_back({std::move(code), std::move(name)});
  });
  rows.shrink_to_fit();
  return rows;
}

std::string AreaFileName(std::string_view country) {
  return R"(\base\areacodes\area_00)" + std::string(country) + ".codes";
}

const CodeTable<AreaRow>* ForeignAreas::Load(std::string_view country) {
  if (country.starts_with("00")) country.remove_prefix(2);
  auto known = loaded_.find(country);
  if (known == loaded_.end()) {
    // Only digits name a file: the code comes from a table that anybody may have written.
    if (!IsDigits(country)) return nullptr;
    known = loaded_.emplace(country, Loaded{folders_.GetMainPath(AreaFileName(country)), {}, {}}).first;
  }
  Loaded& loaded = known->second;
  if (const FileInfo info = files_.Store().Stat(loaded.path); info != loaded.info) Read(loaded, info);
  return loaded.table.HasRecords() ? &loaded.table : nullptr;
}

void ForeignAreas::Read(Loaded& loaded, const FileInfo& info) {
  int lines = 0;
  const std::string text = files_.fOpenFileToStream(loaded.path, lines);
  loaded.table = CodeTable<AreaRow>(ReadAreas(text));
  // A file that could not be read is tried again with the next number.
  loaded.info = text.empty() ? FileInfo{} : info;
}

Provider::Provider(std::string_view text) {
  ForEachRecord(text, [&](std::string_view line) { lines_.emplace_back(Trim(WithoutControls(line))); });
}

std::string Provider::ImageOf(std::string_view number) {
  for (std::string& line : lines_) {
    if (line.starts_with(';') || line.find('=') == std::string::npos) continue;
    if (line.starts_with('0')) line.erase(0, 1);
    const std::vector<std::string> fields = Split(line, "=");
    const std::string_view key = Trim(fields[0]);
    const bool behindFirst = !number.empty() && number.substr(1).starts_with(key);
    if (behindFirst || number == key) return std::string(Trim(fields[1]));
  }
  return {};
}

}  // namespace vorlix
