// All date and time texts of the program. Dates in files are day first with "." (28.08.2010), dates in logs year first
// with "/" (2010/08/28).
#pragma once

#include <string>
#include <string_view>

#include "services/DateTime.h"

namespace vorlix {

// The system's date separator: the first character behind the digits of a date in the user's locale; anything but "/",
// "." or "-" gives ".". Found once and kept. Data files use it, so a locale must not change under a journal: the
// locale "C" and a missing locale give ".".
char GetLimiter();

// dd, mm, yyyy joined by the limiter (the system's if it is 0). yearFirst: yyyy, mm, dd. noYear: dd, mm and a closing
// limiter. "No date" gives an empty text.
std::string GetFormatedDateByDate(const DateTime& date, char limiter = 0, bool yearFirst = false, bool noYear = false);

// The same for a text, which goes through CDateNew; an empty text means the day of `clock`.
std::string GetFormatedDateByString(std::string_view date, const CivilClock& clock, char limiter = 0,
                                    bool yearFirst = false, bool noYear = false);

// hh:mm:ss; "00:00:00" for "no date".
std::string GetFormatedTime(const DateTime& time);
std::string GetFormatedTimeNow(const CivilClock& clock);

// True if the text is a date, directly or after "." and "/" have been replaced by "-".
bool IsDateNew(std::string_view text);

// If the first or last character is not a digit, cuts everything up to the first digit, or behind the last digit.
std::string DateClean(std::string_view text);

// Day-first date and time texts to a value, or "no date". A two-digit year below 30 is of this century, others of the
// last; a text that begins with four digits is year first. The time may lack its seconds or be empty.
DateTime CDateNew(std::string_view date, std::string_view time);

// "yyyymm", by which journal archives are named and compared.
std::string YearMonth(int year, int month);

// "yyyy/mm/dd  hh:mm:ss  ", the beginning of every log line.
std::string LogDatePrefix(const DateTime& now);

}  // namespace vorlix
