// What a source delivered, as it came, for whoever looks for a fault of the line.
#pragma once

#include <string>
#include <string_view>

#include "services/DateTime.h"
#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {

// Appends "date time|text" to a log of that size; what could end the line becomes a blank.
inline void LogRaw(LogStore& logs, const CivilClock& clock, std::string_view file, std::string_view text,
                   int maximumKB) {
  const DateTime now = clock.Now();
  logs.FileWrite_Log(file, GetFormatedDateByDate(now) + " " + GetFormatedTime(now) + "|" + WithoutControls(text),
                     maximumKB);
}

}  // namespace vorlix
