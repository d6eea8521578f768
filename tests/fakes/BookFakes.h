// What stands around the phone book, with memory.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "data/modBook.h"

namespace vorlix {

class NotedProgress : public LoadProgress {
 public:
  bool up = false;
  std::vector<std::string> shown;
  bool IsUp() override { return up; }
  void Show(const std::string& text) override { shown.push_back(text); }
};

class NotedDoubles : public AskForDoubleItems {
 public:
  DoubleItem answer = DoubleItem::kNothing;
  std::vector<std::string> asked;
  std::string typedAddress;         // what the user puts in place of the new address
  std::function<void()> meanwhile;  // what happens while the dialog is open
  DoubleItem ShowDialog(const std::string& number, const std::string& oldName, const std::string& oldAddress,
                        std::string& newName, std::string& newAddress) override {
    asked.push_back(number + ": " + oldName + "/" + oldAddress + " " + newName + "/" + newAddress);
    if (!typedAddress.empty()) newAddress = typedAddress;
    if (meanwhile) meanwhile();
    return answer;
  }
};

class FakeBookWindow : public BookWindow {
 public:
  bool open = false;
  int refreshed = 0;
  clsCollection copy;
  bool IsOpen() override { return open; }
  clsCollection& Collection() override { return copy; }
  void Refresh() override { ++refreshed; }
};

class NotedBlackList : public BlackListAdding {
 public:
  std::vector<std::string> added;
  std::function<void()> meanwhile;
  void FuncBlackList_NumberToList(const std::string& number, const std::string& name) override {
    added.push_back(number + " " + name);
    if (meanwhile) meanwhile();
  }
};

}  // namespace vorlix
