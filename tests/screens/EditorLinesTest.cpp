// Which sample each line of the data editor is, through keys, pastes, undoing and saving; and what stands
// beside the lines of the larger view.
#include <QClipboard>
#include <QHelpEvent>
#include <QTextBlock>
#include <QToolTip>

#include "core/DataObjectFunctions.h"
#include "platform/language/LocalTimes.h"
#include "screens/DataEditor.h"
#include "screens/RawDataBox.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

namespace {

class EditorLinesTest : public testing::Test {
 protected:
  EditorLinesTest() { Show(u"9\n10\n10\n11\n9\n"_s); }

  void Show(const QString& text) {
    box.ShowText(text);
    box.TakeForSamples();
  }
  // The sample of each line as a digit; - for a new one.
  QString Told() const {
    QString told;
    for (const qint32 sample : box.Samples())
      told += sample == Trace::isNew ? u"-"_s : QString::number(sample);
    return told;
  }
  // From one place to another, each as line and column.
  void Select(int fromLine, int fromColumn, int toLine, int toColumn) {
    const auto place = [&](int line, int column) {
      return box.document()->findBlockByNumber(line).position() + column;
    };
    QTextCursor cursor(box.document());
    cursor.setPosition(place(fromLine, fromColumn));
    cursor.setPosition(place(toLine, toColumn), QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
  }
  void Paste(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    box.paste();
  }

  TestProgram program;
  RawDataBox box{u"box"_s};
};

}  // namespace

TEST_F(EditorLinesTest, StayTheSameThroughEveryEditAndItsUndoing) {
  const auto key = [this](Qt::Key which) { QTest::keyClick(&box, which); };
  const struct {
    QString what, after;
    std::function<void()> act;
  } edits[] = {
      {u"corrected"_s, u"01234-"_s, [&] { Select(1, 2, 1, 1), QTest::keyClicks(&box, u"5"_s); }},
      {u"emptied, and typed anew"_s, u"01234-"_s,
       [&] { Select(1, 0, 1, 2), key(Qt::Key_Delete), QTest::keyClicks(&box, u"7"_s); }},
      {u"a line before"_s, u"0-1234-"_s, [&] { Select(1, 0, 1, 0), key(Qt::Key_Return); }},
      {u"a line behind"_s, u"01-234-"_s, [&] { Select(1, 2, 1, 2), key(Qt::Key_Return); }},
      {u"taken out from its start"_s, u"0234-"_s, [&] { Select(1, 0, 2, 0), key(Qt::Key_Delete); }},
      {u"taken out with the end before"_s, u"0134-"_s, [&] { Select(1, 2, 2, 2), key(Qt::Key_Delete); }},
      {u"two for two"_s, u"01234-"_s, [&] { Select(1, 0, 3, 0), Paste(u"7\n8\n"_s); }},
      {u"three for two"_s, u"0---34-"_s, [&] { Select(1, 0, 3, 0), Paste(u"7\n8\n6\n"_s); }},
      {u"the same and more"_s, u"012--4-"_s, [&] { Select(1, 0, 4, 0), Paste(u"10\n10\n5\n6\n"_s); }},
      {u"put in"_s, u"0-1234-"_s, [&] { Select(1, 0, 1, 0), Paste(u"10\n"_s); }},
      {u"put behind"_s, u"01234--"_s, [&] { Select(5, 0, 5, 0), Paste(u"9\n"_s); }},
      {u"all"_s, u"-"_s, [&] { box.selectAll(), key(Qt::Key_Delete); }},
      {u"read again"_s, u"234-"_s, [&] { box.ReplaceText(u"10\n11\n9\n"_s); }},
  };
  for (const auto& edit : edits) {
    SCOPED_TRACE(edit.what.toStdString());
    Show(u"9\n10\n10\n11\n9\n"_s);
    edit.act();
    EXPECT_EQ(Told(), edit.after);
    const QString told = Told(), text = box.toPlainText();
    for (int round = 0; round < 2; ++round) {
      while (box.document()->isUndoAvailable()) box.undo();
      EXPECT_EQ(Told(), u"01234-"_s);
      while (box.document()->isRedoAvailable()) box.redo();
      EXPECT_EQ(Told(), told) << "done again";
      EXPECT_EQ(box.toPlainText(), text);
    }
    // Another edit in place of the one that was undone.
    box.undo();
    Select(0, 0, 1, 0);
    QTest::keyClick(&box, Qt::Key_Delete);
    const QString other = Told();
    box.undo();
    box.redo();
    EXPECT_EQ(Told(), other);
  }
}

TEST_F(EditorLinesTest, AreTheSamplesOfWhatWasSavedLast) {
  Select(1, 0, 2, 0);
  QTest::keyClick(&box, Qt::Key_Delete);
  box.TakeForSamples();
  EXPECT_EQ(Told(), u"0123-"_s);
  box.undo();
  EXPECT_EQ(Told(), u"0-123-"_s) << "the line that is back is none of them";
  box.ReplaceText(u"11\r\n9\r\n12\r\n"_s);
  EXPECT_EQ(Told(), u"23--"_s);
}

TEST_F(EditorLinesTest, CarryNotesAndRunsThroughASaveAndShowThemInTheLargerView) {
  program.Execute(u"INSERT INTO Units (Name) VALUES ('MM')"_s);
  program.state.gCurrentDataID = program.Insert(u"BORE"_s);
  Library& library = *CurrentLibrary();
  const QDateTime time(QDate(2026, 4, 23), QTime(10, 15));
  const QString lot = u"L"_s.repeated(200);
  CDataPtr data = library
                      .Append(u"BORE"_s, {u"10"_s, u"10"_s, u"11"_s, u"9"_s}, program.clock.now,
                              Library::Limits::Stay, {time, lot})
                      .data;
  const qsizetype first = Trace::SamplesIn(data->DelimitedInputString()).size() - 4;
  library.SetNote(*data, first + 1, {}, u"the second ten"_s, u"ann"_s, program.clock.now);
  ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  DataEditor editor;
  editor.show();
  auto& raw = Get<RawDataBox>(editor, "txtRawData");

  // The first ten goes, in the larger view, which shows what the lines are.
  InNextWindow([&](QWidget& form) {
    auto& text = Get<RawDataBox>(form, "txtExpandedRawData");
    const auto children = text.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    QWidget& margin = **std::ranges::find(children, QString(), &QObject::objectName);
    EXPECT_GT(margin.width(), text.fontMetrics().averageCharWidth() * 40);
    EXPECT_LT(margin.width(), text.fontMetrics().averageCharWidth() * 50) << "a long lot leaves room";
    const auto told = [&](qsizetype line) {
      text.setTextCursor(QTextCursor(text.document()->findBlockByNumber(int(line))));
      text.ensureCursorVisible();
      const QPoint place(2, text.cursorRect().center().y());
      QHelpEvent event(QEvent::ToolTip, place, margin.mapToGlobal(place));
      QCoreApplication::sendEvent(&margin, &event);
      return QToolTip::text();
    };
    const QString known = LocalTimes::Moment(time) + u", lot "_s + lot;
    EXPECT_EQ(told(first - 1), QString());
    text.setTextCursor(QTextCursor(text.document()->findBlockByNumber(int(first))));
    QTest::keyClicks(&text, u"7"_s);
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(told(first), QString()) << "typed in front of it";
    EXPECT_EQ(told(first + 1), known);
    while (text.document()->isUndoAvailable()) text.undo();
    EXPECT_EQ(told(first), known);
    text.setTextCursor(QTextCursor(text.document()->findBlockByNumber(int(first))));
    QTest::keyClick(&text, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(&text, Qt::Key_Delete);
    Click(form, "cmdAccept");
  });
  Click(editor, "cmdRawData");
  EXPECT_EQ(raw.Samples()[std::size_t(first)], first + 1);

  // A comma that is settled, a line more, and a correction.
  raw.moveCursor(QTextCursor::End);
  QTest::keyClicks(&raw, u"10,5"_s);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"All data successfully saved."_s);
  Click(editor, "Toolbar1_1");
  data = library.Read(1)->data;
  const Trace::Record record = library.TraceOf(*data);
  ASSERT_EQ(record.notes.size(), 1U);
  EXPECT_EQ(record.notes[0].sample, first);
  ASSERT_EQ(record.runs.size(), 1U);
  EXPECT_EQ(record.runs[0].first, first);
  EXPECT_EQ(record.runs[0].count, 3);
  EXPECT_EQ(raw.Samples()[std::size_t(first)], first) << "of the row as it now is";
}
