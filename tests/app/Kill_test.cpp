// Whatever moment the program is killed at, the journal keeps every line that was reported, and none is half.
#include <random>
#include <set>
#include <thread>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using Numbers = std::set<std::string>;

// What the expression's groups take out of a text.
Numbers Found(const std::string& text, const char* expression) {
  const std::regex regex(expression);
  Numbers numbers;
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
    numbers.insert((*match)[1].str() + (*match)[2].str());
  return numbers;
}

// Numbers whose end the program has reported: it reports after the journal was written.
Numbers Reported(const std::string& output) {
  return Found(output, "(?:Entgangen|Beendet)  +Mobilfunk (0171) (\\d+)[^\\n]*\\n");
}

// The numbers in a journal; a line that is not whole fails the test.
Numbers Journalled(const std::string& journal) {
  const char* line = "\\d\\d\\.\\d\\d\\.\\d{4}\t\\d\\d:\\d\\d:\\d\\d\t(\\d+)()\t77\t0\t16\t1\t\t0\t\\d+\r\n";
  EXPECT_EQ(std::regex_replace(journal, std::regex(line), ""), "");
  return Found(journal, line);
}

TEST(Kill, TwoHundredKillsLoseNoReportedLineAndLeaveNoHalfOne) {
  TemporaryFolder folder;
  TestRouter router;
  WriteSettings(folder.Path(), router.Port());
  std::mt19937 random(20261121);
  Numbers reported;
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
  const Numbers journalled = Journalled(FileText(folder / "data/Vorlixjournal.txt"));
  for (const std::string& caller : reported)
    EXPECT_TRUE(journalled.contains(caller)) << caller << " was reported and is not in the journal";
  EXPECT_GT(reported.size(), 200u);
}

}  // namespace
}  // namespace vorlix
