// Which line of a text is which, whatever is done to it: typing, pasting, removing, undoing.
//
// A line that is changed stays the same, and so do lines in whose place as many others are put. Of a change
// that leaves more lines or fewer, the lines at its ends that are equal stay, and the others are new.
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>
#include <map>

#include "data/Trace.h"

class QTextDocument;

class LineIdentity : public QObject {
 public:
  explicit LineIdentity(QTextDocument* document);

  // A number for each line, which no other line of the program has.
  using Lines = QList<qint64>;
  const Lines& Present() const { return lines_; }

  // The text is another one, with nothing to undo: its lines are these, or new ones.
  void Restart(const Lines& lines = {});
  // The next change makes the text this one, of these lines, or of those that the shortest difference keeps.
  void Expect(const QStringList& texts, const Lines& lines = {});

 private:
  void Changed(int position, int added);
  void Follow(int position, int added);
  Lines Followed(const QStringList& before, const Lines& lines, const QStringList& after,
                 bool beginsLine) const;
  Lines ByDifference(const QStringList& texts) const;
  QStringList Texts() const;

  QTextDocument* const document_;
  Lines lines_;
  QStringList texts_;  // of the lines, as they were before the next change
  Lines expected_;
  // By the number of steps that can be undone: the lines as they were then, as stretches of numbers that
  // follow each other.
  using Stretches = QList<std::pair<qint64, qsizetype>>;
  static Stretches Packed(const Lines& lines);
  static Lines Unpacked(const Stretches& stretches);
  std::map<int, Stretches> steps_;
  int undoSteps_ = 0;
  bool isNewStep_ = false;  // and not one that is undone, done again, or goes on
};
