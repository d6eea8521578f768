// Whether there is a desktop to draw on.
#pragma once

#include <chrono>

namespace vorlix {

// Long enough for a machine that is busy with a login, and a display that is dead is given up.
inline constexpr std::chrono::seconds kDesktopPatience{10};

// Whether there is a desktop, and the toolkit can draw on it: tried in a process of its own, since the toolkit ends one
// in which it cannot, and waits without end for a display that does not answer. Call it while there is one thread only.
bool IsDesktopAvailable(std::chrono::seconds patience = kDesktopPatience);

}  // namespace vorlix
