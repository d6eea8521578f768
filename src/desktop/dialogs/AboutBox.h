// The box that tells what the program is.
#pragma once

#include <memory>
#include <string>

class QMessageBox;

namespace vorlix {

class AboutBox {
 public:
  AboutBox();
  ~AboutBox();
  AboutBox(const AboutBox&) = delete;
  AboutBox& operator=(const AboutBox&) = delete;

  // Opens the box with this text, or brings it to the front; nothing waits for it.
  void Open(const std::string& text);

 private:
  std::unique_ptr<QMessageBox> box_;  // made when it is first opened
};

}  // namespace vorlix
