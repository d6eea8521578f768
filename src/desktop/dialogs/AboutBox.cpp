#include "desktop/dialogs/AboutBox.h"

#include <QMessageBox>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/text.h"
#include "services/ansi.h"

namespace vorlix {

AboutBox::AboutBox() = default;
AboutBox::~AboutBox() = default;

void AboutBox::Open(const std::string& text) {
  if (!box_) {
    box_ = std::make_unique<QMessageBox>();
    box_->setWindowTitle(DialogText("Display_Menu_About", "Über Vorlix"_ansi));
    box_->setTextFormat(Qt::PlainText);
    box_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    box_->setIcon(QMessageBox::Information);
    box_->addButton(QMessageBox::Ok)->setText(OkText());
    box_->setModal(false);
    AssignLetters(*box_);
  }
  box_->setText(ToQString(text).replace("\r\n", "\n"));
  OpenInFront(*box_);
}

}  // namespace vorlix
