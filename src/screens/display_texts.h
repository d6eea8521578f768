// The texts of the caller display, each made of one call or of the state of the sources.
#pragma once

#include <string>
#include <string_view>

#include "core/oDataCall.h"
#include "screens/LineStates.h"

namespace vorlix {

// "kein Anruf".
std::string NoCallText();
// The state of the sources in use, joined with "/": "CAPI2.0 Init OK/AVM Fehler"; empty when none is.
std::string StateText(const LineStates& states);
// Whether a line's text is a call's: neither one of the idle texts, nor several of them joined, nor about the driver.
bool IsCallInDisplay(std::string_view text);

// What is written behind a name: " (number)", where the settings want it.
std::string BracketText(const oDataCall& call, bool nameViewNumber);
// "Party (number) an Alias", with the address two blanks behind the party where the settings want it.
std::string LineTip(const oDataCall& call, bool nameViewNumber, bool nameViewAdress);

// The texts of a call's balloon. `alert` are the caller's dates that are due, in front of all.
void SetBaloonInfoCall(const oDataCall& call, const std::string& alert, std::string& title, std::string& text);

}  // namespace vorlix
