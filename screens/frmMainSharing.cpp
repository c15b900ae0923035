// The main window beside others: what they change in the library, what was deleted there, and a second start
// of the program that hands its library over.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QPointer>
#include <QScopedValueRollback>
#include <algorithm>
#include <utility>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "screens/DatabaseChoice.h"
#include "screens/LibraryView.h"
#include "screens/MainList.h"
#include "screens/PasswordForm.h"
#include "screens/frmMain.h"
#include "texts/SharingWords.h"
#include "texts/StartWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

void frmMain::ShowPanelText() {
  if (!NewsTimer.isActive()) panel1_->setText(PanelText());
}

void frmMain::ShowNews(const QString& news) {
  panel1_->setText(news);
  NewsTimer.start();
}

// What others change

void frmMain::ReadLibraryNews() {
  if (IsClosing || phase_ != Phase::Idle || InitTimer.isActive() || !watch_) return;
  // A question or a menu is about what is shown now.
  QWidget* front = QApplication::activeModalWidget();
  if ((front && !dynamic_cast<LibraryView*>(front)) || QApplication::activePopupWidget()) return;
  try {
    if (const auto news = watch_->Take()) ShowLibraryNews(*news);
    if (watch_ && watch_->HasMore()) QTimer::singleShot(0, this, &frmMain::ReadLibraryNews);
  } catch (const std::exception& error) {
    Globals().gUnread.library = ErrorText(error);  // not in a box: the timer would bring one after the other
    ShowPanelText();
  }
}

void frmMain::ShowLibraryNews(const CollectionWatch::News& news) {
  if (news.replaced)
    ReopenLibrary();
  else
    ShowNewRows(news);
  if (news.replaced && Globals().gUnread.library.isEmpty()) ShowNews(Words::Sharing::readAgain());
  ShowPanelText();
  // What one of them asks may end another.
  QList<QPointer<QWidget>> windows;
  for (QWidget* window : QApplication::topLevelWidgets()) windows << window;
  for (const auto& window : windows)
    if (auto* view = dynamic_cast<LibraryView*>(window.data()); view && window->isVisible())
      view->LibraryChanged();
}

void frmMain::ShowNewRows(const CollectionWatch::News& news) {
  const auto& collection = Globals().gDataCollection;
  ListView1->Change([&](MainListModel& rows) {
    for (const CDataPtr& dataSet : news.changed) rows.Update(*dataSet);
    for (const CDataPtr& dataSet : news.gone) {
      const bool isThere = Globals().gUnread.rows.contains(dataSet->ID());
      if (dataSet->ID() == Globals().gCurrentDataID && !isThere)
        ShowNews(Words::Sharing::deletedByOthers(dataSet->Description()));
      rows.Remove(dataSet->ID());
    }
    for (const CDataPtr& dataSet : news.added)
      rows.Insert(size_t(std::ranges::find(collection, dataSet) - collection.begin()), *dataSet);
  });
  FollowList();
  ShowHint();
}

void frmMain::ReopenLibrary() {
  try {
    GlobalFunctions::ReopenDatabase();
  } catch (const std::exception& error) {
    Globals().gUnread.library = ErrorText(error);
    WatchTimer.start(retryMilliseconds);
    return ShowPanelText();
  }
  WatchTimer.start(watchMilliseconds);
  ReloadLibrary();
}

void frmMain::RestoreDeleted() {
  Trap(u"frmMain::RestoreDeleted"_s, [this] { screens_.restore(); });
}

bool frmMain::AskPassword(const QString& address, const QString& why) {
  return PasswordForm::Ask(this, address, why);
}

// A second start

void frmMain::ShowLibrary(const QString& path) {
  if (IsClosing) return;
  setWindowState(windowState() & ~Qt::WindowMinimized);
  QWidget* front = QApplication::activeModalWidget();
  if (!front) front = this;
  for (QWidget* window : {static_cast<QWidget*>(this), front}) {
    window->show();
    window->raise();
  }
  front->activateWindow();
  const auto& library = Globals().gLibrary;
  const bool isOpen = library && QFileInfo(library->Place()) == QFileInfo(path);
  handedOver_ = isOpen ? QString() : path;
  if (handedOver_.isEmpty()) return HandOverTimer.stop();
  HandOverTimer.start();
  if (front != this) ShowNews(Words::Sharing::opensLater(HandedOver()));
}

QString frmMain::HandedOver() const {
  if (handedOver_ == newLibrary) return Words::Main::newDatabase();
  if (handedOver_ == sampleLibrary) return Words::Start::sampleTitle();
  return QDir::toNativeSeparators(handedOver_);
}

// One form at a time: what opened it goes on first when it has closed.
void frmMain::HandOverTimer_Timer() {
  if (handedOver_.isEmpty()) return HandOverTimer.stop();
  if (IsClosing || phase_ == Phase::Loading || isClosingForm_) return;
  if (QWidget* form = QApplication::activeModalWidget()) {
    // A question is the user's to answer.
    if (!dynamic_cast<LibraryView*>(form)) return;
    const QScopedValueRollback closing(isClosingForm_, true);
    if (form->close()) return;
    ShowNews(Words::Sharing::notOpened(HandedOver()));
    handedOver_.clear();
    return HandOverTimer.stop();
  }
  HandOverTimer.stop();
  const QString library = std::exchange(handedOver_, {});
  if (library == newLibrary)
    Attach(DatabaseChoice::CreateNew());
  else if (library == sampleLibrary)
    Attach(DatabaseChoice::CreateSamples());
  else
    AttachForThisRun(library);
}

void frmMain::AttachForThisRun(const QString& chosenPath) {
  Trap(u"frmMain::DatabaseConnection"_s, [&] {
    const QString library = DatabaseChoice::LibraryFor(chosenPath, this);
    if (library.isEmpty()) return;
    ProgramState& state = Globals();
    const auto open = state.gLibrary;
    const QString before = std::exchange(state.gDatabaseForThisRun, library);
    GlobalFunctions::AttachDatabase({});
    if (state.gLibrary == open) state.gDatabaseForThisRun = before;
  });
}
