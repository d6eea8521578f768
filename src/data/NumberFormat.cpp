#include "data/NumberFormat.h"

#include "services/text.h"

namespace vorlix {
namespace {

void AppendState(std::string& text, std::string_view code, int index) {
  if (code.empty()) return;
  if (code.starts_with("00")) code.remove_prefix(2);
  text += index == 1 ? "00" : index == 2 ? "00 " : "+";
  text += code;
  text += "  ";
}

void AppendCity(std::string& text, std::string_view code, bool behindState, int index) {
  if (code.empty()) return;
  if (code.starts_with('0')) code.remove_prefix(1);
  if (index == 2) {
    text += "(0)";
  } else if (index == 1 || !behindState) {
    text += '0';
  }
  text += code;
  text += ' ';
}

// Blanks behind digit 3, 5 and so on up to 15, or behind digit 2, 4 and so on up to 14.
void AppendGrouped(std::string& text, std::string_view number, int index) {
  number = Trim(number);
  if (index != 1 && index != 2) {
    text += number;
    return;
  }
  const std::size_t first = index == 1 ? 3 : 2;
  const std::size_t last = first + 12;
  for (std::size_t digits = 1; digits <= number.size(); ++digits) {
    text += number[digits - 1];
    const bool groupEnds = digits >= first && digits <= last && digits % 2 == first % 2;
    if (groupEnds && digits < number.size()) text += ' ';
  }
}

// The names with what stands between them and the number; gives their length.
std::size_t AppendNames(std::string& text, const NumberParts& parts) {
  const bool both = !parts.cityName.empty() && !parts.stateName.empty();
  text += parts.cityName;
  if (both) text += " (";
  text += parts.stateName;
  if (both) text += ')';
  if (!text.empty()) text += ' ';
  return text.size();
}

// A code whose name is missing beside the other's name is left out.
bool LeavesOutState(const NumberParts& parts) {
  return parts.stateName.empty() && !parts.cityName.empty();
}
bool LeavesOutCity(const NumberParts& parts) {
  return parts.cityName.empty() && !parts.stateName.empty();
}

void AppendNumber(std::string& text, const NumberParts& parts, const NumberStyle& style) {
  if (!LeavesOutState(parts)) AppendState(text, parts.state, style.indexState);
  if (!LeavesOutCity(parts)) AppendCity(text, parts.city, !parts.state.empty(), style.indexCity);
  AppendGrouped(text, parts.number, style.indexNumber);
}

void TrimInPlace(std::string& text) {
  if (text.starts_with(' ') || text.ends_with(' ')) text = std::string(Trim(text));
}

}  // namespace

std::string FormatNumber(const NumberParts& parts, const NumberStyle& style) {
  std::string text;
  AppendNames(text, parts);
  AppendNumber(text, parts, style);
  TrimInPlace(text);
  return text;
}

ShownNumber FormatWithAndWithoutNames(const NumberParts& parts, const NumberStyle& style) {
  ShownNumber shown;
  const std::size_t names = AppendNames(shown.full, parts);
  AppendNumber(shown.full, parts, style);
  const bool leavesOut =
      (LeavesOutState(parts) && !parts.state.empty()) || (LeavesOutCity(parts) && !parts.city.empty());
  if (leavesOut) {
    AppendNumber(shown.number, {parts.state, {}, parts.city, {}, parts.number}, style);
  } else {
    shown.number = std::string_view(shown.full).substr(names);
  }
  TrimInPlace(shown.full);
  TrimInPlace(shown.number);
  return shown;
}

}  // namespace vorlix
