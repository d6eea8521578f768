#include "platform/posix/loaded_modules.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <set>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr int kFieldsBeforePath = 5;  // addresses, rights, offset, device, number of the file
constexpr std::string_view kDeleted = " (deleted)";
// Many times what a large program has; the rest of a text without end is left out.
constexpr std::size_t kMost = 16 << 20;

// What the line has besides its fields; blanks belong to it.
std::string_view PathIn(std::string_view line) {
  for (int field = 0; field < kFieldsBeforePath; ++field) {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    line.remove_prefix(std::min(line.find(' '), line.size()));
  }
  line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
  if (line.ends_with(kDeleted)) line.remove_suffix(kDeleted.size());
  return line;
}

std::string ReadUpTo(const std::string& path, std::size_t most) {
  std::ifstream file(path, std::ios::binary);
  std::string text;
  std::array<char, 1 << 16> part;
  while (text.size() < most && (file.read(part.data(), part.size()) || file.gcount() > 0))
    text.append(part.data(), static_cast<std::size_t>(file.gcount()));
  return text;
}

}  // namespace

std::vector<std::string> ModulesInMaps(std::string_view maps) {
  std::set<std::string> names;
  while (!maps.empty()) {
    const std::string_view line = maps.substr(0, maps.find('\n'));
    maps.remove_prefix(std::min(line.size() + 1, maps.size()));
    const std::string_view path = PathIn(line);
    // Memory that is no file has its name in brackets, or none.
    if (!path.starts_with('/') || path.ends_with('/')) continue;
    names.insert(Lower(FromUtf8(path.substr(path.rfind('/') + 1))));
  }
  return {names.begin(), names.end()};
}

std::vector<std::string> LoadedModules(std::uint32_t process) {
  return Trapped(
      "LoadedModules", [&] { return ModulesInMaps(ReadUpTo("/proc/" + std::to_string(process) + "/maps", kMost)); },
      process);
}

}  // namespace vorlix
