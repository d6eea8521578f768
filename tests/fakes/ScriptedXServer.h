// An X server of few windows behind the functions of libxcb: it tells what its members say, also what is not true.
#pragma once

#include <QRect>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "desktop/XcbLibrary.h"

namespace vorlix {

// The functions are handed it as their connection.
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

}  // namespace vorlix
