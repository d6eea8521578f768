// The messages of CAPI 2.0 as bytes: what is sent, byte by byte, and what may be read of the ones that come. Their
// inner lengths cannot be trusted, so everything is read through CapiReader, which stays inside the message.
//
//   0 length (16 bits)  2 application (16)  4 command (8)  5 subcommand (8)  6 message number (16)  8 body
//
// Numbers are little endian. A structure in a body is its length in one byte and its bytes; a length of 0xFF stands
// for the 16-bit length behind it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vorlix {

enum CapiCommand : std::uint8_t {
  kCapiAlert = 1,
  kCapiConnect = 2,
  kCapiConnectActive = 3,
  kCapiDisconnect = 4,
  kCapiListen = 5,
  kCapiInfo = 8,
};

enum CapiSubcommand : std::uint8_t { kCapiRequest = 0x80, kCapiConf = 0x81, kCapiInd = 0x82, kCapiResp = 0x83 };

struct CapiHeader {
  std::uint16_t application = 0;
  std::uint8_t command = 0;
  std::uint8_t subcommand = 0;
  std::uint16_t number = 0;
};

// A message as it came; the bytes belong to somebody else.
struct CapiMessage {
  CapiHeader header;
  std::string_view body;  // never longer than the message says
};

// Nothing where there is not even a header.
std::optional<CapiMessage> ReadCapiMessage(std::string_view bytes);

// Takes numbers and structures from the front of some bytes. What is not there reads as 0, and as an empty structure.
class CapiReader {
 public:
  explicit CapiReader(std::string_view bytes) : rest_(bytes) {}

  std::uint8_t Byte();
  std::uint16_t Word();
  std::uint32_t Long();
  // As much of it as there is.
  std::string_view Structure();
  std::string_view Rest() const { return rest_; }

 private:
  std::string_view rest_;
};

// A new call. The structures are kept as they came: called number, calling number and more.
struct ConnectIndication {
  // Of the structures nothing else is looked at.
  static constexpr std::size_t kMostStructures = 241;

  std::int32_t PLCI = 0;
  std::int16_t CIP = 0;
  std::string structures;
};
// Nothing where the body ends before its PLCI.
std::optional<ConnectIndication> ReadConnectIndication(std::string_view body);
// The PLCI at the start of every other body; nothing where it ends before.
std::optional<std::int32_t> ReadPLCI(std::string_view body);

struct ListenConfirmation {
  std::uint32_t controller = 0;
  std::uint16_t info = 0;  // 0: accepted
};
// Nothing where the body is too short.
std::optional<ListenConfirmation> ReadListenConfirmation(std::string_view body);

// The two ways of answering a call.
inline constexpr std::uint16_t kCapiAccept = 0;
inline constexpr std::uint16_t kCapiIgnore = 1;

std::string ListenRequest(std::uint16_t application, std::uint16_t number, std::uint32_t controller,
                          std::uint32_t infoMask, std::uint32_t CIPMask);
std::string AlertRequest(std::uint16_t application, std::uint16_t number, std::int32_t PLCI);
// The message number is 0, never that of the indication.
std::string ConnectResponse(std::uint16_t application, std::int32_t PLCI, std::uint16_t reject);
std::string DisconnectRequest(std::uint16_t application, std::uint16_t number, std::int32_t PLCI);
// The answer to an indication that needs nothing but its PLCI.
std::string PlainResponse(std::uint16_t application, const CapiHeader& indication, std::int32_t PLCI);

// What a profile tells of a controller; the numbers are the driver's own.
struct ControllerProfile {
  explicit ControllerProfile(std::string_view bytes);
  std::uint16_t controllers = 0;
  std::uint16_t channels = 0;
  std::uint32_t options = 0;
  std::array<std::uint32_t, 3> protocols{};     // B1, B2, B3
  std::array<std::uint32_t, 6> reserved{};      // Register_I1 to I6
  std::array<std::uint32_t, 5> manufacturer{};  // Register_M1 to M5
};

}  // namespace vorlix
