// One copy of the program for each data folder: the endpoint that its helper programs talk to is named after the
// folder, and whoever has it is the copy.
#pragma once

#include <string>

#include "data/Folders.h"
#include "platform/MessageLink.h"

namespace vorlix {

class SingleCopy {
 public:
  // What a copy does that finds another.
  enum class Manner {
    kGiveWay,       // it goes without a word: the system has started it
    kBringToFront,  // it asks the other to come forward: a person looks for it
    kTakeOver,      // it takes the other's place
  };
  enum class Outcome { kTaken, kOtherRuns, kFailed };

  // Both must outlive the object.
  SingleCopy(MessageLink& link, const Folders& folders) : link_(link), folders_(folders) {}

  // The receiver must outlive the link's endpoint.
  Outcome Take(MessageLink::Receiver& receiver, Manner manner);
  // What a failure tells the user.
  const std::string& Fault() const { return fault_; }
  // Another copy has taken this one's place.
  bool IsSuperseded() const { return !link_.OwnsEndpoint(); }

 private:
  MessageLink& link_;
  const Folders& folders_;
  std::string fault_;
};

}  // namespace vorlix
