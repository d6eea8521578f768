// The part of libxcb by which a program asks after the windows of others. It is found when it is first needed: the
// program does not link the library, is built without its headers, and runs where it is missing. Its structures are
// those of the X protocol and do not change.
#pragma once

#include <cstdint>
#include <optional>

struct xcb_connection_t;

namespace vorlix {

struct XcbLibrary {
  struct Cookie {
    unsigned sequence;
  };
  struct AtomReply {
    std::uint32_t header[2];
    std::uint32_t atom;
  };
  // The value stands behind it.
  struct PropertyReply {
    std::uint8_t responseType, format;
    std::uint16_t sequence;
    std::uint32_t length;  // of what stands behind it, in units of four bytes
    std::uint32_t type, bytesAfter, valueLength;
    std::uint8_t pad[12];
  };
  struct GeometryReply {
    std::uint32_t header[2];
    std::uint32_t root;
    std::int16_t left, top;
    std::uint16_t width, height, border;
  };
  struct CoordinatesReply {
    std::uint32_t header[2];
    std::uint32_t child;
    std::int16_t left, top;
  };
  struct Setup;
  struct Screen {
    std::uint32_t root;  // and more
  };
  struct ScreenIterator {
    const Screen* data;
    int rem, index;
  };

  Cookie (*intern_atom)(xcb_connection_t*, std::uint8_t onlyIfExists, std::uint16_t length, const char* name);
  Cookie (*get_property)(xcb_connection_t*, std::uint8_t remove, std::uint32_t window, std::uint32_t property,
                         std::uint32_t type, std::uint32_t offset, std::uint32_t length);
  Cookie (*get_geometry)(xcb_connection_t*, std::uint32_t window);
  Cookie (*translate_coordinates)(xcb_connection_t*, std::uint32_t from, std::uint32_t to, std::int16_t left,
                                  std::int16_t top);
  int (*flush)(xcb_connection_t*);
  // 0: not yet there. Reply and error are the caller's, from malloc.
  int (*poll_for_reply)(xcb_connection_t*, unsigned sequence, void** reply, void** error);
  void (*discard_reply)(xcb_connection_t*, unsigned sequence);
  const Setup* (*get_setup)(xcb_connection_t*);
  ScreenIterator (*setup_roots_iterator)(const Setup*);

  // Nothing where the library is not there.
  static std::optional<XcbLibrary> Load();
};

}  // namespace vorlix
