#include "platform/posix/PosixProcesses.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix/ChildSetup.h"
#include "platform/posix/Descriptor.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

// Runs in a child that shares nothing with us any more; tells through the pipe why it did not become the program.
[[noreturn]] void BecomeProgram(int report, char* const* arguments) {
  report = fcntl(report, F_DUPFD_CLOEXEC, 3);
  const int nothing = open("/dev/null", O_RDONLY);
  dup2(nothing, STDIN_FILENO);
  CloseDescriptorsOnExec();
  RestoreSignals();
  // Only a bare name is looked up: the look-up would hand a file that is no program to the shell.
  std::string_view(arguments[0]).find('/') == std::string_view::npos ? execvp(arguments[0], arguments)
                                                                     : execv(arguments[0], arguments);
  const int error = errno;
  static_cast<void>(!write(report, &error, sizeof error));
  _exit(127);
}

// The child that we wait for ends at once; the program is its child, and then the system's.
[[noreturn]] void LeaveBehind(int report, char* const* arguments) {
  setsid();
  const pid_t program = fork();
  if (program == 0) BecomeProgram(report, arguments);
  const int error = errno;
  if (program < 0) static_cast<void>(!write(report, &error, sizeof error));
  _exit(0);
}

int StartProgram(char* const* arguments) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return errno;
  const Descriptor reading(ends[0]);
  Descriptor writing(ends[1]);
  const pid_t child = fork();
  if (child < 0) return errno;
  if (child == 0) LeaveBehind(writing.Get(), arguments);
  writing.Close();
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
  }
  int error = 0;  // stays so when the program took the pipe's end with it unused
  while (read(reading.Get(), &error, sizeof error) < 0 && errno == EINTR) {
  }
  return error;
}

}  // namespace

IoResult PosixProcesses::Start(const std::string& file, const std::vector<std::string>& arguments) {
  const auto failure = [&](int error) { return IoResult{error, FailureText("start " + file, error)}; };
  if (file.empty()) return failure(ENOENT);
  std::vector<std::string> texts{SystemText(file)};
  for (const std::string& argument : arguments) {
    if (argument.find('\0') != std::string::npos) return failure(EINVAL);
    texts.push_back(SystemText(argument));
  }
  std::vector<char*> pointers;
  for (std::string& text : texts)
    pointers.push_back(text.data());
  pointers.push_back(nullptr);
  const int error = StartProgram(pointers.data());
  return error == 0 ? IoResult{} : failure(error);
}

std::string ProgramFolder() {
  std::array<char, PATH_MAX> path;
  const auto length = readlink("/proc/self/exe", path.data(), path.size());
  if (length <= 0) return {};
  const std::string_view file(path.data(), static_cast<std::size_t>(length));
  return FromUtf8(file.substr(0, file.rfind('/')));
}

std::string EnvironmentText(const std::string& name) {
  const char* value = std::getenv(SystemText(name).c_str());
  return value == nullptr ? std::string() : FromUtf8(value);
}

}  // namespace vorlix
