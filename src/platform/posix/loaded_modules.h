// What a process has loaded: its program, its libraries and whatever other files it has mapped, as the system tells.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

// The names of the files in the text of a process's "maps": without their folders, in lower case, in order, each once.
std::vector<std::string> ModulesInMaps(std::string_view maps);

// Those of a running process; empty when there is none, or it is another user's.
std::vector<std::string> LoadedModules(std::uint32_t process);

}  // namespace vorlix
