// The toolkit's application object for a test: no screen is needed, what is drawn goes nowhere.
#pragma once

#include <QApplication>
#include <string>

namespace vorlix {

class OffscreenApplication {
 public:
  // The toolkit's name of the platform, with the file that describes its screens where they matter.
  explicit OffscreenApplication(const std::string& platform = "offscreen") : application_(Count(platform), arguments_) {
    application_.setQuitOnLastWindowClosed(false);
  }

 private:
  static int& Count(const std::string& platform) {
    qputenv("QT_QPA_PLATFORM", platform.c_str());
    // No test talks to the desktop that it runs on.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    static int count = 1;
    return count;
  }

  char name_[8] = "vorlix";
  char* arguments_[2] = {name_, nullptr};
  QApplication application_;
};

}  // namespace vorlix
