// The program's own icons: NAME_SIZE.png in one folder, in the sizes that are there.
#pragma once

#include <QIcon>
#include <string>
#include <string_view>

namespace vorlix {

// The folder is a real path, with or without "/" at its end.
QIcon LoadIcon(const std::string& folder, std::string_view name);

}  // namespace vorlix
