// The menus of bar and tray: what can be done with a line's call, then the program's commands. So each command is
// reached without a mouse, and on a desktop that delivers no clicks on the tray icon.
#pragma once

#include <QMenu>
#include <cstddef>
#include <string>

#include "desktop/DisplayGestures.h"
#include "screens/MainDisplayView.h"

namespace vorlix {

std::string BellText();
std::string HangUpText(HangUpMode button);

// What is given must outlive the menu; the content may change meanwhile.
void AddLineCommands(QMenu& menu, const DisplayContent& content, std::size_t position, const DisplayGestures& gestures);
// Each call in a menu of its own.
void AddCalls(QMenu& menu, const DisplayContent& content, const DisplayGestures& gestures);
void AddCommands(QMenu& menu, const DisplayGestures& gestures);

}  // namespace vorlix
