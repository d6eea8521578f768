// How a call is named on the screen: the party, the own number, the length of the conversation.
#pragma once

#include <cstdint>
#include <string>

#include "core/oDataCall.h"

namespace vorlix {

// The number with its place, or bare where nothing is known of it.
const std::string& NumberView(const oDataCall& call);

// The caller, or the number dialled, as the user knows it: "Name (number with place)", or the number alone.
std::string PartyOf(const oDataCall& call);

// The own number with its alias, if it has one of its own: "Alias (number)".
std::string OwnNumberOf(const oDataCall& call);

// h:mm:ss.
std::string PeriodText(std::int32_t seconds);

}  // namespace vorlix
