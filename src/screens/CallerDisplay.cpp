#include "screens/CallerDisplay.h"

namespace vorlix {

CallerDisplay::CallerDisplay(Views views, const Ports& ports)
    : calls(ports.state, ports.settings, ports.ownNumbers),
      games(ports.settings, views.foreground),
      tray({views.tray, ports.loop, ports.settings, calls, ports.lines, games, ports.alertText}),
      maxi({views.maxi, ports.loop, ports.settings, games, calls}),
      hiding({views.bar, views.tray, ports.settings, calls, ports.timers, [this] { return display.IsCallShown(); },
              [this] { display.DisplayReset(false); }}),
      display({views.bar, ports.loop.GetClock(), ports.settings, skin, calls, ports.lines, ports.timers, ports.book,
               ports.blocking, ports.logos, ports.search, ports.callerWindows, tray, maxi, hiding, ports.waitingRun}),
      commands({ports.settings, ports.state, display, ports.capi, ports.simulation,
                [this](bool) { display.DisplayResize(); },
                [this] {
                  display.HideDisplay();
                  display.DisplayResize();
                },
                [this] { clicks.ResetClick(); }, ports.resetCAPI}),
      clicks({display, tray, hiding, ports.settings, ports.timers, ports.blocking, ports.book, ports.windows,
              ports.messages, commands, ports.blackList, ports.stopSound}) {}

}  // namespace vorlix
