#include "platform/posix/LinkFolder.h"

#include <cerrno>
#include <cstdlib>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vorlix {
namespace {

constexpr std::size_t kSuffixRoom = 16;  // for the name that a socket has while it is made

bool IsOursAlone(const std::string& folder) {
  struct stat info {};
  if (lstat(folder.c_str(), &info) != 0) return false;
  const bool ours = S_ISDIR(info.st_mode) && info.st_uid == geteuid() && (info.st_mode & 07777) == 0700;
  if (!ours) errno = EPERM;
  return ours;
}

// An environment variable that holds a full path; others are as good as none.
std::string PathVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : "";
}

}  // namespace

std::string LinkFolderName() {
  // A session that names a folder which is not there is served like one that names none.
  const std::string runtime = PathVariable("XDG_RUNTIME_DIR");
  if (!runtime.empty() && access(runtime.c_str(), X_OK) == 0) return runtime + "/vorlix";
  std::string temporary = PathVariable("TMPDIR");
  if (temporary.empty()) temporary = "/tmp";
  return temporary + "/vorlix-" + std::to_string(geteuid());
}

std::string LinkFolder() {
  const std::string folder = LinkFolderName();
  const int made = mkdir(folder.c_str(), 0700) == 0 ? 0 : errno;
  if (IsOursAlone(folder)) return folder;
  if (made != 0 && made != EEXIST) errno = made;
  return {};
}

std::string LinkPath(WindowHandle handle) {
  const std::string folder = LinkFolder();
  if (folder.empty()) return {};
  std::string path = folder + "/" + std::to_string(handle);
  if (path.size() + kSuffixRoom < sizeof(sockaddr_un::sun_path)) return path;
  errno = ENAMETOOLONG;
  return {};
}

sockaddr_un LinkAddress(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

bool PeerIsOurUser(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

}  // namespace vorlix
