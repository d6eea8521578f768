// The window in front, read from a scripted server: one that lies, forgets windows and answers late.
#include "desktop/X11ForegroundWindow.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/OffscreenApplication.h"
#include "fakes/ScriptedXServer.h"

namespace vorlix {
namespace {

using Names = std::vector<std::string>;

std::string Bytes(std::uint32_t number) {
  return {reinterpret_cast<const char*>(&number), sizeof number};
}

class X11ForegroundWindowTest : public testing::Test {
 protected:
  X11ForegroundWindowTest() {
    server.properties = {{"_NET_ACTIVE_WINDOW", {XWindows::kWindow, 32, Bytes(ScriptedXServer::kWindow)}},
                         {"_NET_WM_WINDOW_TYPE", {XWindows::kAtom, 32, Bytes(7)}},
                         {"_NET_WM_PID", {XWindows::kCardinal, 32, Bytes(4711)}}};
  }
  ForegroundWindow::State Read() { return window.Read(); }

  ScriptedXServer server;
  bool hasLibrary = true, isX11 = true;
  X11ForegroundWindow window{{[this] { return isX11 ? reinterpret_cast<xcb_connection_t*>(&server) : nullptr; },
                              [] {
                                return std::vector<QRect>{{-640, 0, 640, 480}, {0, 0, 1280, 800}};
                              },
                              [this] { return hasLibrary ? std::optional(ScriptedXServer::Library()) : std::nullopt; }},
                             [](std::uint32_t process) { return Names{"of " + std::to_string(process)}; }};
};

TEST_F(X11ForegroundWindowTest, TellsOfAWindowThatFillsItsScreen) {
  const std::pair<QRect, bool> rows[] = {{{0, 0, 1280, 800}, true},   {{-640, 0, 640, 480}, true},
                                         {{-1, -1, 1282, 802}, true}, {{0, 0, 1280, 799}, false},
                                         {{1, 0, 1280, 800}, false},  {{0, 0, 0, 0}, false}};
  for (const auto& [place, fills] : rows) {
    server.place = place;
    EXPECT_EQ(Read().fillsScreen, fills) << place.left() << " " << place.width();
    EXPECT_EQ(Read().modules, fills ? Names{"of 4711"} : Names());
  }
}

TEST_F(X11ForegroundWindowTest, KnowsTheDesktopAndProgramsOfOtherMachines) {
  char own[256] = {};
  gethostname(own, sizeof own - 1);
  const std::string name = own;
  const std::pair<std::string, bool> rows[] = {
      {name + '\0' + "x", true}, {name + ".example.org", true}, {"", true}, {name + "x", false}, {".", false}};
  for (const auto& [machine, isOurs] : rows) {
    server.properties["WM_CLIENT_MACHINE"] = {31, 8, machine};
    EXPECT_EQ(Read().modules.size(), isOurs) << machine;
  }
  server.properties["_NET_WM_WINDOW_TYPE"].bytes += Bytes(ScriptedXServer::kDesktopType);
  EXPECT_TRUE(Read().isDesktop && Read().modules.empty());
}

TEST_F(X11ForegroundWindowTest, MakesNothingOfOddAnswers) {
  const ScriptedXServer good = server;
  const auto isNothing = [&](const char* what, auto change) {
    change();
    const auto state = Read();
    EXPECT_TRUE(!state.isDesktop && state.modules.empty()) << what;
    server = good;
  };
  for (const char* name : {"_NET_ACTIVE_WINDOW", "_NET_WM_PID"}) {
    isNothing(name, [&] { server.properties.erase(name); });
    isNothing("another type", [&] { server.properties[name].type = 31; });
    isNothing("another size", [&] { server.properties[name].format = 8; });
    isNothing("no size", [&] { server.properties[name] = {XWindows::kWindow, 0, ""}; });
    isNothing("too short, and a lie", [&] {
      server.properties[name].bytes.clear();
      server.properties[name].claimed = 0xFFFFFFFF;
    });
  }
  isNothing("a window that is gone", [&] { server.isWindowGone = true; });
  isNothing("a connection that is gone", [&] { server.isBroken = true; });
  isX11 = false;
  isNothing("no X", [] {});
}

TEST_F(X11ForegroundWindowTest, WithoutTheLibraryThereIsNoWindowAndASilentServerIsNotWaitedFor) {
  hasLibrary = false;
  EXPECT_FALSE(Read().fillsScreen);
  hasLibrary = true;
  server.isSilent = true;
  EXPECT_FALSE(Read().fillsScreen);
  EXPECT_EQ(server.discarded, 1);
  const OffscreenApplication application;
  EXPECT_FALSE(X11ForegroundWindow([](auto) { return Names(); }).Read().fillsScreen);
  EXPECT_TRUE(XcbLibrary::Load()) << "libxcb.so.1, which the toolkit needs on X, lacks a function";
}

}  // namespace
}  // namespace vorlix
