// The screen's door for text: the program's single-byte text and the toolkit's. Every byte survives a round trip; a
// character that Windows-1252 lacks becomes "?".
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace vorlix {

QString ToQString(std::string_view ansi);
std::string FromQString(const QString& text);

// For a tool tip, which would take a caller's name with "<" for markup: shows the text as it is, line by line.
QString ToTip(std::string_view ansi);
// For a menu's entry, where "&" marks a key.
QString ToMenuText(std::string_view ansi);

}  // namespace vorlix
