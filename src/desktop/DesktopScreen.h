// The desktop as the program's screen: the toolkit's application, its loop, and the views of the caller display. Made
// before the program and destroyed after it; the parts are on the screen between Open() and the end of what it gives.
#pragma once

#include <QApplication>
#include <chrono>
#include <memory>
#include <string>

#include "desktop/DisplayGestures.h"
#include "desktop/MainBar.h"
#include "desktop/MaxiWindow.h"
#include "desktop/QtReactor.h"
#include "desktop/SystemTray.h"
#include "desktop/WindowPlaces.h"
#include "screens/CallerDisplay.h"

namespace vorlix {

class DesktopScreen {
 public:
  // Long enough for a machine that is busy with a login, and a display that is dead is given up.
  static constexpr std::chrono::seconds kMostPatience{10};

  // Whether there is a desktop to draw on, and the toolkit can: tried in a process of its own, since the toolkit ends
  // one in which it cannot, and waits without end for a display that does not answer. Call it while there is one
  // thread only.
  static bool IsAvailable(std::chrono::seconds patience = kMostPatience);

  // One in a process. The clock must outlive it; the folder holds the program's icons, as a real path.
  DesktopScreen(const Clock& clock, const std::string& iconFolder);
  ~DesktopScreen();
  DesktopScreen(const DesktopScreen&) = delete;
  DesktopScreen& operator=(const DesktopScreen&) = delete;

  Reactor& Loop() { return loop_; }
  MainBar& Bar() { return bar_; }
  SystemTray& Tray() { return tray_; }
  MaxiWindow& Maxi() { return maxi_; }

  // Takes all off the screen and forgets the program.
  class Connection {
   public:
    explicit Connection(DesktopScreen& screen) : screen_(screen) {}
    ~Connection() { screen_.Close(); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

   private:
    DesktopScreen& screen_;
  };

  // What the program behind the views is; all must outlive the connection.
  struct Program {
    CallerDisplay& display;
    TrayMenu& menu;
    WindowPlaces& places;
  };
  // What is done when the desktop's session ends, and the program with it.
  void OnSessionEnd(std::function<void()> ends) { application_.sessionEnds = std::move(ends); }
  // From here on bar and tray icon are there, and gestures reach the program. The settings are loaded by then.
  [[nodiscard]] std::unique_ptr<Connection> Open(const Program& program, const DisplayFont& font);
  // Now and then while open: a tray that comes takes the icon, and one that goes leaves the bar reachable.
  void FollowTray();
  // By a person's command, such as starting the program once more: brings the keyboard to the bar.
  void Activate() { bar_.Activate(); }

  // "Qt 6.4.2"
  static std::string Toolkit();

 private:
  // First of all, and the last to go.
  class Application : public QApplication {
   public:
    Application();
    std::function<void()> sessionEnds;

   protected:
    bool event(QEvent* event) override;
  };

  void Close();
  void FillTrayMenu(QMenu& menu);
  void AddProgramCommands(QMenu& menu);

  Application application_;
  QtReactor loop_;
  DisplayGestures gestures_;
  MainBar bar_;
  MaxiWindow maxi_;
  SystemTray tray_;
  bool hasTray_ = false;
};

// The gestures as the presenters take them.
DisplayGestures GesturesOf(CallerDisplay& display, TrayMenu& menu);

}  // namespace vorlix
