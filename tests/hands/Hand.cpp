// A person at the desktop: works the program's own windows at random, as quickly as they allow, and writes
// down what he tries and what the program tells him. Ended by being killed.
//
// hand LIBRARY LOG NUMBER ROLE SEED: the number makes his values his own, the role is "desk" or "units". A
// line of the log is a word and what belongs to it, with tabs between.
#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QMessageBox>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTreeWidget>

#include "app/Desktop.h"
#include "core/Globals.h"
#include "screens/frmMain.h"
#include "tests/support/Rows.h"
#include "tests/support/Widgets.h"

using namespace Qt::StringLiterals;

namespace {

struct Given {
  QString library, log, number, role;
} given;
QRandomGenerator dice;

bool Chance(int percent) { return dice.bounded(100) < percent; }

// At once in the file, so that it is there when the hand is killed.
void Note(const QStringList& words) {
  static const int file = open(QFile::encodeName(given.log).constData(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  QByteArray line = words.join(u'\t').replace(u'\n', u' ').toUtf8() + '\n';
  if (write(file, line.constData(), size_t(line.size())) < 0) abort();
}

// Nobody else's, and behind all earlier ones of this hand: 9.NNSSSSSK.
QString OwnNumber(int whole, char16_t kind) {
  static int count = 0;
  return u"%1.%2%3%4"_s.arg(whole).arg(given.number).arg(++count, 5, 10, QChar(u'0')).arg(QChar(kind));
}
QString Appended() { return OwnNumber(9, u'1'); }
QString Corrected() { return OwnNumber(9, u'2'); }

QStringList LinesOf(const QString& text) {
  return text.split(QRegularExpression(u"[\\s,]+"_s), Qt::SkipEmptyParts);
}

// What was typed into a form and not saved yet.
struct Typed {
  QStringList added, removed;
} typed;
bool mustCalculate = false;
std::set<QWidget*> busy;

void NoteTry() {
  Note(QStringList{u"try"_s} + typed.added);
  Note(QStringList{u"remove"_s} + typed.removed);
}

void NoteSaved() {
  Note(QStringList{u"saved"_s} + typed.added);
  typed = {};
}

void Press(QWidget& form, const char* action) {
  if (auto& found = Get<QAction>(form, action); found.isEnabled()) found.trigger();
}

void Answer(QMessageBox& box) {
  const QString text = box.text();
  Note({u"box"_s, text.left(150)});
  auto answer = QMessageBox::Yes;
  if (text.contains(u"Do you wish to save these changes"_s) || text.startsWith(u"Data has changed"_s)) {
    answer = Chance(60) ? QMessageBox::Yes : Chance(70) ? QMessageBox::No : QMessageBox::Cancel;
    // What is not to be saved may stay in the form, and be saved later.
    if (answer != QMessageBox::Cancel) NoteTry();
    if (answer == QMessageBox::No) typed = {};
  } else if (text.contains(u"as a new data set?"_s)) {
    if (!Chance(50)) answer = QMessageBox::No;
    if (answer == QMessageBox::Yes) Note({u"new"_s, text.section(u'"', 1, 1)});
  } else if (text.contains(u"successfully saved"_s) || text.contains(u"Data was saved to the database"_s)) {
    NoteSaved();
  } else if (text.contains(u"Calculate Limits On Save"_s)) {
    mustCalculate = true;
  }
  QAbstractButton* button = box.button(answer);
  if (!button) button = box.button(QMessageBox::Ok);
  button->click();
}

// The samples that the library has while the question stands: to keep one's own may take them away.
void NoteOver() {
  for (const QVariantList& row : RowsOf(
           given.library, u"SELECT \"Values\" FROM StatData WHERE ID = %1"_s.arg(Globals().gCurrentDataID)))
    Note(QStringList{u"remove"_s} + LinesOf(row[0].toString()));
}

void Decide(QWidget& question) {
  auto& table = Get<QTableWidget>(question, "tableVersions");
  QStringList subjects;
  for (int row = 0; row < table.rowCount(); ++row) subjects << table.item(row, 0)->text();
  Note(QStringList{u"conflict"_s} + subjects);
  const int choice = dice.bounded(10);
  if (choice < 4) typed = {};
  if (choice >= 6 && subjects.contains(u"the values"_s)) NoteOver();
  Click(question, choice < 4 ? "cmdTheirs" : choice < 6 ? "cmdCancel" : "cmdMine");
}

void ChangeSamples(QPlainTextEdit& box) {
  QStringList samples = LinesOf(box.toPlainText());
  if (samples.isEmpty() || Chance(50)) {
    typed.added << Appended();
    samples << typed.added.last();
  } else {
    QString& sample = samples[dice.bounded(samples.size())];
    if (!typed.added.removeOne(sample)) typed.removed << sample;
    sample = Corrected();
    typed.added << sample;
  }
  box.selectAll();
  box.insertPlainText(samples.join(u'\n') + u'\n');
}

void FillNew(QWidget& form) {
  const QString name = u"NEW %1"_s.arg(OwnNumber(1, u'0'));
  Note({u"new"_s, name});
  Type(form, "txtDescription", name);
  Get<QComboBox>(form, "comboUnits").setCurrentIndex(0);
  Type(form, "txtUSL", u"12"_s);
  Type(form, "txtNominal", u"10"_s);
  Type(form, "txtLSL", u"8"_s);
  Get<QComboBox>(form, "comboSubGroup").setCurrentText(u"2"_s);
  for (int i = 0; i < 16; ++i) typed.added << Appended();
  Get<QPlainTextEdit>(form, "txtRawData").setPlainText(typed.added.join(u'\n'));
}

void AtEditor(QWidget& form) {
  auto& calculate = Get<QAbstractButton>(form, "checkCalculateControlLimitsOnSave");
  if (mustCalculate && !calculate.isChecked()) Click(form, "checkCalculateControlLimitsOnSave");
  mustCalculate = false;
  const int what = given.role == u"units" ? 100 : dice.bounded(100);
  if (Globals().gAddMode && typed.added.isEmpty()) return FillNew(form);
  if (what < 35 && !Globals().gAddMode) return ChangeSamples(Get<QPlainTextEdit>(form, "txtRawData"));
  if (what < 50 && !Globals().gAddMode) return Type(form, "txtUSL", OwnNumber(12, u'3'));
  if (what < 55) return Click(form, "checkCalculateControlLimitsOnSave");
  if (what < 58) return void(QTest::keyClick(&form, Qt::Key_F5));
  if (what < 85) {
    if (!Get<QAction>(form, "Toolbar1_1").isEnabled()) return;
    NoteTry();
    return Press(form, "Toolbar1_1");
  }
  if (what > 97 && typed.added.isEmpty()) return Click(form, "cmdUnits");
  form.close();
}

void AtUnits(QWidget& form) {
  const auto& saveButton = Get<QAction>(form, "qsMenuBar1_2");
  const auto save = [&] {
    Fire(form, "ChangeMonitorTimer");
    if (!saveButton.isEnabled()) return;
    NoteTry();
    Press(form, "qsMenuBar1_2");
    if (!saveButton.isEnabled()) NoteSaved();
  };
  Fire(form, "ChangeMonitorTimer");  // what stood there before anything was typed
  const int what = dice.bounded(100);
  if (what < 20) {
    Press(form, "qsMenuBar1_1");
    const QString name = u"UNIT "_s + OwnNumber(1, u'4');
    Type(form, "txtName", name);
    typed.added << name;
    save();
  } else if (what < 50 && !Get(form, "txtDescription").isReadOnly()) {
    Type(form, "txtDescription", u"about "_s + OwnNumber(1, u'5'));
    save();
  } else if (what < 90) {
    Press(form, what < 70 ? "qsMenuBar1_8" : "qsMenuBar1_9");
  } else {
    form.close();
  }
}

void AtMeasurements(QWidget& form) {
  auto& box = Get<QPlainTextEdit>(form, "txtNewValues");
  if (Chance(40)) return void(form.close());
  typed.added = {Appended(), Appended()};
  box.setPlainText(typed.added.join(u'\n'));
  QCoreApplication::sendPostedEvents();
  Fire(form, "NotesTimer");
  NoteTry();
  Click(form, "cmdAdd");
  if (box.toPlainText().isEmpty()) NoteSaved();
}

void AtCharts(QWidget& form) {
  const int what = dice.bounded(100);
  if (what < 30) return Press(form, "Toolbar1_4");
  if (what < 60) {
    Press(form, "Toolbar1_2");
    return Note({u"chart"_s, TextOf(form, "lblNews")});
  }
  if (what < 70) return Press(form, "Toolbar1_5_3");
  if (what < 75) return void(QTest::keyClick(&form, Qt::Key_F5));
  form.close();
}

void AtRestore(QWidget& form) {
  auto& list = Get<QTreeWidget>(form, "listDeleted");
  if (list.topLevelItemCount() == 0 || Chance(50)) return void(form.close());
  QTreeWidgetItem* row = list.topLevelItem(dice.bounded(list.topLevelItemCount()));
  list.setCurrentItem(row);
  if (Chance(30)) Type(form, "txtName", u"BACK "_s + OwnNumber(1, u'6'));
  Note({u"new"_s, TextOf(form, "txtName")});
  Click(form, "cmdRestore");
  Note({u"restored"_s, TextOf(form, "lblNews")});
}

void AtMain(QWidget& form) {
  auto& list = Get<QTreeView>(form, "ListView1");
  const int rows = list.model()->rowCount();
  if (rows == 0) return;
  typed = {};
  // Mostly one of the first ones, so that the hands meet.
  const QModelIndex row = list.model()->index(dice.bounded(std::min(Chance(80) ? 2 : 100, rows)), 1);
  list.scrollTo(row);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(row).center());
  const int what = given.role == u"units" ? 0 : dice.bounded(100);
  if (what < 45) return Press(form, "Toolbar1_2_2");
  if (what < 52) return Press(form, "Toolbar1_2_1");
  if (what < 56) return Press(form, "Toolbar1_2_3");
  if (what < 66) return Press(form, "Toolbar1_2_4");
  if (what < 90) return Press(form, "Toolbar1_1");
  if (what < 97) return Press(form, "Toolbar1_2_5");
  QTest::keyClick(&form, Qt::Key_F5);
}

void Act(QWidget& window) {
  const QString name = window.objectName();
  if (name == u"MessageBox") return Answer(dynamic_cast<QMessageBox&>(window));
  if (name == u"ConflictForm") return Decide(window);
  if (name == u"DataEditor") return AtEditor(window);
  if (name == u"frmUnits") return AtUnits(window);
  if (name == u"AddMeasurements") return AtMeasurements(window);
  if (name == u"StatGraphics") return AtCharts(window);
  if (name == u"RestoreForm") return AtRestore(window);
  if (name == u"RecalcScreen")
    return Click(window, Chance(70) ? "cmdAll" : Chance(50) ? "cmdRange" : "cmdCancel");
  if (name == u"frmMain") return AtMain(window);
  Note({u"window"_s, name});
  window.close();
}

void Work() {
  QTimer::singleShot(dice.bounded(4, 40), qApp, [] {
    Work();  // first: what he does may open a window that is worked in turn
    QWidget* window = QApplication::activeModalWidget();
    for (QWidget* top : QApplication::topLevelWidgets())
      if (!window && qobject_cast<frmMain*>(top)) window = top;
    if (!window || !busy.insert(window).second) return;
    Act(*window);
    busy.erase(window);
  });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 6) return 2;
  given = {QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]),
           QString::fromLocal8Bit(argv[4])};
  dice.seed(given.number.toUInt() + QByteArray(argv[5]).toUInt());
  qAddPreRoutine(Work);
  int one = 1;
  return RunDesktop(one, argv, given.library);
}
