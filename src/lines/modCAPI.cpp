#include "lines/modCAPI.h"

#include <algorithm>
#include <array>
#include <span>

namespace vorlix {
namespace {

struct Code {
  std::uint8_t value;
  std::string_view text;
};

constexpr std::array kTypes{Code{0x10, "00"}, Code{0x20, "0"}};

constexpr std::array kPlans{
    Code{0x0, "unknown"},           Code{0x1, "ISDN"},    Code{0x3, "data"},     Code{0x4, "telex"},
    Code{0x8, "national standard"}, Code{0x9, "private"}, Code{0xF, "extended"},
};

constexpr std::array kPresentations{
    Code{0x00, "presentation allowed"},
    Code{0x20, "presentation restricted"},
    Code{0x40, "not available due to interworking"},
};

constexpr std::array kScreenings{
    Code{0, "is user-provided unscreened (might be spoofed)"},
    Code{1, "is user-provided (verified and passed - not spoofed)"},
    Code{2, "is user-provided (verified but failed - spoofed number)"},
    Code{3, "is network-provided (not spoofed)"},
};

std::string_view TextOf(std::span<const Code> codes, int value) {
  const auto found = std::find_if(codes.begin(), codes.end(), [&](const Code& code) { return code.value == value; });
  return found == codes.end() ? std::string_view() : found->text;
}

}  // namespace

std::string_view Decode_CallingPartyNumType(std::uint8_t type) {
  return TextOf(kTypes, type & 0x70);
}

std::string_view Decode_CallingPartyNumPlan(std::uint8_t type) {
  return TextOf(kPlans, type & 0x0F);
}

std::string_view Decode_CallingPartyPresInd(std::uint8_t presentation) {
  return TextOf(kPresentations, presentation & 0x60);
}

std::string_view Decode_CallingPartyScrInd(std::uint8_t presentation) {
  return TextOf(kScreenings, presentation & 0x03);
}

}  // namespace vorlix
