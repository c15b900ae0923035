// The main window beside others: a second start of the program that hands its library over.
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QScopedValueRollback>
#include <utility>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "screens/DatabaseChoice.h"
#include "screens/LibraryView.h"
#include "screens/frmMain.h"
#include "texts/SharingWords.h"

using namespace Qt::StringLiterals;

void frmMain::ShowNews(const QString& news) {
  panel1_->setText(news);
  NewsTimer.start();
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
  if (front != this) ShowNews(Words::Sharing::opensLater(QDir::toNativeSeparators(path)));
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
    ShowNews(Words::Sharing::notOpened(QDir::toNativeSeparators(handedOver_)));
    handedOver_.clear();
    return HandOverTimer.stop();
  }
  HandOverTimer.stop();
  AttachForThisRun(std::exchange(handedOver_, {}));
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
