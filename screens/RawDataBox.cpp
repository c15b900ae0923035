#include "screens/RawDataBox.h"

#include <QFontDatabase>
#include <QHelpEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <algorithm>

#include "data/RawDataReadings.h"
#include "data/RawDataText.h"
#include "platform/language/LocalTimes.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int marginGap = 4;  // pixels
}

RawDataBox::RawDataBox(const QString& objectName, QWidget* parent)
    : QPlainTextEdit(parent), margin_(new QWidget(this)) {
  setObjectName(objectName);
  setTabChangesFocus(true);
  setLineWrapMode(NoWrap);
  QFont digits = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  digits.setPointSizeF(font().pointSizeF());
  setFont(digits);
  margin_->installEventFilter(this);
  connect(this, &QPlainTextEdit::textChanged, this, [this] { decimalCommasRead_ = 0; });
  connect(this, &QPlainTextEdit::blockCountChanged, this, &RawDataBox::PlaceMargin);
  connect(this, &QPlainTextEdit::updateRequest, margin_, qOverload<>(&QWidget::update));
  PlaceMargin();
}

void RawDataBox::ShowText(const QString& text) {
  setPlainText(text);
  identity_.Restart();
  moveCursor(QTextCursor::End);
}

QStringList RawDataBox::LineTexts() const {
  QStringList texts;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
    texts << block.text().trimmed();
  return texts;
}

void RawDataBox::TakeForSamples() {
  samples_.clear();
  texts_ = LineTexts();
  for (qint32 sample = 0; sample < texts_.size(); ++sample)
    if (!texts_[sample].isEmpty()) samples_[Lines()[sample]] = sample;
}

Trace::Origins RawDataBox::Samples() const {
  Trace::Origins samples;
  for (const qint64 line : Lines()) samples.push_back(samples_.value(line, Trace::isNew));
  return samples;
}

void RawDataBox::ShowLinesOf(const RawDataBox& other, const Trace::Record& record) {
  ShowText(other.toPlainText());
  identity_.Restart(other.Lines());
  samples_ = other.samples_;
  texts_ = other.texts_;
  record_ = record;
  const int most = fontMetrics().averageCharWidth() * 40;
  besideWidth_ = 0;
  for (const Trace::Run& run : record_.runs)
    besideWidth_ = std::max(besideWidth_, std::min(most, fontMetrics().horizontalAdvance(BesideText(run))));
  PlaceMargin();
}

void RawDataBox::ReplaceText(const QString& text, const LineIdentity::Lines& lines) {
  const QString before = toPlainText(), after = QString(text).replace(u"\r\n"_s, u"\n"_s);
  if (before == after) return;
  identity_.Expect(after.split(u'\n'), lines);
  const auto [beforeStart, afterStart] = std::ranges::mismatch(before, after);
  const qsizetype start = beforeStart - before.begin();
  const qsizetype most = std::min(before.size(), after.size()) - start;
  qsizetype end = 0;
  while (end < most && before[before.size() - 1 - end] == after[after.size() - 1 - end]) ++end;
  QTextCursor cursor(document());
  cursor.setPosition(static_cast<int>(start));
  cursor.setPosition(static_cast<int>(before.size() - end), QTextCursor::KeepAnchor);
  cursor.insertText(after.sliced(start, after.size() - end - start));
}

void RawDataBox::GoToLine(qsizetype number) {
  QTextCursor cursor(document()->findBlockByNumber(static_cast<int>(number - 1)));
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  ensureCursorVisible();
  setFocus();
}

void RawDataBox::MarkSubgroups(qint16 size, qsizetype before) {
  markedLines_.clear();
  if (size > 1) markedLines_ = RawDataText::SubgroupStarts(toPlainText(), size, before);
  viewport()->update();
}

void RawDataBox::MarkUnclear(const QList<qsizetype>& lines) {
  unclearLines_ = lines;
  margin_->update();
  viewport()->update();
}

void RawDataBox::insertFromMimeData(const QMimeData* source) {
  if (!source->hasText()) return;
  RawDataReadings::Pasted pasted = RawDataReadings::FromPasted(source->text());
  QString& text = pasted.text;
  QTextCursor cursor = textCursor();
  const bool replaces = cursor.hasSelection();
  const bool isOneLine = !cursor.selection().toPlainText().contains(u'\n') && !text.contains(u'\n');
  const bool replacesAPart = replaces && isOneLine;
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  // What is pasted keeps clear of the value at the caret, which stays whole.
  const QString line = cursor.block().text();
  const qsizetype column = cursor.positionInBlock();
  const bool standsBefore = !line.first(column).trimmed().isEmpty();
  const bool standsBehind = !line.sliced(column).trimmed().isEmpty();
  if (!replacesAPart && standsBefore) {
    if (!replaces) cursor.movePosition(QTextCursor::EndOfBlock);
    const bool lineGoesOn = replaces && standsBehind;
    if (text.endsWith(u'\n') && !lineGoesOn && cursor.block().next().isValid()) text.chop(1);
    if (lineGoesOn && !text.endsWith(u'\n')) text.append(u'\n');
    text.prepend(u'\n');
  } else if (!replacesAPart && standsBehind && !text.endsWith(u'\n')) {
    text.append(u'\n');
  }
  cursor.insertText(text);
  cursor.endEditBlock();
  decimalCommasRead_ = pasted.decimalCommas;
  setTextCursor(cursor);
  ensureCursorVisible();
}

int RawDataBox::NumbersWidth() const {
  const auto digits = QString::number(std::max(blockCount(), 99)).size();
  return fontMetrics().horizontalAdvance(QString(digits, u'0')) + 2 * marginGap;
}

int RawDataBox::MarginWidth() const {
  return NumbersWidth() + (besideWidth_ > 0 ? besideWidth_ + 2 * marginGap : 0);
}

const Trace::Run* RawDataBox::RunOf(int line) {
  if (shownRevision_ != document()->revision()) {
    shownSamples_ = Trace::WithReturned(Samples(), texts_, LineTexts());
    shownRevision_ = document()->revision();
  }
  const qint32 sample = shownSamples_[static_cast<std::size_t>(line)];
  return sample == Trace::isNew ? nullptr : record_.RunAt(sample);
}

QString RawDataBox::BesideText(const Trace::Run& run) const {
  QStringList texts{LocalTimes::Moment(run.time), run.lot};
  texts.removeAll(QString());
  return texts.join(u"  "_s);
}

bool RawDataBox::ShowBesideTip(const QHelpEvent& event) {
  const Trace::Run* run = RunOf(cursorForPosition({0, event.pos().y()}).blockNumber());
  const QString lot = run && !run->lot.isEmpty() ? Words::Note::lot(run->lot) : QString();
  QStringList texts{run ? LocalTimes::Moment(run->time) : QString(), lot};
  texts.removeAll(QString());
  QToolTip::showText(event.globalPos(), texts.join(u", "_s), margin_);
  return true;
}

void RawDataBox::PlaceMargin() {
  setViewportMargins(MarginWidth(), 0, 0, 0);
  const QRect inside = contentsRect();
  margin_->setGeometry(inside.left(), inside.top(), MarginWidth(), inside.height());
}

void RawDataBox::resizeEvent(QResizeEvent* event) {
  const QRect caret = cursorRect();
  const bool wasInSight = caret.top() >= 0 && caret.top() < event->oldSize().height();
  QPlainTextEdit::resizeEvent(event);
  PlaceMargin();
  if (wasInSight) ensureCursorVisible();  // a note that grows below takes room from the lines
}

template <class Use>
void RawDataBox::ForEachVisibleLine(Use&& use) const {
  const int bottom = viewport()->height();
  for (QTextBlock block = firstVisibleBlock(); block.isValid(); block = block.next()) {
    const QRectF place = blockBoundingGeometry(block).translated(contentOffset());
    if (place.top() > bottom) return;
    use(block.blockNumber() + 1, place.top());
  }
}

bool RawDataBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched == margin_ && event->type() == QEvent::Paint) {
    PaintMargin();
    return true;
  }
  if (watched == margin_ && event->type() == QEvent::ToolTip)
    return ShowBesideTip(*static_cast<QHelpEvent*>(event));
  return QPlainTextEdit::eventFilter(watched, event);
}

void RawDataBox::PaintMargin() {
  QPainter painter(margin_);
  painter.fillRect(margin_->rect(), palette().color(QPalette::AlternateBase));
  painter.setFont(font());
  ForEachVisibleLine([&](int number, double top) {
    const QRectF place(0, top, NumbersWidth() - marginGap, fontMetrics().height());
    const bool isUnclear = std::ranges::binary_search(unclearLines_, number);
    if (isUnclear) painter.fillRect(place.adjusted(0, 0, marginGap, 0), palette().color(QPalette::Text));
    painter.setPen(palette().color(isUnclear ? QPalette::Base : QPalette::PlaceholderText));
    painter.drawText(place, Qt::AlignRight | Qt::AlignTop, QString::number(number));
    const Trace::Run* run = besideWidth_ > 0 ? RunOf(number - 1) : nullptr;
    if (!run) return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRectF beside(NumbersWidth() + marginGap, top, besideWidth_, fontMetrics().height());
    painter.drawText(beside, Qt::AlignLeft | Qt::AlignTop,
                     fontMetrics().elidedText(BesideText(*run), Qt::ElideRight, besideWidth_));
  });
}

void RawDataBox::paintEvent(QPaintEvent* event) {
  QPlainTextEdit::paintEvent(event);
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Mid));
  ForEachVisibleLine([&](int number, double top) {
    if (std::ranges::binary_search(markedLines_, number))
      painter.drawLine(QPointF(0, top), QPointF(viewport()->width(), top));
    if (!std::ranges::binary_search(unclearLines_, number)) return;
    const QString text = document()->findBlockByNumber(number - 1).text();
    const double left = contentOffset().x() + document()->documentMargin();
    painter.fillRect(QRectF(left, top + fontMetrics().height() - 1, fontMetrics().horizontalAdvance(text), 2),
                     Qt::red);
  });
}
