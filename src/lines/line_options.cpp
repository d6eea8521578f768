#include "lines/line_options.h"

namespace vorlix {

std::string PreparedNumber(std::string_view number, const LineOptions& options) {
  std::string prepared = number.empty() ? UnknownNumberWord() : std::string(number);
  if (options.SpezialCuttNull && prepared.size() > 1 && prepared.back() == '0') prepared.pop_back();
  return prepared;
}

bool IsForwarded(const std::string& number, const std::string& MSN, const LineOptions& options,
                 OwnNumbers& ownNumbers) {
  const bool internal = options.NoIntern && number.size() <= static_cast<std::size_t>(options.TKnum);
  const bool foreign = options.MSNLO && !ownNumbers.IsOwnNumber(MSN);
  return !internal && !foreign;
}

}  // namespace vorlix
