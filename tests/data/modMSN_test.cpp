// The table of own numbers: what stored rows of all ages mean, and what is written back.
#include "data/modMSN.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DataRoom.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Op = MemoryFileStore::Operation;

constexpr const char* kVersion = "[Vorlix-Version]\r\nVersion=v3.00\r\n";

class modMSNTest : public testing::Test, protected DataRoom {
 protected:
  void Read(const std::string& rows, const std::string& head = kVersion) {
    store.AddFile("/vorlix/data/Vorlix.ini", head + rows);
    module.MSNRead();
  }
  std::string File() const { return store.Content("/vorlix/data/Vorlix.ini"); }
  std::shared_ptr<oDataMSN> Row(const std::string& key) { return module.Table().ItemByKeyAs<oDataMSN>(key); }
  // Number, alias, colour, mail; block fields; functions Display, LogJournal, LogBook, Prog, Sound; hot key.
  static std::string Shown(const oDataMSN& row) {
    std::ostringstream text;
    text << row.MSN << "," << row.Alias << "," << row.color << "," << row.MailAdds << " "
         << row.BlockByMSN_b_BlockNoNumber << row.BlockByMSN_i_Kennung << row.BlockByMSN_b_BlockNoName
         << row.BlockByMSN_b_BlockMainMenu << " " << row.FunctionsByMSN_b_Display << row.FunctionsByMSN_b_LogJournal
         << row.FunctionsByMSN_b_LogBook << row.FunctionsByMSN_b_Prog << row.FunctionsByMSN_b_Sound << " "
         << row.FunctionsByMSN_i_HotKeyID;
    return text.str();
  }

  Settings settings;
  std::vector<std::string> ties;
  modMSN module{{ini, settings, blocks,
                 [this](int row, const std::string& msn) { ties.push_back(std::to_string(row) + " " + msn); }}};
};

TEST_F(modMSNTest, ReadsRowsOfEveryAge) {
  const std::pair<std::string, std::string> rows[] = {
      {"", "all,,0, 0000 11111 0"},
      {"0=;;0;a@b;1|2|1|3;0;0;0;0;0;0", "all,,0,a@b 1213 00000 0"},
      {"0=7;Haus;255;a@b|c@d;0|1|1|2;1;0;0;1;3;1", "7,Haus,255,a@b|c@d 0112 10101 3"},
      {"0=7;Haus;;;|||;0;1;1;0;2", "7,Haus,0, 0000 01110 2"},  // one switch for journal and book
      {"0=7;Haus;0;;|||;0;0", "7,Haus,0, 0000 11111 0"},       // before there were switches
      {"0=7", "7,,0, 0000 11111 0"},
      {"0=7;x;y;;-1|99999|z|q;-1;x;;1;-99999;2", "7,x,0, 13276700 10101 -32768"},
      {"0=7;;;;1||;1;1;1;1;0;0", "7,,0, 0000 11011 0"},  // too short for a block string
      {"0=7;" + std::string(1000000, 'x') + ";5", "7," + std::string(2045, 'x') + ",0, 0000 11111 0"},
  };
  for (const auto& [stored, expected] : rows) {
    Read("[MSN]\r\n" + stored + "\r\n");
    ASSERT_EQ(module.Table().Count(), 1u) << stored.substr(0, 80);
    EXPECT_EQ(Shown(static_cast<oDataMSN&>(*module.Table().GetItemByIndex(1))), expected);
  }
}

TEST_F(modMSNTest, GapsDefaultsAndTwinsAreNoRowsAndHotKeysAreTied) {
  Read(
      "[MSN]\n0=;;0;;|||;0;0;0;0;0;0\n3=;;0;;|||;1;1;1;1;0;0\n7=22;;;;;1;1;1;1;2;1\n8=22;twin;;;;1;1;1;1;3;1\n"
      "10=44;;;;;1;1;1;1;-1;1\n64=55;;;;;1;1;1;1;6;1\n65=66\n");
  EXPECT_THAT(ties, ElementsAre("1 22", "5 55"));
  EXPECT_EQ(store.Writes(), 0);
  settings.General.CopyOption = 2;
  module.MSNWrite();
  EXPECT_EQ(File(), kVersion + std::string("[MSN]\r\n0=;;0;;0|0|0|0;0;0;0;0;0;0\r\n1=22;;0;;0|0|0|0;1;1;1;1;2;1\r\n"
                                           "2=44;;0;;0|0|0|0;1;1;1;1;-1;1\r\n3=55;;0;;0|0|0|0;1;1;1;1;6;1\r\n"));
  settings.General.CopyOption = 1;
  module.MSNWrite();
  EXPECT_THAT(File(), HasSubstr("1=22;;0;;0|0|0|0;1;1;1;1;0;1\r\n"));
}

TEST_F(modMSNTest, AnUnknownNumberRunsEverythingAndAllIsNoNumber) {
  Read("[MSN]\r\n0=;;0;;|||;0;0;0;0;0;0\r\n1=7;;;;;1;0;0;1;0;1\r\n");
  for (const auto& [msn, expected] : {std::pair("7", "0101010"), {"8", "0111110"}, {"all", "0111110"}}) {
    std::string shown;
    for (int function = -1; function <= 5; ++function)
      shown += module.IsMSNFunctionActiv(msn, function) ? "1" : "0";
    EXPECT_EQ(shown, expected) << msn;
  }
  EXPECT_TRUE(module.IsOwnNumber("7") && !module.IsOwnNumber("all") && !module.IsOwnNumber(""));
}

TEST_F(modMSNTest, ASectionOfAnOldVersionIsRewrittenAtOnceWithItsHotKeys) {
  const std::string rows = "[MSN]\r\n0=\r\n8=7;Haus;5;;|||;1;0;1;1;4\r\n9=8\r\n[General]\r\nCopyOption=2\r\n";
  for (const std::string version : {"v2.09", "", "what", "V2.10"}) {
    const bool isOld = version != "V2.10";
    Read(rows, "[Vorlix-Version]\r\nVersion=" + version + "\r\n");
    EXPECT_EQ(File().find("1=7;Haus;5;;0|0|0|0;1;0;1;1;4;0\r\n") != std::string::npos, isOld) << version;
    EXPECT_EQ(module.Table().Count(), isOld ? 2u : 3u);
  }
  blocks.SettingsWriteBlocked = true;
  Read(rows, {});
  module.MSNWrite();
  EXPECT_EQ(store.Count(Op::kOverwrite), 3);
}

TEST_F(modMSNTest, ATextFromTheProgramForgesNoField) {
  Read("[MSN]\r\n1=7;;5;;|||;1;0;0;0;0;0\r\n");
  Row("7")->Alias = "a;b|c\r\n9=8;forged";
  Row("7")->MailAdds = "a@b;c@d\n";
  module.MSNWrite();
  module.MSNRead();
  EXPECT_EQ(module.Table().Count(), 2u);
  EXPECT_EQ(Shown(*Row("7")), "7,a,b|c  9=8,forged,5,a@b|c@d  0000 10000 0");
}

}  // namespace
}  // namespace vorlix
