// Schedules and holidays: when a period is on, and which days are holidays.
#include "data/TimePeriods.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DataRoom.h"
#include "services/ansi.h"
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

TEST(TimeFrame, IncludesBothEndsAndCrossesMidnight) {
  using Row = std::tuple<const char*, const char*, const char*>;  // "+" in front of a time inside, "-" of one outside
  for (const auto& [from, to, times] :
       {Row{"08:00", "17:00", "+08:00:00 +12:00:00 +17:00:59 -07:59:59 -17:01:00 -00:00:00"},
        Row{"22:00", "06:00", "+22:00:00 +23:59:59 +00:00:00 +05:00:00 +06:00:00 -12:00:00 -21:59:59 -06:01:00"},
        Row{"08:00", "08:00", "+08:00:00 +08:00:59 -07:59:59 -08:01:00"}, Row{"8.00", "9:00:00", "+08:30:00 -10:00:00"},
        Row{"", "17:00", "-12:00:00"}, Row{"24:00", "25:00", "-00:00:00 -12:00:00"}}) {
    for (const std::string& time : Split(times, " "))
      EXPECT_EQ(IsTimeInFrame(from, to, CDateNew("1.1.26", time.substr(1))), time[0] == '+') << from << time;
  }
  EXPECT_FALSE(IsTimeInFrame("00:00", "23:59", DateTime()));
}

TEST_F(TimePeriodsTest, APeriodIsOnByDayTimeAndHoliday) {
  // In March 2026 the 23rd is a Monday, the 24th a holiday here, the 28th a Saturday.
  const std::pair<const char*, const char*> rows[] = {
      {"P;08:00;17:00;12345;10:00;12:00;67", "+23 08:00,+24 10:00,+28 12:00,-23 07:59,-24 09:00,-28 13:00"},
      {"P;00:00;00:00;12345;00:00;00:00;", "+23 00:00,+23 23:59,+24 12:00,-28 12:00"},
      {"P;00:00;00:00;2;08:00;09:00;", "+24 08:30,-24 10:00,-23 10:00"},
      {"P;22:00;06:00;1;00:00;00:00;", "+23 23:00,+23 05:00,-23 12:00,-26 23:00"},
      {"P;;;1234567;;;1234567;1", "-23 12:00,-24 12:00,-28 12:00"},
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
  std::uint8_t untouched = 1;
  for (const char* name : {"off", "torn", "x", "none", ""})
    EXPECT_TRUE(periods.IsTimePeriodActiv(name, true, untouched) && !periods.IsTimePeriodActiv(name, false)) << name;
  EXPECT_EQ(untouched, 1);
  std::string changed;
  for (const int before : {0, 1, 2, 3, 4, 5, 6, 7, 255}) {
    auto function = static_cast<std::uint8_t>(before);
    EXPECT_TRUE(periods.IsTimePeriodActiv("seven", false, function));
    changed += std::to_string(function) + " ";
  }
  EXPECT_EQ(changed, "0 7 8 9 10 5 6 7 255 ");
  EXPECT_TRUE(periods.IsTimePeriodActiv("on", false));
}

TEST_F(TimePeriodsTest, ShowsPeriodsUnderTheirNamesOfToday) {
  Items("!BlockAlle;08:00;17:00;1;00:00;00:00;7|<MailSend>;;;;;;;0|mine;00:00;00:00;1;9:00;10:00;7");
  const auto& all = periods.Periods();
  EXPECT_EQ(all[0].Name + "," + all[0].DisplayName, "<BlockAll>,Alle abweisen");
  EXPECT_EQ(all[1].DisplayName + "," + all[2].DisplayName, "E-Mail-Versand,mine");
  EXPECT_EQ(TimePeriod_GetTimes("<BlockAll>", all),
            std::string("Werktage (08:00-17:00) Wochenende/Feiertage (ganztägig)"_ansi));
  EXPECT_EQ(TimePeriod_GetTimes("<MailSend>", all), "Zeitplan nicht aktiv");
  EXPECT_EQ(TimePeriod_GetTimes("none", all), "kein Zeitplan");
  for (const auto& [name, found] : {std::pair{"none", 0}, {"mine", 1}, {"<MailSend>", 2}})
    EXPECT_EQ(TimePeriod_Found(name, all), found);
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
  for (const std::string easter : {"22.03.1818", "15.04.1900", "25.04.1943", "18.04.1954", "19.04.1981", "23.03.2008",
                                   "21.04.2019", "20.04.2025", "25.04.2038", "18.04.2049", "19.04.2076", "28.03.2100"})
    EXPECT_EQ(GetFormatedDateByDate(GetOstersonntag(std::stoi(easter.substr(6))), '.'), easter);
  for (int year = 1900; year <= 2100; ++year)
    EXPECT_EQ(GetOstersonntag(year).WeekDay() * 10 + GetViertenAdvent(year).WeekDay(), 77) << year;
  // Christmas Eve from Monday to Sunday.
  for (const std::string advent :
       {"23.12.2018", "22.12.2019", "21.12.2025", "20.12.2015", "19.12.2021", "18.12.2016", "24.12.2017"})
    EXPECT_EQ(GetFormatedDateByDate(GetViertenAdvent(std::stoi(advent.substr(6))), '.'), advent);
}

TEST_F(TimePeriodsTest, HolidaysComeFromRulesForTheYear) {
  const std::pair<const char*, const char*> rows[] = {
      // date, name, observed, source
      {"OS-2;Karfreitag;1", "03.04. Karfreitag 1 OS-2;Karfreitag;"},
      {"OS;Ostern", "05.04. Ostern 0 OS;Ostern;"},
      {"4A0;Vierter Advent;10", "20.12. Vierter Advent 1 4A0;Vierter Advent;"},
      {"25.12.;A;1;more", "25.12. A 1 25.12.;A;"},
      {" 1.5 ;B; 1", "01.05. B 0 1.5 ;B;"},
      {"3.10.;C;x1", "03.10. C 0 3.10.;C;"},
      {"OS+2147483647;D;1", " D 1 OS+2147483647;D;"},
      {"junk;F;1", " F 1 junk;F;"},
      {"", "  0 "},
  };
  clock.SetNow(DateTime::FromCivil(2026, 6, 1));
  for (const auto& [stored, expected] : rows) {
    HolidayRows("count=2\n02=" + std::string(stored) + "\n");
    ASSERT_EQ(holidays.Rows().size(), 2u);
    const Holiday& holiday = holidays.Rows()[1];
    EXPECT_EQ(holiday.Date + " " + holiday.Name + (holiday.Observed ? " 1 " : " 0 ") + holiday.Source, expected);
  }
  HolidayRows("count=2000000000\r\n99=4.7.;Z;1\r\n100=5.7.;past the end;1\r\n");
  EXPECT_TRUE(holidays.IsHoliday("04.07.") && !holidays.IsHoliday("05.07."));
  store.AddFile("/vorlix/data/holidays/holiday_4.9.ini", "[Feiertage]\r\ncount=1\r\n");
  for (const char* countryCode : {"", "4.9"}) {
    settings.General.myVWL = countryCode;
    holidays.LoadFeiertage();
    EXPECT_TRUE(holidays.Rows().empty()) << countryCode;
  }
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
  holidays.SaveFeiertage();
  EXPECT_EQ(store.Writes(), 1);
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
  using Row = std::tuple<const char*, int, int>;  // on 23 March 2026, a year without 29 February
  At("23 23:59");
  const auto isAlert = [this](const Row& row) {
    std::tie(std::ignore, settings.vCards.before, settings.vCards.after) = row;
    return fAlertDateCheck(std::get<0>(row), settings, clock);
  };
  for (const Row& row : {Row{"23.03.", 0, 0}, Row{"25.3.", 2, 0}, Row{"21.03.", 0, 2}})
    EXPECT_TRUE(isAlert(row)) << std::get<0>(row);
  for (const Row& row : {Row{"22.03.", 0, 0}, Row{"26.03.", 2, 99}, Row{"20.03.", 99, 2}, Row{"29.02.", 99, 99},
                         Row{"", 99, 99}, Row{"23.03", 99, 99}})
    EXPECT_FALSE(isAlert(row)) << std::get<0>(row);
}

}  // namespace
}  // namespace vorlix
