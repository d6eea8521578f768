#include "desktop/dialogs/BlacklistWindow.h"

#include <QAction>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "desktop/dialogs/BlacklistInput.h"
#include "desktop/dialogs/dialog_parts.h"
#include "desktop/text.h"
#include "services/ansi.h"

namespace vorlix {

class BlacklistWindow::Window : public QDialog {
 public:
  explicit Window(fEditBlacklist& presenter);

  void ShowLines(const std::vector<Line>& lines, int selected);
  void done(int result) override;

 private:
  void MakeList();
  void AddListButtons(QLayout& layout);
  void AddBottom(QVBoxLayout& layout);
  void AddMenu();
  template <typename Run>
  void AddAction(const QString& text, const QKeySequence& keys, Run run);

  fEditBlacklist& presenter_;
  QTreeWidget* list_;
};

BlacklistWindow::Window::Window(fEditBlacklist& presenter) : presenter_(presenter), list_(new QTreeWidget) {
  setWindowTitle(DialogText("Blacklist_Title", "Vorlix - Sperrliste"_ansi));
  setSizeGripEnabled(true);
  auto* layout = new QVBoxLayout(this);
  auto* upper = new QHBoxLayout;
  auto* buttons = new QVBoxLayout;
  MakeList();
  upper->addWidget(list_, 1);
  AddListButtons(*buttons);
  buttons->addStretch();
  upper->addLayout(buttons);
  layout->addLayout(upper);
  AddBottom(*layout);
  AddMenu();
  AssignLetters(*this);
}

void BlacklistWindow::Window::MakeList() {
  QStringList headers;
  for (const std::string& header : fEditBlacklist::Headers()) {
    headers << ToQString(header);
  }
  list_->setHeaderLabels(headers);
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setTabKeyNavigation(false);
  list_->setMinimumSize(fontMetrics().averageCharWidth() * 70, fontMetrics().height() * 8);
  list_->setAccessibleName(windowTitle());
  list_->header()->setSectionsClickable(true);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list_->header()->setSectionResizeMode(fEditBlacklist::kName, QHeaderView::Stretch);
  list_->header()->setMaximumSectionSize(fontMetrics().averageCharWidth() * 40);
  connect(list_->header(), &QHeaderView::sectionClicked, this,
          [this](int column) { presenter_.ColumnClick(static_cast<fEditBlacklist::Column>(column)); });
  connect(list_, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { presenter_.Select(list_->indexOfTopLevelItem(item)); });
  connect(list_, &QTreeWidget::itemDoubleClicked, this,
          [this](QTreeWidgetItem* item) { presenter_.DoubleClick(list_->indexOfTopLevelItem(item)); });
}

void BlacklistWindow::Window::AddListButtons(QLayout& layout) {
  const std::pair<fEditBlacklist::ListButton, QString> buttons[] = {
      {fEditBlacklist::kNew, DialogText("Blacklist_Button_New", "Neu"_ansi)},
      {fEditBlacklist::kEdit, DialogText("Blacklist_Button_Edit", "Bearbeiten"_ansi)},
      {fEditBlacklist::kRemove, DialogText("Blacklist_Button_Remove", "Entfernen"_ansi)},
  };
  for (const auto& [command, text] : buttons) {
    connect(AddButton(layout, text), &QPushButton::clicked, this,
            [this, command = command] { presenter_.cmdBlackList(command); });
  }
}

void BlacklistWindow::Window::AddBottom(QVBoxLayout& layout) {
  auto* row = new QHBoxLayout;
  connect(AddButton(*row, DialogText("Blacklist_Button_Info", "Info"_ansi)), &QPushButton::clicked, this,
          [this] { presenter_.ShowInfo(); });
  connect(AddOkAndCancel(*this, *row), &QPushButton::clicked, this,
          [this] { presenter_.cmdEdit(fEditBlacklist::kOK); });
  layout.addLayout(row);
}

// The menu of the list also has what the mouse does on the header.
void BlacklistWindow::Window::AddMenu() {
  list_->setContextMenuPolicy(Qt::ActionsContextMenu);
  AddAction(DialogText("Blacklist_Button_New", "Neu"_ansi), Qt::Key_Insert,
            [this] { presenter_.cmdBlackList(fEditBlacklist::kNew); });
  AddAction(DialogText("Blacklist_Button_Edit", "Bearbeiten"_ansi), Qt::Key_F2,
            [this] { presenter_.cmdBlackList(fEditBlacklist::kEdit); });
  AddAction(DialogText("Blacklist_Button_Remove", "Entfernen"_ansi), Qt::Key_Delete,
            [this] { presenter_.DeleteKey(); });
  const QString sort = DialogText("Blacklist_Menu_SortBy", "Sortieren nach:"_ansi) + " ";
  const std::pair<fEditBlacklist::Column, Qt::Key> columns[] = {
      {fEditBlacklist::kNumber, Qt::Key_1}, {fEditBlacklist::kName, Qt::Key_2}, {fEditBlacklist::kMSN, Qt::Key_3}};
  for (const auto& [column, key] : columns) {
    AddAction(sort + list_->headerItem()->text(column), Qt::CTRL | key,
              [this, column = column] { presenter_.ColumnClick(column); });
  }
}

template <typename Run>
void BlacklistWindow::Window::AddAction(const QString& text, const QKeySequence& keys, Run run) {
  auto* action = new QAction(text, list_);
  action->setShortcut(keys);
  action->setShortcutContext(Qt::WidgetShortcut);
  connect(action, &QAction::triggered, this, run);
  list_->addAction(action);
}

// While the lines are replaced the selection moves by itself, and nobody has made it.
void BlacklistWindow::Window::ShowLines(const std::vector<Line>& lines, int selected) {
  const QSignalBlocker quiet(list_);
  list_->clear();
  for (const Line& line : lines) {
    auto* item = new QTreeWidgetItem(list_);
    for (int column = 0; column < static_cast<int>(line.size()); ++column) {
      item->setText(column, ToQString(line[static_cast<std::size_t>(column)]));
    }
  }
  list_->setCurrentItem(list_->topLevelItem(selected));
}

// Escape and the frame come here, as Cancel does.
void BlacklistWindow::Window::done(int result) {
  setResult(result);
  presenter_.cmdEdit(fEditBlacklist::kCancel);
}

BlacklistWindow::BlacklistWindow(DialogPlace place) : place_(place) {}
BlacklistWindow::~BlacklistWindow() = default;

void BlacklistWindow::Open() {
  if (!presenter_->IsOpen()) {
    window_ = std::make_unique<Window>(*presenter_);
    presenter_->Form_Load();
    place_.Restore(*window_);
  }
  OpenInFront(*window_);
}

void BlacklistWindow::ShowLines(const std::vector<Line>& lines, int selected) {
  if (window_) window_->ShowLines(lines, selected);
}

void BlacklistWindow::OpenInput(const std::string& text, int index) {
  const auto take = [this, index](const std::string& typed) { return presenter_->InputReturn(typed, index); };
  (new BlacklistInput(*window_, text, index == kNoLine, take))->show();
}

void BlacklistWindow::Close() {
  KeepPlace();
  window_->hide();
}

void BlacklistWindow::KeepPlace() {
  place_.Keep(window_.get());
}

}  // namespace vorlix
