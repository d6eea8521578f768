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
  Blacklist list{{files, folders, messages}};
  OffHours schedules;
  modFunction_Blocking blocking{list, schedules};
};

TEST_F(BlockingTest, TheFirstRuleWhoseConditionHoldsDecides) {
  list.Replace({{"", "0171", ""}, {"", "*nbekannt", ""}});
  struct Row {
    const char* what;
    const char* number;
    int kennung;  // of the rule for calls without a number; -1: there is none
    std::int16_t CIP;
    int nameMode;     // the call's, under the rule for calls without a name; -1: there is none
    const char* off;  // period outside its time
    int reason;       // 0: not blocked
  };
  for (const Row& row : {
           Row{"nothing set", "030", -1, 16, -1, "", 0},
           {"withheld", "Unbekannt", 0, 16, -1, "", 3},
           {"withheld, in any case", "UNBEKANNT 1", 0, 16, -1, "", 3},
           {"withheld, rule for speech, a fax", "Unbekannt", 1, 4, -1, "", 6},
           {"withheld, rule for speech, speech", "Unbekannt", 1, 1, -1, "", 3},
           {"withheld, rule for others, telephony", "Unbekannt", 2, 16, -1, "", 6},
           {"withheld, rule for others, a fax", "Unbekannt", 2, 4, -1, "", 3},
           {"withheld, a rule that is not offered", "Unbekannt", 3, 16, -1, "", 6},
           {"withheld outside the rule's time is not looked up", "Unbekannt", 0, 16, -1, "<BlockUnknown>", 0},
           {"no number at all is no withheld one", "", 0, 16, -1, "", 0},
           {"no number at all has no name", "", 0, 16, 0, "", 4},
           {"no name", "030", -1, 16, 0, "", 4},
           {"withheld is not without a name", "Unbekannt", -1, 16, 0, "", 6},
           {"a name", "030", -1, 16, 1, "", 0},
           {"an entry that shows no name", "030", -1, 16, 2, "", 4},
           {"no name outside its time is not looked up", "0171", -1, 16, 0, "<BlockNoEntry>", 0},
           {"listed", "01715", -1, 16, -1, "", 6},
           {"listed, outside the list's time", "01715", -1, 16, -1, "<BlockBlackList>", 0},
       }) {
    schedules.off = {row.off};
    oDataCall call;
    call.DataNumber(row.number);
    call.CIP = row.CIP;
    call.MSN_BlockNoNumber = row.kennung >= 0;
    call.MSN_BlockKennung = static_cast<std::int16_t>(row.kennung);
    call.MSN_BlockNoName = row.nameMode >= 0;
    call.NameMode = static_cast<std::int16_t>(row.nameMode);
    blocking.FuncBlocking_GetStatus(call);
    EXPECT_EQ(call.BlockFunction, row.reason) << row.what;
    EXPECT_EQ(call.Blocked, row.reason != 0) << row.what;
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
  EXPECT_EQ(blocking.FuncBlocking_GetDescription(6), "Abgewiesen durch Eintrag in Blackliste");
}

}  // namespace
}  // namespace vorlix
