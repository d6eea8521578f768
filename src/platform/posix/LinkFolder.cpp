#include "platform/posix/LinkFolder.h"

#include <cstdlib>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vorlix {
namespace {

constexpr std::size_t kSuffixRoom = 16;  // for the name that a socket has while it is made

bool IsOursAlone(const std::string& folder) {
  struct stat info {};
  return lstat(folder.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid() &&
         (info.st_mode & 07777) == 0700;
}

// An environment variable that holds a full path; others are as good as none.
std::string PathVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : "";
}

bool Usable(const std::string& folder) {
  mkdir(folder.c_str(), 0700);  // when it is there already, the check tells whether it is good
  return IsOursAlone(folder);
}

}  // namespace

std::string LinkFolder() {
  if (const std::string runtime = PathVariable("XDG_RUNTIME_DIR"); !runtime.empty()) {
    // A session that names a folder which is not there is served like one that names none.
    if (access(runtime.c_str(), X_OK) == 0) return Usable(runtime + "/vorlix") ? runtime + "/vorlix" : "";
  }
  std::string temporary = PathVariable("TMPDIR");
  if (temporary.empty()) temporary = "/tmp";
  const std::string folder = temporary + "/vorlix-" + std::to_string(geteuid());
  return Usable(folder) ? folder : "";
}

std::string LinkPath(WindowHandle handle) {
  const std::string folder = LinkFolder();
  if (folder.empty()) return {};
  std::string path = folder + "/" + std::to_string(handle);
  return path.size() + kSuffixRoom < sizeof(sockaddr_un::sun_path) ? path : std::string();
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
