#include "screens/FirstStart.h"

#include <algorithm>
#include <iterator>

#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

// A name or an address. One colon would begin a port, which has a setting of its own.
bool IsHost(const std::string& text) {
  return !text.empty() && text.find(' ') == std::string::npos && std::count(text.begin(), text.end(), ':') != 1;
}

}  // namespace

const std::string& FirstStartForm::Text(FirstStartField field) const {
  switch (field) {
    case FirstStartField::kState:
      return myVWL;
    case FirstStartField::kCity:
      return myVWO;
    default:
      return source == kSourceNCID ? serverHost : routerHost;
  }
}

void FirstStartForm::SetText(FirstStartField field, const std::string& text) {
  switch (field) {
    case FirstStartField::kState:
      myVWL = text;
      break;
    case FirstStartField::kCity:
      myVWO = text;
      break;
    case FirstStartField::kHost:
      (source == kSourceNCID ? serverHost : routerHost) = text;
      break;
  }
}

std::string FirstStart::Welcome() {
  return LoadLangKey("FirstStart_Info_Welcome", "Willkommen bei Vorlix! Einige Fragen zum ersten Start:"_ansi);
}

std::string FirstStart::SourceQuestion() {
  return LoadLangKey("FirstStart_Label_Source", "Woher kommen die Anrufe?"_ansi);
}

std::string FirstStart::SourceName(CallSource source) {
  switch (source) {
    case kSourceAVM:
      return LoadLangKey("FirstStart_Option_Router", "FRITZ!Box (Anrufmonitor)"_ansi);
    case kSourceNCID:
      return LoadLangKey("FirstStart_Option_Server", "NCID-Server"_ansi);
    default:
      return LoadLangKey("FirstStart_Option_Driver", "CAPI 2.0"_ansi);
  }
}

std::string FirstStart::Label(const FirstStartForm& form, FirstStartField field) {
  switch (field) {
    case FirstStartField::kState:
      return LoadLangKey("FirstStart_Label_State", "Eigene Landesvorwahl ohne Nullen"_ansi);
    case FirstStartField::kCity:
      return LoadLangKey("FirstStart_Label_City", "Eigene Ortsvorwahl ohne Null"_ansi);
    default:
      return form.source == kSourceNCID
                 ? LoadLangKey("FirstStart_Label_Server", "Name oder Adresse des NCID-Servers"_ansi)
                 : LoadLangKey("FirstStart_Label_Router", "Name oder Adresse der FRITZ!Box"_ansi);
  }
}

std::string FirstStart::WrongNote() {
  return LoadLangKey("InputAreaCode_Info_CheckChangeInput", "Bitte kontrollieren und ergänzen Sie die Angaben!"_ansi);
}

bool FirstStart::IsCode(const std::string& text) {
  return IsDigits(text) && text.front() != '0';
}

bool FirstStart::IsAsked(const FirstStartForm& form, FirstStartField field) {
  return field != FirstStartField::kHost || form.source != kSourceCAPI;
}

bool FirstStart::IsUsable(const FirstStartForm& form, FirstStartField field) {
  const std::string& text = form.Text(field);
  if (!IsAsked(form, field)) return true;
  if (field == FirstStartField::kHost) return IsHost(WithoutControls(text));
  return IsCode(text);
}

std::vector<FirstStartField> FirstStart::WrongFields(const FirstStartForm& form) {
  std::vector<FirstStartField> wrong;
  std::copy_if(std::begin(kFirstStartFields), std::end(kFirstStartFields), std::back_inserter(wrong),
               [&](FirstStartField field) { return !IsUsable(form, field); });
  return wrong;
}

std::optional<FirstStartAnswers> FirstStart::Run(FirstStartForm form) {
  if (!page_.Fill(form)) return std::nullopt;
  return FirstStartAnswers{.CallMode_CAPI = form.source == kSourceCAPI,
                           .CallMode_AVM = form.source == kSourceAVM,
                           .CallMode_NCID = form.source == kSourceNCID,
                           .Host = IsAsked(form, FirstStartField::kHost) ? form.Text(FirstStartField::kHost) : "",
                           .myVWL = form.myVWL,
                           .myVWO = form.myVWO};
}

bool FirstStartQuestions::Fill(FirstStartForm& form) {
  view_.Tell(FirstStart::Welcome());
  return AskSource(form) && std::all_of(std::begin(kFirstStartFields), std::end(kFirstStartFields),
                                        [&](FirstStartField field) { return AskField(form, field); });
}

// The sources are chosen by their place in the list.
bool FirstStartQuestions::AskSource(FirstStartForm& form) {
  std::string question = FirstStart::SourceQuestion(), places, proposed;
  for (const CallSource source : kFirstStartSources) {
    places += static_cast<char>('1' + places.size());
    if (source == form.source) proposed = places.back();
    question += std::string("\n  ") + places.back() + "  " + FirstStart::SourceName(source);
  }
  question += "\n" + LoadLangKey("FirstStart_Label_Choice", "Auswahl"_ansi);
  while (const auto answer = view_.Ask(question, proposed)) {
    if (answer->size() != 1 || places.find(*answer) == std::string::npos) continue;
    form.source = kFirstStartSources[places.find(*answer)];
    return true;
  }
  return false;
}

bool FirstStartQuestions::AskField(FirstStartForm& form, FirstStartField field) {
  if (!FirstStart::IsAsked(form, field)) return true;
  const std::string proposed = form.Text(field);
  while (const auto answer = view_.Ask(FirstStart::Label(form, field), proposed)) {
    form.SetText(field, *answer);
    if (FirstStart::IsUsable(form, field)) return true;
    view_.Tell(FirstStart::WrongNote());
  }
  return false;
}

}  // namespace vorlix
