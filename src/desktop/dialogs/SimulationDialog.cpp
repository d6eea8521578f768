#include "desktop/dialogs/SimulationDialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <vector>

#include "desktop/dialogs/dialog_parts.h"
#include "desktop/text.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

QValidator* DialledOnly(QObject* parent) {
  return new QRegularExpressionValidator(QRegularExpression("[0-9*#]*"), parent);
}

}  // namespace

class SimulationDialog::Window : public QDialog {
 public:
  explicit Window(fSimulation& simulation);

  void ShowState();
  void done(int result) override;

 private:
  struct Line {
    QLabel* label;
    QPushButton* cmdTrennen;
  };

  void AddCall(QVBoxLayout& layout);
  void AddKind(QVBoxLayout& layout);
  void AddLines(QVBoxLayout& layout);
  void Ring();

  fSimulation& simulation_;
  QLineEdit *number_ = nullptr, *MSN_ = nullptr;
  QRadioButton* national_ = nullptr;
  QLabel* prefix_ = nullptr;
  QCheckBox* write_ = nullptr;
  QPushButton* cmdSim_ = nullptr;
  std::vector<Line> lines_;
};

SimulationDialog::Window::Window(fSimulation& simulation) : simulation_(simulation) {
  setWindowTitle(DialogText("Simulation_Title", "Vorlix - Anrufsimulation"_ansi));
  auto* layout = new QVBoxLayout(this);
  AddNote(*layout, DialogText("Simulation_Info_NoRealCalls",
                              "Solange dieses Fenster offen ist, werden echte Anrufe nicht gesehen."_ansi));
  AddCall(*layout);
  AddLines(*layout);
  layout->addStretch();
  auto* row = new QHBoxLayout;
  row->addStretch();
  connect(AddButton(*row, DialogText("Button_Close", "Schließen"_ansi)), &QPushButton::clicked, this,
          [this] { reject(); });
  layout->addLayout(row);
  AssignLetters(*this);
}

void SimulationDialog::Window::AddCall(QVBoxLayout& layout) {
  prefix_ = new QLabel;
  AddKind(layout);
  auto* rows = new QFormLayout;
  number_ = AddField(*rows, DialogText("Simulation_Label_Number", "Rufnummer ohne führende Nullen"_ansi), prefix_);
  number_->setValidator(DialledOnly(number_));
  MSN_ = AddField(*rows, DialogText("Simulation_Label_MSN", "Angerufene eigene Nummer"_ansi));
  MSN_->setValidator(DialledOnly(MSN_));
  MSN_->setText(ToQString(simulation_.ProposedMSN()));
  layout.addLayout(rows);
  write_ = new QCheckBox(DialogText("Simulation_Option_Write", "Simulierte Anrufe im Journal festhalten"_ansi));
  connect(write_, &QCheckBox::clicked, this, [this](bool on) { simulation_.chkSimWrite_Click(on); });
  layout.addWidget(write_);
  auto* row = new QHBoxLayout;
  row->addStretch();
  cmdSim_ = AddButton(*row, DialogText("Simulation_Button_Ring", "Anrufen"_ansi));
  cmdSim_->setDefault(true);
  connect(cmdSim_, &QPushButton::clicked, this, [this] { Ring(); });
  layout.addLayout(row);
}

// The zeros in front of the number say which kind of call it is.
void SimulationDialog::Window::AddKind(QVBoxLayout& layout) {
  auto* kinds = new QHBoxLayout;
  national_ = new QRadioButton(DialogText("Simulation_Option_National", "aus dem Inland"_ansi));
  connect(national_, &QRadioButton::toggled, this,
          [this](bool on) { prefix_->setText(ToQString(fSimulation::labPraefix(on))); });
  national_->setChecked(true);
  kinds->addWidget(national_);
  kinds->addWidget(new QRadioButton(DialogText("Simulation_Option_International", "aus dem Ausland"_ansi)));
  kinds->addStretch();
  layout.addLayout(kinds);
}

void SimulationDialog::Window::AddLines(QVBoxLayout& layout) {
  auto* grid = new QGridLayout;
  grid->setColumnStretch(1, 1);
  const std::string word = LoadLangKey("Simulation_Label_Line", "Leitung"_ansi) + " ";
  for (int slot = 0; slot < simulation_.Lines(); ++slot) {
    const QString name = ToQString(word + std::to_string(slot + 1));
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    auto* buttons = new QHBoxLayout;
    QPushButton* cmdTrennen = AddButton(*buttons, DialogText("Simulation_Button_HangUp", "Trennen"_ansi));
    cmdTrennen->setAccessibleName(name + ": " + cmdTrennen->accessibleName());
    connect(cmdTrennen, &QPushButton::clicked, this, [this, slot] { simulation_.cmdTrennen_Click(slot); });
    grid->addWidget(new QLabel(name + ":"), slot, 0);
    grid->addWidget(label, slot, 1);
    grid->addLayout(buttons, slot, 2);
    lines_.push_back({label, cmdTrennen});
  }
  layout.addLayout(grid);
}

void SimulationDialog::Window::Ring() {
  simulation_.cmdSim_Click(TextOf(*number_), TextOf(*MSN_), national_->isChecked());
}

void SimulationDialog::Window::ShowState() {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const int slot = static_cast<int>(i);
    lines_[i].label->setText(ToQString(simulation_.Label(slot)));
    lines_[i].cmdTrennen->setEnabled(simulation_.IsUsed(slot));
  }
  cmdSim_->setEnabled(simulation_.CanRing());
  write_->setChecked(simulation_.SimWrite());
}

// Closing by the button, by Escape and by the frame. The change that follows hides the window.
void SimulationDialog::Window::done(int result) {
  setResult(result);
  simulation_.cmdCancel_Click();
}

SimulationDialog::SimulationDialog(fSimulation& simulation, DialogPlace place)
    : simulation_(simulation), place_(place) {
  simulation_.OnChange([this] { ShowState(); });
}

SimulationDialog::~SimulationDialog() {
  simulation_.OnChange({});
}

void SimulationDialog::Open() {
  if (!simulation_.IsOpen()) simulation_.Form_Load();
  if (!window_ || !window_->isVisible()) {
    window_ = std::make_unique<Window>(simulation_);
    place_.Restore(*window_);
  }
  ShowState();
  OpenInFront(*window_);
}

void SimulationDialog::Close() {
  if (window_ && window_->isVisible()) window_->reject();
}

void SimulationDialog::ShowState() {
  if (!window_) return;
  window_->ShowState();
  if (simulation_.IsOpen() || !window_->isVisible()) return;
  KeepPlace();
  window_->hide();
}

void SimulationDialog::KeepPlace() {
  place_.Keep(window_.get());
}

}  // namespace vorlix
