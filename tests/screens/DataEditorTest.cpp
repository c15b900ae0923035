// The data editor and its expanded view, driven with clicks and keys.
#include "screens/DataEditor.h"

#include <QClipboard>
#include <QListWidget>
#include <QScreen>
#include <QWheelEvent>

#include "core/DataObjectFunctions.h"
#include "platform/ui/Contrast.h"
#include "screens/ExpandedDataForm.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

namespace {

class DataEditorTest : public testing::Test {
 protected:
  DataEditorTest() {
    program.Execute(u"INSERT INTO Units (Name) VALUES ('mm')"_s);
    program.Execute(u"INSERT INTO Units (Name, Deleted) VALUES ('ell', 1)"_s);
    program.state.gAddMode = true;
  }

  // The editor as it stands on the screen, after its one-time set-up.
  void Open() {
    editor = std::make_unique<DataEditor>();
    editor->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    Fire(*editor, "ChangeMonitorTimer");
  }
  void OpenExisting(const QString& change = {}) {
    program.state.gAddMode = false;
    program.state.gCurrentDataID = program.Insert(u"BORE"_s);
    if (!change.isEmpty()) program.Execute(u"UPDATE StatData SET "_s + change);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    Open();
  }
  // Closed by a key or by the window's own means, with that answer to the question what about the changes.
  void Close(Answer answer, bool byKey = true) {
    program.boxes.Expect(answer);
    if (answer == Answer::Yes) program.boxes.Expect();  // the save's
    if (byKey)
      QTest::keyClick(editor.get(), Qt::Key_Escape);
    else
      editor->close();
  }

  // Typed where the focus is; Enter moves on.
  static void TypeOn(const QStringList& texts) {
    for (const QString& text : texts) {
      QTest::keyClicks(QApplication::focusWidget(), text);
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
  }
  void Enter(const char* name, const QString& text) {
    Type(*editor, name, text);
    Fire(*editor, "NotesTimer");
  }
  void Check(const char* name) {
    Click(*editor, name);
    Fire(*editor, "NotesTimer");
  }
  void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    Click(*editor, "Toolbar1_3");
    Fire(*editor, "NotesTimer");
  }
  bool HasFocus(const char* name) const {
    return QApplication::focusWidget() == &Get<QWidget>(*editor, name);
  }
  QComboBox& Units() const { return Get<QComboBox>(*editor, "comboUnits"); }
  QString Text(const char* name) const { return TextOf(*editor, name); }
  QString Raw() const { return Get<QPlainTextEdit>(*editor, "txtRawData").toPlainText(); }
  bool SaveIsEnabled() const { return Get<QWidget>(*editor, "Toolbar1_1").isEnabled(); }

  TestProgram program;
  std::unique_ptr<DataEditor> editor;
};

TEST_F(DataEditorTest, FromPasteToSavedRowWithTheKeyboard) {
  Open();
  EXPECT_TRUE(HasFocus("txtDescription"));
  EXPECT_FALSE(SaveIsEnabled());
  EXPECT_EQ(Units().count(), 1) << "deleted units are not offered";

  // Description, unit, the limits, fliers: Enter passes Edit Units by where a unit is chosen.
  TypeOn({u"shaft"_s, {}});
  EXPECT_TRUE(HasFocus("cmdUnits"));
  Units().setFocus();
  TypeOn({u"m"_s, u"12"_s, u"10"_s, u"8"_s, u"14"_s, u"6"_s});
  EXPECT_TRUE(HasFocus("checkDiscardFliers"));
  EXPECT_TRUE(SaveIsEnabled());
  QLineEdit* subGroup = Get<QComboBox>(*editor, "comboSubGroup").lineEdit();
  subGroup->selectAll();
  QTest::keyClicks(subGroup, u"4"_s);
  Paste(u"9.5\r\n9.7\r\n"_s.repeated(20) + u"9.6\r\n"_s);
  EXPECT_EQ(Text("lblRawDataNote"), u"41 values: 10 subgroups of 4, 1 left over.");
  EXPECT_EQ(Text("txtMaxSamples"), u"41");

  program.boxes.Expect(u"Data was saved to the database, but");
  Click(*editor, "Toolbar1_1");
  EXPECT_EQ(editor->result(), QDialog::Accepted);
  EXPECT_FALSE(editor->isVisible()) << "an editor left open could add a second row";
  const auto rows = program.Rows(u"SELECT Description, UnitOfMeasurement, SubGroupSize FROM StatData"_s);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0], QVariantList({u"SHAFT"_s, u"mm"_s, 4}));
}

TEST_F(DataEditorTest, EditsAndShowsWhatWasStored) {
  OpenExisting();
  EXPECT_EQ(Text("txtUSL") + Text("txtLowFlier"), u"12.0000.0000");
  EXPECT_EQ(Units().currentText(), u"MM") << "as the data set has it";
  EXPECT_EQ(Get<QListWidget>(*editor, "lstSensitivity").currentRow(), 1);
  Type(*editor, "txtDescription", u"other"_s);
  Fire(*editor, "ChangeMonitorTimer");
  Fire(*editor, "NotesTimer");
  EXPECT_TRUE(Text("lblHint").contains(u"keeps its description") && Text("lblHint").contains(u"Rename..."));

  // In subgroups of eight no limit is 0, and all could be kept.
  Get<QComboBox>(*editor, "comboSubGroup").setEditText(u"8"_s);
  Check("checkUseAllSamples");
  Type(*editor, "txtMaxSamples", u"32"_s);
  program.boxes.Expect(Answer::Yes, u"8 samples will be discarded upon save. Continue?");
  program.boxes.Expect(u"All data successfully saved.");
  QTest::keyClick(editor.get(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Text("txtDescription"), u"BORE");
  EXPECT_EQ(Raw().trimmed().count(u'\n') + 1, 32);
  EXPECT_EQ(Text("txtMaxSamples"), u"32");
  EXPECT_NE(Text("txtRLCL"), u".0000");
  EXPECT_TRUE(Get<QCheckBox>(*editor, "checkCalculateControlLimitsOnSave").isChecked())
      << "the next save calculates again";
  EXPECT_FALSE(SaveIsEnabled());
  QTest::keyClick(editor.get(), Qt::Key_Escape);  // and nothing is asked
  EXPECT_FALSE(editor->isVisible());
}

TEST_F(DataEditorTest, EveryBoxShowsAndStoresItsOwnFigure) {
  const std::pair<const char*, QString> boxes[] = {{"txtNominal", u"NominalSpecLimit"_s},
                                                   {"txtUSL", u"UpperSpecLimit"_s},
                                                   {"txtLSL", u"LowerSpecLimit"_s},
                                                   {"txtHiFlier", u"HiFlier"_s},
                                                   {"txtLowFlier", u"LoFlier"_s},
                                                   {"txtXUCL", u"XBarUCL"_s},
                                                   {"txtXLCL", u"XBarLCL"_s},
                                                   {"txtXMean", u"XBarMean"_s},
                                                   {"txtRUCL", u"RBarUCL"_s},
                                                   {"txtRLCL", u"RBarLCL"_s},
                                                   {"txtRMean", u"RBarMean"_s}};
  const double old[] = {10.5, 12.25, 8.5, 22.5, -3.5, 11.5, 9.5, 10.25, 2.5, 1.25, 1.75};
  const double entered[] = {10.75, 13.5, 7.5, 21.5, -2.5, 11.75, 9.25, 10.125, 2.75, 1.125, 1.5};
  QStringList stored, columns;
  for (size_t i = 0; i < std::size(boxes); ++i) {
    columns << boxes[i].second;
    stored << u"%1 = %2"_s.arg(boxes[i].second).arg(old[i]);
  }
  OpenExisting(u"SensitivityValue = 2, DetectionPeriod = 0, "_s + stored.join(u", "_s));
  EXPECT_EQ(Get<QListWidget>(*editor, "lstSensitivity").currentRow(), 2);
  EXPECT_FALSE(Get<QCheckBox>(*editor, "checkCalculateControlLimitsOnSave").isChecked());
  for (size_t i = 0; i < std::size(boxes); ++i) {
    EXPECT_EQ(Text(boxes[i].first), QString::number(old[i], 'f', 4)) << boxes[i].first;
    Enter(boxes[i].first, QString::number(entered[i]));
  }
  Get<QListWidget>(*editor, "lstSensitivity").setCurrentRow(0);
  program.boxes.Expect(u"All data successfully saved.");
  Click(*editor, "Toolbar1_1");
  const auto row = program.Rows(
      u"SELECT %1, SensitivityValue, DetectionPeriod FROM StatData"_s.arg(columns.join(u", "_s)))[0];
  for (size_t i = 0; i < std::size(boxes); ++i) EXPECT_EQ(row[qsizetype(i)], entered[i]) << boxes[i].first;
  EXPECT_EQ(row.mid(std::ssize(boxes)), QVariantList({0, 0}));
  QTest::keyClick(editor.get(), Qt::Key_Escape);
}

TEST_F(DataEditorTest, ARefusedSaveKeepsTheFieldsAndGoesToTheFault) {
  Open();
  Enter("txtUSL", u"12,5"_s);
  EXPECT_EQ(Text("lblHint"), u"Upper limit: write the decimal point, 12.5.");
  Paste(u"1\r\n"_s.repeated(8));
  program.boxes.Expect(u"The required fields");
  Click(*editor, "Toolbar1_1");
  EXPECT_TRUE(HasFocus("txtDescription"));
  EXPECT_EQ(Raw().count(u'\n'), 8);
  EXPECT_TRUE(program.Rows(u"SELECT * FROM StatData"_s).empty());
  Check("checkCalculateControlLimitsOnSave");
  for (const char* name : {"txtUSL", "txtXUCL", "txtXLCL", "txtRUCL", "txtRLCL"}) Enter(name, u"1"_s);
  EXPECT_TRUE(Text("lblHint").startsWith(u"The control limits of a new data set are always calculated"));
  Close(Answer::No);

  program.Execute(u"UPDATE Units SET Deleted = 1"_s);
  Open();
  EXPECT_TRUE(Text("lblHint").contains(u"Edit Units")) << "there is nothing to choose from";
}

TEST_F(DataEditorTest, ClosingAsksOnlyWhereSomethingWouldBeLost) {
  Open();
  Click(*editor, "Toolbar1_4");
  EXPECT_FALSE(editor->isVisible());

  Open();
  Type(*editor, "txtDescription", u"x"_s);
  Close(Answer::Cancel);
  EXPECT_TRUE(editor->isVisible());
  // Yes saves first, and a save that is refused keeps the editor.
  Close(Answer::Yes);
  EXPECT_TRUE(editor->isVisible());
  Close(Answer::No);
  EXPECT_FALSE(editor->isVisible());

  OpenExisting();
  Type(*editor, "txtUSL", u"13"_s);
  Close(Answer::Yes, false);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(program.Rows(u"SELECT UpperSpecLimit FROM StatData"_s)[0][0], 13.0);
}

TEST_F(DataEditorTest, PastedColumnsKeepClearOfWhatStandsThere) {
  Open();
  Paste(u"1,5\n2,5"_s);
  Paste(u"3;4"_s);
  EXPECT_EQ(Raw(), u"1.5\n2.5\n3\n4");
  Get<QPlainTextEdit>(*editor, "txtRawData").moveCursor(QTextCursor::Start);
  Paste(u"8\n9\n"_s);
  EXPECT_EQ(Raw(), u"8\n9\n1.5\n2.5\n3\n4");

  // Ticking "Use all samples" again fills in the number there is now.
  Check("checkUseAllSamples");
  Type(*editor, "txtMaxSamples", u"5"_s);
  Paste(u"1\n2"_s);
  EXPECT_EQ(Text("txtMaxSamples"), u"5");
  Check("checkUseAllSamples");
  EXPECT_EQ(Text("txtMaxSamples"), u"8");
  Close(Answer::No);
}

TEST_F(DataEditorTest, APasteNeitherCutsNorLengthensAValue) {
  Open();
  auto& raw = Get<QPlainTextEdit>(*editor, "txtRawData");
  Paste(u"12.5\n13.5"_s);
  Paste(u"14"_s);
  EXPECT_EQ(Raw(), u"12.5\n13.5\n14") << "right behind a value";
  raw.moveCursor(QTextCursor::Start);
  raw.moveCursor(QTextCursor::NextCharacter);
  Paste(u"7\n"_s);
  EXPECT_EQ(Raw(), u"12.5\n7\n13.5\n14") << "inside a value";
  QTest::keyClick(&raw, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Raw(), u"12.5\n13.5\n14");
  // What is selected is replaced.
  raw.moveCursor(QTextCursor::End);
  raw.moveCursor(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor);
  Paste(u"9"_s);
  EXPECT_EQ(Raw(), u"12.5\n13.5\n19");
  raw.moveCursor(QTextCursor::Start);
  for (int i = 0; i < 2; ++i) raw.moveCursor(QTextCursor::NextCharacter);
  for (int i = 0; i < 5; ++i) raw.moveCursor(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
  Paste(u"9"_s);
  EXPECT_EQ(Raw(), u"12\n9\n.5\n19") << "halves of two values are not joined";
  Close(Answer::No);
}

TEST_F(DataEditorTest, TheLiveLineLeadsToTheFaultAndItsReadings) {
  Open();
  auto& raw = Get<QPlainTextEdit>(*editor, "txtRawData");
  Paste(u"12.7\n12,5 mm\n12,6 mm"_s);
  EXPECT_EQ(Raw(), u"12.7\n12,5 mm\n12,6 mm");
  EXPECT_TRUE(Text("lblRawDataNote").contains(u"Line 2 is unclear"));
  for (const char* way : {"cmdGoToLine", "lblRawDataNote"}) {
    raw.moveCursor(QTextCursor::Start);
    QTest::mouseClick(&Get<QWidget>(*editor, way), Qt::LeftButton);
    EXPECT_EQ(raw.textCursor().blockNumber(), 1) << way;
    EXPECT_TRUE(HasFocus("txtRawData"));
  }
  auto& offer = Get<QPushButton>(*editor, "cmdOffer1");
  EXPECT_TRUE(offer.text().startsWith(u"Read 2 commas as decimal points, without"));
  offer.setFocus();
  QTest::keyClick(&offer, Qt::Key_Return);
  Fire(*editor, "NotesTimer");
  EXPECT_EQ(Raw(), u"12.7\n12.5\n12.6");
  EXPECT_FALSE(offer.isVisible());
  EXPECT_FALSE(Get<QWidget>(*editor, "cmdGoToLine").isVisible());
  QTest::keyClick(&raw, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Raw(), u"12.7\n12,5 mm\n12,6 mm");
  raw.selectAll();
  Paste(u"12,5\n12,6"_s);
  EXPECT_TRUE(Text("lblRawDataNote").endsWith(u"\n2 commas were read as decimal points."));
  raw.clear();
  Paste(u"1\t2\t3\t4\t5\t6\n7\t8\t9\t10\t11\t12"_s);
  const auto* menu = Get<QPushButton>(*editor, "cmdOffer4").menu();
  ASSERT_TRUE(menu);
  menu->actions().back()->trigger();
  EXPECT_EQ(Raw(), u"6\n12") << "the last of more readings than there are buttons";
  Close(Answer::No);
}

TEST_F(DataEditorTest, ASaveThatAskedAboutCommasShowsTheAnswer) {
  OpenExisting();
  const QString before = Raw();
  auto& raw = Get<QPlainTextEdit>(*editor, "txtRawData");
  QTest::keyClicks(&raw, u"10,25"_s);
  program.boxes.Expect(Answer::Cancel, u"Is that one value, 10.25?");
  Click(*editor, "Toolbar1_1");
  EXPECT_EQ(Raw(), before + u"10,25"_s);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"All data successfully saved.");
  Click(*editor, "Toolbar1_1");
  EXPECT_TRUE(Raw().endsWith(u"\n10.25\n"));
  QTest::keyClick(&raw, Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(&raw, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Raw(), before + u"10,25"_s) << "a save can be undone";
  Close(Answer::No);
}

TEST_F(DataEditorTest, TheWheelTurnsOnlyWhatHasTheFocus) {
  Open();
  auto& size = Get<QComboBox>(*editor, "comboSubGroup");
  const QString before = size.currentText();
  QWheelEvent turn(QPointF(5, 5), size.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), {}, {}, {}, false);
  QApplication::sendEvent(&size, &turn);
  EXPECT_EQ(size.currentText(), before);
}

// In 18 points on a small screen, as on any: nothing is out of reach, and what is locked can be read.
TEST_F(DataEditorTest, FitsTheScreenAndScrollsToWhatHasTheFocus) {
  const QFont before = QApplication::font();
  const QPalette light = QApplication::palette();
  QFont large = before;
  large.setPointSize(18);
  QApplication::setFont(large);
  for (const bool isDark : {false, true}) {
    QPalette palette = isDark ? QPalette(QColor(50, 50, 50), QColor(40, 40, 40)) : light;
    QApplication::setPalette(Contrast::WithReadableHints(palette));
    Open();
    EXPECT_TRUE(editor->screen()->availableSize().width() >= editor->width());
    EXPECT_TRUE(editor->screen()->availableSize().height() >= editor->height());
    for (int i = 0; i < 40; ++i) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      const QWidget& now = *QApplication::focusWidget();
      const QRect place(now.mapTo(editor.get(), QPoint()), now.size());
      EXPECT_TRUE(editor->rect().contains(place.center())) << now.objectName().toStdString();
    }
    const QLineEdit& locked = Get(*editor, "txtXUCL");
    EXPECT_FALSE(locked.isEnabled());
    EXPECT_GE(Contrast::Between(locked.palette().color(QPalette::Disabled, QPalette::Text),
                                locked.palette().color(QPalette::Disabled, QPalette::Base)),
              Contrast::readable);
    QTest::keyClick(editor.get(), Qt::Key_Escape);
  }
  QApplication::setFont(before);
  QApplication::setPalette(light);
}

TEST_F(DataEditorTest, SaysHowManySamplesAreMissingForAChart) {
  Open();
  Get<QComboBox>(*editor, "comboSubGroup").setEditText(u"5"_s);
  Paste(u"1\n"_s.repeated(30));
  EXPECT_EQ(Text("lblHint"), u"30 samples make 6 points; 8 are needed for a chart: 10 more samples.");
  Paste(u"1\n"_s.repeated(9));
  EXPECT_TRUE(Text("lblHint").endsWith(u" 1 more sample."));
  Paste(u"1\n"_s);
  EXPECT_EQ(Text("lblHint"), QString());
  Close(Answer::No);
}

TEST_F(DataEditorTest, AnApostropheIsNamedAsTheCause) {
  Open();
  for (const auto& [box, text] : {std::pair{"txtDescription", u"Bob's bore"_s},
                                  {"txtUSL", u"12"_s},
                                  {"txtNominal", u"10"_s},
                                  {"txtLSL", u"8"_s}})
    Enter(box, text);
  Units().setCurrentIndex(0);
  Paste(u"9\n11\n"_s.repeated(20));
  program.boxes.Expect(u"apostrophe (') in \"BOB'S BORE\"");
  Click(*editor, "Toolbar1_1");
  EXPECT_TRUE(HasFocus("txtDescription"));
  Close(Answer::No);
}

TEST_F(DataEditorTest, TheListOfUnitsFollowsTheLibrary) {
  OpenExisting();
  InNextWindow([](QWidget& units) { units.close(); });
  Click(*editor, "cmdUnits");
  EXPECT_FALSE(SaveIsEnabled()) << "nothing was changed there";
  program.Execute(u"INSERT INTO Units (Name) VALUES ('inch')"_s);
  editor->LibraryChanged();
  EXPECT_GE(Units().findText(u"inch"_s), 0);
  EXPECT_EQ(Units().currentText(), u"MM");
  EXPECT_FALSE(SaveIsEnabled());
  QTest::keyClick(editor.get(), Qt::Key_Escape);

  program.state.gAddMode = true;
  Open();
  Units().setCurrentText(u"inch"_s);
  program.Execute(u"UPDATE Units SET Deleted = 1 WHERE Name = 'inch'"_s);
  editor->LibraryChanged();
  Fire(*editor, "NotesTimer");
  EXPECT_EQ(Units().currentText(), QString());
  EXPECT_TRUE(Text("lblHint").contains(u"deleted this unit"_s));
  program.Execute(u"ALTER TABLE Units RENAME TO Elsewhere"_s);
  editor->LibraryChanged();                       // in no box: the library would bring one after the other
  QTest::keyClick(editor.get(), Qt::Key_Escape);  // there is nothing in the boxes
  program.boxes.Expect(u"no such table");
  Open();
  EXPECT_EQ(Units().count(), 0) << "and all else can be seen";
  QTest::keyClick(editor.get(), Qt::Key_Escape);
}

TEST_F(DataEditorTest, FocusSelectsANumberAndCommandsReachTheirForms) {
  OpenExisting();
  for (const char* name : {"txtUSL", "txtHiFlier"}) {
    QTest::mouseClick(&Get(*editor, name), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(Get(*editor, name).selectedText(), Text(name));
  }
  // A window that comes back leaves what was begun as it was.
  QLineEdit& box = Get(*editor, "txtHiFlier");
  box.deselect();
  QFocusEvent back(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
  QApplication::sendEvent(&box, &back);
  QCoreApplication::processEvents();
  EXPECT_EQ(box.selectedText(), QString());
  editor->resize(editor->width(), 0);
  editor->ShowSample(39);
  QCoreApplication::processEvents();
  const auto& samples = Get<QPlainTextEdit>(*editor, "txtRawData");
  EXPECT_EQ(samples.textCursor().blockNumber(), 38);
  EXPECT_EQ(samples.textCursor().selectedText(), samples.toPlainText().section(u'\n', 38, 38));
  EXPECT_TRUE(samples.viewport()->rect().contains(samples.cursorRect()));
  EXPECT_EQ(editor->focusWidget(), &samples);

  // A unit added in the units screen is in the list at once.
  InNextWindow([this](QWidget& units) {
    program.Execute(u"INSERT INTO Units (Name) VALUES ('inch')"_s);
    units.close();
  });
  Click(*editor, "cmdUnits");
  EXPECT_EQ(Units().count(), 3);
  EXPECT_EQ(Units().currentText(), u"MM");

  const QString before = Raw();
  for (const bool accept : {false, true}) {
    InNextWindow([&](QWidget& expanded) {
      auto& text = Get<QPlainTextEdit>(expanded, "txtExpandedRawData");
      EXPECT_EQ(text.toPlainText(), before);
      Fire(expanded, "LoadTimer");
      EXPECT_EQ(expanded.focusWidget(), &text);
      QTest::keyClicks(&text, u"10"_s);
      Fire(expanded, "NotesTimer");
      EXPECT_EQ(TextOf(expanded, "lblRawDataNote"), u"41 values: 10 subgroups of 4, 1 left over."_s);
      if (!accept) program.boxes.Expect(Answer::No);
      Click(expanded, accept ? "cmdAccept" : "cmdClose");
    });
    Click(*editor, "cmdRawData");
    EXPECT_EQ(Raw(), accept ? before + u"10"_s : before);
  }
  auto& raw = Get<QPlainTextEdit>(*editor, "txtRawData");
  QTest::keyClick(&raw, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(Raw(), before) << "what the larger view changed is undone like what was typed";
  QTest::keyClick(&raw, Qt::Key_Y, Qt::ControlModifier);
  Close(Answer::No);
}

TEST_F(DataEditorTest, DoesNotOpenWithoutItsDataSet) {
  program.state.gAddMode = false;
  program.state.gCurrentDataID = 99;
  program.boxes.Expect(u"error attempting to get the current data for the item select\r\n");
  EXPECT_EQ(DataEditor().exec(), QDialog::Rejected);
}

}  // namespace
