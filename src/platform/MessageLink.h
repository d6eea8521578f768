// Short messages between the processes of one user on one machine: the window messages of this system. A "window
// handle" is a decimal number that names an endpoint; a message is a 32-bit word and a single-byte text. A send is
// synchronous: it returns when the other side has dealt with the message, or is slow about it. A message that reaches a
// side which is itself inside Send() is acknowledged at once and delivered from the loop, so that two sides that send
// at the same moment never wait for each other. Only processes of the same user are heard or spoken to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorlix {

using WindowHandle = std::uint32_t;

// The handle that a text stands for, never 0 and below 2^31: so a data folder's path names its main program.
WindowHandle HandleForText(std::string_view text);

// How the opening of an endpoint went.
struct LinkOpening {
  enum class State { kFailed, kInUse, kOpen };
  State state = State::kFailed;
  std::string reason;  // of a failure: "open /run/user/1000/vorlix: Permission denied"
  explicit operator bool() const { return state == State::kOpen; }
};

class MessageLink {
 public:
  // At most this many characters of text are carried.
  static constexpr std::size_t kMostText = 255;

  // Names the connection that a message came over, for as long as it lasts.
  using Peer = std::uint64_t;

  class Receiver {
   public:
    virtual ~Receiver() = default;
    // The text is cut at its first zero byte. May call Send(); must not destroy the link.
    virtual void OnMessage(Peer peer, std::uint32_t word, const std::string& text) = 0;
    // The process behind that connection closed it or died.
    virtual void OnPeerGone(Peer) {}
  };

  virtual ~MessageLink() = default;  // gives the endpoint up

  // Opens the endpoint of that handle; in use when a living process has it. With `takeOver` the name is ours from here
  // on, and its former owner can see so by OwnsEndpoint().
  virtual LinkOpening Open(WindowHandle own, Receiver& receiver, bool takeOver = false) = 0;
  virtual WindowHandle Own() const = 0;
  // False once another process has the name. A name that is gone, as at the end of a login session, is still ours: the
  // link makes it again by itself.
  virtual bool OwnsEndpoint() const = 0;
  virtual void Close() = 0;

  // Text beyond kMostText characters is cut off. False when the message was not delivered: nobody of this user listens
  // there, or the connection broke before the message was read. A side that does not answer within two seconds has it
  // all the same, so it must not be sent again.
  virtual bool Send(WindowHandle target, std::uint32_t word, std::string_view text) = 0;
};

}  // namespace vorlix
