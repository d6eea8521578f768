#include "data/paths.h"

#include "services/text.h"

namespace vorlix {

std::string fFileSep(std::string_view path) {
  std::string separated = Replace(path, "\\", "/");
  if (!separated.ends_with('/')) separated += '/';
  return separated;
}

std::string WithoutFinalSlash(std::string path) {
  while (path.size() > 1 && path.back() == '/')
    path.pop_back();
  return path;
}

PathParts fSplitPath(std::string_view path) {
  const std::string whole = Replace(path, "\\", "/");
  const auto slash = whole.rfind('/');
  PathParts parts;
  if (slash != std::string::npos) parts.path = whole.substr(0, slash + 1);
  parts.name = slash == std::string::npos ? whole : whole.substr(slash + 1);
  const auto point = parts.name.rfind('.');
  if (point != std::string::npos) {
    parts.extension = parts.name.substr(point);
    parts.name.erase(point);
  }
  return parts;
}

bool MakeDirectory(FileStore& files, std::string_view path) {
  const std::string whole = fFileSep(path);
  for (auto slash = whole.find('/', 1); slash != std::string::npos; slash = whole.find('/', slash + 1)) {
    const std::string level = whole.substr(0, slash);
    // Another process may make the same folder in between.
    if (!files.Stat(level).IsFolder() && !files.MakeFolder(level) && !files.Stat(level).IsFolder()) return false;
  }
  return true;
}

IoResult AppendMakingFolder(FileStore& files, const std::string& path, std::string_view bytes, bool ownLine) {
  IoResult written = files.Append(path, bytes, ownLine);
  if (written || files.Stat(fSplitPath(path).path).IsFolder()) return written;
  if (!MakeDirectory(files, fSplitPath(path).path)) return written;
  return files.Append(path, bytes, ownLine);
}

IoResult OverwriteMakingFolder(FileStore& files, const std::string& path, std::string_view bytes) {
  IoResult written = files.Overwrite(path, bytes);
  if (written || files.Stat(fSplitPath(path).path).IsFolder()) return written;
  if (!MakeDirectory(files, fSplitPath(path).path)) return written;
  return files.Overwrite(path, bytes);
}

}  // namespace vorlix
