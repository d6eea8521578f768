// The window in front, read from a scripted server: one that lies, forgets windows and answers late.
#include "desktop/X11ForegroundWindow.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <unistd.h>

#include <gtest/gtest.h>

#include "desktop/XcbLibrary.h"
#include "fakes/OffscreenApplication.h"

namespace vorlix {
namespace {

// An X server of few windows behind the functions of libxcb, which are handed it as their connection: it tells what its
// members say, also what is not true.
struct ScriptedXServer {
  struct Property {
    std::uint32_t type = 0;
    std::uint8_t format = 0;
    std::string bytes;
    std::uint32_t claimed = 0;  // how many values it says to have, unless 0
  };
  static constexpr std::uint32_t kRoot = 10, kWindow = 20, kDesktopType = 99, kFirstAtom = 100;

  std::map<std::string, Property> properties;  // of both windows, by name
  QRect place{0, 0, 1280, 800};
  bool isBroken = false, isSilent = false, isWindowGone = false;

  std::vector<std::string> names;  // of the atoms, from kFirstAtom on
  std::vector<std::string> replies;
  int discarded = 0;

  static ScriptedXServer& Of(xcb_connection_t* connection) { return *reinterpret_cast<ScriptedXServer*>(connection); }
  template <class Reply>
  XcbLibrary::Cookie Answer(const Reply& reply, const std::string& behind = {}) {
    replies.push_back(std::string(reinterpret_cast<const char*>(&reply), sizeof reply) + behind);
    return {static_cast<unsigned>(replies.size() - 1)};
  }
  XcbLibrary::Cookie Refuse() {
    replies.emplace_back();
    return {static_cast<unsigned>(replies.size() - 1)};
  }
  bool Knows(std::uint32_t one) const { return one == kRoot || (one == kWindow && !isWindowGone); }

  XcbLibrary::Cookie Intern(const std::string& name) {
    if (name == "_NET_WM_WINDOW_TYPE_DESKTOP") return Answer(XcbLibrary::AtomReply{{1, 0}, kDesktopType});
    if (!properties.contains(name)) return Answer(XcbLibrary::AtomReply{});
    names.push_back(name);
    return Answer(XcbLibrary::AtomReply{{1, 0}, kFirstAtom + static_cast<std::uint32_t>(names.size()) - 1});
  }
  XcbLibrary::Cookie Tell(std::uint32_t one, std::uint32_t atom) {
    if (!Knows(one)) return Refuse();
    const Property& property = properties.at(names.at(atom - kFirstAtom));
    const auto padded = (property.bytes.size() + 3) / 4;
    XcbLibrary::PropertyReply reply{};
    reply.format = property.format;
    reply.length = static_cast<std::uint32_t>(padded);
    reply.type = property.type;
    const auto unit = std::max<std::size_t>(property.format / 8, 1);
    reply.valueLength =
        property.claimed > 0 ? property.claimed : static_cast<std::uint32_t>(property.bytes.size() / unit);
    std::string behind = property.bytes;
    behind.resize(padded * 4);
    return Answer(reply, behind);
  }
  static XcbLibrary Library() {
    XcbLibrary library{};
    library.intern_atom = [](xcb_connection_t* at, std::uint8_t, std::uint16_t length, const char* name) {
      return Of(at).Intern({name, length});
    };
    library.get_property = [](xcb_connection_t* at, std::uint8_t, std::uint32_t window, std::uint32_t atom,
                              std::uint32_t, std::uint32_t, std::uint32_t) { return Of(at).Tell(window, atom); };
    library.get_geometry = [](xcb_connection_t* at, std::uint32_t window) {
      ScriptedXServer& server = Of(at);
      if (!server.Knows(window)) return server.Refuse();
      const auto wide = static_cast<std::uint16_t>(server.place.width());
      const auto high = static_cast<std::uint16_t>(server.place.height());
      return server.Answer(XcbLibrary::GeometryReply{{1, 0}, kRoot, 5, 5, wide, high, 0});
    };
    library.translate_coordinates = [](xcb_connection_t* at, std::uint32_t, std::uint32_t, std::int16_t, std::int16_t) {
      const auto left = static_cast<std::int16_t>(Of(at).place.left());
      return Of(at).Answer(
          XcbLibrary::CoordinatesReply{{1, 0}, 0, left, static_cast<std::int16_t>(Of(at).place.top())});
    };
    library.flush = [](xcb_connection_t*) { return 1; };
    library.poll_for_reply = [](xcb_connection_t* at, unsigned sequence, void** reply, void** error) {
      if (Of(at).isSilent) return 0;
      const std::string& bytes = Of(at).replies.at(sequence);
      void*& answer = bytes.empty() ? *error : *reply;
      answer = std::malloc(bytes.size() + 1);
      std::memcpy(answer, bytes.data(), bytes.size());
      return 1;
    };
    library.discard_reply = [](xcb_connection_t* at, unsigned) { ++Of(at).discarded; };
    library.get_setup = [](xcb_connection_t* at) {
      return Of(at).isBroken ? nullptr : reinterpret_cast<const XcbLibrary::Setup*>(at);
    };
    library.setup_roots_iterator = [](const XcbLibrary::Setup*) {
      static constexpr XcbLibrary::Screen kScreen{kRoot};
      return XcbLibrary::ScreenIterator{&kScreen, 1, 0};
    };
    return library;
  }
};

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
