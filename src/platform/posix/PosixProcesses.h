// Starting programs by fork and exec, and what the system tells about this process. Texts are the program's and turned
// into the system's form here.
#pragma once

#include "platform/Processes.h"

namespace vorlix {

class PosixProcesses : public Processes {
 public:
  // A file without "/" is looked for where the system keeps its programs.
  IoResult Start(const std::string& file, const std::vector<std::string>& arguments) override;
};

// The folder of the executable, links resolved, without a "/" at its end; empty when the system does not tell.
std::string ProgramFolder();

// The value of an environment variable; empty when there is none.
std::string EnvironmentText(const std::string& name);

}  // namespace vorlix
