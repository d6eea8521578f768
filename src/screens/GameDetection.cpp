#include "screens/GameDetection.h"

#include <algorithm>

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

// The part behind the last "/" or "\".
std::string FileName(const std::string& path) {
  const auto slash = path.find_last_of("/\\");
  return Lower(slash == std::string::npos ? path : path.substr(slash + 1));
}

}  // namespace

bool GameDetection::fAnzeigeVerboten() const {
  return Trapped("fMain.fAnzeigeVerboten", [&] {
    if (!settings_.General.NoViewGame) return false;
    const ForegroundWindow::State window = foreground_.Read();
    if (!window.fillsScreen || window.isDesktop) return false;
    const auto wanted = Split(Lower(settings_.DirectX.Moduls), ";");
    return std::ranges::any_of(window.modules, [&](const std::string& module) {
      return std::ranges::any_of(
          wanted, [name = FileName(module)](const std::string& one) { return !one.empty() && Trim(one) == name; });
    });
  });
}

}  // namespace vorlix
