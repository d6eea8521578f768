#include "lines/capi_messages.h"

#include <algorithm>

namespace vorlix {
namespace {

constexpr std::size_t kHeaderLength = 8;
constexpr std::size_t kPLCILength = 4;

// A message under construction: the header says how long it is, and what is not set is zero.
class CapiWriter {
 public:
  CapiWriter(std::size_t length, const CapiHeader& header) : bytes_(length, '\0') {
    Put(0, 2, static_cast<std::uint32_t>(length));
    Put(2, 2, header.application);
    Put(4, 1, header.command);
    Put(5, 1, header.subcommand);
    Put(6, 2, header.number);
  }
  CapiWriter& Put(std::size_t offset, std::size_t width, std::uint32_t value) {
    for (std::size_t i = 0; i < width; ++i)
      bytes_.at(offset + i) = static_cast<char>(value >> (8 * i) & 0xFF);
    return *this;
  }
  std::string Take() { return std::move(bytes_); }

 private:
  std::string bytes_;
};

std::string WithPLCI(std::size_t length, const CapiHeader& header, std::int32_t PLCI) {
  return CapiWriter(length, header).Put(8, 4, static_cast<std::uint32_t>(PLCI)).Take();
}

}  // namespace

std::optional<CapiMessage> ReadCapiMessage(std::string_view bytes) {
  if (bytes.size() < kHeaderLength) return std::nullopt;
  CapiReader reader(bytes);
  const std::size_t length = reader.Word();
  if (length < kHeaderLength) return std::nullopt;
  CapiMessage message;
  message.header.application = reader.Word();
  message.header.command = reader.Byte();
  message.header.subcommand = reader.Byte();
  message.header.number = reader.Word();
  message.body = reader.Rest().substr(0, length - kHeaderLength);
  return message;
}

std::uint8_t CapiReader::Byte() {
  if (rest_.empty()) return 0;
  const auto byte = static_cast<std::uint8_t>(rest_.front());
  rest_.remove_prefix(1);
  return byte;
}

std::uint16_t CapiReader::Word() {
  const unsigned low = Byte();
  return static_cast<std::uint16_t>(low | static_cast<unsigned>(Byte()) << 8);
}

std::uint32_t CapiReader::Long() {
  const std::uint32_t low = Word();
  return low | static_cast<std::uint32_t>(Word()) << 16;
}

std::string_view CapiReader::Structure() {
  std::size_t length = Byte();
  if (length == 0xFF) length = Word();
  const std::string_view structure = rest_.substr(0, length);
  rest_.remove_prefix(structure.size());
  return structure;
}

std::optional<ConnectIndication> ReadConnectIndication(std::string_view body) {
  const auto PLCI = ReadPLCI(body);
  if (!PLCI) return std::nullopt;
  CapiReader reader(body.substr(kPLCILength));
  const auto CIP = static_cast<std::int16_t>(reader.Word());
  return ConnectIndication{*PLCI, CIP, std::string(reader.Rest().substr(0, ConnectIndication::kMostStructures))};
}

std::optional<std::int32_t> ReadPLCI(std::string_view body) {
  if (body.size() < kPLCILength) return std::nullopt;
  return static_cast<std::int32_t>(CapiReader(body).Long());
}

std::optional<ListenConfirmation> ReadListenConfirmation(std::string_view body) {
  if (body.size() < 6) return std::nullopt;
  CapiReader reader(body);
  const std::uint32_t controller = reader.Long();
  return ListenConfirmation{controller, reader.Word()};
}

std::string ListenRequest(std::uint16_t application, std::uint16_t number, std::uint32_t controller,
                          std::uint32_t infoMask, std::uint32_t CIPMask) {
  return CapiWriter(26, {application, kCapiListen, kCapiRequest, number})
      .Put(8, 4, controller)
      .Put(12, 4, infoMask)
      .Put(16, 4, CIPMask)
      .Take();
}

// Longer than its one empty structure needs; drivers take the rest for nothing.
std::string AlertRequest(std::uint16_t application, std::uint16_t number, std::int32_t PLCI) {
  return WithPLCI(17, {application, kCapiAlert, kCapiRequest, number}, PLCI);
}

std::string ConnectResponse(std::uint16_t application, std::int32_t PLCI, std::uint16_t reject) {
  return CapiWriter(27, {application, kCapiConnect, kCapiResp, 0})
      .Put(8, 4, static_cast<std::uint32_t>(PLCI))
      .Put(12, 2, reject)
      .Take();
}

std::string DisconnectRequest(std::uint16_t application, std::uint16_t number, std::int32_t PLCI) {
  return WithPLCI(13, {application, kCapiDisconnect, kCapiRequest, number}, PLCI);
}

std::string PlainResponse(std::uint16_t application, const CapiHeader& indication, std::int32_t PLCI) {
  return WithPLCI(12, {application, indication.command, kCapiResp, indication.number}, PLCI);
}

ControllerProfile::ControllerProfile(std::string_view bytes) {
  CapiReader reader(bytes);
  controllers = reader.Word();
  channels = reader.Word();
  options = reader.Long();
  const auto readLong = [&] { return reader.Long(); };
  std::generate(protocols.begin(), protocols.end(), readLong);
  std::generate(reserved.begin(), reserved.end(), readLong);
  std::generate(manufacturer.begin(), manufacturer.end(), readLong);
}

}  // namespace vorlix
