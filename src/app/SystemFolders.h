// Where the system says that the program and its data lie, brought into the program's text.
#pragma once

#include <string>

#include "data/Folders.h"

namespace vorlix {

struct SystemFolders {
  Folders::Surroundings surroundings;
  // A folder in use that the program's text cannot name, in the system's UTF-8: under the name that the program would
  // give it lies nothing, or another one. Empty when all is well.
  std::string unnamable;
};

// dataFolder is the wish of the command line, in UTF-8; without one VORLIX_DATA, XDG_DATA_HOME and HOME decide, in this
// order.
SystemFolders FindSystemFolders(const std::string& dataFolder);

// The one name of a folder however it was written: links, ".." and a final "/" resolved. The result is the system's.
std::string CanonicalFolder(const std::string& folder);

}  // namespace vorlix
