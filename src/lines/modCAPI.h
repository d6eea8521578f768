// The octets in front of a caller's number, in words. Only the kind of number changes what becomes of a call; the
// other texts are for whoever reads the log.
#pragma once

#include <cstdint>
#include <string_view>

namespace vorlix {

// What is dialled in front of a number of that kind: "00", "0" or nothing. Takes the first octet.
std::string_view Decode_CallingPartyNumType(std::uint8_t type);
// Takes the first octet.
std::string_view Decode_CallingPartyNumPlan(std::uint8_t type);
// Both take the second octet, the presentation.
std::string_view Decode_CallingPartyPresInd(std::uint8_t presentation);
std::string_view Decode_CallingPartyScrInd(std::uint8_t presentation);

}  // namespace vorlix
