// The data editor and its expanded view, driven with clicks and keys: each walk's protocol is
// approved.
#include "screens/DataEditor.h"

#include <QClipboard>
#include <QListWidget>
#include <QScreen>
#include <QWheelEvent>

#include "core/DataObjectFunctions.h"
#include "platform/ui/Contrast.h"
#include "screens/ExpandedDataForm.h"
#include "tests/support/Walk.h"

namespace {

class DataEditorTest : public Walk {
 protected:
  DataEditorTest() {
    program.Execute(u"INSERT INTO Units (Name) VALUES ('mm')"_s);
    program.Execute(u"INSERT INTO Units (Name, Deleted) VALUES ('ell', 1)"_s);
    program.state.gAddMode = true;
  }
  QWidget& Form() const override { return *editor; }
  void Settle() override {
    if (editor->isVisible()) Fire(*editor, "NotesTimer");
  }

  // The editor as it stands on the screen, after its one-time set-up.
  void Open() {
    editor = std::make_unique<DataEditor>();
    editor->show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    Fire(*editor, "ChangeMonitorTimer");
    protocol.Begin(u"Open"_s, editor.get());
  }
  void OpenExisting(const QString& change = {}) {
    program.state.gAddMode = false;
    program.state.gCurrentDataID = program.Insert(u"BORE"_s);
    if (!change.isEmpty()) program.Execute(u"UPDATE StatData SET "_s + change);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    Open();
  }
  void Save(Answers answers) { Choose("Toolbar1_1", answers); }
  // Typed where the focus is; Enter moves on.
  void TypeOn(const QStringList& texts) {
    for (const QString& text : texts) {
      QTest::keyClicks(QApplication::focusWidget(), text);
      Press(Qt::Key_Return);
    }
  }
  void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    Choose("Toolbar1_3");
  }
  void Select(std::initializer_list<std::pair<QTextCursor::MoveOperation, int>> moves, bool isKept = false) {
    for (const auto& [move, times] : moves)
      for (int i = 0; i < times; ++i)
        Samples().moveCursor(move, isKept ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
  }
  QComboBox& Units() const { return Get<QComboBox>(*editor, "comboUnits"); }
  QPlainTextEdit& Samples() const { return Get<QPlainTextEdit>(*editor, "txtRawData"); }

  std::unique_ptr<DataEditor> editor;
};

TEST_F(DataEditorTest, FromPasteToSavedRowWithTheKeyboard) {
  Open();
  EXPECT_EQ(Units().count(), 1) << "deleted units are not offered";
  TypeOn({u"shaft"_s, {}});  // Enter passes Edit Units by where a unit is chosen
  Units().setFocus();
  TypeOn({u"m"_s, u"12"_s, u"10"_s, u"8"_s, u"14"_s, u"6"_s});
  QLineEdit* subGroup = Get<QComboBox>(*editor, "comboSubGroup").lineEdit();
  subGroup->selectAll();
  QTest::keyClicks(subGroup, u"4"_s);
  Paste(u"9.5\r\n9.7\r\n"_s.repeated(20) + u"9.6\r\n"_s);
  Save({Answer::Ok});  // closed, for an editor left open could add a second row
  EXPECT_EQ(editor->result(), QDialog::Accepted);
}

TEST_F(DataEditorTest, EditsAndShowsWhatWasStored) {
  OpenExisting();
  protocol.Tell(u"as it stands"_s);
  Step(u"another description"_s, [&] {
    Type(*editor, "txtDescription", u"other"_s);
    Fire(*editor, "ChangeMonitorTimer");
  });
  // In subgroups of eight no limit is 0, and all could be kept; the next save calculates again.
  Get<QComboBox>(*editor, "comboSubGroup").setEditText(u"8"_s);
  Choose("checkUseAllSamples");
  Enter("txtMaxSamples", u"32"_s);
  Press(Qt::CTRL | Qt::Key_S, {Answer::Yes, Answer::Ok});
  Press(Qt::Key_Escape);  // and nothing is asked
}

TEST_F(DataEditorTest, EveryBoxShowsAndStoresItsOwnFigure) {
  OpenExisting(
      u"SensitivityValue = 2, DetectionPeriod = 0, NominalSpecLimit = 10.5, UpperSpecLimit = 12.25, "
      "LowerSpecLimit = 8.5, HiFlier = 22.5, LoFlier = -3.5, XBarUCL = 11.5, XBarLCL = 9.5, XBarMean = "
      "10.25, "
      "RBarUCL = 2.5, RBarLCL = 1.25, RBarMean = 1.75"_s);
  protocol.Tell(u"as it stands"_s);
  const std::pair<const char*, double> figures[] = {
      {"txtNominal", 10.75}, {"txtUSL", 13.5},   {"txtLSL", 7.5},   {"txtHiFlier", 21.5},
      {"txtLowFlier", -2.5}, {"txtXUCL", 11.75}, {"txtXLCL", 9.25}, {"txtXMean", 10.125},
      {"txtRUCL", 2.75},     {"txtRLCL", 1.125}, {"txtRMean", 1.5}};
  for (const auto& [box, figure] : figures) Enter(box, QString::number(figure));
  Get<QListWidget>(*editor, "lstSensitivity").setCurrentRow(0);
  Save({Answer::Ok});
  Press(Qt::Key_Escape);
}

TEST_F(DataEditorTest, ARefusedSaveKeepsTheFieldsAndGoesToTheFault) {
  Open();
  Enter("txtUSL", u"12,5"_s);
  Paste(u"1\r\n"_s.repeated(8));
  Save({Answer::Ok});
  Choose("checkCalculateControlLimitsOnSave");
  for (const char* name : {"txtUSL", "txtXUCL", "txtXLCL", "txtRUCL", "txtRLCL"}) Enter(name, u"1"_s);
  Press(Qt::Key_Escape, {Answer::No});
  program.Execute(u"UPDATE Units SET Deleted = 1"_s);
  Open();
  protocol.Step(Get<QLabel>(*editor, "lblHint").text());  // there is nothing to choose from
}

TEST_F(DataEditorTest, ClosingAsksOnlyWhereSomethingWouldBeLost) {
  Open();
  Choose("Toolbar1_4");
  Open();
  Enter("txtDescription", u"x"_s);
  Press(Qt::Key_Escape, {Answer::Cancel});
  Press(Qt::Key_Escape, {Answer::Yes, Answer::Ok});  // a save that is refused keeps the editor
  Press(Qt::Key_Escape, {Answer::No});
  OpenExisting();
  Type(*editor, "txtUSL", u"13"_s);
  Step(u"close"_s, [&] { editor->close(); }, {Answer::Yes, Answer::Ok});
}

TEST_F(DataEditorTest, APasteKeepsClearOfWhatStandsThere) {
  Open();
  for (const auto& text : {u"1,5\n2,5"_s, u"3;4"_s, u"14"_s}) Paste(text);
  Samples().moveCursor(QTextCursor::Start);
  Paste(u"8\n9\n"_s);
  // Ticking "Use all samples" again fills in the number there is now.
  Choose("checkUseAllSamples");
  Enter("txtMaxSamples", u"5"_s);
  Paste(u"1\n2"_s);
  Choose("checkUseAllSamples");
  Samples().setPlainText(u"12.5\n13.5\n14"_s);
  Select({{QTextCursor::Start, 1}, {QTextCursor::NextCharacter, 1}});
  Paste(u"7\n"_s);  // inside a value
  Samples().setFocus();
  Press(Qt::CTRL | Qt::Key_Z);
  Select({{QTextCursor::End, 1}});
  Select({{QTextCursor::PreviousCharacter, 1}}, true);
  Paste(u"9"_s);  // what is selected is replaced
  Select({{QTextCursor::Start, 1}, {QTextCursor::NextCharacter, 2}});
  Select({{QTextCursor::NextCharacter, 5}}, true);
  Paste(u"9"_s);  // halves of two values are not joined
  Press(Qt::Key_Escape, {Answer::No});
}

TEST_F(DataEditorTest, TheLiveLineLeadsToTheFaultAndItsReadings) {
  Open();
  Paste(u"12.7\n12,5 mm\n12,6 mm"_s);
  for (const char* way : {"cmdGoToLine", "lblRawDataNote"}) {
    Samples().moveCursor(QTextCursor::Start);
    QTest::mouseClick(&Get<QWidget>(*editor, way), Qt::LeftButton);
    EXPECT_EQ(Samples().textCursor().blockNumber(), 1) << way;
    EXPECT_EQ(QApplication::focusWidget(), &Samples());
  }
  Get<QPushButton>(*editor, "cmdOffer1").setFocus();
  Press(Qt::Key_Return);
  Samples().setFocus();
  Press(Qt::CTRL | Qt::Key_Z);
  Samples().selectAll();
  Paste(u"12,5\n12,6"_s);
  Samples().clear();
  Paste(u"1\t2\t3\t4\t5\t6\n7\t8\t9\t10\t11\t12"_s);
  const auto* menu = Get<QPushButton>(*editor, "cmdOffer4").menu();
  ASSERT_TRUE(menu);
  Step(u"the last of more readings than there are buttons"_s, [&] { menu->actions().back()->trigger(); });
  Press(Qt::Key_Escape, {Answer::No});
}

TEST_F(DataEditorTest, ASaveThatAskedAboutCommasShowsTheAnswer) {
  OpenExisting();
  Samples().setFocus();
  QTest::keyClicks(&Samples(), u"10,25"_s);
  Save({Answer::Cancel});
  Save({Answer::Yes, Answer::Ok});
  Samples().setFocus();
  for (int i = 0; i < 2; ++i) Press(Qt::CTRL | Qt::Key_Z);  // a save can be undone
  Press(Qt::Key_Escape, {Answer::No});
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
  for (const int count : {30, 9, 1}) Paste(u"1\n"_s.repeated(count));
  Press(Qt::Key_Escape, {Answer::No});
}

TEST_F(DataEditorTest, AnApostropheIsNamedAsTheCause) {
  Open();
  for (const auto& [box, text] : {std::pair{"txtDescription", u"Bob's bore"_s},
                                  {"txtUSL", u"12"_s},
                                  {"txtNominal", u"10"_s},
                                  {"txtLSL", u"8"_s}})
    Type(*editor, box, text);
  Units().setCurrentIndex(0);
  Paste(u"9\n11\n"_s.repeated(20));
  Save({Answer::Ok});
  Press(Qt::Key_Escape, {Answer::No});
}

TEST_F(DataEditorTest, TheListOfUnitsFollowsTheLibrary) {
  const auto change = [this](const QString& sql) {
    program.Execute(sql);
    editor->LibraryChanged();
    Step(u"%1: %2 units"_s.arg(sql).arg(Units().count()), [] {});
  };
  OpenExisting();
  InNextWindow([](QWidget& units) { units.close(); });
  Choose("cmdUnits");
  InNextWindow([this](QWidget& units) {
    program.Execute(u"INSERT INTO Units (Name) VALUES ('cm')"_s);
    units.close();
  });
  Choose("cmdUnits");
  EXPECT_GE(Units().findText(u"cm"_s), 0) << "at once";
  change(u"INSERT INTO Units (Name) VALUES ('inch')"_s);
  Press(Qt::Key_Escape);

  program.state.gAddMode = true;
  Open();
  Units().setCurrentText(u"inch"_s);
  change(u"UPDATE Units SET Deleted = 1 WHERE Name = 'inch'"_s);
  change(u"ALTER TABLE Units RENAME TO Elsewhere"_s);  // in no box: they would come one after the other
  Press(Qt::Key_Escape);
  program.boxes.Expect();
  Open();
  EXPECT_EQ(Units().count(), 0) << "and all else can be seen";
  Press(Qt::Key_Escape);
}

TEST_F(DataEditorTest, FocusSelectsANumberAndCommandsReachTheirForms) {
  OpenExisting();
  for (const char* name : {"txtUSL", "txtHiFlier"}) {
    QTest::mouseClick(&Get(*editor, name), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(Get(*editor, name).selectedText(), TextOf(*editor, name));
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
  EXPECT_EQ(Samples().textCursor().blockNumber(), 38);
  EXPECT_EQ(Samples().textCursor().selectedText(), Samples().toPlainText().section(u'\n', 38, 38));
  EXPECT_TRUE(Samples().viewport()->rect().contains(Samples().cursorRect()));
  EXPECT_EQ(editor->focusWidget(), &Samples());
  for (const bool accept : {false, true}) {
    InNextWindow([&](QWidget& expanded) {
      auto& text = Get<QPlainTextEdit>(expanded, "txtExpandedRawData");
      EXPECT_EQ(text.toPlainText(), Samples().toPlainText());
      Fire(expanded, "LoadTimer");
      EXPECT_EQ(expanded.focusWidget(), &text);
      QTest::keyClicks(&text, u"10"_s);
      Fire(expanded, "NotesTimer");
      protocol.Step(TextOf(expanded, "lblRawDataNote"));
      if (!accept) program.boxes.Expect(Answer::No);
      Click(expanded, accept ? "cmdAccept" : "cmdClose");
    });
    Choose("cmdRawData");
  }
  Samples().setFocus();
  Press(Qt::CTRL | Qt::Key_Z);  // what the larger view changed is undone like what was typed
  Press(Qt::CTRL | Qt::Key_Y);
  Press(Qt::Key_Escape, {Answer::No});
}

TEST_F(DataEditorTest, DoesNotOpenWithoutItsDataSet) {
  program.state.gAddMode = false;
  program.state.gCurrentDataID = 99;
  program.boxes.Expect(u"error attempting to get the current data for the item select\r\n");
  EXPECT_EQ(DataEditor().exec(), QDialog::Rejected);
}

}  // namespace
