#include "screens/LineIdentity.h"

#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>

namespace {

// All lines are of the program's one thread of windows.
qint64 NewLine() {
  static qint64 last = 0;
  return ++last;
}

}  // namespace

LineIdentity::LineIdentity(QTextDocument* document) : document_(document) {
  Restart();
  connect(document, &QTextDocument::undoCommandAdded, this, [this] { isNewStep_ = true; });
  connect(document, &QTextDocument::contentsChange, this,
          [this](int position, int, int added) { Changed(position, added); });
}

void LineIdentity::Restart(const Lines& lines) {
  lines_ = lines;
  while (lines_.size() < document_->blockCount()) lines_ << NewLine();
  lines_.resize(document_->blockCount());
  expected_.clear();
  texts_ = Texts();
  undoSteps_ = document_->availableUndoSteps();
  steps_ = {{undoSteps_, Packed(lines_)}};
  isNewStep_ = false;
}

void LineIdentity::Expect(const QStringList& texts, const Lines& lines) {
  expected_ = lines.size() == texts.size() ? lines : ByDifference(texts);
}

LineIdentity::Lines LineIdentity::ByDifference(const QStringList& texts) const {
  Lines lines;
  for (const qint32 origin : Trace::ByDifference(texts_, texts))
    lines << (origin == Trace::isNew ? NewLine() : lines_[origin]);
  return lines;
}

void LineIdentity::Changed(int position, int added) {
  const int steps = document_->availableUndoSteps();
  const auto known = steps_.find(steps);
  const bool isRepeated = !isNewStep_ && steps != undoSteps_ && known != steps_.end();
  Lines told = isRepeated ? Unpacked(known->second) : expected_;
  if (told.isEmpty()) Follow(position, added);
  if (!told.isEmpty() || texts_.size() != document_->blockCount()) {
    const QStringList texts = Texts();
    lines_ = told.size() == texts.size() ? told : ByDifference(texts);
    texts_ = texts;
  }
  expected_.clear();
  isNewStep_ = false;
  undoSteps_ = steps;
  if (isRepeated) return;
  steps_.erase(steps_.lower_bound(steps), steps_.end());
  steps_[steps] = Packed(lines_);
}

void LineIdentity::Follow(int position, int added) {
  const QTextBlock first = document_->findBlock(position);
  const qsizetype from = first.blockNumber();
  QStringList after;
  for (QTextBlock block = first; block.isValid() && block.position() <= position + added;
       block = block.next())
    after << block.text();
  const qsizetype count = after.size() + texts_.size() - document_->blockCount();
  if (!first.isValid() || count < 0 || from + count > texts_.size()) return;
  const Lines followed =
      Followed(texts_.mid(from, count), lines_.mid(from, count), after, first.position() == position);
  if (after.size() == count) {
    std::ranges::copy(after, texts_.begin() + from);
    return;
  }
  texts_ = texts_.first(from) + after + texts_.sliced(from + count);
  lines_ = lines_.first(from) + followed + lines_.sliced(from + count);
}

// What begins with a line leaves the lines behind it; what begins within one leaves that.
LineIdentity::Lines LineIdentity::Followed(const QStringList& before, const Lines& lines,
                                           const QStringList& after, bool beginsLine) const {
  if (before.size() == after.size()) return lines;
  const qsizetype most = std::min(before.size(), after.size());
  qsizetype head = 0, tail = 0;
  const auto countHead = [&] {
    while (head + tail < most && before[head] == after[head]) ++head;
  };
  const auto countTail = [&] {
    while (head + tail < most && before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) ++tail;
  };
  if (!beginsLine) countHead();
  countTail();
  countHead();
  Lines followed = lines.first(head);
  while (followed.size() < after.size() - tail) followed << NewLine();
  return followed + lines.last(tail);
}

QStringList LineIdentity::Texts() const {
  QStringList texts;
  for (QTextBlock block = document_->begin(); block.isValid(); block = block.next()) texts << block.text();
  return texts;
}

LineIdentity::Stretches LineIdentity::Packed(const Lines& lines) {
  Stretches stretches;
  for (const qint64 line : lines) {
    const bool goesOn = !stretches.isEmpty() && stretches.last().first + stretches.last().second == line;
    if (goesOn)
      ++stretches.last().second;
    else
      stretches << std::pair<qint64, qsizetype>(line, 1);
  }
  return stretches;
}

LineIdentity::Lines LineIdentity::Unpacked(const Stretches& stretches) {
  Lines lines;
  for (const auto& [first, count] : stretches)
    for (qint64 line = first; line < first + count; ++line) lines << line;
  return lines;
}
