#include "core/number_analysis.h"

#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

std::string UnknownNumberWord() {
  return LoadLangKey("DeclareAll_Const_Unknown", "Unbekannt"_ansi);
}

bool IsUnknownNumber(std::string_view number) {
  return !number.empty() && ContainsNoCase(number, UnknownNumberWord());
}

}  // namespace vorlix
