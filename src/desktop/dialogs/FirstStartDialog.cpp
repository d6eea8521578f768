#include "desktop/dialogs/FirstStartDialog.h"

#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/text.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

class Page : public QDialog {
 public:
  explicit Page(FirstStartForm& form);

 private:
  void AddSources(QLayout& layout);
  void AddFields(QVBoxLayout& layout);
  void Choose(CallSource source);
  void ShowHost();
  void TakeFields();
  void Check();

  FirstStartForm& form_;
  std::map<FirstStartField, QLineEdit*> fields_;
  QLabel* hostLabel_ = nullptr;
  QLabel* note_ = nullptr;
};

Page::Page(FirstStartForm& form) : form_(form) {
  setWindowTitle(DialogText("FirstStart_Title", "Vorlix - Erster Start"_ansi));
  auto* layout = new QVBoxLayout(this);
  AddNote(*layout, ToQString(FirstStart::Welcome()));
  AddSources(*layout);
  AddFields(*layout);
  note_ = AddNote(*layout);
  layout->addStretch();
  connect(AddOkAndCancel(*this, *layout), &QPushButton::clicked, this, [this] { Check(); });
  ShowHost();
}

void Page::AddSources(QLayout& layout) {
  auto* group = new QGroupBox(ToQString(FirstStart::SourceQuestion()));
  auto* choices = new QVBoxLayout(group);
  for (const CallSource source : kFirstStartSources) {
    auto* choice = new QRadioButton(ToQString(FirstStart::SourceName(source)));
    choice->setChecked(source == form_.source);
    choices->addWidget(choice);
    connect(choice, &QRadioButton::toggled, this, [this, source](bool on) {
      if (on) Choose(source);
    });
  }
  layout.addWidget(group);
}

void Page::AddFields(QVBoxLayout& layout) {
  auto* rows = new QFormLayout;
  for (const FirstStartField field : kFirstStartFields) {
    QLineEdit* edit = AddField(*rows, ToQString(FirstStart::Label(form_, field)));
    edit->setText(ToQString(form_.Text(field)));
    fields_[field] = edit;
  }
  hostLabel_ = qobject_cast<QLabel*>(rows->labelForField(fields_[FirstStartField::kHost]));
  layout.addLayout(rows);
}

void Page::Choose(CallSource source) {
  TakeFields();
  form_.source = source;
  ShowHost();
}

// The host's label and text are those of the chosen source.
void Page::ShowHost() {
  QLineEdit* host = fields_[FirstStartField::kHost];
  const QString label = ToQString(FirstStart::Label(form_, FirstStartField::kHost));
  hostLabel_->setText(label);
  host->setAccessibleName(label);
  host->setText(ToQString(form_.Text(FirstStartField::kHost)));
  host->setEnabled(FirstStart::IsAsked(form_, FirstStartField::kHost));
  AssignLetters(*this);
}

void Page::TakeFields() {
  for (const auto& [field, edit] : fields_) {
    form_.SetText(field, TextOf(*edit));
  }
}

void Page::Check() {
  TakeFields();
  const std::vector<FirstStartField> wrong = FirstStart::WrongFields(form_);
  for (const auto& [field, edit] : fields_) {
    MarkWrong(*edit, std::find(wrong.begin(), wrong.end(), field) != wrong.end());
  }
  if (wrong.empty()) return accept();
  note_->setText(ToQString(FirstStart::WrongNote()));
  fields_[wrong.front()]->setFocus();
}

}  // namespace

bool FirstStartDialog::Fill(FirstStartForm& form) {
  return Trapped("FirstStartDialog.Fill", [&] {
    Page page(form);
    return RunDialog(page);
  });
}

}  // namespace vorlix
