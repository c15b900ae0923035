#include "screens/frmUnits.h"

#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>
#include <algorithm>

#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/StartUp.h"
#include "core/Trap.h"
#include "data/CData.h"
#include "data/Names.h"
#include "platform/ui/Mnemonics.h"
#include "screens/Controls.h"
#include "screens/Help.h"
#include "screens/ReadOnly.h"
#include "screens/RecordBar.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/UnitWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

namespace {

const QString allUnits = u"SELECT * FROM Units"_s;

// A locked box takes the ground's colour, so that it is seen before something is typed in vain.
void Lock(QLineEdit* box, bool locked) {
  box->setReadOnly(locked);
  QPalette palette;
  if (locked) palette.setColor(QPalette::Base, palette.color(QPalette::Window));
  box->setPalette(palette);
}

// Which data sets have that unit, in words; empty where none has.
QString UsersOf(const QString& unit) {
  QStringList users;
  for (const CDataPtr& dataSet : Globals().gDataCollection)
    if (Names::Key(dataSet->UnitOfMeasurement().trimmed()) == Names::Key(unit))
      users << dataSet->Description();
  if (users.isEmpty()) return {};
  return users.size() == 1 ? Words::Units::usedByOne(users[0])
                           : Words::Units::usedBySeveral(users.size(), users[0]);
}

}  // namespace

frmUnits::frmUnits(QWidget* parent) : QDialog(parent) {
  Trap(u"frmUnits::Form_Load"_s, [this] {
    BuildControls();
    GlobalFunctions::OpenFilteredRecordset(recordset_, allUnits, u"ID=-1"_s, true);
    ClearBoxes();
    UpdateButtons();
    ReadOnly::RestWithBoxes(*this, {u"qsMenuBar1_1"_s, u"qsMenuBar1_2"_s, u"qsMenuBar1_3"_s});
    InstallHelpKey(this, HelpTopics::Units);
  });
}

void frmUnits::BuildControls() {
  setObjectName(u"frmUnits"_s);
  setWindowTitle(LoadResText(u"Unit Of Measurement Configuration;119"));
  setModal(true);

  qsMenuBar1 = new RecordBar(u"qsMenuBar1"_s, this);
  Mnemonics mnemonics(u"ASDRFPNLHX"_s);  // the bar's
  const auto label = [&](const QString& name, const QString& caption, QLineEdit* buddy) {
    auto* made = Named(new QLabel(mnemonics.Mark(caption), this), name);
    made->setBuddy(buddy);
    return made;
  };
  txtName = Named(new QLineEdit(this), u"txtName"_s);
  txtName->installEventFilter(this);
  txtDescription = Named(new QLineEdit(this), u"txtDescription"_s);
  lblRecord = Named(new QLabel(this), u"lblRecord"_s);
  lblRecord->setWordWrap(true);
  lblRecord->setAlignment(Qt::AlignLeft | Qt::AlignTop);

  auto* form = new QFormLayout;
  form->setContentsMargins(9, 9, 9, 9);
  form->addRow(label(u"LblName"_s, LoadResText(u"Name;120") + u": *"_s, txtName), txtName);
  form->addRow(label(u"lblDescription"_s, LoadResText(u"Description;121") + u':', txtDescription),
               txtDescription);
  form->addRow(lblRecord);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(qsMenuBar1);
  layout->addLayout(form);
  layout->addStretch();
  setMinimumWidth(std::min(qsMenuBar1->sizeHint().width(), RoomFor(*this).width()));
  setTabOrder(txtName, txtDescription);
  txtName->setFocus();
  ConnectControls();
}

void frmUnits::ConnectControls() {
  connect(qsMenuBar1, &RecordBar::Command, this, &frmUnits::RunCommand);
  ChangeMonitorTimer.setObjectName(u"ChangeMonitorTimer"_s);
  connect(&ChangeMonitorTimer, &QTimer::timeout, this, &frmUnits::MonitorChanges);
  ChangeMonitorTimer.start(250);
  ExitTimer.setObjectName(u"ExitTimer"_s);
  ExitTimer.setInterval(100);
  ExitTimer.setSingleShot(true);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this,
          [this] { RunCommand(RecordBar::RefreshList); });
  connect(&ExitTimer, &QTimer::timeout, this, &QDialog::close);
}

void frmUnits::RunCommand(int command) {
  Trap(u"frmUnits::qsMenuBar1_Click"_s, [&] {
    switch (command) {
      case RecordBar::Add:
        return AddUnit();
      case RecordBar::Save:
        return SaveUnit();
      case RecordBar::Delete:
        return DeleteUnit();
      case RecordBar::RefreshList:
        return RefreshList();
      case RecordBar::First:
      case RecordBar::Previous:
      case RecordBar::Next:
      case RecordBar::Last:
        return Move(command);
      case RecordBar::Help:
        return CallUpHelp(HelpTopics::Contents);
      case RecordBar::Exit:
        return ExitTimer.start();  // so that the form does not close inside the bar's click
      default:
        return;
    }
  });
}

void frmUnits::AddUnit() {
  if (!ResolvePendingChanges()) return;
  IsNewRecord = true;
  note_.clear();
  ClearBoxes();
  ScreenChanged = true;
  UpdateButtons();
  txtName->setFocus();
}

void frmUnits::SaveUnit() {
  if (txtName->text().trimmed().isEmpty())
    return ShowErrorMessage(false, LoadResText(u"Units Of Measurement requires a unique name;118"), {});
  if (!SaveCurrentData()) return;
  if (!isListed_) ListAll();  // among the others it stays in sight
  RefreshScreen();
  saved_ = txtName->text();
  UpdateButtons();
}

// A deleted unit's name is free again. A test that failed has been reported and says nothing of the name.
bool frmUnits::NameIsFree() const {
  bool failed = false;
  const QString name = txtName->text().trimmed();
  bool exists = QCGlobalFunctions::IsDuplicateName(u"Units"_s, u"Deleted = 0 AND Name"_s, name, &failed);
  // The table's own comparison knows the case of plain letters only.
  if (!failed && !exists) exists = CurrentLibrary()->OffersUnit(name);
  if (exists)
    ShowErrorMessage(false,
                     LoadResText(u"The Unit Of Measurement entered already exists. Unit Of Measurement names "
                                 u"must be unique.;117"),
                     {});
  return !exists && !failed;
}

bool frmUnits::SaveCurrentData() {
  const bool saved = Trap(u"frmUnits::SaveCurrentData"_s, false, [this] {
    do {
      if (IsNewRecord ? !NameIsFree() : !SettleWithOthers()) return false;
    } while (!WriteUnit());
    IsNewRecord = false;
    return true;
  });
  // What could not be written must not be written by the next move either.
  if (!saved && IsOpen()) recordset_.CancelUpdate();
  return saved;
}

// False where others were quicker since it was settled with them, and nothing is written.
bool frmUnits::WriteUnit() {
  const QString name = txtName->text().trimmed();
  recordset_.SetActiveConnection(CurrentConnection());  // the library may have been opened anew
  Transaction transaction(CurrentConnection());
  CurrentLibrary()->LockUnits();
  const auto theirs = IsNewRecord ? std::nullopt : TextsInTable();
  const bool isSettled = IsNewRecord
                             ? !CurrentLibrary()->OffersUnit(name)
                             : theirs && theirs->description == recordset_.Field(u"Description"_s).toString();
  if (!isSettled) return false;
  if (IsNewRecord) recordset_.AddNew();
  recordset_.SetField(u"Name"_s, name);
  // An emptied description never overwrites the stored one.
  if (!txtDescription->text().isEmpty()) recordset_.SetField(u"Description"_s, txtDescription->text());
  recordset_.Update();
  transaction.Commit();
  return true;
}

void frmUnits::DeleteUnit() {
  QString question = LoadResText(u"Are you sure you want to delete the current Unit Of Measurement?;113");
  if (const QString users = UsersOf(recordset_.Field(u"Name"_s).toString()); !users.isEmpty())
    question += u"\r\n"_s + users;
  const Answer answer = MessageBox::Show(
      {question, LoadResText(u"Confirmation;111"), MessageBox::Icon::Question, MessageBox::Buttons::YesNo});
  if (answer != Answer::Yes) return;
  const qint32 id = recordset_.Field(u"ID"_s).toInt();
  const qint64 position = recordset_.AbsolutePosition();
  if (!QCGlobalFunctions::MarkRecordAsDeletedByID(u"Units"_s, id))
    return ShowErrorMessage(true, LoadResText(u"Failed to delete the current Unit Of Measurement;114"), {});
  ShowInformationMessage(LoadResText(u"The current Unit Of Measurement has been deleted;115"));
  QCGlobalFunctions::MoveOffOldRecord(recordset_, IsNewRecord);
  MoveTo(position - 1);
  RefreshScreen();
}

// To the record at that place, counted from 1, or the one that is nearest to it.
void frmUnits::MoveTo(qint64 position) {
  if (recordset_.RecordCount() == 0) return;
  recordset_.MoveFirst();
  for (qint64 at = 1; at < std::min(position, recordset_.RecordCount()); ++at) recordset_.MoveNext();
}

// Stays at the unit that is shown.
bool frmUnits::ListAll() {
  const qint32 id = IsOpen() && recordset_.RecordCount() > 0 ? CurrentID() : 0;
  isListed_ = GlobalFunctions::OpenFilteredRecordset(recordset_, allUnits, {}, true);
  if (isListed_) FindUnit(id);
  return isListed_;
}

void frmUnits::RefreshList() {
  if (!ResolvePendingChanges()) return;
  if (!ListAll()) return;
  if (recordset_.RecordCount() > 0) QCGlobalFunctions::MoveToFirstRecord(recordset_, IsNewRecord);
  IsNewRecord = false;
  RefreshScreen();
}

void frmUnits::Move(int command) {
  const qint64 position = recordset_.AbsolutePosition();
  const bool isFirst = recordset_.BOF() || position < 2;
  const bool isLast = recordset_.EndOfFile() || position >= recordset_.RecordCount();
  if (command == RecordBar::Previous && isFirst) return;
  if (command == RecordBar::Next && isLast) return;
  if (recordset_.RecordCount() == 0 || !ResolvePendingChanges()) return;
  using namespace QCGlobalFunctions;
  if (command == RecordBar::First) MoveToFirstRecord(recordset_, IsNewRecord);
  if (command == RecordBar::Previous) MoveToPreviousRecord(recordset_, IsNewRecord);
  if (command == RecordBar::Next) MoveToNextRecord(recordset_, IsNewRecord);
  if (command == RecordBar::Last) MoveToLastRecord(recordset_, IsNewRecord);
  RefreshScreen();
}

bool frmUnits::ResolvePendingChanges() {
  // What was typed since the monitor's last tick counts as well.
  ScreenChanged = ScreenChanged || TextsInBoxes() != snapshot_;
  if (!ScreenChanged) return true;
  const Answer answer = QCGlobalFunctions::PromptForChanges();
  if (answer == Answer::Cancel) return false;
  keepsTyped_ = false;
  if (answer == Answer::Yes) SaveUnit();
  if (keepsTyped_) return false;
  ScreenChanged = false;
  return true;
}

frmUnits::Texts frmUnits::TextsInBoxes() const { return {txtName->text(), txtDescription->text()}; }

void frmUnits::ClearBoxes() {
  txtName->clear();
  txtDescription->clear();
}

void frmUnits::TakeSnapshot() {
  snapshot_ = TextsInBoxes();
  SnapshotTaken = true;
  news_.clear();
  note_.clear();
  saved_.clear();
  ScreenChanged = false;
}

void frmUnits::MonitorChanges() {
  if (!SnapshotTaken) TakeSnapshot();
  ScreenChanged = TextsInBoxes() != snapshot_;
  UpdateButtons();
}

void frmUnits::RefreshScreen() {
  UpdateScreenFields();
  UpdateButtons();
}

void frmUnits::UpdateScreenFields() {
  ClearBoxes();
  if (recordset_.RecordCount() > 0) {
    txtName->setText(recordset_.Field(u"Name"_s).toString());
    txtDescription->setText(recordset_.Field(u"Description"_s).toString());
    txtDescription->setFocus();
  }
  TakeSnapshot();
}

void frmUnits::UpdateButtons() {
  const auto states = QCGlobalFunctions::UpdateMenuButtonStates(recordset_);
  qsMenuBar1->SetEnabled(RecordBar::Add, IsOpen());
  qsMenuBar1->SetEnabled(RecordBar::Save, ScreenChanged);
  qsMenuBar1->SetEnabled(RecordBar::Delete, states.currentRecord && !IsNewRecord);
  for (const int command : {RecordBar::First, RecordBar::Previous})
    qsMenuBar1->SetEnabled(command, states.firstAndPrevious);
  for (const int command : {RecordBar::Next, RecordBar::Last})
    qsMenuBar1->SetEnabled(command, states.nextAndLast);

  Lock(txtName, !IsNewRecord);
  Lock(txtDescription, !IsNewRecord && !states.currentRecord);
  QString record = isListed_ ? Words::Units::none() : Words::Units::noneShown();
  if (IsNewRecord)
    record = Words::Units::newUnit();
  else if (states.currentRecord)
    record = Words::Units::place(recordset_.AbsolutePosition(), recordset_.RecordCount());
  // No longer once something else has been typed.
  const bool isSaved = !saved_.isEmpty() && !ScreenChanged;
  QStringList lines{record, isSaved ? Words::Units::saved(saved_) : QString(), note_, news_};
  lines.removeAll(QString());
  lblRecord->setText(lines.join(u'\n'));
  // A wrapped text claims no room of its own in the window around it.
  const int needed = isVisible() ? lblRecord->heightForWidth(lblRecord->width()) : 0;
  lblRecord->setMinimumHeight(std::max(fontMetrics().lineSpacing() * 3, needed));
}

void frmUnits::reject() {
  Trap(u"frmUnits::Form_Unload"_s, [this] {
    if (ResolvePendingChanges()) QDialog::reject();
  });
}

// What is typed into a locked name begins a unit, or is told why it cannot.
bool frmUnits::eventFilter(QObject* watched, QEvent* event) {
  if (watched == txtName && txtName->isReadOnly() && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isText = !key->text().isEmpty() && key->text().at(0).isPrint() &&
                        !key->modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier);
    if (IsOpen() && (isText || key->matches(QKeySequence::Paste))) {
      if (recordset_.RecordCount() == 0) {
        AddUnit();
      } else {
        note_ = Words::Units::nameStays();
        UpdateButtons();
      }
    }
  }
  return QDialog::eventFilter(watched, event);
}

void frmUnits::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QDialog::keyPressEvent(event);
  MonitorChanges();
  QAction* save = qsMenuBar1->Button(RecordBar::Save);
  setAttribute(Qt::WA_KeyboardFocusChange);  // where it has gone can be seen
  if (focusWidget() == txtDescription && save->isEnabled())
    qsMenuBar1->widgetForAction(save)->setFocus(Qt::TabFocusReason);
  else
    focusNextChild();
}
