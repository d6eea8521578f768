// The built program with its real helper, against a router of the test's own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningVorlix.h"
#include "TestRouter.h"

namespace vorlix {
namespace {

using testing::HasSubstr;

class EndToEndTest : public testing::Test {
 protected:
  EndToEndTest() { RunningVorlix::WriteSettings(folder.Path(), router.Port()); }

  void Connect(RunningVorlix& program) {
    ASSERT_TRUE(router.WaitForClient());
    ASSERT_TRUE(program.Shows("AVM OK")) << program.Output();
  }

  TempFolder folder;
  TestRouter router;
};

TEST_F(EndToEndTest, EveryKindOfCallIsShownAndJournalled) {
  RunningVorlix program(folder.Path());
  Connect(program);
  for (const char* line : {
           "09.05.21 21:21:25;RING;0;012345678901;01234567;SIP2;",  // missed
           "09.05.21 21:21:27;DISCONNECT;0;0;",
           "17.06.20 10:28:29;RING;0;07191100952;10069;SIP0;",  // answered
           "17.06.20 10:28:43;CONNECT;0;11;07191100952;",
           "17.06.20 10:30:31;DISCONNECT;0;109;",
           "28.08.10 10:22:07;RING;0;;1234;ISDN;",  // withheld, while another rings
           "28.08.10 10:22:08;RING;1;04066969012;1234;ISDN;",
           "28.08.10 10:24:37;DISCONNECT;1;0;",
           "28.08.10 10:24:38;DISCONNECT;0;0;",
           "17.06.20 10:30:57;CALL;1;11;10069;100952;SIP0;",  // dialled without area code, not reached
           "17.06.20 10:31:00;DISCONNECT;1;0;",
           "17.06.20 10:32:16;CALL;1;11;10069;0171100952;SIP0;",  // dialled and answered
           "17.06.20 10:32:23;CONNECT;1;11;0171100952;",
           "17.06.20 10:37:34;DISCONNECT;1;312;",
       }) {
    ASSERT_TRUE(router.SendLine(line));
  }
  ASSERT_TRUE(program.Shows("Beendet     Mobilfunk 0171 100952, 0:05:12")) << program.Output();
  EXPECT_EQ(program.End(), 0);
  EXPECT_EQ(WithoutNow(program.Journal()),
            "<now>\t012345678901\t01234567\t0\t16\t1\t\t0\t0\r\n"
            "<now>\t07191100952\t10069\t0\t16\t1\t\t0\t109\r\n"
            "<now>\t04066969012\t1234\t0\t16\t1\t\t0\t0\r\n"
            "<now>\tUnbekannt\t1234\t0\t16\t1\t\t0\t0\r\n"
            "17.06.2020\t10:30:57\t030100952\t10069\t0\t16\t1\t\t1\t0\r\n"
            "17.06.2020\t10:32:16\t0171100952\t10069\t0\t16\t1\t\t1\t312\r\n");
  for (const char* shown :
       {"Anruf       012345678901 an 01234567", "Entgangen   012345678901", "Angenommen  Backnang 07191 100952",
        "Beendet     Backnang 07191 100952, 0:01:49", "Entgangen   Unbekannt", "Erfolglos   Berlin 030 100952",
        "Angenommen  Mobilfunk 0171 100952"}) {
    EXPECT_THAT(program.Output(), HasSubstr(shown));
  }
  EXPECT_EQ(FileText(folder.Path() + "/log/error.log"), "");
}

TEST_F(EndToEndTest, EveryRecordedSessionGivesItsJournal) {
  struct Row {
    const char* session;
    const char* journal;
  };
  const Row rows[] = {
      {"01_missed_then_answered.txt",
       "<now>\t012345678901\t01234567\t0\t16\t1\t\t0\t0\r\n<now>\t012345678901\t01234567\t0\t16\t1\t\t0\t2\r\n"},
      // The first call of this recording never ends.
      {"02_incoming_isdn_and_withheld.txt",
       "<now>\tUnbekannt\t1234\t0\t16\t1\t\t0\t0\r\n"
       "28.08.2010\t10:28:48\t04066969012\t1234\t0\t16\t1\t\t1\t0\r\n"},
      {"03_outgoing_retries_same_id.txt",
       "<now>\t07191100952\t10069\t0\t16\t1\t\t0\t109\r\n"
       "17.06.2020\t10:30:57\t030100952\t10069\t0\t16\t1\t\t1\t0\r\n"
       "17.06.2020\t10:31:08\t030100952\t10069\t0\t16\t1\t\t1\t0\r\n"
       "17.06.2020\t10:31:24\t030100952\t10069\t0\t16\t1\t\t1\t0\r\n"
       "17.06.2020\t10:31:54\t030100952\t10069\t0\t16\t1\t\t1\t0\r\n"
       "17.06.2020\t10:32:16\t030100952\t10069\t0\t16\t1\t\t1\t312\r\n"},
      {"04_own_number_calls_own_number.txt", "<now>\t07191100732\t10069\t0\t16\t1\t\t0\t6\r\n"},
      {"05_overlapping_isdn_sip.txt",
       "17.02.2008\t10:59:53\t030916142\t879136\t0\t16\t1\t\t1\t0\r\n"
       "<now>\t06990009136\t916142\t0\t16\t1\t\t0\t0\r\n"
       "17.02.2008\t11:01:46\t030916137\t879136\t0\t16\t1\t\t1\t13\r\n"
       "<now>\t06990009136\t916137\t0\t16\t1\t\t0\t13\r\n"},
      {"06_three_at_once_no_semicolon.txt",
       "13.04.2003\t09:10:13\t01231234567\t7654321\t0\t16\t1\t\t1\t800\r\n"
       "09.09.2006\t15:59:41\t01237654321\t1234567\t0\t16\t1\t\t1\t660\r\n"
       "<now>\t01713920012\t4271960\t0\t16\t1\t\t0\t660\r\n"},
      {"07_answered_201s.txt", "<now>\t017604069076\t23125099\t0\t16\t1\t\t0\t201\r\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.session);
    TempFolder own;
    RunningVorlix::WriteSettings(own.Path(), router.Port());
    RunningVorlix program(own.Path());
    Connect(program);
    router.Send(FileText(std::string(VORLIX_TEST_DATA) + "/router_sessions/" + row.session));
    router.SendLine("01.01.20 00:00:00;CALL;9;4;END;0999;SIP0;");
    router.SendLine("01.01.20 00:00:01;DISCONNECT;9;0;");
    ASSERT_TRUE(program.Shows("Erfolglos   0999")) << program.Output();
    const std::string journal = program.Journal();
    program.End();
    EXPECT_EQ(WithoutNow(journal), std::string(row.journal) + "01.01.2020\t00:00:00\t0999\tEND\t0\t16\t1\t\t1\t0\r\n");
  }
}

TEST_F(EndToEndTest, ARouterThatGoesAndComesBackIsFoundAgain) {
  RunningVorlix program(folder.Path());
  Connect(program);
  router.SendLine("09.05.21 21:21:25;RING;0;0171111;77;SIP2;");
  router.Send("09.05.21 21:21:26;RING;1;0172222");  // half a line
  ASSERT_TRUE(program.Shows("Anruf       Mobilfunk 0171 111"));
  router.StopListening();
  router.HangUp();
  ASSERT_TRUE(program.Shows("AVM Fehler"));
  EXPECT_TRUE(program.JournalHas("0171111"));  // its end can no longer be heard
  router.ListenAgain();
  ASSERT_TRUE(router.WaitForClient());
  ASSERT_TRUE(program.Shows("AVM OK", 2));
  router.SendLine("09.05.21 21:25:25;RING;0;0173333;77;SIP2;");
  router.SendLine("09.05.21 21:25:27;DISCONNECT;0;0;");
  EXPECT_TRUE(program.JournalHas("0173333"));
  EXPECT_EQ(program.Journal().find("0172222"), std::string::npos);
}

TEST_F(EndToEndTest, AKilledHelperIsBackAndNoLaterCallIsLost) {
  RunningVorlix program(folder.Path());
  Connect(program);
  const auto helpers = program.Helpers();
  ASSERT_EQ(helpers.size(), 1u);
  kill(helpers[0], SIGKILL);
  ASSERT_TRUE(program.Shows("AVM Fehler"));
  ASSERT_TRUE(router.WaitForClient());
  ASSERT_TRUE(program.Shows("AVM OK", 2));
  router.SendLine("09.05.21 21:25:25;RING;0;0173333;77;SIP2;");
  router.SendLine("09.05.21 21:25:27;DISCONNECT;0;0;");
  EXPECT_TRUE(program.JournalHas("0173333"));
}

TEST_F(EndToEndTest, EverySignalClosesTheProgramAndItsHelperInOrder) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    RunningVorlix program(folder.Path());
    Connect(program);
    EXPECT_EQ(program.End(signal), 0);
    EXPECT_TRUE(program.WaitFor([&] { return program.Helpers().empty(); })) << "the helper stays";
    EXPECT_THAT(FileText(folder.Path() + "/data/session.ini"), HasSubstr("Run=0"));
  }
}

TEST_F(EndToEndTest, ACallThatRingsWhileTheProgramClosesIsInTheJournal) {
  RunningVorlix program(folder.Path());
  Connect(program);
  router.SendLine("09.05.21 21:21:25;RING;0;0171111;77;SIP2;");
  ASSERT_TRUE(program.Shows("Anruf       Mobilfunk 0171 111"));
  EXPECT_EQ(program.End(), 0);
  EXPECT_THAT(program.Journal(), HasSubstr("\t0171111\t77\t"));
}

TEST_F(EndToEndTest, TheHelperOfAKilledProgramLeaves) {
  RunningVorlix program(folder.Path());
  Connect(program);
  program.Kill();
  EXPECT_TRUE(program.WaitFor([&] { return program.Helpers().empty(); }));
  EXPECT_THAT(FileText(folder.Path() + "/data/session.ini"), HasSubstr("Run=1"));
}

TEST_F(EndToEndTest, ASecondCopyOnTheSameFolderEndsAtOnceAndARestartTakesOver) {
  RunningVorlix first(folder.Path());
  Connect(first);
  int code = -1;
  RunningVorlix second(folder.Path());
  EXPECT_TRUE(second.EndsItself(code));
  EXPECT_EQ(code, 0);
  EXPECT_EQ(second.Output(), "");

  TempFolder other;
  RunningVorlix::WriteSettings(other.Path(), router.Port());
  RunningVorlix beside(other.Path());
  EXPECT_TRUE(beside.Shows("AVM OK"));
  RunningVorlix restarted(folder.Path(), {"restart"});
  EXPECT_TRUE(restarted.Shows("AVM OK"));
  EXPECT_TRUE(first.EndsItself(code));
  EXPECT_FALSE(restarted.Helpers().empty());
}

TEST_F(EndToEndTest, AReadOnlyJournalIsReportedAndTheNextCallIsTriedAgain) {
  // A folder in the file's place fails for every user, root included.
  std::filesystem::create_directories(folder.Path() + "/data/Vorlixjournal.txt");
  RunningVorlix program(folder.Path());
  Connect(program);
  router.SendLine("09.05.21 21:21:25;RING;0;0171111;77;SIP2;");
  router.SendLine("09.05.21 21:21:27;DISCONNECT;0;0;");
  ASSERT_TRUE(program.Shows("Es ist ein Fehler aufgetreten!")) << program.Output();
  EXPECT_THAT(FileText(folder.Path() + "/log/error.log"), HasSubstr("clsFiles_MakeFile"));
  std::filesystem::remove(folder.Path() + "/data/Vorlixjournal.txt");
  router.SendLine("09.05.21 21:22:25;RING;0;0172222;77;SIP2;");
  router.SendLine("09.05.21 21:22:27;DISCONNECT;0;0;");
  EXPECT_TRUE(program.JournalHas("0172222"));
}

TEST_F(EndToEndTest, HostileLinesNeitherStopTheProgramNorReachARecord) {
  RunningVorlix program(folder.Path());
  Connect(program);
  std::string bytes = ";;;;\n\r\n\r\r\n";
  for (int i = 0; i < 256; ++i) {
    bytes += static_cast<char>(i);
  }
  bytes += "\r\n" + std::string(300000, 'x') + "\r\n28.08.10 10:22:07;RING;;;;\r\n28.08.10 10:22:07;RING\r\n";
  bytes += "28.08.10 10:22:07;RING;3;0171\t5;7\x1B[2J7;SIP0;\r\n28.08.10 10:22:08;DISCONNECT;3;\r\n";
  router.Send(bytes);
  router.SendLine("17.06.20 10:30:57;CALL;1;11;10069;0999;SIP0;");
  router.SendLine("17.06.20 10:30:58;DISCONNECT;1;0;");
  ASSERT_TRUE(program.Shows("Erfolglos   0999")) << program.Output();
  const std::string journal = program.Journal();
  EXPECT_EQ(program.End(), 0);
  EXPECT_EQ(WithoutNow(journal),
            "<now>\t0171 5\t7 [2J7\t0\t16\t1\t\t0\t0\r\n"
            "17.06.2020\t10:30:57\t0999\t10069\t0\t16\t1\t\t1\t0\r\n");
}

TEST_F(EndToEndTest, WithoutSettingsAndTerminalTheProgramSaysWhatToEditAndRunsOn) {
  TempFolder fresh;
  RunningVorlix program(fresh.Path());
  EXPECT_TRUE(program.Shows("Vorlix.ini")) << program.Output();
  EXPECT_EQ(program.End(), 0);
  EXPECT_THAT(FileText(fresh.Path() + "/data/Vorlix.ini"), HasSubstr("Version=v3.00"));
}

}  // namespace
}  // namespace vorlix
