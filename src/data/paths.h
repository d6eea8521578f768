// Paths and folders as the data files need them.
#pragma once

#include <string>
#include <string_view>

#include "platform/FileStore.h"

namespace vorlix {

// Path, name and extension (with its ".") of a file.
struct PathParts {
  std::string path;  // with a final "/"
  std::string name;
  std::string extension;
};

// A path with "/" between its parts and one at its end.
std::string fFileSep(std::string_view path);
// A path with "/" at its end no more; "/" itself stays.
std::string WithoutFinalSlash(std::string path);
PathParts fSplitPath(std::string_view path);

// Makes every missing level; true when the folder is there afterwards.
bool MakeDirectory(FileStore& files, std::string_view path);
// Appends and overwrites as the FileStore does, making the file's folder first when it is missing: a call must not be
// lost because somebody tidied up.
IoResult AppendMakingFolder(FileStore& files, const std::string& path, std::string_view bytes, bool ownLine);
IoResult OverwriteMakingFolder(FileStore& files, const std::string& path, std::string_view bytes);

}  // namespace vorlix
