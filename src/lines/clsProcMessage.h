// The link to one helper program: starts it, talks to it, and tells when it has given no life sign for ten seconds. The
// helper holds the network connection, so a blocking or crashing socket layer stays out of this program.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/HelperProtocol.h"
#include "platform/MessageLink.h"
#include "platform/Processes.h"

namespace vorlix {

class clsProcMessage {
 public:
  static constexpr std::int16_t kWatchdogTicks = 10;

  // All must outlive the object.
  clsProcMessage(MessageLink& link, Processes& processes) : link_(link), processes_(processes) {}

  void Init(WindowHandle ownWindow, int source, bool debug, const std::string& path);
  // Stops watching; the target stays known, so that the helper can still be told to end.
  void Terminate();
  bool SendMsgToProc(HelperCommand command, std::string_view text);
  // Starts the helper. The first of several failures in a row goes to the error log.
  bool StartRemoteFile();
  // Once a second; true when the helper is to be started again.
  bool TimerTick();

  // The helper has sent something: in the middle of a long burst it has no time for life signs.
  void Heard(MessageLink::Peer peer) {
    if (peer == peer_) tickCounter_ = 0;
  }
  // A life sign of the helper with its handle in decimal; anything else is ignored. It is answered with our own handle.
  void LifeSign(MessageLink::Peer peer, const std::string& handle);

  int Source() const { return source_; }
  bool IsInstalled() const { return installed_; }
  // The connection that the last life sign came over; 0 before the first.
  MessageLink::Peer HelperPeer() const { return peer_; }

  // What the helper said last about its connection; neither before its first word.
  bool IsUp = false;
  bool IsLost = false;

 private:
  MessageLink& link_;
  Processes& processes_;
  WindowHandle target_ = 0;
  WindowHandle ownWindow_ = 0;
  int source_ = 0;
  std::string path_;
  bool debug_ = false;
  bool installed_ = false;
  bool startFailed_ = false;
  std::int16_t tickCounter_ = 0;
  MessageLink::Peer peer_ = 0;
};

}  // namespace vorlix
