#include "app/CommandLine.h"

#include "data/modSettings.h"
#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

CommandLine ParseCommandLine(const std::vector<std::string>& arguments) {
  CommandLine line;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string argument = FromUtf8(arguments[i]);
    if (argument == "--console") {
      line.console = true;
    } else if (argument == "--help" || argument == "-h") {
      line.help = true;
    } else if (argument == "--version") {
      line.version = true;
    } else if (argument.starts_with("--data=")) {
      line.dataFolder = arguments[i].substr(7);
    } else if (argument == "--data" && i + 1 < arguments.size()) {
      line.dataFolder = arguments[++i];
    } else if (argument.starts_with("-")) {
      line.error = LoadLangKey("CommandLine_Msg_Unknown", "Unbekannte oder unvollständige Option:"_ansi) + " " +
                   WithoutControls(argument);
    } else {
      line.words.push_back(argument);
    }
  }
  return line;
}

std::string HelpText() {
  return std::string(
      "Vorlix, Anrufmonitor\n"
      "\n"
      "Aufruf: vorlix [Optionen] [auto | restart]\n"
      "\n"
      "  --console     Anrufe im Terminal zeigen\n"
      "  --data ORDNER Datenordner, statt ~/.local/share/Vorlix\n"
      "  --version     Version nennen\n"
      "  --help        diese Hilfe\n"
      "\n"
      "  auto          vom System gestartet: wartet AutoRunDelay Sekunden\n"
      "  restart       von sich selbst gestartet: löst die laufende Kopie ab\n"
      "\n"
      "Einstellungen: data/Vorlix.ini, data/sett_socketavm.ini und data/sett_socketncid.ini\n"
      "im Datenordner\n"_ansi);
}

std::string VersionText() {
  return "Vorlix " + ProgramVersionText();
}

}  // namespace vorlix
