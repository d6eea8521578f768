// What the program was started with.
#pragma once

#include <string>
#include <vector>

namespace vorlix {

struct CommandLine {
  bool console = false;
  bool help = false;
  bool version = false;
  std::string dataFolder;          // --data, in UTF-8 as given; empty: see FindSystemFolders()
  std::vector<std::string> words;  // what is neither option nor option value, such as "auto" and "restart"
  std::string error;               // what is wrong with the line; empty when nothing is
};

// Arguments without the program's name, in UTF-8 as the system gives them; texts of the result are
// Windows-1252 where nothing else is said.
CommandLine ParseCommandLine(const std::vector<std::string>& arguments);

// The text of --help.
std::string HelpText();
// The text of --version: "Vorlix v3.00".
std::string VersionText();

}  // namespace vorlix
