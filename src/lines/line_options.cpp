#include "lines/line_options.h"

#include <algorithm>

namespace vorlix {

std::string PreparedNumber(std::string_view number, const LineOptions& options) {
  std::string prepared = number.empty() ? UnknownNumberWord() : std::string(number);
  if (options.SpezialCuttNull && prepared.size() > 1 && prepared.back() == '0') prepared.pop_back();
  return prepared;
}

namespace {

// Without an own number in the table every call would count as foreign: there is nothing to tell by.
bool HasOwnNumbers(OwnNumbers& ownNumbers) {
  const auto& rows = ownNumbers.Table().GetCollection();
  return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return ownNumbers.IsOwnNumber(row.key); });
}

}  // namespace

bool IsForwarded(const std::string& number, const std::string& MSN, const LineOptions& options,
                 OwnNumbers& ownNumbers) {
  const bool internal = options.NoIntern && number.size() <= static_cast<std::size_t>(options.TKnum);
  const bool foreign = options.MSNLO && !ownNumbers.IsOwnNumber(MSN) && HasOwnNumbers(ownNumbers);
  return !internal && !foreign;
}

}  // namespace vorlix
