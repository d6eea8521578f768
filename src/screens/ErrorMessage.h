// The hourly question whether the errors of this program may be reported. Decides when it is asked and what the report
// program gets to know; asking is the message box's.
#pragma once

#include <functional>
#include <string>

#include "data/Folders.h"
#include "data/clsFiles.h"
#include "data/modSettings.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class ErrorMessage {
 public:
  struct Ports {
    clsFiles& files;
    const Folders& folders;
    const Settings& settings;
    modSettings& store;
    modAll_MsgBox& messages;
    // Starts a program with one argument; false when it is not there.
    std::function<bool(const std::string& file, const std::string& argument)> start;
    // Manufacturer and version of the driver, "maker/1.0"; empty where none is in use.
    std::function<std::string()> driver;
  };

  // All ports must outlive the object.
  explicit ErrorMessage(Ports ports) : ports_(std::move(ports)) {}

  // Asks when it is wanted, the report program is there and the error log has enough lines.
  void Check();

 private:
  bool Ask(int lines);
  void SendReport();
  std::string ReportProgram() const;

  Ports ports_;
};

}  // namespace vorlix
