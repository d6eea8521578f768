// The questions for the own area code as a window of two pages. It opens by itself, so it does not take the keyboard
// from another program.
#pragma once

#include <memory>

#include "screens/fInputVorwahl.h"

namespace vorlix {

class AreaCodeDialog : public fInputVorwahlView {
 public:
  AreaCodeDialog();
  // An open window goes without an answer.
  ~AreaCodeDialog() override;

  void AskCodes(const AreaCodePage& page, std::function<void(const std::optional<AreaCodes>& codes)> answered) override;
  // Leaving the second page goes on too: the codes have been given.
  void AskTestCall(const std::string& text, std::function<void()> finished) override;
  void ShowTestCall(const std::string& text) override;
  void Close() override;

 private:
  class Window;
  Window& Shown();

  std::unique_ptr<Window> window_;  // made when it is first asked for
};

}  // namespace vorlix
