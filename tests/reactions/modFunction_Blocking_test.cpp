#include "reactions/modFunction_Blocking.h"

#include <set>

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"

namespace vorlix {
namespace {

// Schedules that are on and let the present moment through.
class OffHours : public Schedules {
 public:
  std::set<std::string, std::less<>> off;
  bool IsTimePeriodActiv(std::string_view name, bool fallback) override { return fallback && !off.contains(name); }
};

class BlockingTest : public testing::Test, protected DataRoom {
 protected:
  Blacklist list{{files, folders, messages, {}}};
  OffHours schedules;
  modFunction_Blocking blocking{list, schedules};
};

struct Row {
  const char* what;
  const char* number;
  bool noNumberRule;
  int kennung;
  int CIP;
  bool noNameRule;
  int nameMode;
  const char* off;  // period outside its time
  bool blocked;
  int function;
};

TEST_F(BlockingTest, TheFirstRuleWhoseConditionHoldsDecides) {
  list.Replace({{"", "0171", ""}, {"", "*nbekannt", ""}});
  for (const Row& row : {
           Row{"nothing set", "030", false, 0, 16, false, 0, "", false, 0},
           {"withheld", "Unbekannt", true, 0, 16, false, 0, "", true, 3},
           {"withheld, in any case", "UNBEKANNT 1", true, 0, 16, false, 0, "", true, 3},
           {"withheld, rule for speech, a fax", "Unbekannt", true, 1, 4, false, 0, "", true, 6},
           {"withheld, rule for speech, speech", "Unbekannt", true, 1, 1, false, 0, "", true, 3},
           {"withheld, rule for others, telephony", "Unbekannt", true, 2, 16, false, 0, "", true, 6},
           {"withheld, rule for others, a fax", "Unbekannt", true, 2, 4, false, 0, "", true, 3},
           {"withheld, a rule that is not offered", "Unbekannt", true, 3, 16, false, 0, "", true, 6},
           {"withheld outside the rule's time is not looked up", "Unbekannt", true, 0, 16, false, 0, "<BlockUnknown>",
            false, 0},
           {"no number at all is no withheld one", "", true, 0, 16, false, 0, "", false, 0},
           {"no number at all has no name", "", true, 0, 16, true, 0, "", true, 4},
           {"no name", "030", false, 0, 16, true, 0, "", true, 4},
           {"a name", "030", false, 0, 16, true, 1, "", false, 0},
           {"an entry that shows no name", "030", false, 0, 16, true, 2, "", true, 4},
           {"no name outside its time is not looked up", "0171", false, 0, 16, true, 0, "<BlockNoEntry>", false, 0},
           {"listed", "01715", false, 0, 16, false, 1, "", true, 6},
           {"listed, outside the list's time", "01715", false, 0, 16, false, 1, "<BlockBlackList>", false, 0},
       }) {
    schedules.off = {row.off};
    oDataCall call;
    call.DataNumber(row.number);
    call.MSN_BlockNoNumber = row.noNumberRule;
    call.MSN_BlockKennung = static_cast<std::int16_t>(row.kennung);
    call.CIP = static_cast<std::int16_t>(row.CIP);
    call.MSN_BlockNoName = row.noNameRule;
    call.NameMode = static_cast<std::int16_t>(row.nameMode);
    blocking.FuncBlocking_GetStatus(call);
    EXPECT_EQ(call.Blocked, row.blocked) << row.what;
    EXPECT_EQ(call.BlockFunction, row.function) << row.what;
  }
}

TEST_F(BlockingTest, AListOutsideItsTimeFreesACallThatTheBookRefused) {
  list.Replace({{"", "0171", ""}});
  schedules.off = {"<BlockBlackList>"};
  oDataCall call;
  call.DataNumber("0171");
  call.Blocked = true;
  call.BlockFunction = kRejectBook;
  blocking.FuncBlocking_GetStatus(call);
  EXPECT_FALSE(call.Blocked);
  EXPECT_EQ(call.BlockFunction, kRejectBook);
}

TEST_F(BlockingTest, EachReasonHasItsText) {
  EXPECT_EQ(blocking.FuncBlocking_GetDescription(0), "");
  EXPECT_EQ(blocking.FuncBlocking_GetDescription(6), "Abgewiesen durch Eintrag in Blackliste");
  EXPECT_EQ(blocking.FuncBlocking_GetDescription(99), "Abgewiesen");
  EXPECT_EQ(modFunction_Blocking::FuncBlocking_GetFunctionName(6), "Eintrag in Sperrliste");
}

}  // namespace
}  // namespace vorlix
