#include "screens/frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLocale>

#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Settings.h"
#include "core/StartUp.h"
#include "core/Trap.h"
#include "core/clsWaitTimer.h"
#include "data/CData.h"
#include "platform/ui/ButtonBar.h"
#include "screens/DatabaseChoice.h"
#include "screens/Indicators.h"
#include "screens/ListFilter.h"
#include "screens/MainList.h"
#include "screens/ReadOnly.h"
#include "screens/StatSummary.h"
#include "texts/ChartWords.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

bool frmMain::Form_Load() {
  return Trap(u"frmMain::Form_Load"_s, false, [this] {
    ProgramState& state = Globals();
    ShowPicture();  // not before the window is on the screen: drawing it would hold that up
    if (!StartUp::ReadSettings(QCoreApplication::applicationDirPath())) return false;
    InitTimer.start();
    if (QString& path = state.gDatabaseForThisRun; !path.isEmpty())
      path = DatabaseChoice::LibraryFor(path, this);
    StartUp::AttachConfiguredDatabase();
    SetupMainFormDisplay();
    return true;
  });
}

// What core asks of the main screen

void frmMain::SetDatabasePanelText(const QString& text) {
  databasePanelText_ = text;
  panel1_->setText(text);
}

QString frmMain::PanelText() const {
  if (ListView1->HasCurrent() && !ListView1->IsCurrentAloneSelected())
    return Words::Main::severalSelected(ListView1->Selected().size());
  const Unread& unread = Globals().gUnread;
  if (!unread.library.isEmpty()) return Words::Sharing::unreadable(unread.library);
  if (unread.rows.empty()) return databasePanelText_;
  return Words::Sharing::notAllRead(databasePanelText_, unread.Text().replace(u'\n', u' '));
}

void frmMain::EnableLoadTimer() { InitTimer.start(); }

// The toolbar's captions, tool tips and pictures never change, so that only the states are left to set.
void frmMain::SetupMainFormDisplay() {
  ShowStartPage(!Globals().gDatabaseOpen);
  UpdateToolbarStates();
}

void frmMain::AddListRow(const CData& dataSet) {
  ListView1->Change([&](MainListModel& rows) { rows.Append(dataSet); });
  if (dataSet.ID() == 0) added_ = dataSet.Description();
}

void frmMain::UpdateListRow(const CData& dataSet) {
  ListView1->Change([&](MainListModel& rows) { rows.Update(dataSet); });
  ShowCurrentSummary();
}

void frmMain::SelectListRow(qint32 id) {
  if (ListView1->Select(id)) MakeCurrent(id);
}

void frmMain::RemoveListRow(qint32 id) {
  ListView1->Change([&](MainListModel& rows) { rows.Remove(id); });
  FollowList();
  ShowHint();
}

std::vector<qint32> frmMain::ListedIDs() const { return ListView1->Rows().ShownIDs(); }

// The selected data set

void frmMain::ItemClick(const QString& description) {
  if (ListView1->HasCurrent())
    MakeCurrent(DataObjectFunctions::GetCurrentDataObjectID(description));
  else
    ClearSummary();
  UpdateToolbarStates();
}

void frmMain::FollowList() { ItemClick(ListView1->CurrentDescription()); }

void frmMain::MakeCurrent(qint32 id) {
  Globals().gCurrentDataID = id;
  ShowCurrentSummary();
}

CDataPtr frmMain::CurrentDataSet() {
  CDataPtr dataSet;
  if (!DataObjectFunctions::GetDataObjectByID(Globals().gCurrentDataID, dataSet) || !dataSet) {
    ShowSystemMessage(
        LoadResText(u"error attempting to get the current data for the item selected: ;203") + u"\r\n"_s,
        Icon::Critical);
    return nullptr;
  }
  return dataSet;
}

// While several are selected, no command takes one of them for the one that is meant.
CDataPtr frmMain::OneSelected() {
  if (ListView1->IsCurrentAloneSelected()) return CurrentDataSet();
  ShowInformationMessage(Words::Main::oneAtATime());
  return nullptr;
}

void frmMain::ShowCurrentSummary() {
  if (IsClosing) return;
  Trap(u"frmMain::ShowCurrentSummary"_s, [this] {
    const CDataPtr dataSet = CurrentDataSet();
    if (!dataSet) return;
    ProcessStateIndicator1->SetValue(dataSet->ProcessState());
    StatSummary1->Show(*dataSet);
  });
}

void frmMain::ClearSummary() {
  Globals().gCurrentDataID = 0;
  ProcessStateIndicator1->SetValue(0);
  StatSummary1->Clear();
}

// Commands

void frmMain::UpdateToolbarStates() {
  if (IsClosing) return;
  const ProgramState& state = Globals();
  const bool open = state.gDatabaseOpen && phase_ != Phase::Loading && !InitTimer.isActive();
  const bool any = open && !state.gDataCollection.empty() && ListView1->HasCurrent();
  const bool writes = open && !ReadOnly::Holds();
  Toolbar1->Button(ViewButton)->setEnabled(any);
  for (const int entry : {2, 7}) Toolbar1->Entry(DataButton, entry)->setEnabled(any);
  for (const int entry : {3, 4, 6}) Toolbar1->Entry(DataButton, entry)->setEnabled(any && writes);
  for (const int entry : {1, 5}) Toolbar1->Entry(DataButton, entry)->setEnabled(writes);
  for (const int entry : {2, 3}) Toolbar1->Entry(ToolsButton, entry)->setEnabled(phase_ != Phase::Loading);
  Toolbar1->Entry(ToolsButton, 6)->setEnabled(open);
  Toolbar1->Button(ExitButton)->setEnabled(InitComplete);
  for (QAction* item : {menuView, mnuEdit, mnuCompare}) item->setEnabled(any);
  for (QAction* item : {mnuDelete, mnuRename, mnuAddMeasurements}) item->setEnabled(any && writes);
}

void frmMain::DoubleClickAction() {
  if (!ListView1->IsCurrentAloneSelected()) return Compare();
  (Globals().gSetup.ListviewDoubleClickViewsChart ? menuView : mnuEdit)->trigger();
}

void frmMain::ViewChart() {
  Trap(u"frmMain::ViewChart"_s, [this] {
    if (OneSelected()) screens_.chart();
  });
}

void frmMain::AddData() {
  Trap(u"frmMain::AddData"_s, [this] {
    Globals().gAddMode = true;
    screens_.editor();
    if (!added_.isEmpty()) ReloadLibrary();
  });
}

void frmMain::EditData() {
  Trap(u"frmMain::EditData"_s, [this] {
    if (!OneSelected()) return;
    Globals().gAddMode = false;
    screens_.editor();
  });
}

void frmMain::DeleteData() {
  Trap(u"frmMain::DeleteData"_s, [this] {
    if (!OneSelected()) return;
    const qint32 id = Globals().gCurrentDataID;
    const QString question = LoadResText(u"Are you sure you want to delete the selected item;250") + u": "_s +
                             DataObjectFunctions::GetDataObjectDescription(id) + u" ?\r\r"_s +
                             LoadResText(u"This operation cannot be undone;251") + u'\r' +
                             Words::Sharing::canBeRestored();
    if (ShowSystemMessage(question, Icon::Question, Buttons::YesNo) != Answer::Yes) return;
    if (QCGlobalFunctions::DeleteRecordByID(u"StatData"_s, id) &&
        DataObjectFunctions::DeleteDataObjectByID(id) &&
        DataObjectFunctions::DeleteDataObjectfromListview(id))
      ShowSystemMessage(LoadResText(u"Selected data successfully deleted.;252"), Icon::Information,
                        Buttons::YesNo);
    UpdateToolbarStates();
  });
}

void frmMain::Rename() {
  Trap(u"frmMain::Rename"_s, [this] {
    if (OneSelected()) screens_.rename();
  });
}

void frmMain::AddMeasurements() {
  Trap(u"frmMain::AddMeasurements"_s, [this] {
    if (OneSelected()) screens_.measurements();
  });
}

void frmMain::Compare() {
  Trap(u"frmMain::Compare"_s, [this] {
    const std::vector<qint32> selected = ListView1->Selected();
    if (selected.size() > 2)
      ShowInformationMessage(Words::Compare::onlyTwo(selected.size()));
    else if (selected.size() == 2)
      screens_.compare(selected[0], selected[1]);
    else if (CurrentDataSet())
      screens_.compare(Globals().gCurrentDataID, 0);
  });
}

void frmMain::Attach(const QString& chosenPath) {
  Trap(u"frmMain::DatabaseConnection"_s, [&] {
    if (chosenPath.isEmpty()) return;
    const QString library = DatabaseChoice::LibraryFor(chosenPath, this);
    if (!library.isEmpty()) GlobalFunctions::AttachDatabase(library);
  });
}

// The clock and the end

void frmMain::ClockTimer_Timer() {
  if (IsClosing) return;
  // The trailing blanks pad the panel.
  panel2_->setText(QLocale::c().toString(Globals().clock->Now(), u"MMM dd, yyyy'     'hh:mm:ss AP'     '"_s));
  UpdateToolbarStates();
}

void frmMain::ExitTimer_Timer() {
  // Waits until the user has closed a screen that he opened meanwhile.
  if (QApplication::activeModalWidget()) return;
  ExitTimer.stop();
  close();
}

void frmMain::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (IsClosing || !InitComplete) return;
  if (!Globals().gRunningInDevelopment &&
      ShowSystemMessage(LoadResText(u"Are you sure you wish to quit using Kestrel?;181"), Icon::Question,
                        Buttons::YesNo) != Answer::Yes)
    return;
  Unload();
  event->accept();
  Q_EMIT Unloaded();
}

void frmMain::KeepLooks() const {
  Settings::Keep(Settings::mainWindowPlace, QString::fromLatin1(saveGeometry().toBase64()));
  Settings::Keep(Settings::mainListColumns, ListView1->ColumnWidths());
}

void frmMain::Unload() {
  Trap(u"frmMain::Form_Unload"_s, [this] {
    IsClosing = true;
    KeepLooks();
    for (QTimer* timer :
         {&InitTimer, &FillTimer, &ClockTimer, &ExitTimer, &WatchTimer, &HandOverTimer, &NewsTimer})
      timer->stop();
    watch_.reset();
    setEnabled(false);
    clsWaitTimer().WaitTimer(1000);
    ProgramState& state = Globals();
    state.gLibrary.reset();
    state.gDatabaseOpen = false;
    DataObjectFunctions::DeleteAllDataObjects();
  });
}
