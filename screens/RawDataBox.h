// The multi-line box for raw values: whatever is pasted into it arrives as one value on each line.
#pragma once

#include <QPlainTextEdit>

class RawDataBox : public QPlainTextEdit {
 public:
  explicit RawDataBox(const QString& objectName, QWidget* parent = nullptr);

  // A text as stored or as another such box holds it, with the caret behind its end.
  void ShowText(const QString& text);

 protected:
  void insertFromMimeData(const QMimeData* source) override;
};
