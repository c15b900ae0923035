// The multi-line box for raw values: whatever is pasted into it arrives as one value on each line, its lines
// are numbered, and a light line stands where a subgroup begins. It knows which of its lines is which sample
// of a data set, and shows when and in which lot that was taken.
#pragma once

#include <QHash>
#include <QList>
#include <QPlainTextEdit>

#include "screens/LineIdentity.h"

class QHelpEvent;

class RawDataBox : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit RawDataBox(const QString& objectName, QWidget* parent = nullptr);

  // A text as stored or as another such box holds it, with the caret behind its end and nothing to undo.
  void ShowText(const QString& text);
  // The same as a change that can be undone; the caret stays where its text stays. The lines are those, where
  // they are told.
  void ReplaceText(const QString& text, const LineIdentity::Lines& lines = {});

  // From now on the lines are the samples of a data set, in their order.
  void TakeForSamples();
  // For each line the sample that it was then; Trace::isNew for none.
  Trace::Origins Samples() const;
  const LineIdentity::Lines& Lines() const { return identity_.Present(); }

  // The text of another box, whose lines stay the same; beside them stands what the record tells of them.
  void ShowLinesOf(const RawDataBox& other, const Trace::Record& record);
  int BesideWidth() const { return besideWidth_; }

  void GoToLine(qsizetype number);  // counted from 1
  // Marks where a subgroup of more than one value begins; `before` values stand before the box's.
  void MarkSubgroups(qint16 size, qsizetype before = 0);
  // Underlines these lines, ascending, and makes their numbers stand out.
  void MarkUnclear(const QList<qsizetype>& lines);

  // Commas that the last paste read as decimal points; 0 once the text has changed since.
  qsizetype DecimalCommasRead() const { return decimalCommasRead_; }

 protected:
  void insertFromMimeData(const QMimeData* source) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int NumbersWidth() const;
  int MarginWidth() const;
  void PlaceMargin();
  void PaintMargin();

  // Calls use(number, top) for every line in sight.
  template <class Use>
  void ForEachVisibleLine(Use&& use) const;

  QStringList LineTexts() const;
  const Trace::Run* RunOf(int line);  // counted from 0; null where none is known
  QString BesideText(const Trace::Run& run) const;
  bool ShowBesideTip(const QHelpEvent& event);

  QWidget* margin_;
  LineIdentity identity_{document()};
  QHash<qint64, qint32> samples_;  // by the line's number
  QStringList texts_;              // of the lines when they were taken for samples
  Trace::Origins shownSamples_;    // of each line, with what was typed anew in its place
  int shownRevision_ = -1;         // of the text that these are of
  Trace::Record record_;
  int besideWidth_ = 0;            // of times and lots; 0 where there are none
  QList<qsizetype> markedLines_;   // ascending
  QList<qsizetype> unclearLines_;  // ascending
  qsizetype decimalCommasRead_ = 0;
};
