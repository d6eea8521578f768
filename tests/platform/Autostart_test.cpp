#include "platform/posix/Autostart.h"

#include <gtest/gtest.h>

#include "fakes/MemoryFileStore.h"
#include "fakes/TemporaryFolder.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

constexpr char kEntry[] = "/home/anna/.config/autostart/vorlix.desktop";

class AutostartTest : public testing::Test {
 protected:
  AutostartTest() { files.AddFolder("/home/anna"); }
  IoResult Set(bool wanted, const std::string& program = "/usr/lib/vorlix/vorlix",
               const std::vector<std::string>& arguments = {}) {
    return Autostart(files, "/home/anna/.config", program, arguments).Set(wanted);
  }
  std::string Exec() const {
    const std::string entry = files.Content(kEntry);
    const auto start = entry.find("\nExec=") + 6;
    return entry.substr(start, entry.find('\n', start) - start);
  }

  MemoryFileStore files;
};

TEST_F(AutostartTest, WritesAnEntryWithTheWordAutoAndRemovesItAgain) {
  ASSERT_TRUE(Set(true));
  EXPECT_TRUE(files.Content(kEntry).starts_with("[Desktop Entry]\nType=Application\n"));
  EXPECT_EQ(Exec(), R"("/usr/lib/vorlix/vorlix" auto)");
  EXPECT_TRUE(Set(false));
  EXPECT_FALSE(files.Exists(kEntry));
  EXPECT_TRUE(Set(false));
}

TEST_F(AutostartTest, NamesEveryPathSoThatTheDesktopReadsItBack) {
  const std::pair<std::string, std::string> kCases[] = {
      {std::string("/opt/Büro 1/vorlix"_ansi), R"("/opt/Büro 1/vorlix" "--data" "/my calls" auto)"},
      {R"(/a"b`c$d\e/100%f)", R"("/a\\"b\\`c\\$d\\\\e/100%%f" "--data" "/my calls" auto)"},
      {"/a\nExec=rm/vorlix", R"("/a\nExec=rm/vorlix" "--data" "/my calls" auto)"},
  };
  for (const auto& [program, line] : kCases) {
    ASSERT_TRUE(Set(true, program, {"--data", "/my calls"}));
    EXPECT_EQ(Exec(), line);
  }
}

TEST_F(AutostartTest, LeavesAnEntryThatTheDesktopSwitchedOffButFollowsAProgramThatMoved) {
  ASSERT_TRUE(Set(true));
  const std::string switchedOff = files.Content(kEntry) + "Hidden=true\n";
  files.AddFile(kEntry, switchedOff);
  ASSERT_TRUE(Set(true));
  EXPECT_EQ(files.Content(kEntry), switchedOff);
  ASSERT_TRUE(Set(true, "/opt/vorlix"));
  EXPECT_EQ(Exec(), R"("/opt/vorlix" auto)");
}

TEST(AutostartFolder, IsTheDesktopsOwnElseInTheHomeFolder) {
  const TemporaryVariable home("HOME", "/home/Jörg");
  const std::string inHome("/home/Jörg/.config"_ansi);
  for (const auto& [wish, folder] : {std::pair<std::string, std::string>{"", inHome},
                                     {"relative", inHome},
                                     {"/etc/mine", "/etc/mine"},
                                     {"/home/\u0416", ""}}) {
    const TemporaryVariable variable("XDG_CONFIG_HOME", wish);
    EXPECT_EQ(Autostart::ConfigFolder(), folder) << wish;
  }
}

}  // namespace
}  // namespace vorlix
