#include "desktop/dialogs/AreaCodeDialog.h"

#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/text.h"
#include "screens/FirstStart.h"
#include "services/ansi.h"

namespace vorlix {

class AreaCodeDialog::Window : public QDialog {
 public:
  Window();

  void ShowCodes(const AreaCodePage& page);
  void ShowText(const std::string& text);
  void ShowFound(const std::string& text) { found_->setText(ToQString(text)); }
  void done(int result) override;

  std::function<void(const std::optional<AreaCodes>& codes)> answered;
  std::function<void()> finished;

 private:
  QWidget* CodesPage();
  QWidget* TestCallPage();

  QStackedWidget* pages_;
  QLabel *note_ = nullptr, *text_ = nullptr, *found_ = nullptr;
  QLineEdit *myVWL_ = nullptr, *myVWO_ = nullptr;
};

AreaCodeDialog::Window::Window() {
  setWindowTitle(DialogText("InputAreaCode_Title", "Vorlix - Eigene Vorwahl"_ansi));
  setAttribute(Qt::WA_ShowWithoutActivating);
  auto* layout = new QVBoxLayout(this);
  pages_ = new QStackedWidget;
  pages_->addWidget(CodesPage());
  pages_->addWidget(TestCallPage());
  layout->addWidget(pages_);
  connect(AddOkAndCancel(*this, *layout), &QPushButton::clicked, this, [this] { done(Accepted); });
  AssignLetters(*this);
}

QWidget* AreaCodeDialog::Window::CodesPage() {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  auto* rows = new QFormLayout;
  note_ = AddNote(*layout);
  myVWL_ = AddField(*rows, ToQString(FirstStart::Label({}, FirstStartField::kState)));
  myVWO_ = AddField(*rows, ToQString(FirstStart::Label({}, FirstStartField::kCity)));
  layout->addLayout(rows);
  layout->addStretch();
  return page;
}

QWidget* AreaCodeDialog::Window::TestCallPage() {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  text_ = AddNote(*layout);
  found_ = AddNote(*layout);
  layout->addStretch();
  return page;
}

void AreaCodeDialog::Window::ShowCodes(const AreaCodePage& page) {
  pages_->setCurrentIndex(0);
  note_->setText(ToQString(page.note));
  myVWL_->setText(ToQString(page.codes.myVWL));
  myVWO_->setText(ToQString(page.codes.myVWO));
  MarkWrong(*myVWL_, page.isWrongVWL);
  MarkWrong(*myVWO_, page.isWrongVWO);
  (page.isWrongVWO && !page.isWrongVWL ? myVWO_ : myVWL_)->setFocus();
}

void AreaCodeDialog::Window::ShowText(const std::string& text) {
  pages_->setCurrentIndex(1);
  text_->setText(ToQString(text));
  found_->clear();
}

// OK, Cancel and closing all come here. The answer decides what the window shows next.
void AreaCodeDialog::Window::done(int result) {
  setResult(result);
  if (const auto goOn = std::exchange(finished, {})) return goOn();
  const auto answer = std::exchange(answered, {});
  if (!answer) return QDialog::done(result);
  answer(result == Accepted ? std::optional(AreaCodes{TextOf(*myVWL_), TextOf(*myVWO_)}) : std::nullopt);
}

AreaCodeDialog::AreaCodeDialog() = default;
AreaCodeDialog::~AreaCodeDialog() = default;

AreaCodeDialog::Window& AreaCodeDialog::Shown() {
  if (!window_) window_ = std::make_unique<Window>();
  return *window_;
}

void AreaCodeDialog::AskCodes(const AreaCodePage& page, std::function<void(const std::optional<AreaCodes>&)> answered) {
  Window& window = Shown();
  window.answered = std::move(answered);
  window.ShowCodes(page);
  window.show();
}

void AreaCodeDialog::AskTestCall(const std::string& text, std::function<void()> finished) {
  Window& window = Shown();
  window.finished = std::move(finished);
  window.ShowText(text);
  window.show();
}

void AreaCodeDialog::ShowTestCall(const std::string& text) {
  Shown().ShowFound(text);
}

void AreaCodeDialog::Close() {
  if (!window_) return;
  window_->answered = {};
  window_->finished = {};
  window_->hide();
}

}  // namespace vorlix
