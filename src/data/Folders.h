// Where everything lies. Found first of all, before any setting.
//
// Inside the program a file has a logical name with backslashes: "\data\", "\log\", "\archiv\", "\backup\" and
// "\update\" lie below ProgramData, "\base\" below the program folder. Anything else is a real path of the system.
#pragma once

#include <string>
#include <string_view>

#include "platform/FileStore.h"

namespace vorlix {

class Folders {
 public:
  // What the system says; texts in Windows-1252.
  struct Surroundings {
    std::string programFolder;  // folder of the executable
    std::string dataHome;       // $XDG_DATA_HOME
    std::string home;           // $HOME
    std::string chosenFolder;   // the data folder that the command line or VORLIX_DATA asks for; wins over all else
  };

  // Reads "Vorlixpaths.ini" beside the program, where there is one. Folders are named, not made.
  Folders(const FileStore& files, Surroundings surroundings);

  // Without a final "/".
  const std::string& ProgramFolder() const { return programFolder_; }
  const std::string& ProgramData() const { return programData_; }
  // The folder of journal and book, with a final "/".
  const std::string& BookPath() const { return bookPath_; }
  // Whether the book's file is watched for changes by others.
  bool BookRefresh() const { return bookRefresh_; }
  // What the user has to be told about the folders found; empty when nothing is.
  const std::string& Notice() const { return notice_; }

  // The real path of a logical name; an empty name means "\data\Vorlix.ini".
  std::string GetMainPath(std::string_view file) const;

 private:
  void ReadPathsFile(const FileStore& files, const std::string& defaultFolder);
  void DataBesideProgram(const FileStore& files, const std::string& defaultFolder);

  std::string programFolder_;
  std::string programData_;
  std::string bookPath_;
  bool bookRefresh_ = false;
  std::string notice_;
};

// A path as a person may have written it: "\" is read as "/", a final "/" is cut, a relative path lies below `folder`.
std::string RealPath(std::string_view path, const std::string& folder);

}  // namespace vorlix
