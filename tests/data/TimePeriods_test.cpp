// Schedules and holidays: when a period is on, and which days are holidays.
#include "data/TimePeriods.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DataRoom.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

using Op = MemoryFileStore::Operation;

class TimePeriodsTest : public testing::Test, protected DataRoom {
 protected:
  static constexpr const char* kHolidayFile = "/vorlix/data/holidays/holiday_49.ini";

  void Items(const std::string& items) {
    settings.TimeControl.Item_.clear();
    settings.TimeControl.count = 0;
    for (const std::string& item : Split(items, "|"))
      settings.TimeControl.Item_[++settings.TimeControl.count] = item;
    periods.LoadTimeSettings();
  }
  void HolidayRows(const std::string& rows) {
    settings.General.myVWL = "49";
    store.AddFile(kHolidayFile, "[Feiertage]\r\n" + rows);
    holidays.LoadFeiertage();
  }
  // A day and time of March 2026, "23 22:00".
  void At(const std::string& moment) { clock.SetNow(CDateNew(moment.substr(0, 2) + ".03.2026", moment.substr(3))); }

  Settings settings;
  modSettings storeOfSettings{{ini, store, folders, clock, messages, {}}, settings};
  Holidays holidays{{ini, store, folders, settings, clock}};
  TimePeriods periods{{settings, storeOfSettings, ini, holidays, clock}};
};

TEST_F(TimePeriodsTest, APeriodIsOnByDayTimeAndHoliday) {
  // In March 2026 the 23rd is a Monday, the 24th a holiday here, the 28th a Saturday.
  const std::pair<const char*, const char*> rows[] = {
      {"P;08:00;17:00;12345;10:00;12:00;67",
       "+23 08:00,+23 17:00:59,+24 10:00,-23 07:59:59,-23 17:01,-24 09:00,-28 13:00"},
      {"P;00:00;00:00;12345;00:00;00:00;", "+23 00:00,+23 23:59,+24 12:00,-28 12:00"},
      {"P;00:00;00:00;2;08:00;09:00;", "+24 08:30,-24 10:00,-23 10:00"},
      {"P;22:00;06:00;1;00:00;00:00;", "+23 22:00,+23 00:00,+23 06:00,-23 12:00,-26 23:00"},
      {"P;;;1234567;;;1234567;1", "-23 12:00,-24 12:00,-28 12:00"},
      {"P;24:00;25:00;1;;;", "-23 00:00,-23 12:00"},
      {"P;08:00;08:00;54321;0:00;00:00;76", "+23 08:00,+29 20:00,-23 08:01"},
  };
  HolidayRows("count=1\r\n01=24.3.;Test;1\r\n");
  settings.TimeControl.FDays = true;
  for (const auto& [item, moments] : rows) {
    Items(item);
    for (const std::string& moment : Split(moments, ",")) {
      At(moment.substr(1));
      EXPECT_EQ(periods.IsTimePeriodActiv("P", moment[0] != '+'), moment[0] == '+') << item << " at " << moment;
    }
  }
  Items("P;00:00;00:00;12345;01:00;02:00;");
  settings.TimeControl.FDays = false;
  At("24 12:00");
  EXPECT_TRUE(periods.IsTimePeriodActiv("P", false));
}

TEST_F(TimePeriodsTest, OnlyAnActivePeriodDecidesAndMarksTheBlock) {
  Items("seven;00:00;00:00;1234567;;;| on ; 00:00 ;00:00; 1234567 ;;;;1;x|off;00:00;00:00;1234567;;;;0|torn;00:00||x");
  EXPECT_EQ(periods.Periods().size(), 5u);  // an empty item is none
  for (const char* name : {"off", "torn", "x", "none", ""}) {
    std::uint8_t untouched = 1;
    EXPECT_TRUE(periods.IsTimePeriodActiv(name, true, untouched) && !periods.IsTimePeriodActiv(name, false)) << name;
    EXPECT_EQ(untouched, 1);
  }
  for (const auto& [before, after] : {std::pair{0, 0}, {1, 7}, {4, 10}, {5, 5}, {255, 255}}) {
    auto function = static_cast<std::uint8_t>(before);
    EXPECT_TRUE(periods.IsTimePeriodActiv("seven", false, function));
    EXPECT_EQ(function, after);
  }
  EXPECT_TRUE(periods.IsTimePeriodActiv("on", false));
}

TEST_F(TimePeriodsTest, ShowsPeriodsUnderTheirNamesOfToday) {
  Items("!BlockAlle;08:00;17:00;1;00:00;00:00;7|<MailSend>;;;;;;;0|mine;00:00;00:00;1;9:00;10:00;7");
  std::string shown;
  for (const TimePeriod& period : periods.Periods())
    shown += period.Name + "," + period.DisplayName + " ";
  EXPECT_EQ(shown, "<BlockAll>,Alle abweisen <MailSend>,E-Mail-Versand mine,mine ");
}

TEST_F(TimePeriodsTest, SavingKeepsEveryPeriodAndForgesNone) {
  std::string text = "[TimeControl]\r\ncount=2000000000\r\nFDays=1\r\n";
  for (const int number : {1, 2, 70})
    text += "Item_" + std::to_string(number) + "=P" + std::to_string(number) + ";08:00;09:00;1;;;7\r\n";
  store.AddFile("/vorlix/data/Vorlix.ini", text);
  storeOfSettings.LoadSetting();
  periods.LoadTimeSettings();
  ASSERT_EQ(periods.Periods().size(), 3u);
  periods.Periods()[0].Name = "a;b\r\nItem_9=forged";
  periods.SaveTimeSettings();
  EXPECT_EQ(store.Count(Op::kOverwrite, "Vorlix.ini"), 1);
  storeOfSettings.LoadSetting();
  periods.LoadTimeSettings();
  ASSERT_EQ(periods.Periods().size(), 3u);
  EXPECT_EQ(periods.Periods()[0].Name, "a,b  Item_9=forged");
  EXPECT_EQ(settings.TimeControl.Item_[3], "P70;08:00;09:00;1;;;7;1");
  EXPECT_TRUE(settings.TimeControl.FDays);
}

TEST(MovableFeasts, FollowTheCalendar) {
  for (const std::string easter :
       {"22.03.1818", "25.04.1943", "18.04.1954", "19.04.1981", "23.03.2008", "18.04.2049", "28.03.2100"})
    EXPECT_EQ(GetFormatedDateByDate(GetOstersonntag(std::stoi(easter.substr(6))), '.'), easter);
  for (const std::string advent : {"23.12.2018", "18.12.2016", "24.12.2017"})  // Monday, Saturday, Sunday
    EXPECT_EQ(GetFormatedDateByDate(GetViertenAdvent(std::stoi(advent.substr(6))), '.'), advent);
}

TEST_F(TimePeriodsTest, HolidaysComeFromRulesForTheYear) {
  clock.SetNow(DateTime::FromCivil(2026, 6, 1));
  const std::pair<std::string, const char*> rows[] = {{"OS-2;Karfreitag;1", "03.04. Karfreitag 1"},
                                                      {"4A0;Vierter Advent;10", "20.12. Vierter Advent 1"},
                                                      {"25.12.;A;1;more", "25.12. A 1"},
                                                      {" 1.5 ;B; 1", "01.05. B 0"},
                                                      {"OS+2147483647;D;1", " D 1"},
                                                      {"junk;F;1", " F 1"},
                                                      {"", "  0"}};
  for (const auto& [stored, expected] : rows) {
    HolidayRows("count=2\n02=" + stored + "\n");
    ASSERT_EQ(holidays.Rows().size(), 2u);
    const Holiday& holiday = holidays.Rows()[1];
    EXPECT_EQ(holiday.Date + " " + holiday.Name + (holiday.Observed ? " 1" : " 0"), expected);
  }
  HolidayRows("count=2000000000\r\n98=3.7.;not observed;0\r\n99=4.7.;Z;1\r\n100=5.7.;past the end;1\r\n");
  EXPECT_TRUE(holidays.IsHoliday("04.07."));
  EXPECT_FALSE(holidays.IsHoliday("03.07.") || holidays.IsHoliday("05.07."));
  store.AddFile("/vorlix/data/holidays/holiday_4.9.ini", "[Feiertage]\r\ncount=1\r\n");
  settings.General.myVWL = "4.9";
  holidays.LoadFeiertage();
  EXPECT_TRUE(holidays.Rows().empty());
}

TEST_F(TimePeriodsTest, AChangedHolidayIsSavedWhereItCameFrom) {
  const std::string rest = "; mine\n[Other]\nx=1\n";
  HolidayRows("count=3\n01=1.1.;Neujahr;1\n03=OS+1;Ostermontag;0;note\n" + rest);
  holidays.SetObserved(0, true);
  holidays.SetObserved(7, true);
  holidays.SaveFeiertage();
  EXPECT_EQ(store.Writes(), 0);
  holidays.SetObserved(0, false);
  settings.General.myVWL = "43";
  holidays.SaveFeiertage();
  EXPECT_EQ(store.Content(kHolidayFile), "[Feiertage]\r\ncount=3\n01=1.1.;Neujahr;0\n03=OS+1;Ostermontag;0\n" + rest);
}

TEST_F(TimePeriodsTest, AShippedHolidayFileIsCopiedButNeverOverTheUsers) {
  store.AddFile("/program/base/holidays/holiday_49.ini", "[Feiertage]\r\ncount=1\r\n01=3.10.;Einheit;1\r\n");
  settings.General.myVWL = "49";
  store.Fail(Op::kCopy, 28, {}, 1);
  holidays.LoadFeiertage();
  EXPECT_THAT(ErrorLog(), testing::HasSubstr("holiday_49.ini"));
  holidays.LoadFeiertage();
  EXPECT_TRUE(holidays.IsHoliday("03.10."));
  HolidayRows("count=1\r\n01=4.10.;mine;1\r\n");
  EXPECT_TRUE(holidays.IsHoliday("04.10.") && !holidays.IsHoliday("03.10."));
}

TEST_F(TimePeriodsTest, AnAlertComesAroundTheDayOfEachYear) {
  At("23 23:59");  // of March 2026, a year without 29 February
  using Row = std::tuple<const char*, int, int, bool>;
  for (const auto& [date, before, after, isAlert] :
       {Row{"23.03.", 0, 0, true}, Row{"25.3.", 2, 0, true}, Row{"21.03.", 0, 2, true}, Row{"22.03.", 0, 0, false},
        Row{"26.03.", 2, 99, false}, Row{"20.03.", 99, 2, false}, Row{"29.02.", 99, 99, false},
        Row{"", 99, 99, false}}) {
    settings.vCards.before = before;
    settings.vCards.after = after;
    EXPECT_EQ(fAlertDateCheck(date, settings, clock), isAlert) << date;
  }
}

}  // namespace
}  // namespace vorlix
