// The built program with its real helper, against a router of the test's own.
#include <gmock/gmock.h>

#include "RunningVorlix.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

class EndToEndTest : public testing::Test {
 protected:
  EndToEndTest() { WriteSettings(folder.Path(), router.Port()); }

  void Ring(const std::string& number) { router.SendLine("09.05.21 21:21:25;RING;0;" + number + ";77;SIP2;"); }
  void Miss(const std::string& number) {
    Ring(number);
    router.SendLine("09.05.21 21:21:27;DISCONNECT;0;0;");
  }
  // Everything that was sent before is worked off when this call is shown; gives the journal without it.
  std::string JournalBehindLastCall(RunningVorlix& program) {
    router.SendLine("01.01.20 00:00:00;CALL;9;4;END;0999;SIP0;");
    router.SendLine("01.01.20 00:00:01;DISCONNECT;9;0;");
    EXPECT_TRUE(program.Shows("Erfolglos   0999")) << program.Output();
    return program.JournalBefore(Outgoing("01.01.2020 00:00:00", "0999", "END"));
  }

  TemporaryFolder folder;
  TestRouter router;
};

TEST_F(EndToEndTest, EveryRecordedSessionIsShownAndGivesItsJournal) {
  const std::tuple<std::string, std::vector<const char*>, std::string> rows[] = {
      {"01_missed_then_answered.txt",
       {"Anruf       012345678901 an 01234567", "Entgangen   012345678901"},
       Incoming("012345678901", "01234567") + Incoming("012345678901", "01234567", 2)},
      // The first call of this recording never ends.
      {"02_incoming_isdn_and_withheld.txt",
       {"Angenommen  Unbekannt"},
       Incoming("Unbekannt", "1234") + Outgoing("28.08.2010 10:28:48", "04066969012", "1234")},
      {"03_outgoing_retries_same_id.txt",
       {"Angenommen  Backnang 07191 100952", "Beendet     Backnang 07191 100952, 0:01:49",
        "Erfolglos   Berlin 030 100952", "Beendet     Berlin 030 100952, 0:05:12"},
       Incoming("07191100952", "10069", 109) + Outgoing("17.06.2020 10:30:57", "030100952", "10069") +
           Outgoing("17.06.2020 10:31:08", "030100952", "10069") +
           Outgoing("17.06.2020 10:31:24", "030100952", "10069") +
           Outgoing("17.06.2020 10:31:54", "030100952", "10069") +
           Outgoing("17.06.2020 10:32:16", "030100952", "10069", 312)},
      {"04_own_number_calls_own_number.txt", {}, Incoming("07191100732", "10069", 6)},
      {"05_overlapping_isdn_sip.txt",
       {},
       Outgoing("17.02.2008 10:59:53", "030916142", "879136") + Incoming("06990009136", "916142") +
           Outgoing("17.02.2008 11:01:46", "030916137", "879136", 13) + Incoming("06990009136", "916137", 13)},
      {"06_three_at_once_no_semicolon.txt",
       {},
       Outgoing("13.04.2003 09:10:13", "01231234567", "7654321", 800) +
           Outgoing("09.09.2006 15:59:41", "01237654321", "1234567", 660) + Incoming("01713920012", "4271960", 660)},
      {"07_answered_201s.txt", {}, Incoming("017604069076", "23125099", 201)},
  };
  for (const auto& [session, shown, journal] : rows) {
    SCOPED_TRACE(session);
    TemporaryFolder own;
    WriteSettings(own.Path(), router.Port());
    ConnectedVorlix program(own.Path(), router);
    router.Send(FileText(std::string(VORLIX_TEST_DATA) + "/router_sessions/" + session));
    EXPECT_EQ(JournalBehindLastCall(program), journal);
    EXPECT_EQ(program.End(), 0);
    for (const char* text : shown)
      EXPECT_THAT(program.Output(), HasSubstr(text));
    EXPECT_EQ(FileText(own.Path() + "/log/error.log"), "");
  }
}

TEST_F(EndToEndTest, ARouterThatComesBackAndAHelperThatWasKilledAreThereAgain) {
  ConnectedVorlix program(folder.Path(), router);
  Ring("0171111");
  router.Send("09.05.21 21:21:26;RING;1;0172222");  // half a line
  ASSERT_TRUE(program.Shows("Anruf       Mobilfunk 0171 111"));
  router.GoAway();
  ASSERT_TRUE(program.Shows("AVM Fehler"));
  EXPECT_TRUE(program.JournalHas("0171111"));  // its end can no longer be heard
  router.ComeBack();
  program.Connect();
  Miss("0173333");
  EXPECT_TRUE(program.JournalHas("0173333"));
  ASSERT_EQ(program.Helpers().size(), 1u);
  kill(program.Helpers()[0], SIGKILL);
  ASSERT_TRUE(program.Shows("AVM Fehler", 2));
  program.Connect();
  Miss("0174444");
  EXPECT_TRUE(program.JournalHas("0174444"));
  EXPECT_EQ(program.Journal().find("0172222"), std::string::npos);
}

TEST_F(EndToEndTest, EverySignalClosesProgramAndHelperAndAllButOneWithTheCallThatRingsInTheJournal) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGKILL}) {
    const bool inOrder = signal != SIGKILL;
    ConnectedVorlix program(folder.Path(), router);
    const std::string number = "0171" + std::to_string(signal);
    Ring(number);
    ASSERT_TRUE(program.Shows(std::to_string(signal) + " an 77")) << program.Output();
    EXPECT_EQ(program.End(signal), inOrder ? 0 : -1);
    EXPECT_EQ(testing::Value(program.Journal(), HasSubstr("\t" + number + "\t77\t")), inOrder);
    EXPECT_TRUE(program.HelpersLeave());
    EXPECT_THAT(FileText(folder / "data/session.ini"), HasSubstr(inOrder ? "Run=0" : "Run=1"));
  }
}

TEST_F(EndToEndTest, ASecondCopyOnTheSameFolderEndsAtOnceAndARestartTakesOver) {
  ConnectedVorlix first(folder.Path(), router);
  RunningVorlix second(folder.Path());
  EXPECT_EQ(second.ExitCode(), 0);
  EXPECT_EQ(second.Output(), "");

  TemporaryFolder other;
  WriteSettings(other.Path(), router.Port());
  RunningVorlix beside(other.Path());
  EXPECT_TRUE(beside.Shows("AVM OK"));
  RunningVorlix restarted(folder.Path(), {"restart"});
  EXPECT_TRUE(restarted.Shows("AVM OK"));
  EXPECT_NE(first.ExitCode(), -1);
  EXPECT_FALSE(restarted.Helpers().empty());
}

TEST_F(EndToEndTest, AReadOnlyJournalIsReportedAndTheNextCallIsTriedAgain) {
  const std::string journal = folder / "data/Vorlixjournal.txt";
  // A folder in the file's place fails for every user, root included.
  std::filesystem::create_directories(journal);
  ConnectedVorlix program(folder.Path(), router);
  Miss("0171111");
  ASSERT_TRUE(program.Shows("Es ist ein Fehler aufgetreten!")) << program.Output();
  EXPECT_THAT(FileText(folder / "log/error.log"), HasSubstr("clsFiles_MakeFile"));
  std::filesystem::remove(journal);
  Miss("0172222");
  EXPECT_TRUE(program.JournalHas("0172222"));
}

TEST_F(EndToEndTest, HostileLinesNeitherStopTheProgramNorReachARecord) {
  ConnectedVorlix program(folder.Path(), router);
  std::string bytes = ";;;;\n\r\n\r\r\n";
  for (int i = 0; i < 256; ++i)
    bytes += static_cast<char>(i);
  bytes += "\r\n" + std::string(300000, 'x') + "\r\n28.08.10 10:22:07;RING;;;;\r\n28.08.10 10:22:07;RING\r\n";
  bytes += "28.08.10 10:22:07;RING;3;0171\t5;7\x1B[2J7;SIP0;\r\n28.08.10 10:22:08;DISCONNECT;3;\r\n";
  router.Send(bytes);
  EXPECT_EQ(JournalBehindLastCall(program), Incoming("0171 5", "7 [2J7"));
  EXPECT_EQ(program.End(), 0);
}

TEST_F(EndToEndTest, WithoutSettingsAndTerminalTheProgramSaysWhatToEditAndRunsOn) {
  TemporaryFolder fresh;
  RunningVorlix program(fresh.Path());
  EXPECT_TRUE(program.Shows("Vorlix.ini")) << program.Output();
  EXPECT_EQ(program.End(), 0);
  EXPECT_THAT(FileText(fresh / "data/Vorlix.ini"), HasSubstr("Version=v3.00"));
}

}  // namespace
}  // namespace vorlix
