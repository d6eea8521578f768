// The questions of a first start: where the calls come from, the name of router or server, the own country and area
// code. Decides what is asked, in which order, and which answers can be used; how they are asked is the view's: all on
// one page, or one after the other.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/call_events.h"
#include "screens/Questions.h"

namespace vorlix {

inline constexpr CallSource kFirstStartSources[] = {kSourceAVM, kSourceNCID, kSourceCAPI};

enum class FirstStartField { kHost, kState, kCity };
inline constexpr FirstStartField kFirstStartFields[] = {FirstStartField::kHost, FirstStartField::kState,
                                                        FirstStartField::kCity};

// The page as it is filled in. Codes are without leading zeros.
struct FirstStartForm {
  CallSource source = kSourceAVM;
  std::string routerHost{}, serverHost{};  // one for each source, so that a change of mind loses nothing
  std::string myVWL = "49", myVWO{};

  // The text of a field; the host is that of the chosen source.
  const std::string& Text(FirstStartField field) const;
  void SetText(FirstStartField field, const std::string& text);
};

class FirstStartPage {
 public:
  virtual ~FirstStartPage() = default;
  // Shows the form and takes what is typed into it; returns with a form without wrong fields, or false when the user
  // leaves off.
  virtual bool Fill(FirstStartForm& form) = 0;
};

// The page asked field by field; a wrong answer is asked for again at once.
class FirstStartQuestions : public FirstStartPage {
 public:
  explicit FirstStartQuestions(Questions& view) : view_(view) {}

  bool Fill(FirstStartForm& form) override;

 private:
  bool AskSource(FirstStartForm& form);
  bool AskField(FirstStartForm& form, FirstStartField field);

  Questions& view_;
};

// What the user has.
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
  explicit FirstStart(FirstStartPage& page) : page_(page) {}

  // Nothing when the user leaves off. The form holds what is proposed.
  std::optional<FirstStartAnswers> Run(FirstStartForm form);

  static std::string Welcome();
  static std::string SourceQuestion();
  static std::string SourceName(CallSource source);
  static std::string Label(const FirstStartForm& form, FirstStartField field);
  static std::string WrongNote();

  // An own country or area code as it is kept: digits, without the zeros that are dialled in front of it.
  static bool IsCode(const std::string& text);
  // A driver on this machine has no host.
  static bool IsAsked(const FirstStartForm& form, FirstStartField field);
  static bool IsUsable(const FirstStartForm& form, FirstStartField field);
  static std::vector<FirstStartField> WrongFields(const FirstStartForm& form);

 private:
  FirstStartPage& page_;
};

}  // namespace vorlix
