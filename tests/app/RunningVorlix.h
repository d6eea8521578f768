// The built program with its helper in a data folder of its own, as a test drives it: output read through a pipe.
#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <poll.h>
#include <regex>
#include <signal.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <gtest/gtest.h>

#include "TestRouter.h"
#include "fakes/TemporaryFolder.h"

namespace vorlix {

inline std::string FileText(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

inline void WriteFile(const std::string& path, const std::string& text) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

// A journal whose incoming calls carry the moment of the test: their date and time become "<now>".
inline std::string WithoutNow(const std::string& journal) {
  char today[16];
  const std::time_t now = std::time(nullptr);
  std::strftime(today, sizeof today, "%d.%m.%Y", std::localtime(&now));
  return std::regex_replace(journal, std::regex(std::string(today) + "\t\\d\\d:\\d\\d:\\d\\d\t"), "<now>\t");
}

// Journal lines of an incoming call as WithoutNow() leaves them, and of one that was dialled at a date and time.
inline std::string Incoming(const std::string& number, const std::string& MSN, int seconds = 0) {
  return "<now>\t" + number + "\t" + MSN + "\t0\t16\t1\t\t0\t" + std::to_string(seconds) + "\r\n";
}
inline std::string Outgoing(const std::string& moment, const std::string& number, const std::string& MSN,
                            int seconds = 0) {
  return moment.substr(0, 10) + "\t" + moment.substr(11) + "\t" + number + "\t" + MSN + "\t0\t16\t1\t\t1\t" +
         std::to_string(seconds) + "\r\n";
}

// The settings of a person with a router, or a server of the other protocol, on the loopback address.
inline void WriteSettings(const std::string& folder, int port, bool isNcid = false) {
  WriteFile(
      folder + "/data/Vorlix.ini",
      "[Vorlix-Version]\r\nVersion=v3.00\r\n[General]\r\nCallMode_CAPI=0\r\nmyVWL=49\r\nmyVWO=30\r\n" +
          std::string(isNcid ? "CallMode_NCID=1\r\nDebugNCID=1\r\n" : "CallMode_AVM=1\r\nAVM_SaveOutgoingCalls=1\r\n"));
  WriteFile(folder + (isNcid ? "/data/sett_socketncid.ini" : "/data/sett_socketavm.ini"),
            (isNcid ? "[NCID]" : "[FritzBox]") + std::string("\r\nHost=127.0.0.1\r\nPort=") + std::to_string(port));
}

class RunningVorlix {
 public:
  explicit RunningVorlix(const std::string& folder, std::vector<std::string> words = {}) : folder_(folder) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    std::vector<std::string> arguments{std::string(VORLIX_BIN) + "/vorlix", "--console", "--data", folder};
    arguments.insert(arguments.end(), words.begin(), words.end());
    pid_ = fork();
    if (pid_ == 0) {
      std::vector<char*> pointers;
      for (std::string& argument : arguments)
        pointers.push_back(argument.data());
      pointers.push_back(nullptr);
      const int nothing = open("/dev/null", O_RDONLY);
      dup2(nothing, 0);
      dup2(ends[1], 1);
      execv(pointers[0], pointers.data());
      _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
  }
  ~RunningVorlix() {
    if (pid_ > 0) Kill();
    for (const pid_t helper : Helpers())
      kill(helper, SIGKILL);
    close(output_);
  }
  RunningVorlix(const RunningVorlix&) = delete;
  RunningVorlix& operator=(const RunningVorlix&) = delete;

  // Everything the program has printed so far.
  const std::string& Output() {
    char buffer[65536];
    for (ssize_t got = 0; (got = read(output_, buffer, sizeof buffer)) > 0;) {
      text_.append(buffer, static_cast<std::size_t>(got));
    }
    return text_;
  }
  bool WaitFor(const std::function<bool()>& reached, std::chrono::seconds patience = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!reached()) {
      if (std::chrono::steady_clock::now() > end) return false;
      pollfd wanted{output_, POLLIN, 0};
      poll(&wanted, 1, 5);
      Output();
    }
    return true;
  }
  // Waits until the text stands in the output `times` times.
  bool Shows(const std::string& text, int times = 1) {
    return WaitFor([&] {
      int found = 0;
      for (auto at = Output().find(text); at != std::string::npos; at = text_.find(text, at + text.size()))
        ++found;
      return found >= times;
    });
  }

  std::string Journal() const { return FileText(folder_ + "/data/Vorlixjournal.txt"); }
  // The journal in front of its last line, which must be that one.
  std::string JournalBefore(const std::string& last) const {
    const std::string journal = WithoutNow(Journal());
    EXPECT_TRUE(journal.ends_with(last)) << journal;
    return journal.substr(0, journal.size() - std::min(last.size(), journal.size()));
  }
  bool JournalHas(const std::string& text) {
    return WaitFor([&] { return Journal().find(text) != std::string::npos; });
  }

  // The helper processes of this data folder.
  std::vector<pid_t> Helpers() const {
    std::vector<pid_t> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
      const std::string name = entry.path().filename();
      if (name.find_first_not_of("0123456789") != std::string::npos) continue;
      if (!FileText("/proc/" + name + "/cmdline").starts_with(std::string(VORLIX_BIN) + "/Socket")) continue;
      if (FileText("/proc/" + name + "/environ").find("VORLIX_DATA=" + folder_ + '\0') == std::string::npos) continue;
      found.push_back(std::stoi(name));
    }
    return found;
  }

  // Sends the signal and gives the exit code.
  int End(int signal = SIGTERM) {
    kill(pid_, signal);
    return ExitCode();
  }
  // Waits until the program has ended by itself; -1 when it was ended by a signal or does not end.
  int ExitCode() {
    int status = 0;
    if (!WaitFor([&] { return waitpid(pid_, &status, WNOHANG) == pid_; })) return -1;
    pid_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void Kill() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    pid_ = 0;
  }

 private:
  std::string folder_;
  pid_t pid_ = 0;
  int output_ = -1;
  std::string text_;
};

// A program whose helper has found its server.
class ConnectedVorlix : public RunningVorlix {
 public:
  ConnectedVorlix(const std::string& folder, TestRouter& router, const std::string& up = "AVM OK")
      : RunningVorlix(folder), router_(router), up_(up) {
    Connect();
  }
  // Waits for the helper for the first time, or once more.
  void Connect() { EXPECT_TRUE(router_.WaitForClient() && Shows(up_, ++times_)) << Output(); }
  bool HelpersLeave() {
    return WaitFor([this] { return Helpers().empty(); });
  }

 private:
  TestRouter& router_;
  std::string up_;
  int times_ = 0;
};

}  // namespace vorlix
