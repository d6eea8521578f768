#include "platform/posix/Autostart.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <utility>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && *home != '\0') return home;
  const passwd* user = getpwuid(getuid());
  return user == nullptr ? std::string() : user->pw_dir;
}

// A value of a desktop entry.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    const auto index = std::string_view("\\\n\r\t").find(character);
    if (index == std::string_view::npos) {
      escaped += character;
    } else {
      escaped += {'\\', R"(\nrt)"[index]};
    }
  }
  return escaped;
}

// One word of a command in a desktop entry; what the desktop would put in for a "%" or a "$" is meant as it stands.
std::string Quoted(std::string_view word) {
  std::string quoted = "\"";
  for (const char character : word) {
    if (std::string_view("\"`$\\").find(character) != std::string_view::npos) quoted += '\\';
    if (character == '%') quoted += '%';
    quoted += character;
  }
  return quoted + "\"";
}

}  // namespace

std::string Autostart::ConfigFolder() {
  const char* wish = std::getenv("XDG_CONFIG_HOME");
  const std::string home = HomeFolder();
  std::string folder = home.empty() ? home : home + "/.config";
  if (wish != nullptr && *wish == '/') folder = wish;
  const std::string named = FromUtf8(folder);
  return ToUtf8(named) == folder ? named : std::string();
}

Autostart::Autostart(FileStore& files, std::string configFolder, std::string program,
                     std::vector<std::string> arguments)
    : files_(files),
      configFolder_(std::move(configFolder)),
      program_(std::move(program)),
      arguments_(std::move(arguments)) {}

IoResult Autostart::Set(bool wanted) {
  IoResult result{EINVAL, "set the start with the system: an error in the program"};
  Trapped(
      "Autostart_Set", [&] { result = wanted ? Write() : Remove(); }, wanted);
  return result;
}

IoResult Autostart::Write() {
  if (configFolder_.empty()) return {ENOENT, "find the desktop's settings: no home folder"};
  if (IsThere()) return {};
  const IoResult made = MakeFolders();
  return made ? files_.Overwrite(File(), Entry()) : made;
}

IoResult Autostart::Remove() {
  // An entry of that name that starts something else is the user's own.
  return configFolder_.empty() || !IsThere() ? IoResult{} : files_.Remove(File());
}

std::string Autostart::File() const {
  return configFolder_ + "/autostart/vorlix.desktop";
}

std::string Autostart::ExecLine() const {
  std::string command = Quoted(program_);
  for (const std::string& argument : arguments_)
    command += " " + Quoted(argument);
  return "Exec=" + Escaped(ToUtf8(command)) + " auto\n";
}

std::string Autostart::Entry() const {
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=Vorlix\n"
         "Comment=Call monitor\n"
         "Comment[de]=Anrufmonitor\n"
         "Icon=vorlix\n" +
         ExecLine() +
         // A program that was removed leaves an entry that does nothing.
         "TryExec=" + Escaped(ToUtf8(program_)) +
         "\n"
         "Terminal=false\n"
         "StartupNotify=false\n";
}

bool Autostart::IsThere() const {
  std::string bytes;
  return files_.Read(File(), bytes) && ("\n" + bytes).find("\n" + ExecLine()) != std::string::npos;
}

IoResult Autostart::MakeFolders() {
  const std::string file = File();
  for (auto end = file.find('/', 1); end != std::string::npos; end = file.find('/', end + 1)) {
    const std::string folder = file.substr(0, end);
    if (files_.Stat(folder).IsFolder()) continue;
    if (IoResult made = files_.MakeFolder(folder); !made) return made;
  }
  return {};
}

}  // namespace vorlix
