#include "desktop/DesktopScreen.h"

#include <QThread>
#include <cstdio>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/placing.h"
#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

// What exists only while the program stands behind the screen.
struct DesktopScreen::Windows {
  explicit Windows(const Program& parts)
      : program(parts),
        places(parts.settings),
        simulation(parts.simulation, {parts.settings.Dimensions.CallSimLeft, parts.settings.Dimensions.CallSimTop,
                                      parts.settings.Dimensions.CallSimWidth, parts.settings.Dimensions.CallSimHeight}),
        blacklistWindow({parts.settings.Dimensions.BlacklistLeft, parts.settings.Dimensions.BlacklistTop,
                         parts.settings.Dimensions.BlacklistWidth, parts.settings.Dimensions.BlacklistHeight}),
        blacklist({blacklistWindow, parts.blacklist, parts.settingsStore, parts.messages}) {
    blacklistWindow.Attach(blacklist);
    program.blacklist.ReloadWindow([this] {
      if (blacklist.IsOpen()) blacklist.LoadBlackList();
    });
  }
  ~Windows() { program.blacklist.ReloadWindow({}); }
  Windows(const Windows&) = delete;
  Windows& operator=(const Windows&) = delete;

  std::string AboutNow() const {
    AboutFacts facts = program.about;
    facts.lines = program.lineStates();
    facts.toolkit = DesktopViews::Toolkit();
    return AboutText(facts);
  }

  Program program;
  StoredPlaces places;
  SimulationDialog simulation;
  BlacklistWindow blacklistWindow;
  fEditBlacklist blacklist;
  AboutBox about;
};

namespace {

// Where there is no tray, to look for one is to wait for the X server.
constexpr unsigned kTicksBetweenTrays = 10;

DisplayFont FontOf(const Settings& settings) {
  return {settings.FontSize.DisplayName, settings.FontSize.Display, settings.FontSize.DisplayBold};
}

}  // namespace

DesktopScreen::DesktopScreen(const Clock& clock, const std::string& iconFolder, X11ForegroundWindow::Modules modules)
    : views_(clock, iconFolder), foreground_(std::move(modules)) {}

DesktopScreen::~DesktopScreen() {
  Close();
}

void DesktopScreen::Tell(const std::string& text) {
  std::printf("%s\n", ToUtf8(WithoutControls(text)).c_str());
  std::fflush(stdout);
}

void DesktopScreen::Open(const Program& program) {
  windows_ = std::make_unique<Windows>(program);
  TrayMenu& menu = program.menu;
  menu.Bind(MenuCommand::kSimulation, [this] { windows_->simulation.Open(); });
  menu.Bind(MenuCommand::kBlacklist, [this] { windows_->blacklistWindow.Open(); });
  menu.Bind(MenuCommand::kAbout, [this] { windows_->about.Open(windows_->AboutNow()); });
  menu.Bind(MenuCommand::kQuit, program.quit);
  views_.Open({program.display, menu, windows_->places}, FontOf(program.settings));
  if (CanPlaceWindows()) return;
  program.settingsStore.NotePlaces(LoadLangKey(
      "Settings_Info_Wayland",
      "Unter Wayland bestimmt der Desktop, wo die Fenster stehen: ...Left und ...Top gelten dort nicht."_ansi));
}

void DesktopScreen::OnDisplayLost(std::function<void()> ends) {
  loss_.reset();
  if (!ends) return;
  loss_ = std::make_unique<DisplayLoss>([this, ends = std::move(ends)] {
    isLost_ = true;
    ends();
  });
}

void DesktopScreen::ComeForward() {
  if (views_.IsOpen()) return views_.Activate();
  BringDialogsToFront();  // the first questions
}

void DesktopScreen::Tick() {
  if (!views_.IsOpen() || ++ticks_ % kTicksBetweenTrays != 0) return;
  views_.FollowTray();
}

void DesktopScreen::KeepPlaces() {
  if (!windows_) return;
  views_.Maxi().KeepPlace();
  windows_->simulation.KeepPlace();
  windows_->blacklistWindow.KeepPlace();
}

void DesktopScreen::Close() {
  if (isLost_) return;  // nobody sees it, and nothing comes after it
  // A page or box that waits for its user runs a loop of its own: the program's end must end that too.
  boxes_.Withdraw();
  CloseDialogs();
  if (!windows_) return;
  windows_->simulation.Close();
  views_.Close();
  // What has just been answered returns into its window when this call is over.
  if (QThread::currentThread()->loopLevel() == 0) windows_.reset();
}

}  // namespace vorlix
