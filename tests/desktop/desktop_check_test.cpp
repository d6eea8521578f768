#include "desktop/desktop_check.h"

#include <poll.h>

#include <gtest/gtest.h>

#include "fakes/Loopback.h"
#include "fakes/TemporaryFolder.h"

namespace vorlix {
namespace {

TEST(DesktopCheckTest, TellsWithoutEndingTheProgram) {
  const TemporaryVariable noX("DISPLAY", ""), noWayland("WAYLAND_DISPLAY", "");
  for (const auto& [platform, expected] :
       {std::pair("", false), std::pair("offscreen", true), std::pair("no-such-platform", false)}) {
    const TemporaryVariable variable("QT_QPA_PLATFORM", platform);
    EXPECT_EQ(IsDesktopAvailable(), expected) << platform;
  }
  const TemporaryVariable platform("QT_QPA_PLATFORM", ""), nobody("DISPLAY", ":65000");
  EXPECT_FALSE(IsDesktopAvailable());
}

// Another computer's display that takes the connection and never answers.
TEST(DesktopCheckTest, GivesADeadDisplayUp) {
  int port = 0;
  const Descriptor listener = ListenOnLoopback(port, 1);
  const int kFirstDisplayPort = 6000;
  const std::string display = "127.0.0.1:" + std::to_string(port - kFirstDisplayPort);
  const TemporaryVariable platform("QT_QPA_PLATFORM", "xcb"), dead("DISPLAY", display);
  EXPECT_FALSE(IsDesktopAvailable(std::chrono::seconds(1)));
  pollfd asked{listener.Get(), POLLIN, 0};
  EXPECT_EQ(poll(&asked, 1, 0), 1);  // it was tried
}

}  // namespace
}  // namespace vorlix
