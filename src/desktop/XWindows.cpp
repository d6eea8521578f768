#include "desktop/XWindows.h"

#include <algorithm>
#include <cstring>
#include <thread>

namespace vorlix {
namespace {

constexpr std::uint32_t kLongest = 256;  // of a property, in units of four bytes
constexpr std::chrono::microseconds kNap{200};
constexpr XWindows::Atom kAnyType = 0;

}  // namespace

XWindows::XWindows(const XcbLibrary& library, xcb_connection_t* connection)
    : library_(library), connection_(connection), end_(std::chrono::steady_clock::now() + kLimit) {}

XWindows::Window XWindows::Root() const {
  const XcbLibrary::Setup* setup = library_.get_setup(connection_);
  if (setup == nullptr) return 0;
  const XcbLibrary::ScreenIterator screens = library_.setup_roots_iterator(setup);
  return screens.rem > 0 ? screens.data->root : 0;
}

// Never waits for the server as such: one that another program has for itself may be silent for long.
template <class Reply, class Ask>
XWindows::Answer<Reply> XWindows::Await(const Ask& ask) const {
  const unsigned sequence = ask().sequence;
  library_.flush(connection_);
  void *reply = nullptr, *error = nullptr;
  while (library_.poll_for_reply(connection_, sequence, &reply, &error) == 0) {
    if (std::chrono::steady_clock::now() >= end_) {
      library_.discard_reply(connection_, sequence);
      return nullptr;
    }
    std::this_thread::sleep_for(kNap);
  }
  const Answer<void> refused(error);
  return Answer<Reply>(static_cast<Reply*>(reply));
}

XWindows::Atom XWindows::Find(const char* name) const {
  const auto length = static_cast<std::uint16_t>(std::strlen(name));
  const auto reply = Await<XcbLibrary::AtomReply>([&] { return library_.intern_atom(connection_, 1, length, name); });
  return reply ? reply->atom : 0;
}

std::string XWindows::Bytes(Window window, const char* property, Atom type, unsigned format) const {
  const Atom name = Find(property);
  if (name == 0) return {};
  const auto reply = Await<XcbLibrary::PropertyReply>(
      [&] { return library_.get_property(connection_, 0, window, name, type, 0, kLongest); });
  if (!reply || reply->format != format || (type != kAnyType && reply->type != type)) return {};
  const std::size_t there = std::size_t{reply->length} * 4;
  return {reinterpret_cast<const char*>(reply.get() + 1),
          std::min(std::size_t{reply->valueLength} * (format / 8), there)};
}

std::vector<std::uint32_t> XWindows::Numbers(Window window, const char* property, Atom type) const {
  const std::string bytes = Bytes(window, property, type, 32);
  std::vector<std::uint32_t> numbers(bytes.size() / sizeof(std::uint32_t));
  if (numbers.empty()) return numbers;
  std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(std::uint32_t));
  return numbers;
}

std::string XWindows::Text(Window window, const char* property) const {
  const std::string bytes = Bytes(window, property, kAnyType, 8);
  return bytes.substr(0, bytes.find('\0'));
}

std::optional<QRect> XWindows::Place(Window window) const {
  const auto size = Await<XcbLibrary::GeometryReply>([&] { return library_.get_geometry(connection_, window); });
  if (!size) return std::nullopt;
  const auto corner = Await<XcbLibrary::CoordinatesReply>(
      [&] { return library_.translate_coordinates(connection_, window, size->root, 0, 0); });
  if (!corner) return std::nullopt;
  return QRect(corner->left, corner->top, size->width, size->height);
}

}  // namespace vorlix
