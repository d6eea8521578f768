// One question about the windows of an X server. What they tell of themselves comes from other programs: an answer that
// is missing, of another type, too short or too late is an empty one.
#pragma once

#include <QRect>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "desktop/XcbLibrary.h"

namespace vorlix {

class XWindows {
 public:
  using Window = std::uint32_t;
  using Atom = std::uint32_t;  // 0: none

  // Of the protocol.
  static constexpr Atom kAtom = 4, kCardinal = 6, kWindow = 33;

  // All answers together have to come within this time.
  static constexpr std::chrono::milliseconds kLimit{200};

  // Both must outlive the object. The answers are read from the connection by whoever waits for its events.
  XWindows(const XcbLibrary& library, xcb_connection_t* connection);

  // The one that holds all others; 0 when the connection is broken.
  Window Root() const;
  Atom Find(const char* name) const;
  std::vector<std::uint32_t> Numbers(Window window, const char* property, Atom type) const;
  std::string Text(Window window, const char* property) const;
  // Its inside on the root window, in the server's own pixels.
  std::optional<QRect> Place(Window window) const;

 private:
  struct Free {
    void operator()(void* memory) const { std::free(memory); }
  };
  template <class Reply>
  using Answer = std::unique_ptr<Reply, Free>;

  template <class Reply, class Ask>
  Answer<Reply> Await(const Ask& ask) const;
  std::string Bytes(Window window, const char* property, Atom type, unsigned format) const;

  const XcbLibrary& library_;
  xcb_connection_t* connection_;
  std::chrono::steady_clock::time_point end_;
};

}  // namespace vorlix
