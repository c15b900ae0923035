#include "screens/StatGraphics.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "charts/CsfExport.h"
#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "platform/ui/ButtonBar.h"
#include "platform/ui/FileDialog.h"
#include "screens/Controls.h"
#include "screens/Indicators.h"
#include "screens/PageView.h"
#include "screens/SharedSave.h"
#include "screens/StatSummary.h"
#include "texts/DetectionRules.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Icon;

namespace {

constexpr int fewestToOpen = 8;
constexpr int fewestToRecalculate = 5;

enum ToolbarButton { Print = 1, SaveChanges, Zoom, Recalc, Utilities, Help, Close };

QString TimeText() { return Globals().clock->Now().toString(u"HH:mm:ss"_s); }

// What a step of the recording reports it reports under this screen's name, and the page goes on without it.
// Without a scale there is no page, which is for the caller to say.
void RunStep(const char* procedure, const std::function<void()>& step) {
  std::exception_ptr noScale;
  Trap(u"StatGraphics::"_s + QLatin1StringView(procedure), [&] {
    try {
      step();
    } catch (const ScaleError&) {
      noScale = std::current_exception();
    }
  });
  if (noScale) std::rethrow_exception(noScale);
}

}  // namespace

StatGraphics::StatGraphics(Links links, PagePrinting& printing, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      links_(std::move(links)),
      printing_(printing) {
  Trap(u"StatGraphics::Form_Load"_s, [this] { Form_Load(); });
}

int StatGraphics::exec() { return loaded_ ? QDialog::exec() : int(Rejected); }

void StatGraphics::Form_Load() {
  BuildControls();
  if (!LoadDataSet() || !StartStatGraphics()) return;
  UpdateStatGraphicsText();
  setWindowTitle(LoadResText(u"Kestrel Graphics Screen - Control Charting;301"));
  loaded_ = true;
}

bool StatGraphics::LoadDataSet() {
  const qint32 id = Globals().gCurrentDataID;
  DataObjectFunctions::GetDataObjectByID(id, data_);
  if (!data_) {
    ShowSystemMessage(LoadResText(u"error attempting to get the current data for the item selected: ;203") +
                          u"\r\n"_s + Words::noSuchDataSet(id),
                      Icon::Critical);
    return false;
  }
  data_ = std::make_shared<CData>(*data_);
  if (data_->NumberOfPlotPoints() < fewestToOpen) {
    ShowSystemMessage(LoadResText(u"A minimum of 8 data points are required;185"), Icon::Exclamation);
    return false;
  }
  return true;
}

void StatGraphics::BuildControls() {
  setObjectName(u"StatGraphics"_s);
  setModal(true);
  setSizeGripEnabled(true);

  Toolbar1 = BuildToolbar();
  lblDescription = TextLabel(u"lblDescription"_s, this);
  QFont heading = font();
  heading.setBold(true);
  heading.setPointSizeF(heading.pointSizeF() * 1.25);
  lblDescription->setFont(heading);
  checkFitScale = Named(new QCheckBox(Words::Chart::fitScale(), this), u"checkFitScale"_s);
  checkFitScale->setToolTip(Words::Chart::fitScaleTip());
  view_ = Named(new PageView(this), u"PageView"_s);
  lblNews = TextLabel(u"lblNews"_s, this);
  lblNews->setForegroundRole(QPalette::PlaceholderText);
  lblNews->setMinimumHeight(fontMetrics().height());  // so that the page stays where it is
  QWidget* verdict = BuildVerdict();

  auto* head = new QHBoxLayout;
  head->addWidget(lblDescription, 1);
  head->addWidget(checkFitScale);
  auto* charts = new QVBoxLayout;
  charts->addLayout(head);
  charts->addWidget(view_, 1);
  charts->addWidget(lblNews);
  auto* body = new QHBoxLayout;
  body->setContentsMargins(9, 0, 9, 9);
  body->addLayout(charts, 1);
  body->addWidget(verdict);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(Toolbar1);
  layout->addLayout(body, 1);
  setTabOrder(checkFitScale, view_);
  view_->setFocus();
  const QSize room = screen()->availableSize();
  resize(std::min(1280, room.width() * 19 / 20), std::min(800, room.height() * 9 / 10));
  ConnectControls();
}

ButtonBar* StatGraphics::BuildToolbar() {
  auto* bar = new ButtonBar(u"Toolbar1"_s, this, u"F"_s);
  bar->AddButton(LoadResText(u"Print;206"), LoadResText(u"Print Options;207"), Symbol::Print);
  bar->AddButton(LoadResText(u"Save;210"), LoadResText(u"Save Changes;211"), Symbol::Save)
      ->setShortcut(QKeySequence::Save);
  bar->AddButton(LoadResText(u"Zoom In;212"), LoadResText(u"Chart Zoom;213"), Symbol::ZoomIn);
  bar->AddButton(LoadResText(u"Recalculate;214"), LoadResText(u"Recalculate control limits;215"),
                 Symbol::Recalculate);
  bar->AddButton(LoadResText(u"Utilities;216"), LoadResText(u"Utilities;216"), Symbol::Utilities);
  bar->AddButton(LoadResText(u"Help;219"), LoadResText(u"Application Help;220"), Symbol::Help);
  bar->AddButton(LoadResText(u"Close;221"), LoadResText(u"Close the current screen;222"), Symbol::Close);

  bar->AddEntry(Print, LoadResText(u"Print;206"), Symbol::Print)->setShortcut(QKeySequence::Print);
  bar->AddEntry(Print, LoadResText(u"Printer Setup;208"), Symbol::Printer);
  bar->AddEntry(Print, LoadResText(u"Page Setup;209"), Symbol::Page);
  bar->AddEntry(Utilities, LoadResText(u"Export;217"), Symbol::Export);
  bar->AddEntry(Utilities, LoadResText(u"Copy;218"), Symbol::Copy)->setShortcut(QKeySequence::Copy);
  bar->AddEntry(Utilities, Words::Adding::command(), Symbol::Add);
  return bar;
}

QWidget* StatGraphics::BuildVerdict() {
  ProcessStateIndicator1 = Named(new ProcessStateIndicator(this), u"ProcessStateIndicator1"_s);
  ProcessStateIndicator1->SetCaption(LoadResText(u"ProcessControlIndicator;268"));

  StatSummary1 = Named(new StatSummary(this), u"StatSummary1"_s);
  StatSummary1->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* verdict = new QWidget(this);
  verdict->setFixedWidth(fontMetrics().height() * 14);
  auto* column = new QVBoxLayout(verdict);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(ProcessStateIndicator1);
  column->addWidget(BuildRuleViolation());
  column->addWidget(StatSummary1);
  column->addStretch();
  return verdict;
}

QWidget* StatGraphics::BuildRuleViolation() {
  auto* panelRuleViolation =
      Named(new QGroupBox(LoadResText(u"Rule Violation;269"), this), u"panelRuleViolation"_s);
  orvLEDControl1 = Named(new Led(panelRuleViolation), u"orvLEDControl1"_s);
  panelRuleViolationValue = Named(new QLabel(panelRuleViolation), u"panelRuleViolationValue"_s);
  panelRuleViolationValue->setTextFormat(Qt::PlainText);
  panelRuleViolationValue->setFont(lblDescription->font());
  panelMessage = TextLabel(u"panelMessage"_s, panelRuleViolation);
  auto* value = new QHBoxLayout;
  value->addWidget(orvLEDControl1);
  value->addWidget(panelRuleViolationValue, 1);
  auto* panel = new QVBoxLayout(panelRuleViolation);
  panel->addLayout(value);
  panel->addWidget(panelMessage);
  return panelRuleViolation;
}

void StatGraphics::ConnectControls() {
  connect(Toolbar1, &ButtonBar::ButtonClick, this, &StatGraphics::ButtonClick);
  connect(Toolbar1, &ButtonBar::ButtonMenuClick, this, &StatGraphics::ButtonMenuClick);
  connect(checkFitScale, &QCheckBox::toggled, this, &StatGraphics::FitScale);
  connect(view_, &PageView::ZoomRequested, this, &StatGraphics::ZoomOnSelectedGraph);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, [] {
    if (MainScreen* screen = Globals().mainScreen) screen->ReadLibraryNews();
  });
  connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this,
          [this] { links_.callUpHelp(links_.helpTopic); });
}

void StatGraphics::ButtonClick(int button) {
  switch (button) {
    case SaveChanges:
      if (Save()) StartStatGraphics();  // the page shows when the data set was last modified
      break;
    case Zoom:
      return ZoomOnSelectedGraph();
    case Recalc:
      return Recalculate();
    case Help:
      return links_.callUpHelp(0);
    case Close:
      return reject();
  }
}

void StatGraphics::ButtonMenuClick(int button, int entry) {
  if (button == Print) {
    if (entry == 1) PrintPage();
    if (entry == 2) Trap(u"StatGraphics::PrinterSetup"_s, [this] { printing_.PrinterSetup(this); });
    if (entry == 3) Trap(u"StatGraphics::PageSetup"_s, [this] { printing_.PageSetup(this); });
  } else if (entry == 1) {
    ExportQCReport();
  } else if (entry == 3) {
    AddMeasurements();
  } else {
    Trap(u"StatGraphics::CopyPage"_s, [this] {
      CopyPage(*view_->Page());
      ShowSystemMessage(LoadResText(u"The graphics page has been copied.;224"), Icon::Information);
    });
  }
}

std::unique_ptr<StatPage> StatGraphics::MakePage(StatPageOptions options) const {
  options.fittedScale = checkFitScale->isChecked();
  options.runStep = RunStep;
  if (const auto& library = Globals().gLibrary) options.libraryName = QFileInfo(library->Place()).fileName();
  return std::make_unique<StatPage>(*data_, options);
}

// False where there is no scale to draw on, which has then been said.
bool StatGraphics::StartStatGraphics() {
  return Trap(u"StatGraphics::StartStatGraphics"_s, true, [this] {
    try {
      view_->SetPage(MakePage({}));
      return true;
    } catch (const ScaleError& error) {
      ShowSystemMessage(LoadResText(error.Reference()), Icon::Critical);
      return false;
    }
  });
}

void StatGraphics::UpdateStatGraphicsText() {
  Trap(u"StatGraphics::UpdateStatGraphicsText"_s, [this] {
    lblDescription->setText(data_->Description());
    // A data set in control may still carry the number of an older verdict.
    const bool inControl = data_->IsInControl();
    const qint16 violation = inControl ? qint16(0) : data_->RuleViolation();
    orvLEDControl1->SetColorValue(inControl ? Led::Go : Led::Stop);
    orvLEDControl1->SetOn(true);
    panelRuleViolationValue->setText(inControl ? LoadResText(u"<none>;295") : QString::number(violation));
    panelMessage->setText(GlobalFunctions::RuleViolationText(violation));
    ProcessStateIndicator1->SetValue(data_->ProcessState());

    StatSummary1->Show(*data_);
  });
}

void StatGraphics::ShowAnew() {
  if (!StartStatGraphics()) return reject();
  UpdateStatGraphicsText();
}

void StatGraphics::FitScale(bool fitted) {
  if (StartStatGraphics()) return;
  // The page in view still has the other scale.
  const QSignalBlocker blocker(checkFitScale);
  checkFitScale->setChecked(!fitted);
}

void StatGraphics::ZoomOnSelectedGraph() {
  Trap(u"StatGraphics::ZoomOnSelectedGraph"_s, [this] {
    if (!view_->ToggleZoom()) return;
    const bool zoomed = view_->IsZoomed();
    Toolbar1->SetCaption(Zoom, LoadResText(zoomed ? u"Zoom Out;223" : u"Zoom In;212"),
                         zoomed ? Symbol::ZoomOut : Symbol::ZoomIn);
  });
}

void StatGraphics::ExportQCReport() {
  Trap(u"StatGraphics::ExportQCReport"_s, [this] {
    // Ended by a separator it is a folder, whether it exists or not.
    const QString folder = QCoreApplication::applicationDirPath() + QDir::separator() + u"Dat"_s;
    const QString file = FileDialog::Ask({FileDialog::Kind::Save, Words::Chart::exportTitle(),
                                          Words::Chart::csfFiles(), folder + QDir::separator(), u"csf"_s});
    if (file.size() > 1) CsfExport::WriteCsf(*data_, file);
  });
}

void StatGraphics::PrintPage() {
  Trap(u"StatGraphics::PrintPage"_s, [this] {
    const auto page = MakePage({.printedHead = true, .printedAt = Globals().clock->Now()});
    if (view_->IsZoomed()) page->Blowup(view_->Page()->Selected());
    printing_.PrintPage(*page);
  });
}

void StatGraphics::Recalculate() {
  Trap(u"StatGraphics::Recalculate"_s, [this] {
    if (data_->NumberOfPlotPoints() < fewestToRecalculate) {
      ShowInformationMessage(LoadResText(u"Not enough data points;225"));
      return;
    }
    {
      const QScopedValueRollback recalculating(isRecalculating_, true);
      links_.openRecalcScreen(this, data_);
    }
    if (!Globals().gLimitsRecalculated) return LibraryChanged();
    dataChanged_ = true;
    ShowAnew();
  });
}

void StatGraphics::AddMeasurements() {
  Trap(u"StatGraphics::AddMeasurements"_s, [this] {
    // What is added is judged by the limits that the library holds.
    if (!Form_Unload()) return;
    dataChanged_ = false;
    TakeFromCollection();
    links_.openAddMeasurements(this);
    TakeFromCollection();
    ShowAnew();
  });
}

bool StatGraphics::Save() {
  return Trap(u"StatGraphics::Save"_s, false, [this] {
    const SharedSave::Result result = SharedSave::Save(data_);
    if (result.outcome == SharedSave::Outcome::NotSaved) return false;
    dataChanged_ = false;
    DataObjectFunctions::ModifyDataObjectInSystem(std::make_shared<CData>(*data_));  // the list too
    UpdateStatGraphicsText();
    const QString now = TimeText();
    if (result.outcome == SharedSave::Outcome::TookTheirs)
      ShowNews(Words::Sharing::updated(now));
    else
      ShowNews(result.takenIn.isEmpty() ? Words::Sharing::saved(now)
                                        : Words::Sharing::savedAndTakenIn(now, result.takenIn));
    return true;
  });
}

// False where the user keeps the screen open, or what he wants saved cannot be.
bool StatGraphics::Form_Unload() {
  if (!dataChanged_) return true;
  const Answer answer = ShowSystemMessage(LoadResText(u"Data has changed;226"), Icon::Question,
                                          MessageBox::Buttons::YesNoCancel);
  if (answer == Answer::Yes) return Save();
  return answer == Answer::No;
}

void StatGraphics::Show(const CData& dataSet) {
  *data_ = dataSet;
  StartStatGraphics();
  UpdateStatGraphicsText();
}

void StatGraphics::TakeFromCollection() {
  CDataPtr present;
  DataObjectFunctions::GetDataObjectByID(data_->ID(), present);
  if (present) *data_ = *present;
}

void StatGraphics::ShowNews(const QString& news) { lblNews->setText(news); }

void StatGraphics::LibraryChanged() {
  CDataPtr present;
  DataObjectFunctions::GetDataObjectByID(data_->ID(), present);
  if (!present) return ShowNews(Words::Sharing::deletedWhileOpen(TimeText()));
  if (present->RowAsKnown() == data_->RowAsKnown()) return;
  if (dataChanged_ || isRecalculating_ || present->NumberOfPlotPoints() < fewestToOpen)
    return ShowNews(Words::Sharing::changedBeneath(TimeText()));
  Show(*present);
  ShowNews(Words::Sharing::updated(TimeText()));
}

void StatGraphics::reject() {
  if (Trap(u"StatGraphics::Form_Unload"_s, true, [this] { return Form_Unload(); })) QDialog::reject();
}
