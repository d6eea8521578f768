// Texts for the user. Each has its German default beside its key at the call; the file "\base\language_##.ini" of the
// program folder replaces what it holds (section Data, key = text key). Process-wide, as a message catalogue is.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vorlix {

namespace modLanguage {

// Gives the whole text of a language file below the program folder, or nothing where it is missing.
using ReadFile = std::function<std::optional<std::string>(std::string_view path)>;

// Makes the language of that code current, with the file path \base\language_##.ini. A missing file leaves all texts at
// their defaults. The file is read once.
void LanguageInit(std::string_view code, const ReadFile& read);

std::string_view CurrentCode();
std::string_view CurrentFile();
bool IsFileMissing();

// In a development run missing and found texts are marked, and missing ones noted through `log`.
void SetDevelopmentRun(bool on);

// Notes a missing key in "\log\language.log".
void Log(std::string_view key, std::string_view fallback);

}  // namespace modLanguage

// The text of a key, or its default where the language file lacks it or leaves it empty; "<CR>" and "<TAB>" become line
// ends and tabs in either.
std::string LoadLangKey(std::string_view key, std::string_view fallback);

}  // namespace vorlix
