// The watched descriptors behind one: a toolkit's loop waits for Descriptor() alone, and lets Serve() call back whoever
// is ready, each once, with reading and writing told together.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "platform/Reactor.h"

namespace vorlix {

class EpollWatches {
 public:
  // Throws Fault when the system has no descriptor left.
  EpollWatches();
  ~EpollWatches();
  EpollWatches(const EpollWatches&) = delete;
  EpollWatches& operator=(const EpollWatches&) = delete;

  // The watch must not outlive this object.
  std::unique_ptr<Watch> Add(int descriptor, std::function<void(Reactor::Ready)> ready);

  // Readable while a watch is ready.
  int Descriptor() const { return set_; }
  // A watched descriptor is a plain file, which is ready at all times and cannot be waited for.
  bool HasAlwaysReady() const;
  // May be called from inside a callback; a watch is not called inside its own.
  void Serve();

 private:
  class Entry;
  class EpollWatch;

  void ServeOne(std::uint64_t key, std::uint32_t events);

  int set_;
  std::uint64_t lastKey_ = 0;
  std::map<std::uint64_t, std::shared_ptr<Entry>> entries_;
};

}  // namespace vorlix
