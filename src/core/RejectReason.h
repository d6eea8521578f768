// Why a call was refused, as journals and book entries keep it.
#pragma once

#include <cstdint>

namespace vorlix {

enum RejectReason : std::uint8_t {
  kRejectNone = 0,
  kRejectAll = 1,
  kRejectBook = 2,
  kRejectNoNumber = 3,
  kRejectNoName = 4,
  kRejectUser = 5,
  kRejectBlacklist = 6,
  kRejectTelecontrol = 11,
};

}  // namespace vorlix
