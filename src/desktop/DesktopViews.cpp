#include "desktop/DesktopViews.h"

#include <clocale>
#include <cstdlib>
#include <utility>

#include "desktop/icons.h"
#include "desktop/line_menu.h"
#include "desktop/text.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

// The toolkit keeps references to both.
int argumentCount = 1;
char programName[] = "vorlix";
char* argumentList[] = {programName, nullptr};

constexpr const char* kNoSharedMemory = "QT_XCB_NO_MITSHM";

// Over memory that it shares with an X server the toolkit waits for the server at each repaint, and the clock is
// repainted each second. The variable is read once; programs that this one starts do not get it.
int& CountWithoutSharedMemory() {
  setenv(kNoSharedMemory, "1", 1);
  return argumentCount;
}

}  // namespace

// The toolkit makes the user's locale the program's; of that only the way of letters is wanted, for typing. Numbers and
// dates in the data files are the same everywhere.
DesktopViews::Application::Application() : QApplication(CountWithoutSharedMemory(), argumentList) {
  unsetenv(kNoSharedMemory);
  for (const int category : {LC_NUMERIC, LC_TIME, LC_COLLATE, LC_MONETARY, LC_MESSAGES})
    std::setlocale(category, "C");
  setQuitOnLastWindowClosed(false);
  setApplicationName(QStringLiteral("vorlix"));
  setDesktopFileName(QStringLiteral("vorlix"));
}

// Whoever asks the application to quit, such as the end of the session, asks the program: it has things to put away.
bool DesktopViews::Application::event(QEvent* event) {
  if (event->type() != QEvent::Quit || !sessionEnds) return QApplication::event(event);
  PassOn(sessionEnds);
  return true;
}

DesktopViews::DesktopViews(const Clock& clock, const std::string& iconFolder)
    : loop_(clock),
      bar_(gestures_, iconFolder, [this](QMenu& menu) { AddProgramCommands(menu); }),
      maxi_(gestures_, bar_.Painter()),
      tray_(gestures_, iconFolder, [this](QMenu& menu) { FillTrayMenu(menu); }) {
  QApplication::setWindowIcon(LoadIcon(iconFolder, "vorlix"));
}

DesktopViews::~DesktopViews() {
  Close();
}

void DesktopViews::Open(const Program& program, const DisplayFont& font) {
  gestures_ = GesturesOf(program.display, program.menu);
  hasTray_ = tray_.IsThere();
  maxi_.Open(program.places);
  bar_.Open(program.places, font, hasTray_);
  tray_.Open();
  isOpen_ = true;
}

void DesktopViews::FollowTray() {
  const bool hasTray = tray_.IsThere();
  if (hasTray == hasTray_ || bar_.IsInUse()) return;
  hasTray_ = hasTray;
  tray_.Renew();
  bar_.SetTray(hasTray);
  PassOn(gestures_.trayChanged);
}

void DesktopViews::Close() {
  isOpen_ = false;
  gestures_ = {};
  tray_.Withdraw();
  maxi_.Withdraw();
  bar_.Withdraw();
}

void DesktopViews::FillTrayMenu(QMenu& menu) {
  AddCalls(menu, bar_.Content(), gestures_);
  if (bar_.Place() != BarPlace::kShown) {
    menu.addAction(ToMenuText(LoadLangKey("Display_Menu_ShowBar", "Anzeige einblenden"_ansi)), &menu,
                   [this] { PassOn(gestures_.toggle); });
  }
  AddProgramCommands(menu);
}

void DesktopViews::AddProgramCommands(QMenu& menu) {
  if (maxi_.isVisible()) menu.addAction(ToMenuText(CloseMaxiText()), &menu, [this] { maxi_.CloseByHand(); });
  AddCommands(menu, gestures_);
}

std::string DesktopViews::Toolkit() {
  return std::string("Qt ") + qVersion();
}

DisplayGestures GesturesOf(CallerDisplay& display, TrayMenu& menu) {
  DisplayClicks& clicks = display.clicks;
  return {
      .doubleClick = [&clicks](std::size_t line) { clicks.DisplayDblClickAction(line); },
      .hangUp = [&clicks](std::size_t line) { clicks.HangUpClick(line); },
      .blacklist = [&clicks](std::size_t line) { clicks.BlacklistClick(line); },
      .timeClick = [&clicks] { clicks.TimeClick(); },
      .bell = [&clicks] { clicks.BellClick(); },
      .mouseEntered = [&display] { display.hiding.MouseEntered(); },
      .mouseLeft = [&display] { display.hiding.MouseLeft(); },
      .toggle = [&display] { display.hiding.Toggle(); },
      .trayClick = [&clicks] { clicks.TrayClick(); },
      .balloonDismissed = [&display] { display.tray.BalloonDismissed(); },
      .trayChanged = [&display] { display.hiding.TrayChanged(); },
      .maxiClosed = [&display] { display.maxi.Closed(); },
      .menuItems = [&menu] { return menu.Items(); },
      .runCommand = [&menu](MenuCommand command) { menu.Run(command); },
  };
}

}  // namespace vorlix
