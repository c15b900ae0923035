// The data editor and its expanded view, driven with clicks and keys.
#include "screens/DataEditor.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "core/DataObjectFunctions.h"
#include "screens/ExpandedDataForm.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

namespace {

QString Column(int count) {
  QString text;
  for (int i = 0; i < count; ++i) text += QString::number(9.5 + (i * 7 % 11) / 10.0) + u"\r\n"_s;
  return text;
}

// Runs act in the modal window that the next event opens, and fails where none comes.
void InModalWindow(const std::function<void(QWidget*)>& act) {
  QTimer::singleShot(0, [act] {
    QWidget* window = QApplication::activeModalWidget();
    ASSERT_TRUE(window);
    act(window);
  });
}

class DataEditorTest : public testing::Test {
 protected:
  DataEditorTest() {
    program.Execute(u"INSERT INTO Units (Name) VALUES ('mm')"_s);
    program.Execute(u"INSERT INTO Units (Name, Deleted) VALUES ('ell', 1)"_s);
    program.state.gAddMode = true;
  }

  // The editor as it stands on the screen, after its one-time set-up.
  DataEditor& Open() {
    editor = std::make_unique<DataEditor>();
    editor->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    Fire(u"ChangeMonitorTimer"_s);
    return *editor;
  }
  DataEditor& OpenExisting() {
    program.state.gAddMode = false;
    program.state.gCurrentDataID = program.Insert(u"BORE"_s);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    return Open();
  }

  template <class Control = QLineEdit>
  Control* Get(const QString& name) const {
    auto* control = editor->findChild<Control*>(name);
    if (!control) throw std::runtime_error("no control " + name.toStdString());
    return control;
  }
  void Fire(const QString& timer) { QMetaObject::invokeMethod(Get<QTimer>(timer), "timeout"); }
  void Click(int toolbarButton) {
    QTest::mouseClick(Get<QToolButton>(u"Toolbar1_%1"_s.arg(toolbarButton)), Qt::LeftButton);
  }
  // Typed where the focus is; Enter moves on.
  void TypeOn(const QStringList& texts) {
    for (const QString& text : texts) {
      QTest::keyClicks(QApplication::focusWidget(), text);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
  }
  void Type(const QString& name, const QString& text) {
    Get(name)->selectAll();
    QTest::keyClicks(Get(name), text);
  }
  void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    Click(3);
    Fire(u"NotesTimer"_s);
  }
  QString Note() const { return Get<QLabel>(u"lblRawDataNote"_s)->text(); }
  QString Hint() const { return Get<QLabel>(u"lblHint"_s)->text(); }
  QString Raw() const { return Get<QPlainTextEdit>(u"txtRawData"_s)->toPlainText(); }
  bool SaveIsEnabled() const { return Get<QToolButton>(u"Toolbar1_1"_s)->isEnabled(); }
  size_t StoredRows() const { return program.Rows(u"SELECT * FROM StatData"_s).size(); }

  TestProgram program;
  std::unique_ptr<DataEditor> editor;
};

TEST_F(DataEditorTest, FromPasteToSavedRowWithTheKeyboard) {
  Open();
  EXPECT_EQ(QApplication::focusWidget(), Get(u"txtDescription"_s));
  EXPECT_FALSE(SaveIsEnabled());
  EXPECT_FALSE(Get<QToolButton>(u"Toolbar1_2"_s)->isEnabled());
  EXPECT_EQ(Get<QComboBox>(u"comboUnits"_s)->count(), 1) << "deleted units are not offered";

  // Description, unit, Edit Units (passed by), the limits, fliers.
  TypeOn({u"shaft"_s, u"m"_s});
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  TypeOn({u"12"_s, u"10"_s, u"8"_s, u"14"_s, u"6"_s});
  EXPECT_EQ(QApplication::focusWidget(), Get<QCheckBox>(u"checkDiscardFliers"_s));
  EXPECT_TRUE(SaveIsEnabled());
  Get<QComboBox>(u"comboSubGroup"_s)->lineEdit()->selectAll();
  QTest::keyClicks(Get<QComboBox>(u"comboSubGroup"_s)->lineEdit(), u"4"_s);
  Paste(Column(41));
  EXPECT_EQ(Note(), u"41 values: 10 subgroups of 4, 1 left over."_s);
  EXPECT_EQ(Get(u"txtMaxSamples"_s)->text(), u"41"_s);

  program.boxes.Expect();
  Click(1);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"Data was saved to the database, but"_s));
  EXPECT_EQ(editor->result(), QDialog::Accepted);
  EXPECT_FALSE(editor->isVisible()) << "an editor left open could add a second row";
  const auto rows = program.Rows(u"SELECT Description, UnitOfMeasurement, SubGroupSize FROM StatData"_s);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0], QVariantList({u"SHAFT"_s, u"MM"_s, 4}));
}

TEST_F(DataEditorTest, EditsAndShowsWhatWasStored) {
  OpenExisting();
  EXPECT_EQ(Get(u"txtUSL"_s)->text(), u"12.0000"_s);
  EXPECT_EQ(Get(u"txtLowFlier"_s)->text(), u".0000"_s);
  EXPECT_EQ(Get<QComboBox>(u"comboUnits"_s)->currentText(), u"mm"_s) << "stored in upper case";
  EXPECT_EQ(Get<QListWidget>(u"lstSensitivity"_s)->currentRow(), 1);
  EXPECT_TRUE(Get<QCheckBox>(u"checkUseAllSamples"_s)->isChecked());

  Type(u"txtDescription"_s, u"other"_s);
  Fire(u"ChangeMonitorTimer"_s);
  Fire(u"NotesTimer"_s);
  EXPECT_TRUE(Hint().contains(u"keeps its description"_s));

  QTest::mouseClick(Get<QCheckBox>(u"checkUseAllSamples"_s), Qt::LeftButton, {}, {8, 8});
  Fire(u"NotesTimer"_s);
  Type(u"txtMaxSamples"_s, u"30"_s);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  Click(1);
  EXPECT_EQ(program.boxes.Take().text, u"10 samples will be discarded upon save. Continue?"_s);
  EXPECT_EQ(program.boxes.Take().text, u"All data successfully saved."_s);
  EXPECT_EQ(Get(u"txtDescription"_s)->text(), u"BORE"_s);
  EXPECT_EQ(Raw().trimmed().count(u'\n') + 1, 30);
  EXPECT_EQ(Get(u"txtMaxSamples"_s)->text(), u"30"_s);
  EXPECT_FALSE(SaveIsEnabled());
  QTest::keyClick(editor.get(), Qt::Key_Escape);  // and nothing is asked
  EXPECT_FALSE(editor->isVisible());
}

TEST_F(DataEditorTest, ARefusedSaveKeepsTheFieldsAndGoesToTheFault) {
  Open();
  Type(u"txtUSL"_s, u"12,5"_s);
  Fire(u"NotesTimer"_s);
  EXPECT_EQ(Hint(), u"Upper limit: write the decimal point, 12.5."_s);
  Paste(Column(8));
  program.boxes.Expect();
  Click(1);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"The required fields"_s));
  EXPECT_EQ(QApplication::focusWidget(), Get(u"txtDescription"_s));
  EXPECT_EQ(Raw().count(u'\n'), 8);
  EXPECT_EQ(StoredRows(), 0U);
  Type(u"txtUSL"_s, u"12"_s);
  Get<QCheckBox>(u"checkCalculateControlLimitsOnSave"_s)->click();
  for (const QString& box : {u"txtXUCL"_s, u"txtXLCL"_s, u"txtRUCL"_s, u"txtRLCL"_s})
    Get(box)->setText(u"1"_s);
  Fire(u"NotesTimer"_s);
  EXPECT_TRUE(Hint().startsWith(u"The control limits of a new data set are always calculated"_s));
  program.boxes.Expect(Answer::No);
  editor->close();

  program.Execute(u"UPDATE Units SET Deleted = 1"_s);
  Open();
  EXPECT_TRUE(Hint().contains(u"Edit Units"_s)) << "there is nothing to choose from";
}

TEST_F(DataEditorTest, ClosingAsksOnlyWhereSomethingWouldBeLost) {
  Open();
  Click(4);
  EXPECT_FALSE(editor->isVisible());

  Open();
  Type(u"txtDescription"_s, u"x"_s);
  program.boxes.Expect(Answer::Cancel);
  QTest::keyClick(editor.get(), Qt::Key_Escape);
  EXPECT_TRUE(editor->isVisible());
  // Yes saves first, and a save that is refused keeps the editor.
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  QTest::keyClick(editor.get(), Qt::Key_Escape);
  EXPECT_TRUE(editor->isVisible());
  program.boxes.Expect(Answer::No);
  QTest::keyClick(editor.get(), Qt::Key_Escape);
  EXPECT_FALSE(editor->isVisible());

  OpenExisting();
  Type(u"txtUSL"_s, u"13"_s);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  editor->close();
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(program.Rows(u"SELECT UpperSpecLimit FROM StatData"_s)[0][0], 13.0);
}

TEST_F(DataEditorTest, PastedColumnsKeepClearOfWhatStandsThere) {
  Open();
  Paste(u"1,5\n2,5"_s);
  Paste(u"3\t4"_s);
  EXPECT_EQ(Raw(), u"1.5\n2.5\n3\n4"_s);
  Get<QPlainTextEdit>(u"txtRawData"_s)->moveCursor(QTextCursor::Start);
  Paste(u"8\n9\n"_s);
  EXPECT_EQ(Raw(), u"8\n9\n1.5\n2.5\n3\n4"_s);

  // Ticking "Use all samples" again fills in the number there is now.
  auto* useAll = Get<QCheckBox>(u"checkUseAllSamples"_s);
  useAll->click();
  Fire(u"NotesTimer"_s);
  Type(u"txtMaxSamples"_s, u"5"_s);
  Paste(u"1\n2"_s);
  EXPECT_EQ(Get(u"txtMaxSamples"_s)->text(), u"5"_s);
  useAll->click();
  Fire(u"NotesTimer"_s);
  EXPECT_EQ(Get(u"txtMaxSamples"_s)->text(), u"8"_s);
  program.boxes.Expect(Answer::No);
  editor->close();
}

TEST_F(DataEditorTest, FocusSelectsANumberAndCommandsReachTheirForms) {
  OpenExisting();
  for (const QString& name : {u"txtUSL"_s, u"txtHiFlier"_s}) {
    QTest::mouseClick(Get(name), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(Get(name)->selectedText(), Get(name)->text());
  }

  // A unit added in the units screen is in the list at once.
  InModalWindow([this](QWidget* units) {
    program.Execute(u"INSERT INTO Units (Name) VALUES ('inch')"_s);
    units->close();
  });
  QTest::mouseClick(Get<QPushButton>(u"cmdUnits"_s), Qt::LeftButton);
  EXPECT_EQ(Get<QComboBox>(u"comboUnits"_s)->count(), 2);
  EXPECT_EQ(Get<QComboBox>(u"comboUnits"_s)->currentText(), u"mm"_s);

  const QString before = Raw();
  for (const bool accept : {false, true}) {
    InModalWindow([&](QWidget* expanded) {
      auto* text = expanded->findChild<QPlainTextEdit*>();
      EXPECT_EQ(text->toPlainText(), before);
      QMetaObject::invokeMethod(expanded->findChild<QTimer*>(u"LoadTimer"_s), "timeout");
      EXPECT_EQ(expanded->focusWidget(), text);
      QTest::keyClicks(text, u"10"_s);
      if (!accept) program.boxes.Expect(Answer::No);
      const QString button = accept ? u"cmdAccept"_s : u"cmdClose"_s;
      QTest::mouseClick(expanded->findChild<QPushButton*>(button), Qt::LeftButton);
    });
    QTest::mouseClick(Get<QPushButton>(u"cmdRawData"_s), Qt::LeftButton);
    EXPECT_EQ(Raw(), accept ? before + u"10"_s : before);
  }
  program.boxes.Expect(Answer::No);
  editor->close();
}

TEST_F(DataEditorTest, ThirtyTwoThousandValuesAreShownAtOnceAndOneMoreIsRefused) {
  Open();
  QElapsedTimer clock;
  clock.start();
  Paste(u"12.345\r\n"_s.repeated(32767));
  EXPECT_LT(clock.elapsed(), 1000);
  EXPECT_EQ(Note(), u"32767 values: 32767 subgroups of 1."_s);
  Paste(u"1"_s);
  EXPECT_EQ(Note(), u"32768 values: no more than 32767 can be saved."_s);
  program.boxes.Expect(Answer::No);
  editor->close();
}

TEST_F(DataEditorTest, DoesNotOpenWithoutItsDataSet) {
  program.state.gAddMode = false;
  program.state.gCurrentDataID = 99;
  program.boxes.Expect();
  EXPECT_EQ(DataEditor().exec(), QDialog::Rejected);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(
      u"error attempting to get the current data for the item select\r\n"_s));
}

}  // namespace
