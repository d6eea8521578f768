#include "screens/about_text.h"

#include <vector>

#include "screens/display_texts.h"
#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

std::string AboutText(const AboutFacts& facts) {
  const std::string sources = StateText(facts.lines);
  std::vector<std::string> lines{
      facts.version,
      LoadLangKey("About_Info_Program", "Anrufmonitor für den Telefonanschluss"_ansi),
      {},
      LoadLangKey("About_Label_Lines", "Leitungen:"_ansi) + " " +
          (sources.empty() ? LoadLangKey("About_String_NoLine", "keine eingerichtet"_ansi) : sources),
      LoadLangKey("About_Label_DataFolder", "Datenordner:"_ansi) + " " + facts.dataFolder,
      {},
      LoadLangKey("About_Info_License", "Vorlix steht unter der MIT-Lizenz."_ansi),
      LoadLangKey("About_Info_Tables",
                  "Die Ortsnetztabellen sind aus Daten von libphonenumber gemacht (Apache-Lizenz 2.0)."_ansi),
  };
  if (!facts.toolkit.empty()) {
    lines.push_back(LoadLangKey("About_Info_Toolkit", "Die Oberfläche benutzt Qt (LGPL Version 3):"_ansi) + " " +
                    facts.toolkit);
  }
  return Join(lines, kLineEnd);
}

}  // namespace vorlix
