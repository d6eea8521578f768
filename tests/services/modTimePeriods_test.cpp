#include "services/modTimePeriods.h"

#include <gtest/gtest.h>

#include "fakes/Arrows.h"
#include "fakes/FakeClock.h"

namespace vorlix {
namespace {

std::string Shown(const DateTime& value) {
  return value ? GetFormatedDateByDate(value, '.') + " " + GetFormatedTime(value) : "none";
}

TEST(DateTime, KnowsTheCalendar) {
  EXPECT_TRUE(DateTime::FromCivil(2024, 2, 29));
  EXPECT_FALSE(DateTime::FromCivil(2023, 2, 29) || DateTime::FromCivil(2024, 1, 1, 24) || DateTime().AddDays(1));
  EXPECT_EQ(DateTime::FromCivil(2026, 11, 21).WeekDay(), 6);
  EXPECT_EQ(DateTime::FromCivil(1899, 12, 30).AsNumber(), 0.0);
  EXPECT_EQ(DateTime::FromCivil(2000, 1, 1, 12).AsNumber(), 36526.5);
  EXPECT_EQ(Shown(DateTime::FromCivil(2023, 12, 31, 23, 59, 59).AddSeconds(1)), "01.01.2024 00:00:00");
  EXPECT_EQ(DateTime::FromCivil(1960, 1, 1, 6).DateOnly(), DateTime::FromCivil(1960, 1, 1));
}

TEST(DateTexts, ReadTheDatesOfRoutersAndJournals) {
  for (const auto& [given, expected] :
       Arrows({"28.08.10|10:21:37 -> 28.08.2010 10:21:37", "1.12.05|12:00:05 -> 01.12.2005 12:00:05",
               "28.08.2010|10.21.37 -> 28.08.2010 10:21:37", "28/08/2010|10:21 -> 28.08.2010 10:21:00",
               "2010-08-28| -> 28.08.2010 00:00:00", "Sa 28.08.2010| -> 28.08.2010 00:00:00",
               "28.08.2010.| -> 28.08.2010 00:00:00", "31.12.99| -> 31.12.1999 00:00:00",
               "31.12.29| -> 31.12.2029 00:00:00", "31.02.10|10:00:00 -> none", "28.08.10|25:00:00 -> none",
               "28.08.10|xx -> none", "28.08| -> none", "| -> none", "99999999.1.1| -> none"})) {
    const std::size_t bar = given.find('|');
    EXPECT_EQ(Shown(CDateNew(given.substr(0, bar), given.substr(bar + 1))), expected) << given;
  }
}

TEST(DateTexts, ShowDatesInEveryForm) {
  FakeClock clock;
  clock.SetNow(DateTime::FromCivil(2010, 8, 5, 9, 7, 3));
  EXPECT_EQ(GetFormatedDateByDate(clock.Now(), '/', true), "2010/08/05");
  EXPECT_EQ(GetFormatedDateByDate(clock.Now(), '.', false, true), "05.08.");
  EXPECT_EQ(GetFormatedDateByString("", clock, '-'), "05-08-2010");
  EXPECT_EQ(GetFormatedDateByString("1.2.10", clock, '.', true), "2010.02.01");
  EXPECT_EQ(LogDatePrefix(clock.Now()), "2010/08/05  09:07:03  ");
}

}  // namespace
}  // namespace vorlix
