// Where the local link's sockets lie: a folder that only this user can enter, one socket for each endpoint, named by
// its handle in decimal. Paths here are the system's, not the program's text.
#pragma once

#include <string>
#include <sys/un.h>

#include "platform/MessageLink.h"

namespace vorlix {

// Where the folder lies: "$XDG_RUNTIME_DIR/vorlix", or "vorlix-<user id>" in the temporary folder.
std::string LinkFolderName();

// The folder, made where it is missing. Empty when there is none that is ours alone: a folder of somebody else, one
// that others may enter, a link. errno tells why.
std::string LinkFolder();

// The path of an endpoint's socket; empty when there is no folder or the path is longer than a socket's may be. errno
// tells why.
std::string LinkPath(WindowHandle handle);

// The path must not be longer than LinkPath() gives.
sockaddr_un LinkAddress(const std::string& path);

// Whether the process at the other end of a connected local socket runs under our user.
bool PeerIsOurUser(int socket);

}  // namespace vorlix
