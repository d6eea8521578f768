#include "desktop/XcbLibrary.h"

#include <QLibrary>

namespace vorlix {

std::optional<XcbLibrary> XcbLibrary::Load() {
  QLibrary file(QStringLiteral("xcb"), 1);
  XcbLibrary library{};
  const auto find = [&](const char* name, auto& function) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(file.resolve(name));
    return function != nullptr;
  };
  const bool isThere = find("xcb_intern_atom", library.intern_atom) && find("xcb_get_property", library.get_property) &&
                       find("xcb_get_geometry", library.get_geometry) &&
                       find("xcb_translate_coordinates", library.translate_coordinates) &&
                       find("xcb_flush", library.flush) && find("xcb_poll_for_reply", library.poll_for_reply) &&
                       find("xcb_discard_reply", library.discard_reply) && find("xcb_get_setup", library.get_setup) &&
                       find("xcb_setup_roots_iterator", library.setup_roots_iterator);
  return isThere ? std::optional(library) : std::nullopt;
}

}  // namespace vorlix
