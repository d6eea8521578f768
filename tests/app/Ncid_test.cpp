// The built program with its NCID helper, against a server of the test's own.
#include <gmock/gmock.h>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

class NcidTest : public testing::Test {
 protected:
  NcidTest() { WriteSettings(folder.Path(), server.Port(), true); }

  static std::string Call(const std::string& number) {
    return "CID: *DATE*11212026*TIME*0220*LINE*POTS*NMBR*" + number + "*MESG*NONE*NAME*CALLER*";
  }
  // Everything that was sent before is worked off behind this call, which the server hangs up; gives the journal
  // without it.
  std::string JournalBehindLastCall(RunningVorlix& program) {
    EXPECT_TRUE(server.SendLine("HUP: *DATE*11212026*TIME*0220*LINE*END*NMBR*03023125999*MESG*NONE*NAME*LAST*"));
    EXPECT_TRUE(program.JournalHas("03023125999")) << program.Output();
    return program.JournalBefore(Incoming("03023125999", "END"));
  }

  TemporaryFolder folder;
  TestRouter server;
};

TEST_F(NcidTest, EveryRecordedSessionGivesItsJournal) {
  const std::pair<const char*, std::string> rows[] = {
      {"01_gateway_calls.raw", Incoming("03023125100", "GW0") + Incoming("03023125102", "GW2") +
                                   Incoming("03023125104", "GW4") + Incoming("Unbekannt", "GW5") +
                                   Incoming("622", "GW6")},
      {"02_log_sent_at_connect.raw", Incoming("06990009110", "POTS")},
      {"03_german_router.raw", Incoming("Unbekannt", "08999998200")},
  };
  for (const auto& [session, journal] : rows) {
    SCOPED_TRACE(session);
    TemporaryFolder own;
    WriteSettings(own.Path(), server.Port(), true);
    ConnectedVorlix program(own.Path(), server, "NCID OK");
    server.Send(FileText(std::string(VORLIX_TEST_DATA) + "/ncid_sessions/" + session));
    EXPECT_EQ(JournalBehindLastCall(program), journal);
    EXPECT_EQ(program.End(), 0);
    EXPECT_THAT(FileText(own / "log/raw_ncid.txt"), testing::Not(HasSubstr("LOG:")));
    EXPECT_EQ(FileText(own / "log/error.log"), "");
  }
}

TEST_F(NcidTest, AServerThatGoesAndComesBackIsFoundAgainAndItsLogDoesNotRing) {
  ConnectedVorlix program(folder.Path(), server, "NCID OK");
  server.SendLine(Call("06990009110"));
  server.Send(Call("06990009111"));  // half a line
  ASSERT_TRUE(program.Shows("Anruf       Frankfurt am Main 069 90009110 an POTS"));
  server.GoAway();
  ASSERT_TRUE(program.Shows("NCID Fehler"));
  server.ComeBack();
  program.Connect();
  server.SendLine("CIDLOG: *DATE*11212026*TIME*0220*LINE*POTS*NMBR*06990009110*MESG*NONE*NAME*CALLER*");
  server.SendLine(Call("06990009112"));
  EXPECT_EQ(JournalBehindLastCall(program), Incoming("06990009110", "POTS") + Incoming("06990009112", "POTS"));
}

TEST_F(NcidTest, HostileLinesNeitherStopTheProgramNorReachARecord) {
  ConnectedVorlix program(folder.Path(), server, "NCID OK");
  std::string bytes = "CID:\nCID: *\nHUP: \r\r\n****\n\n";
  for (int i = 0; i < 256; ++i)
    bytes += static_cast<char>(i);
  bytes += "\r\n" + std::string(300000, '*') + "\r\nCID: " + std::string(300000, 'x') + "*NMBR*030*\r\n";
  bytes += "HUP: *LINE*7\x1B[2J;7*NMBR*0171\t5|" + std::string(1, '\0') + "6*MESG*" + std::string(500, 'm') + "*\r\n";
  server.Send(bytes);
  EXPECT_EQ(JournalBehindLastCall(program), Incoming("01715|6", "7 [2J;7"));
  EXPECT_EQ(program.End(), 0);
}

}  // namespace
}  // namespace vorlix
