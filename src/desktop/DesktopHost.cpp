#include "desktop/DesktopHost.h"

#include <QThread>
#include <algorithm>
#include <cstdio>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/placing.h"
#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

class DesktopHost::StoredPlaces : public WindowPlaces {
 public:
  explicit StoredPlaces(Settings& settings) : settings_(settings) {}

  std::optional<WindowPlace> Load(PlacedWindow window) override {
    const Members place = MembersOf(window);
    if (place.screen == "0" || place.screen.empty()) return std::nullopt;
    return WindowPlace{
        place.screen,     Held(place.left), Held(place.top), Held(place.leftOnScreen), Held(place.topOnScreen),
        Held(place.width)};
  }
  void Save(PlacedWindow window, const WindowPlace& place) override {
    const Members members = MembersOf(window);
    members.screen = place.screen;
    members.left = place.left;
    members.top = place.top;
    members.leftOnScreen = place.leftOnScreen;
    members.topOnScreen = place.topOnScreen;
    members.width = place.width;
  }

 private:
  // No screen is wider; sums of what somebody has typed into the file must not overflow.
  static int Held(int points) { return std::clamp(points, -100'000, 100'000); }

  struct Members {
    std::string& screen;
    int &left, &top, &leftOnScreen, &topOnScreen, &width;
  };
  Members MembersOf(PlacedWindow window) {
    auto& all = settings_.Dimensions;
    if (window == PlacedWindow::kDisplay) {
      return {all.DisplayScreenName, all.DisplayLeft,  all.DisplayTop,
              all.DisplayLeftMM,     all.DisplayTopMM, all.DisplayWidth};
    }
    return {all.MaxiDispScreenName, all.MaxiDispLeft,  all.MaxiDispTop,
            all.MaxiDispLeftMM,     all.MaxiDispTopMM, all.MaxiDispWidth};
  }

  Settings& settings_;
};

// What exists only while the program stands behind the screen; the connection goes first.
struct DesktopHost::Windows {
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
    facts.toolkit = DesktopScreen::Toolkit();
    return AboutText(facts);
  }

  Program program;
  StoredPlaces places;
  SimulationDialog simulation;
  BlacklistWindow blacklistWindow;
  fEditBlacklist blacklist;
  AboutBox about;
  std::unique_ptr<DesktopScreen::Connection> connection;
};

namespace {

// Where there is no tray, to look for one is to wait for the X server.
constexpr unsigned kTicksBetweenTrays = 10;

DisplayFont FontOf(const Settings& settings) {
  return {settings.FontSize.DisplayName, settings.FontSize.Display, settings.FontSize.DisplayBold};
}

}  // namespace

DesktopHost::DesktopHost(const Clock& clock, const std::string& iconFolder, X11ForegroundWindow::Modules modules)
    : screen_(clock, iconFolder), foreground_(std::move(modules)) {}

DesktopHost::~DesktopHost() {
  Close();
}

void DesktopHost::Tell(const std::string& text) {
  std::printf("%s\n", ToUtf8(WithoutControls(text)).c_str());
  std::fflush(stdout);
}

void DesktopHost::Open(const Program& program) {
  windows_ = std::make_unique<Windows>(program);
  TrayMenu& menu = program.menu;
  menu.Bind(MenuCommand::kSimulation, [this] { windows_->simulation.Open(); });
  menu.Bind(MenuCommand::kBlacklist, [this] { windows_->blacklistWindow.Open(); });
  menu.Bind(MenuCommand::kAbout, [this] { windows_->about.Open(windows_->AboutNow()); });
  menu.Bind(MenuCommand::kQuit, program.quit);
  windows_->connection = screen_.Open({program.display, menu, windows_->places}, FontOf(program.settings));
  if (CanPlaceWindows()) return;
  program.settingsStore.NotePlaces(LoadLangKey(
      "Settings_Info_Wayland",
      "Unter Wayland bestimmt der Desktop, wo die Fenster stehen: ...Left und ...Top gelten dort nicht."_ansi));
}

void DesktopHost::ComeForward() {
  if (windows_ && windows_->connection) screen_.Activate();
}

void DesktopHost::Tick() {
  if (!windows_ || !windows_->connection || ++ticks_ % kTicksBetweenTrays != 0) return;
  screen_.FollowTray();
}

void DesktopHost::Close() {
  // A page or box that waits for its user runs a loop of its own: the program's end must end that too.
  boxes_.Withdraw();
  CloseDialogs();
  if (!windows_) return;
  windows_->simulation.Close();
  windows_->connection.reset();
  // What has just been answered returns into its window when this call is over.
  if (QThread::currentThread()->loopLevel() == 0) windows_.reset();
}

}  // namespace vorlix
