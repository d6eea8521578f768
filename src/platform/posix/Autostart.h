// The start with the system: an entry in the desktop's autostart folder that starts the program with the word "auto".
// Texts are Windows-1252.
#pragma once

#include <string>
#include <vector>

#include "platform/FileStore.h"

namespace vorlix {

class Autostart {
 public:
  // The desktop's folder of settings: $XDG_CONFIG_HOME, else ".config" in the home folder; empty when there is neither
  // or the program's text cannot name it.
  static std::string ConfigFolder();

  // `program` is the full path of the executable, `arguments` are what it needs beside "auto", such as its data folder.
  // The files must outlive the object.
  Autostart(FileStore& files, std::string configFolder, std::string program, std::vector<std::string> arguments = {});

  // Writes or removes the entry. One that starts this program already is left as it is, with what the user or the
  // desktop has added to it.
  IoResult Set(bool wanted);

 private:
  IoResult Write();
  IoResult Remove();
  std::string File() const;
  std::string ExecLine() const;
  std::string Entry() const;
  bool IsThere() const;
  IoResult MakeFolders();

  FileStore& files_;
  std::string configFolder_, program_;
  std::vector<std::string> arguments_;
};

}  // namespace vorlix
