// The main window while it reads the library: the rows of the list, and what stands in their place.
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <span>
#include <utility>

#include "core/DataObjectFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "core/clsWaitTimer.h"
#include "platform/language/Conversions.h"
#include "platform/system/EventPump.h"
#include "screens/ListFilter.h"
#include "screens/MainList.h"
#include "screens/frmMain.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int frameMilliseconds = 40;  // how often the growing list is painted
}

void frmMain::InitTimer_Timer() {
  // Fires again, a second later, while an earlier load still shows its result.
  if (IsClosing || phase_ != Phase::Idle) return;
  Trap(u"frmMain::InitTimer_Timer"_s, [this] {
    InitTimer.stop();
    const QScopedValueRollback phase(phase_, Phase::Loading);
    UpdateToolbarStates();
    filter_->ShowAll();
    ListView1->header()->setSortIndicator(-1, Qt::AscendingOrder);
    if (ReadCollection()) ProcessMainListData();
  });
  if (IsClosing) return;
  ShowHint();
  ShowPanelText();
  ClockTimer.start();
  WatchTimer.start(watchMilliseconds);
  InitComplete = true;
  UpdateToolbarStates();
}

bool frmMain::ReadCollection() {
  ListView1->Clear();
  ListView1->SetHint({});
  ClearSummary();
  watch_.reset();
  Globals().gUnread = {};
  if (!Globals().gDatabaseOpen) return false;
  // First: what changes while it is read counts.
  watch_ =
      std::make_unique<CollectionWatch>([this] { QTimer::singleShot(0, this, &frmMain::ReadLibraryNews); });
  FillTimer.start();
  const bool isRead = DataObjectFunctions::InitializeCDataCollection();
  FillTimer.stop();
  return isRead;
}

// Who waits for a large library sees what there is of it.
void frmMain::ShowRowsRead() {
  const std::span<const CDataPtr> collection(Globals().gDataCollection);
  const auto shown = static_cast<size_t>(ListView1->Rows().Total());
  if (!IsClosing && shown < collection.size()) ListView1->AddRows(collection.subspan(shown));
}

void frmMain::ProcessMainListData() {
  Trap(u"frmMain::ProcessMainListData"_s, [this] {
    panel1_->setText(LoadResText(u"Reading Database:;190"));
    ccrpProgressBar1->setValue(0);
    ccrpProgressBar1->show();
    PopulateMainList();
    ccrpProgressBar1->hide();
    if (IsClosing) return;
    panel1_->setText(LoadResText(u"Database Loaded;191"));
    clsWaitTimer().WaitTimer(1000);
  });
}

void frmMain::PopulateMainList() {
  const std::span<const CDataPtr> collection(Globals().gDataCollection);
  const size_t count = collection.size();
  if (count < 1) return;
  Clock& clock = *Globals().clock;
  clsWaitTimer wait;
  const qint32 delay = Conversions::CLng(1000.0 / double(count));
  qint64 due = clock.GetTickCount();
  qint64 lastShown = due;
  auto shown = static_cast<size_t>(ListView1->Rows().Total());  // while it was read
  for (size_t i = 0; i < count; ++i) {
    DoEvents();
    if (IsClosing) return;
    due += delay;
    const qint64 now = clock.GetTickCount();
    // Painting the list for every one of thousands of rows would take much longer than the second there is.
    const bool isDue = i == 0 || i + 1 == count || now < due || now - lastShown >= frameMilliseconds;
    if (isDue && i >= shown) {
      ListView1->AddRows(collection.subspan(shown, i + 1 - shown));
      shown = i + 1;
      lastShown = now;
    }
    const double share = double(i + 1) / double(count);
    if (ccrpProgressBar1->value() < 95) ccrpProgressBar1->setValue(Conversions::CLng(share * 100));
    if (i == 0) FollowList();
    // A wait lasts at least ten milliseconds. Waiting until the row's own due time, not for the delay, keeps
    // that from adding up to ten seconds for a thousand rows.
    if (now < due) wait.WaitTimer(qint32(due - now));
    if (IsClosing) return;
  }
  ccrpProgressBar1->setValue(100);
  phase_ = Phase::Announcing;
  UpdateToolbarStates();
  wait.WaitTimer(1000);
}

void frmMain::ReloadLibrary() {
  if (IsClosing) return;
  Trap(u"frmMain::ReloadLibrary"_s, [this] {
    const QString added = std::exchange(added_, {});
    const QString selected = added.isEmpty() ? ListView1->CurrentDescription() : added;
    const QScopedValueRollback phase(phase_, Phase::Loading);
    UpdateToolbarStates();
    const int scrolled = ListView1->verticalScrollBar()->value();
    if (!ReadCollection() || IsClosing) return;
    ShowRowsRead();
    ListView1->Select(DataObjectFunctions::GetCurrentDataObjectID(selected));
    FollowList();
    if (added.isEmpty()) ListView1->verticalScrollBar()->setValue(scrolled);
  });
  ShowHint();
  ShowPanelText();
  UpdateToolbarStates();
}

void frmMain::ShowHint() {
  const ProgramState& state = Globals();
  if (!state.gDatabaseOpen)
    ListView1->SetHint({});  // the start page says it
  else if (state.gDataCollection.empty() && state.gUnread != Unread())
    ListView1->SetHint(Words::Sharing::nothingRead(state.gUnread.Text()));
  else if (state.gDataCollection.empty())
    ListView1->SetHint(Words::Main::noDataSets());
  else
    ListView1->SetHint({});
}
