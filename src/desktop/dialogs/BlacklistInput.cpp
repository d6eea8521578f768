#include "desktop/dialogs/BlacklistInput.h"

#include <QPointer>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "desktop/text.h"
#include "screens/fEditBlacklist.h"
#include "services/ansi.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kSeparator = "|";

// A separator that is typed must not make a field more.
std::string FieldOf(const QLineEdit& field) {
  return Replace(TextOf(field), kSeparator, " ");
}

}  // namespace

BlacklistInput::BlacklistInput(QWidget& parent, const std::string& text, bool isNew, Take take)
    : QDialog(&parent), take_(std::move(take)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowModality(Qt::WindowModal);
  setWindowTitle(isNew ? DialogText("Blacklist_Title_New", "Neuer Eintrag"_ansi)
                       : DialogText("Blacklist_Title_Edit", "Eintrag bearbeiten"_ansi));
  auto* layout = new QVBoxLayout(this);
  auto* rows = new QFormLayout;
  const auto headers = fEditBlacklist::Headers();
  number_ = AddField(*rows, ToQString(headers[fEditBlacklist::kNumber]));
  name_ = AddField(*rows, ToQString(headers[fEditBlacklist::kName]));
  MSN_ = AddField(*rows, ToQString(headers[fEditBlacklist::kMSN]));
  layout->addLayout(rows);
  layout->addStretch();
  std::vector<std::string> fields = Split(text, kSeparator);
  fields.resize(3);
  number_->setText(ToQString(fields[0]));
  MSN_->setText(ToQString(fields[1]));
  name_->setText(ToQString(fields[2]));
  connect(AddOkAndCancel(*this, *layout), &QPushButton::clicked, this, [this] { Check(); });
  AssignLetters(*this);
}

// Who takes the text may close the input.
void BlacklistInput::Check() {
  const QPointer<QDialog> alive(this);
  const bool isTaken = take_(Join({FieldOf(*number_), FieldOf(*MSN_), FieldOf(*name_)}, kSeparator));
  if (!alive) return;
  if (isTaken) return accept();
  MarkWrong(*number_, true);
  number_->setFocus();
}

}  // namespace vorlix
