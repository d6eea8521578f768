// Two telephone-book entries of one number: asks which is to stay, question by question or with a box.
#pragma once

#include <functional>

#include "data/modBook.h"
#include "screens/Questions.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class DoubleItemsQuestion : public AskForDoubleItems {
 public:
  // Where nobody is there to answer, the entry that is there stays. The view must outlive the object.
  DoubleItemsQuestion(Questions& view, std::function<bool()> canAsk) : view_(view), canAsk_(std::move(canAsk)) {}

  DoubleItem ShowDialog(const std::string& number, const std::string& oldName, const std::string& oldAddress,
                        std::string& newName, std::string& newAddress) override;

 private:
  Questions& view_;
  std::function<bool()> canAsk_;
};

// The same as one box; Cancel keeps what is there, also for all that follow.
class DoubleItemsBox : public AskForDoubleItems {
 public:
  // The boxes must outlive the object.
  explicit DoubleItemsBox(MsgBoxDoor& boxes) : boxes_(boxes) {}

  DoubleItem ShowDialog(const std::string& number, const std::string& oldName, const std::string& oldAddress,
                        std::string& newName, std::string& newAddress) override;

 private:
  MsgBoxDoor& boxes_;
};

}  // namespace vorlix
