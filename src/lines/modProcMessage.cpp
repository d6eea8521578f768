#include "lines/modProcMessage.h"

#include <algorithm>
#include <array>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

struct HelperFile {
  int source;
  const char* file;
  int eventUp, eventLost;  // -1: this source sends no events
};

static_assert(kSourceAVM == kHelperAVM && kSourceNCID == kHelperNCID && kSourceTAPI == kHelperTAPI);
constexpr std::array<HelperFile, 3> kHelperFiles{{
    {kSourceAVM, "SocketAVM", kEventRouterUp, kEventRouterLost},
    {kSourceNCID, "SocketNCID", kEventNCIDUp, kEventNCIDLost},
    {kSourceTAPI, "SocketTAPI", -1, -1},
}};

const HelperFile* FileOf(int source) {
  const auto* found = std::find_if(kHelperFiles.begin(), kHelperFiles.end(),
                                   [source](const HelperFile& helper) { return helper.source == source; });
  return found == kHelperFiles.end() ? nullptr : found;
}

}  // namespace

bool modProcMessage::Socket_Proc_Init(int source) {
  return Trapped(
      "modProcMessage.Socket_Proc_Init",
      [&] {
        const HelperFile* helper = FileOf(source);
        if (helper == nullptr) return false;
        const std::string path = programFolder_ + "/" + helper->file;
        missing_.erase(source);
        if (!ports_.files.Stat(path).IsFile()) {
          missing_.insert(source);
          return false;
        }
        auto& link = links_[source];
        link = std::make_unique<clsProcMessage>(ports_.link, ports_.processes);
        link->Init(ports_.link.Own(), source, false, path);
        link->StartRemoteFile();
        return true;
      },
      source);
}

void modProcMessage::Socket_Proc_Terminate() {
  Trapped("modProcMessage.Socket_Proc_Terminate", [&] {
    for (auto& [source, link] : links_) {
      link->Terminate();
      // Under our handle a restarted copy may already have a helper of its own.
      if (ports_.link.OwnsEndpoint()) link->SendMsgToProc(kHelperEnd, {});
      link->IsUp = false;
      // The ends of calls are not heard any more; what rings right now must not be missing in the journal.
      if (const auto receiver = receivers_.find(source); receiver != receivers_.end())
        receiver->second->ConnectionLost();
    }
    ports_.state.SocketConnected = false;
  });
}

bool modProcMessage::IsUp(int source) const {
  const auto link = links_.find(source);
  return link != links_.end() && link->second->IsUp;
}

void modProcMessage::TimerTick() {
  for (auto& [source, link] : links_) {
    if (!link->TimerTick()) continue;
    // One that cannot be started, or dies at once, says nothing of its line itself.
    if (!link->IsLost) {
      ErrorHandling().ErrorLogForceWrite("modProcMessage.TimerTick", {source}, 0, "the helper gives no life sign");
      Lost(*link);
    }
    // What is told of the loss may let the loop run, and the program end in it.
    if (link->IsInstalled()) link->StartRemoteFile();
  }
}

void modProcMessage::OnMessage(MessageLink::Peer peer, std::uint32_t word, const std::string& text) {
  Trapped("modProcMessage.ForwardMessages", [&] {
    if (word == kComeForward && comeForward_) return comeForward_();
    const auto link = links_.find(static_cast<int>(word & kHelperSourceMask));
    if (link == links_.end() || !link->second->IsInstalled()) return;
    const auto command = static_cast<HelperCommand>(word & kHelperCommandMask);
    if (command == kHelperLifeSign) {
      link->second->LifeSign(peer, text);
    } else {
      link->second->Heard(peer);
      Socket_Proc_Forwarder(*link->second, command, text);
    }
  });
}

void modProcMessage::OnPeerGone(MessageLink::Peer peer) {
  for (auto& [source, link] : links_) {
    // A dead helper cannot say that its connection is lost; the watchdog brings it back.
    if (link->IsInstalled() && link->HelperPeer() == peer && link->IsUp) Lost(*link);
  }
}

void modProcMessage::Socket_Proc_Forwarder(clsProcMessage& link, HelperCommand command, const std::string& text) {
  switch (command) {
    case kHelperLine:
      if (const auto receiver = receivers_.find(link.Source()); receiver != receivers_.end()) {
        receiver->second->GetMessage(text, false);
      }
      break;
    case kHelperNewStart:
      link.StartRemoteFile();
      break;
    case kHelperConnected:
      Connected(link);
      break;
    case kHelperLost:
      Lost(link);
      break;
    default:
      break;
  }
}

void modProcMessage::Connected(clsProcMessage& link) {
  link.IsUp = true;
  link.IsLost = false;
  const HelperFile* helper = FileOf(link.Source());
  if (helper != nullptr && helper->eventUp >= 0) ports_.events.Tell(link.Source(), helper->eventUp);
}

void modProcMessage::Lost(clsProcMessage& link) {
  link.IsUp = false;
  link.IsLost = true;
  if (const auto receiver = receivers_.find(link.Source()); receiver != receivers_.end()) {
    receiver->second->ConnectionLost();
  }
  const HelperFile* helper = FileOf(link.Source());
  if (helper != nullptr && helper->eventLost >= 0) ports_.events.Tell(link.Source(), helper->eventLost);
}

}  // namespace vorlix
