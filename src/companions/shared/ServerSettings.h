// Where a helper program's server is, by the settings file that the main program writes for it.
#pragma once

#include <string_view>

#include "companions/shared/SocketCompanion.h"
#include "data/modAPI_INI.h"

namespace vorlix {

// The keys Host and Port of that section; file, defaults and ranges are those of the settings table.
ServerAddress ReadServer(modAPI_INI& ini, std::string_view section);

}  // namespace vorlix
