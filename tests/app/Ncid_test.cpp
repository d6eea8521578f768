// The built program with its NCID helper, against a server of the test's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningVorlix.h"
#include "TestRouter.h"

namespace vorlix {
namespace {

using testing::HasSubstr;
using testing::Not;

// The server hangs up a call: it is in the journal at once.
constexpr auto kLast = "HUP: *DATE*11212026*TIME*0220*LINE*END*NMBR*03023125999*MESG*NONE*NAME*LAST*";
constexpr auto kLastLine = "<now>\t03023125999\tEND\t0\t16\t1\t\t0\t0\r\n";

// 06990009110, as the program shows it.
constexpr auto kParty = "Frankfurt am Main 069 90009110";

class NcidTest : public testing::Test {
 protected:
  NcidTest() { WriteSettings(folder.Path()); }

  void WriteSettings(const std::string& path) const {
    WriteFile(path + "/data/Vorlix.ini",
              "[Vorlix-Version]\r\nVersion=v3.00\r\n[General]\r\nCallMode_CAPI=0\r\nCallMode_NCID=1\r\n"
              "DebugNCID=1\r\nmyVWL=49\r\nmyVWO=30\r\n");
    WriteFile(path + "/data/sett_socketncid.ini",
              "[NCID]\r\nHost=127.0.0.1\r\nPort=" + std::to_string(server.Port()) + "\r\n");
  }
  void Connect(RunningVorlix& program, int times = 1) {
    ASSERT_TRUE(server.WaitForClient());
    ASSERT_TRUE(program.Shows("NCID OK", times)) << program.Output();
  }
  static std::string Call(const std::string& number) {
    return "CID: *DATE*11212026*TIME*0220*LINE*POTS*NMBR*" + number + "*MESG*NONE*NAME*CALLER*";
  }
  // Everything that was sent before is worked off behind it.
  std::string JournalBehindLastCall(RunningVorlix& program) {
    EXPECT_TRUE(server.SendLine(kLast));
    EXPECT_TRUE(program.JournalHas("03023125999")) << program.Output();
    return WithoutNow(program.Journal());
  }

  TempFolder folder;
  TestRouter server;
};

TEST_F(NcidTest, EveryRecordedSessionGivesItsJournal) {
  const std::pair<const char*, std::string> rows[] = {
      {"01_gateway_calls.raw",
       "<now>\t03023125100\tGW0\t0\t16\t1\t\t0\t0\r\n"
       "<now>\t03023125102\tGW2\t0\t16\t1\t\t0\t0\r\n"
       "<now>\t03023125104\tGW4\t0\t16\t1\t\t0\t0\r\n"
       "<now>\tUnbekannt\tGW5\t0\t16\t1\t\t0\t0\r\n"
       "<now>\t622\tGW6\t0\t16\t1\t\t0\t0\r\n"},
      {"02_log_sent_at_connect.raw", "<now>\t06990009110\tPOTS\t0\t16\t1\t\t0\t0\r\n"},
      {"03_german_router.raw", "<now>\tUnbekannt\t08999998200\t0\t16\t1\t\t0\t0\r\n"},
  };
  for (const auto& [session, journal] : rows) {
    SCOPED_TRACE(session);
    TempFolder own;
    WriteSettings(own.Path());
    RunningVorlix program(own.Path());
    Connect(program);
    server.Send(FileText(std::string(VORLIX_TEST_DATA) + "/ncid_sessions/" + session));
    EXPECT_EQ(JournalBehindLastCall(program), journal + kLastLine);
    EXPECT_EQ(program.End(), 0);
    EXPECT_THAT(FileText(own.Path() + "/log/raw_ncid.txt"), Not(HasSubstr("LOG:")));
    EXPECT_EQ(FileText(own.Path() + "/log/error.log"), "");
  }
}

TEST_F(NcidTest, ACallIsShownAndEndsByItselfAfterFifteenSeconds) {
  RunningVorlix program(folder.Path());
  Connect(program);
  const auto rang = std::chrono::steady_clock::now();
  server.SendLine(Call("06990009110"));
  server.SendLine(Call("06990009111"));
  ASSERT_TRUE(program.Shows(std::string("Anruf       ") + kParty + " an POTS")) << program.Output();
  ASSERT_TRUE(program.JournalHas("06990009110"));
  EXPECT_GE(std::chrono::steady_clock::now() - rang, std::chrono::seconds(13));
  EXPECT_TRUE(program.Shows(std::string("Beendet     ") + kParty));
  // There is one call at a time.
  EXPECT_EQ(JournalBehindLastCall(program), "<now>\t06990009110\tPOTS\t0\t16\t1\t\t0\t0\r\n" + std::string(kLastLine));
}

TEST_F(NcidTest, AServerThatGoesAndComesBackIsFoundAgainAndItsLogDoesNotRing) {
  RunningVorlix program(folder.Path());
  Connect(program);
  server.SendLine(Call("06990009110"));
  server.Send(Call("06990009111"));  // half a line
  ASSERT_TRUE(program.Shows(kParty));
  server.StopListening();
  server.HangUp();
  ASSERT_TRUE(program.Shows("NCID Fehler"));
  server.ListenAgain();
  Connect(program, 2);
  server.SendLine("200 Server: ncidd (NCID) 1.6");
  server.SendLine("CIDLOG: *DATE*11212026*TIME*0220*LINE*POTS*NMBR*06990009110*MESG*NONE*NAME*CALLER*");
  server.SendLine("250 End of call log");
  server.SendLine(Call("06990009112"));
  EXPECT_EQ(JournalBehindLastCall(program),
            "<now>\t06990009110\tPOTS\t0\t16\t1\t\t0\t0\r\n"
            "<now>\t06990009112\tPOTS\t0\t16\t1\t\t0\t0\r\n" +
                std::string(kLastLine));
}

TEST_F(NcidTest, ACallThatRingsWhileTheProgramClosesIsInTheJournalAndTheHelperLeaves) {
  RunningVorlix program(folder.Path());
  Connect(program);
  server.SendLine(Call("06990009110"));
  ASSERT_TRUE(program.Shows(kParty));
  EXPECT_EQ(program.Helpers().size(), 1u);
  EXPECT_EQ(program.End(), 0);
  EXPECT_EQ(WithoutNow(program.Journal()), "<now>\t06990009110\tPOTS\t0\t16\t1\t\t0\t0\r\n");
  EXPECT_TRUE(program.WaitFor([&] { return program.Helpers().empty(); })) << "the helper stays";
}

TEST_F(NcidTest, HostileLinesNeitherStopTheProgramNorReachARecord) {
  RunningVorlix program(folder.Path());
  Connect(program);
  std::string bytes = "CID:\nCID: *\nHUP: \r\r\n****\n\n";
  for (int i = 0; i < 256; ++i) {
    bytes += static_cast<char>(i);
  }
  bytes += "\r\n" + std::string(300000, '*') + "\r\nCID: " + std::string(300000, 'x') + "*NMBR*030*\r\n";
  bytes += "HUP: *LINE*7\x1B[2J;7*NMBR*0171\t5|" + std::string(1, '\0') + "6*MESG*" + std::string(500, 'm') + "*\r\n";
  server.Send(bytes);
  EXPECT_EQ(JournalBehindLastCall(program), "<now>\t01715|6\t7 [2J;7\t0\t16\t1\t\t0\t0\r\n" + std::string(kLastLine));
  EXPECT_EQ(program.End(), 0);
}

}  // namespace
}  // namespace vorlix
