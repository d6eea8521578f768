#include "screens/CallerDisplay.h"

namespace vorlix {

CallerDisplay::CallerDisplay(Views views, const Ports& ports)
    : calls(ports.state, ports.settings, ports.ownNumbers),
      games(ports.settings, views.foreground),
      tray({views.tray, ports.loop, ports.settings, calls, ports.lines, games, ports.alertText}),
      maxi({views.maxi, ports.loop, ports.settings, games, calls}),
      hiding({views.bar, views.tray, ports.settings, calls, games, ports.timers, ports.callerWindows,
              [this] { return display.IsCallShown(); }, [this] { display.DisplayReset(false); }}),
      display({views.bar, ports.loop.GetClock(), ports.settings, skin, calls, ports.lines, games, ports.timers,
               ports.book, ports.blocking, ports.logos, ports.search, ports.callerWindows, tray, maxi, hiding,
               ports.waitingRun}),
      commands({.settings = ports.settings,
                .state = ports.state,
                .display = display,
                .capi = ports.capi,
                .simulation = ports.simulation,
                .silentModeChanged =
                    [this] {
                      display.HideDisplay();
                      display.DisplayResize();
                    },
                .resetDisplay = [this] { clicks.ResetClick(); },
                .resetCAPI = ports.resetCAPI}),
      clicks({display, tray, hiding, ports.settings, ports.timers, ports.blocking, ports.book, ports.windows,
              ports.messages, commands, ports.blackList, ports.stopSound}) {}

}  // namespace vorlix
