// What the main program and its helper programs say to each other over the message link. A message's word is the id of
// the source that the helper serves, with a command in the low three bits.
#pragma once

#include <cstdint>

namespace vorlix {

enum HelperCommand : std::uint32_t {
  kHelperLine = 1,      // helper to main: a line from the network
  kHelperLifeSign = 2,  // both: handshake and life sign; the text is a window handle in decimal
  kHelperNewStart = 4,  // helper to main: start me anew
  kHelperEnd = 5,       // main to helper: end yourself
  kHelperConnected = 6,
  kHelperLost = 7,
};
inline constexpr std::uint32_t kHelperCommandMask = 0x07;

// A second start of the program to the first, which it gives way to: somebody is looking for it.
inline constexpr std::uint32_t kComeForward = 3;
// What the main program reads as the source.
inline constexpr std::uint32_t kHelperSourceMask = 0xF8;

// The helpers' sources.
inline constexpr std::uint32_t kHelperAVM = 16;
inline constexpr std::uint32_t kHelperNCID = 32;
inline constexpr std::uint32_t kHelperTAPI = 64;

}  // namespace vorlix
