#include "platform/posix/Autostart.h"

#include <cerrno>

#include <gtest/gtest.h>

#include "fakes/MemoryFileStore.h"
#include "fakes/TemporaryFolder.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using Operation = MemoryFileStore::Operation;

constexpr char kEntry[] = "/home/anna/.config/autostart/vorlix.desktop";

class AutostartTest : public testing::Test {
 protected:
  AutostartTest() { files.AddFolder("/home/anna"); }
  IoResult Set(bool wanted, const std::string& program = "/usr/lib/vorlix/vorlix",
               const std::vector<std::string>& arguments = {}) {
    return Autostart(files, "/home/anna/.config", program, arguments).Set(wanted);
  }
  std::string Line(const std::string& key) const {
    const std::string entry = files.Content(kEntry);
    const auto start = entry.find("\n" + key + "=") + 1;
    return entry.substr(start, entry.find('\n', start) - start);
  }

  MemoryFileStore files;
};

TEST_F(AutostartTest, WritesAnEntryWithTheWordAutoAndRemovesItAgain) {
  ASSERT_TRUE(Set(true));
  EXPECT_TRUE(files.Content(kEntry).starts_with("[Desktop Entry]\nType=Application\n"));
  EXPECT_EQ(Line("Exec"), R"(Exec="/usr/lib/vorlix/vorlix" auto)");
  EXPECT_EQ(Line("TryExec"), "TryExec=/usr/lib/vorlix/vorlix");
  EXPECT_TRUE(Set(false));
  EXPECT_FALSE(files.Exists(kEntry));
  EXPECT_TRUE(Set(false));
}

TEST_F(AutostartTest, NamesEveryPathSoThatTheDesktopReadsItBack) {
  const std::pair<std::string, std::string> kCases[] = {
      {"/opt/my programs/vorlix", R"(Exec="/opt/my programs/vorlix" auto)"},
      {std::string("/opt/Büro/vorlix"_ansi), "Exec=\"/opt/Büro/vorlix\" auto"},
      {R"(/a"b`c$d\e/vorlix)", R"(Exec="/a\\"b\\`c\\$d\\\\e/vorlix" auto)"},
      {"/100%f/vorlix", R"(Exec="/100%%f/vorlix" auto)"},
      {"/a\nExec=rm/vorlix", R"(Exec="/a\nExec=rm/vorlix" auto)"},
  };
  for (const auto& [program, line] : kCases) {
    ASSERT_TRUE(Set(true, program));
    EXPECT_EQ(Line("Exec"), line);
  }
  ASSERT_TRUE(Set(true, "/v", {"--data", "/home/anna/my calls"}));
  EXPECT_EQ(Line("Exec"), R"(Exec="/v" "--data" "/home/anna/my calls" auto)");
}

TEST_F(AutostartTest, LeavesAnEntryThatTheDesktopSwitchedOffButFollowsAProgramThatMoved) {
  ASSERT_TRUE(Set(true));
  const std::string switchedOff = files.Content(kEntry) + "Hidden=true\n";
  files.AddFile(kEntry, switchedOff);
  ASSERT_TRUE(Set(true));
  EXPECT_EQ(files.Content(kEntry), switchedOff);
  ASSERT_TRUE(Set(true, "/opt/vorlix"));
  EXPECT_EQ(Line("Exec"), R"(Exec="/opt/vorlix" auto)");
}

TEST_F(AutostartTest, SaysWhyItCouldNotBeWritten) {
  files.Fail(Operation::kMakeFolder, EACCES, "autostart");
  EXPECT_EQ(Set(true).error, EACCES);
  files.FailNothing();
  files.Fail(Operation::kOverwrite, ENOSPC);
  EXPECT_EQ(Set(true).error, ENOSPC);
  EXPECT_EQ(Autostart(files, "", "/v").Set(true).error, ENOENT);
}

TEST(AutostartFolder, IsTheDesktopsOwnElseInTheHomeFolder) {
  const TemporaryVariable home("HOME", "/home/Jörg");
  const std::pair<std::string, std::string> kCases[] = {
      {"", std::string("/home/Jörg/.config"_ansi)},
      {"relative", std::string("/home/Jörg/.config"_ansi)},
      {"/etc/mine", "/etc/mine"},
      {"/home/\u0416", ""},
  };
  for (const auto& [wish, folder] : kCases) {
    const TemporaryVariable variable("XDG_CONFIG_HOME", wish);
    EXPECT_EQ(Autostart::ConfigFolder(), folder) << wish;
  }
}

}  // namespace
}  // namespace vorlix
