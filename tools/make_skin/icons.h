// The program's icon in its sizes, the tray's icons and the mark of a blocked call.
#pragma once

#include <QString>

namespace pictures {

// Draws them into `folder`, which is made; `drawing` is the program's icon.
void MakeIcons(const QString& folder, const QString& drawing);

}  // namespace pictures
