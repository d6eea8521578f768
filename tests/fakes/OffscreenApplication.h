// The toolkit's application object for a test: no screen is needed, what is drawn goes nowhere.
#pragma once

#include <QApplication>

namespace vorlix {

class OffscreenApplication {
 public:
  OffscreenApplication() { application_.setQuitOnLastWindowClosed(false); }

 private:
  static int& Count() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // No test talks to the desktop that it runs on.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    static int count = 1;
    return count;
  }

  char name_[8] = "vorlix";
  char* arguments_[2] = {name_, nullptr};
  QApplication application_{Count(), arguments_};
};

}  // namespace vorlix
