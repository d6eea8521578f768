// Whatever moment the program is killed at, the journal keeps every line that was reported, and none is half.
#include <random>
#include <regex>
#include <set>
#include <thread>

#include <gtest/gtest.h>

#include "RunningVorlix.h"
#include "TestRouter.h"

namespace vorlix {
namespace {

// Numbers whose end the program has reported: it reports after the journal was written.
std::set<std::string> Reported(const std::string& output) {
  static const std::regex kEnd("(?:Entgangen|Beendet)  +Mobilfunk (0171) (\\d+)[^\\n]*\\n");
  std::set<std::string> numbers;
  for (std::sregex_iterator match(output.begin(), output.end(), kEnd), end; match != end; ++match) {
    numbers.insert((*match)[1].str() + (*match)[2].str());
  }
  return numbers;
}

// The numbers in a journal; a line that is not whole fails the test.
std::set<std::string> Journalled(const std::string& journal) {
  static const std::regex kLine("\\d\\d\\.\\d\\d\\.\\d{4}\t\\d\\d:\\d\\d:\\d\\d\t(\\d+)\t77\t0\t16\t1\t\t0\t\\d+");
  std::set<std::string> numbers;
  std::size_t begin = 0;
  while (begin < journal.size()) {
    const auto end = journal.find("\r\n", begin);
    EXPECT_NE(end, std::string::npos) << "half a line at the end: " << journal.substr(begin);
    if (end == std::string::npos) break;
    std::smatch fields;
    const std::string line = journal.substr(begin, end - begin);
    EXPECT_TRUE(std::regex_match(line, fields, kLine)) << "broken line: " << line;
    if (!fields.empty()) numbers.insert(fields[1]);
    begin = end + 2;
  }
  return numbers;
}

TEST(Kill, TwoHundredKillsLoseNoReportedLineAndLeaveNoHalfOne) {
  TempFolder folder;
  TestRouter router;
  RunningVorlix::WriteSettings(folder.Path(), router.Port());
  std::mt19937 random(20261121);
  std::set<std::string> reported;
  int number = 100000;
  for (int round = 0; round < 200; ++round) {
    RunningVorlix program(folder.Path());
    ASSERT_TRUE(router.WaitForClient());
    const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 40000);
    bool alive = true;
    while (alive && std::chrono::steady_clock::now() < end) {
      const std::string caller = "0171" + std::to_string(number++);
      alive = router.SendLine("09.05.21 21:21:25;RING;0;" + caller + ";77;SIP2;");
      if (number % 8 == 0) alive = alive && router.SendLine("09.05.21 21:21:26;CONNECT;0;11;" + caller + ";");
      alive = alive && router.SendLine("09.05.21 21:21:27;DISCONNECT;0;5;");
      std::this_thread::sleep_for(std::chrono::microseconds(300));
    }
    program.Kill();
    reported.merge(Reported(program.Output()));
  }
  RunningVorlix last(folder.Path());  // for its path only
  const std::set<std::string> journalled = Journalled(last.Journal());
  for (const std::string& caller : reported) {
    EXPECT_TRUE(journalled.contains(caller)) << caller << " was reported and is not in the journal";
  }
  EXPECT_GT(reported.size(), 200u);
}

}  // namespace
}  // namespace vorlix
