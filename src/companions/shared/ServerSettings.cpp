#include "companions/shared/ServerSettings.h"

#include "data/Settings.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

ServerAddress ReadServer(modAPI_INI& ini, std::string_view section) {
  return Trapped(
      "ServerSettings.ReadServer",
      [&] {
        ServerAddress server;
        for (const SettingRow& row : SettingsTable()) {
          if (row.section != section) continue;
          if (row.key == "Host") {
            server.host = ini.GetSettStr(row.section, row.key, row.fallbackText, row.file, true);
          } else if (row.key == "Port") {
            server.port = static_cast<std::uint16_t>(
                ini.GetSettLng(row.section, row.key, row.fallback, row.minimum, row.maximum, false, row.file));
          }
        }
        return server;
      },
      section);
}

}  // namespace vorlix
