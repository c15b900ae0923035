#include "screens/StatGraphics.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "charts/CsfExport.h"
#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Settings.h"
#include "core/Trap.h"
#include "data/RawDataText.h"
#include "data/TAVELDataStringFunctions.h"
#include "platform/ui/ButtonBar.h"
#include "platform/ui/FileDialog.h"
#include "screens/MarkList.h"
#include "screens/PageView.h"
#include "screens/PointsBar.h"
#include "screens/ReadOnly.h"
#include "screens/SharedSave.h"
#include "screens/VerdictPanel.h"
#include "texts/ChartWords.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Icon;

namespace {

constexpr int fewestToOpen = RawDataText::fewestPoints;
constexpr int fewestToRecalculate = 5;

QString TimeText() { return Globals().clock->Now().toString(u"HH:mm:ss"_s); }

void TellTooFewPoints(const CData& data) {
  const auto samples = TAVELDataStringFunctions::ValidateDelimitedDataString(data.DelimitedInputString());
  const QString text = LoadResText(u"A minimum of 8 data points are required;185") + u"\r\n\r\n"_s +
                       RawDataText::PointsMissing(samples, data.SubGroupSize());
  ShowSystemMessage(text.trimmed(), Icon::Exclamation);
}

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
  // Save, Recalculate and Add Measurements.
  ReadOnly::Rest(*this, {u"Toolbar1_2"_s, u"Toolbar1_4"_s, u"Toolbar1_5_3"_s});
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
  TakeTrace();
  if (data_->NumberOfPlotPoints() < fewestToOpen) {
    TellTooFewPoints(*data_);
    return false;
  }
  return true;
}

void StatGraphics::ButtonClick(int button) {
  switch (button) {
    case SaveChanges:
      Save();
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
  } else if (entry == 2) {
    Trap(u"StatGraphics::CopyPage"_s, [this] {
      CopyPage(*PageForOutput());
      ShowSystemMessage(LoadResText(u"The graphics page has been copied.;224"), Icon::Information);
    });
  } else if (entry == 3) {
    AddMeasurements();
  } else if (entry == 4) {
    Trap(u"StatGraphics::SavePage"_s, [this] { TellFile(printing_.SavePage(*PageForOutput())); });
  } else if (entry == 5) {
    pointsBar_->show();
    pointsBar_->TakeFocus();
  } else if (entry == 7) {
    NotePoint();
  } else if (entry == 8) {
    ListUnplaced();
  } else if (entry >= 9) {
    StepMark(entry == 9 ? 1 : -1);
  } else {
    EditPoint(view_->ShownPoint() ? view_->ShownPoint()->number : 0);
  }
}

std::unique_ptr<StatPage> StatGraphics::MakePage(StatPageOptions options) const {
  options.fittedScale = checkFitScale->isChecked();
  options.points = points_;
  options.period = period_;
  options.trace = trace_;
  options.axis = static_cast<AxisLabels>(cboAxis->currentIndex());
  options.runStep = RunStep;
  if (const auto& library = Globals().gLibrary) options.libraryName = Library::NameOf(library->Place());
  return std::make_unique<StatPage>(*data_, options);
}

// For paper, files and the clipboard: what is in view, with a head.
std::unique_ptr<StatPage> StatGraphics::PageForOutput() const {
  auto page = MakePage({.printedHead = true, .printedAt = Globals().clock->Now()});
  if (view_->IsZoomed()) page->Blowup(view_->Page()->Selected());
  return page;
}

// False where there is no scale to draw on, which has then been said.
bool StatGraphics::StartStatGraphics() {
  return Trap(u"StatGraphics::StartStatGraphics"_s, true, [this] {
    if (points_ && points_->last > data_->NumberOfPlotPoints()) points_.reset();  // somebody took some away
    if (period_ && !Traced().PointsIn(*period_)) period_.reset();
    try {
      view_->SetPage(MakePage({}));
      ShowScaleNotice();
      return true;
    } catch (const ScaleError& error) {
      ShowSystemMessage(LoadResText(error.Reference()), Icon::Critical);
      return false;
    }
  });
}

void StatGraphics::ShowScaleNotice() {
  const bool isBeyond = view_->Page()->IsBeyondStandardScale();
  const bool isFlat = !isBeyond && !checkFitScale->isChecked() && view_->Page()->IsFlat();
  lblScale->setText(isBeyond ? Words::Chart::alwaysFitted() : Words::Chart::flatScale());
  cmdFitScale->setVisible(isFlat);
  checkFitScale->setEnabled(!isBeyond);
  scaleNotice_->setVisible(isBeyond || isFlat);
}

void StatGraphics::UpdateStatGraphicsText() {
  Trap(u"StatGraphics::UpdateStatGraphicsText"_s, [this] {
    lblDescription->setText(data_->Description());
    if (view_->Page()) verdict_->Show(*data_, *view_->Page());
    for (const int entry : {9, 10})
      Toolbar1->Entry(Utilities, entry)->setEnabled(!verdict_->Marks().IsEmpty());
    cmdPrevious->setEnabled(Neighbour(-1) != nullptr);
    cmdNext->setEnabled(Neighbour(1) != nullptr);
    OfferStretch();
  });
}

void StatGraphics::ShowAnew() {
  if (!StartStatGraphics()) return reject();
  UpdateStatGraphicsText();
}

void StatGraphics::FitScale(bool fitted) {
  if (StartStatGraphics()) return Settings::SetOn(Settings::chartFittedScale, fitted);
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
  Trap(u"StatGraphics::PrintPage"_s, [this] { TellFile(printing_.PrintPage(*PageForOutput())); });
}

void StatGraphics::Recalculate() {
  Trap(u"StatGraphics::Recalculate"_s, [this] {
    if (data_->NumberOfPlotPoints() < fewestToRecalculate) {
      ShowInformationMessage(LoadResText(u"Not enough data points;225"));
      return;
    }
    {
      const QScopedValueRollback recalculating(isRecalculating_, true);
      links_.openRecalcScreen(this, data_, view_->Stretch());
    }
    if (!Globals().gLimitsRecalculated) return LibraryChanged();
    dataChanged_ = true;
    ShowAnew();
    ShowNews(Words::Chart::limitsNotSaved());
    LibraryChanged();  // what somebody else wrote meanwhile is told instead
  });
}

// The change goes to what the library holds, so new limits are settled first.
void StatGraphics::ChangeBelow(const std::function<void()>& change) {
  const auto state = [this] { return std::tuple(dataChanged_, data_->RowAsKnown(), trace_); };
  const auto before = state();
  if (!Form_Unload()) return;
  dataChanged_ = false;
  if (!TakeFromCollection()) return ShowNews(Words::Sharing::deletedWhileOpen(TimeText()));
  // Where this one was deleted for a while, the main list has gone on to another one.
  if (MainScreen* screen = Globals().mainScreen) screen->SelectListRow(data_->ID());
  change();
  TakeFromCollection();
  if (state() == before) return;  // the point in view stays so
  if (data_->NumberOfPlotPoints() >= fewestToOpen) return ShowAnew();
  TellTooFewPoints(*data_);
  reject();
}

void StatGraphics::AddMeasurements() {
  Trap(u"StatGraphics::AddMeasurements"_s,
       [this] { ChangeBelow([this] { links_.openAddMeasurements(this); }); });
}

void StatGraphics::EditPoint(int number) {
  Trap(u"StatGraphics::EditPoint"_s, [&] {
    if (number == 0) return ShowInformationMessage(Words::Marks::choosePoint());
    ChangeBelow([&] { links_.openEditor(this, view_->Page()->FirstSampleOf(number)); });
  });
}

bool StatGraphics::Save() {
  return Trap(u"StatGraphics::Save"_s, false, [this] {
    const SharedSave::Result result = SharedSave::Save(data_);
    if (result.outcome == SharedSave::Outcome::NotSaved) return false;
    dataChanged_ = false;
    DataObjectFunctions::ModifyDataObjectInSystem(data_);  // the list too
    StartStatGraphics();  // the page shows when the data set was last modified
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
  const Answer answer =
      ShowSystemMessage(LoadResText(u"Data has changed;226") + u'\r' + Words::Chart::whatYesDoes(),
                        Icon::Question, MessageBox::Buttons::YesNoCancel);
  if (answer == Answer::Yes) return Save();
  return answer == Answer::No;
}

void StatGraphics::Show(const CData& dataSet) {
  *data_ = dataSet;
  TakeTrace();
  StartStatGraphics();
  UpdateStatGraphicsText();
}

bool StatGraphics::TakeFromCollection() {
  const CDataPtr present = DataObjectFunctions::PresentOf(*data_);
  if (present) *data_ = *present;
  if (present) TakeTrace();
  return present != nullptr;
}

void StatGraphics::ShowNews(const QString& news) { lblNews->setText(news); }

void StatGraphics::TellFile(const QString& path) {
  if (!path.isEmpty()) ShowNews(Words::Chart::pageWritten(path));
}

void StatGraphics::LibraryChanged() {
  const CDataPtr present = DataObjectFunctions::PresentOf(*data_);
  if (!std::exchange(isThere_, present != nullptr) && present) ShowNews({});
  if (!present) return ShowNews(Words::Sharing::deletedWhileOpen(TimeText()));
  if (present->RowAsKnown() == data_->RowAsKnown()) {
    if (TakeTrace()) StartStatGraphics();
    return;
  }
  if (dataChanged_ || isRecalculating_ || present->NumberOfPlotPoints() < fewestToOpen)
    return ShowNews(Words::Sharing::changedBeneath(TimeText()));
  Show(*present);
  ShowNews(Words::Sharing::updated(TimeText()));
}

CDataPtr StatGraphics::Neighbour(int step, QStringList* skipped) const {
  const MainScreen* screen = Globals().mainScreen;
  const std::vector<qint32> listed = screen ? screen->ListedIDs() : std::vector<qint32>();
  const auto here = std::ranges::find(listed, data_->ID());
  if (here == listed.end()) return nullptr;
  for (auto i = here - listed.begin() + step; i >= 0 && i < std::ssize(listed); i += step) {
    CDataPtr candidate;
    DataObjectFunctions::GetDataObjectByID(listed[size_t(i)], candidate);
    if (candidate && candidate->NumberOfPlotPoints() >= fewestToOpen) return candidate;
    if (candidate && skipped) *skipped << candidate->Description();
  }
  return nullptr;
}

void StatGraphics::ShowNeighbour(int step) {
  Trap(u"StatGraphics::ShowNeighbour"_s, [&] {
    QStringList skipped;
    const CDataPtr neighbour = Neighbour(step, &skipped);
    if (!neighbour || !Form_Unload()) return;
    dataChanged_ = false;
    Globals().gCurrentDataID = neighbour->ID();
    if (MainScreen* screen = Globals().mainScreen) screen->SelectListRow(neighbour->ID());
    *data_ = *neighbour;
    TakeTrace();
    points_.reset();
    period_.reset();
    view_->SetStretch(std::nullopt);
    ShowNews(skipped.isEmpty()     ? QString()
             : skipped.size() == 1 ? Words::Neighbour::oneSkipped(skipped.first())
                                   : Words::Neighbour::skipped(skipped.size()));
    ShowAnew();
  });
}

void StatGraphics::reject() {
  if (Trap(u"StatGraphics::Form_Unload"_s, true, [this] { return Form_Unload(); })) QDialog::reject();
}
