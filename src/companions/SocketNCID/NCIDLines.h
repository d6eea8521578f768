// Which lines of an NCID server are calls, and the form in which a call is handed over. A server greets, replays its
// log, counts rings and sends texts on the same connection: none of that may ring.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

// What the main program gets of one line of the server: nothing, or a call. A call that the server itself hung up comes
// between two ends (lines without "*"): the first is for a call that still rings, the second for this one.
//
// A call is handed over as "CID: *DATE*...*TIME*...*LINE*...*NMBR*...*MESG*...*NAME*...*", short enough for one
// message, in Windows-1252, and without the stars in front of a value. Servers write a word in place of a withheld
// number; it is handed over as an empty one.
std::vector<std::string> NCIDLinesToHandOver(std::string_view line);

}  // namespace vorlix
