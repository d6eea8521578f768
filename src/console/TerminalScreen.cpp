#include "console/TerminalScreen.h"

namespace vorlix {

void TerminalScreen::Open(const Program& program) {
  feed_.identify = program.identify;
  commands_ = &program.commands;
}

void TerminalScreen::Close() {
  feed_.identify = {};
  commands_ = nullptr;
  terminal_.Flush();
}

bool TerminalScreen::TakeTyped() {
  return terminal_.TakeTyped([this](const std::string& line) {
    if (commands_ != nullptr) commands_->Run(line);
  });
}

}  // namespace vorlix
