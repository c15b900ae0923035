#include "screens/RawDataBox.h"

#include <QFontDatabase>
#include <QMimeData>
#include <QTextBlock>

#include "data/RawDataText.h"

RawDataBox::RawDataBox(const QString& objectName, QWidget* parent) : QPlainTextEdit(parent) {
  setObjectName(objectName);
  setTabChangesFocus(true);
  setLineWrapMode(NoWrap);
  QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  digits.setPointSizeF(font().pointSizeF());
  setFont(digits);
}

void RawDataBox::ShowText(const QString& text) {
  setPlainText(text);
  moveCursor(QTextCursor::End);
}

void RawDataBox::insertFromMimeData(const QMimeData* source) {
  if (!source->hasText()) return;
  QString text = RawDataText::FromPasted(source->text());
  QTextCursor cursor = textCursor();
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  if (text.contains(u'\n')) {
    // Several values keep clear of what stands on the line before and behind the caret.
    const QString line = cursor.block().text();
    const qsizetype column = cursor.positionInBlock();
    if (!line.first(column).trimmed().isEmpty()) text.prepend(u'\n');
    if (!line.sliced(column).trimmed().isEmpty() && !text.endsWith(u'\n')) text.append(u'\n');
  }
  cursor.insertText(text);
  cursor.endEditBlock();
  setTextCursor(cursor);
  ensureCursorVisible();
}
