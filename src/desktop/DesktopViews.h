// The toolkit's application, its loop, and the views of the caller display. Made before the program and destroyed after
// it; the views are on the screen between Open() and Close().
#pragma once

#include <QApplication>
#include <functional>
#include <string>

#include "desktop/DisplayGestures.h"
#include "desktop/MainBar.h"
#include "desktop/MaxiWindow.h"
#include "desktop/QtReactor.h"
#include "desktop/SystemTray.h"
#include "desktop/WindowPlaces.h"
#include "screens/CallerDisplay.h"

namespace vorlix {

class DesktopViews {
 public:
  // One in a process. The clock must outlive it; the folder holds the program's icons, as a real path.
  DesktopViews(const Clock& clock, const std::string& iconFolder);
  ~DesktopViews();
  DesktopViews(const DesktopViews&) = delete;
  DesktopViews& operator=(const DesktopViews&) = delete;

  Reactor& Loop() { return loop_; }
  MainBar& Bar() { return bar_; }
  SystemTray& Tray() { return tray_; }
  MaxiWindow& Maxi() { return maxi_; }

  // What the program behind the views is; all must outlive the views, or their Close().
  struct Program {
    CallerDisplay& display;
    TrayMenu& menu;
    WindowPlaces& places;
  };
  // What is done when the desktop's session ends, and the program with it.
  void OnSessionEnd(std::function<void()> ends) { application_.sessionEnds = std::move(ends); }
  // From here on bar and tray icon are there, and gestures reach the program. The settings are loaded by then.
  void Open(const Program& program, const DisplayFont& font);
  bool IsOpen() const { return isOpen_; }
  // Takes all off the screen and forgets the program.
  void Close();
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

  void FillTrayMenu(QMenu& menu);
  void AddProgramCommands(QMenu& menu);

  Application application_;
  QtReactor loop_;
  DisplayGestures gestures_;
  MainBar bar_;
  MaxiWindow maxi_;
  SystemTray tray_;
  bool isOpen_ = false;
  bool hasTray_ = false;
};

// The gestures as the presenters take them.
DisplayGestures GesturesOf(CallerDisplay& display, TrayMenu& menu);

}  // namespace vorlix
