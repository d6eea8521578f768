// The questions of a first start: where the calls come from, the router's name, the own country and area code. Decides
// what is asked, in which order, and what the answers mean; how they are asked is the view's.
#pragma once

#include <optional>
#include <string>

namespace vorlix {

class FirstStartView {
 public:
  virtual ~FirstStartView() = default;
  // One question; an empty answer is the fallback. Nothing when nobody answers any more.
  virtual std::optional<std::string> Ask(const std::string& question, const std::string& fallback) = 0;
  virtual void Tell(const std::string& text) = 0;
};

// What the user has. Codes are without leading zeros.
struct FirstStartAnswers {
  bool CallMode_CAPI = false;
  bool CallMode_AVM = false;
  bool CallMode_NCID = false;
  std::string Host;
  std::string myVWL;
  std::string myVWO;
};

class FirstStart {
 public:
  explicit FirstStart(FirstStartView& view) : view_(view) {}

  // Asks until the answers can be used; nothing when the user leaves off. `routerHost` and `serverHost` are proposed.
  std::optional<FirstStartAnswers> Run(const std::string& routerHost, const std::string& serverHost);

 private:
  bool AskSource(FirstStartAnswers& answers);
  bool AskHost(FirstStartAnswers& answers, const std::string& routerHost, const std::string& serverHost);
  bool AskCode(const std::string& question, const std::string& fallback, std::string& code);

  FirstStartView& view_;
};

}  // namespace vorlix
