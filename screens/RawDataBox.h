// The multi-line box for raw values: whatever is pasted into it arrives as one value on each line, its lines
// are numbered, and a light line stands where a subgroup begins.
#pragma once

#include <QList>
#include <QPlainTextEdit>

class RawDataBox : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit RawDataBox(const QString& objectName, QWidget* parent = nullptr);

  // A text as stored or as another such box holds it, with the caret behind its end and nothing to undo.
  void ShowText(const QString& text);
  // The same as a change that can be undone; the caret stays where its text stays.
  void ReplaceText(const QString& text);

  void GoToLine(qsizetype number);  // counted from 1
  // Marks where a subgroup of more than one value begins; `before` values stand before the box's.
  void MarkSubgroups(qint16 size, qsizetype before = 0);

  // Commas that the last paste read as decimal points; 0 once the text has changed since.
  qsizetype DecimalCommasRead() const { return decimalCommasRead_; }

 protected:
  void insertFromMimeData(const QMimeData* source) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int MarginWidth() const;
  void PlaceMargin();
  void PaintMargin();

  // Calls use(number, top) for every line in sight.
  template <class Use>
  void ForEachVisibleLine(Use&& use) const;

  QWidget* margin_;
  QList<qsizetype> markedLines_;  // ascending
  qsizetype decimalCommasRead_ = 0;
};
