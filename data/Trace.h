// What is known of samples besides their values: when and in which lot they were taken, and what people noted
// about them. Samples are counted from 0, as they stand in the data set; all times are UTC.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <vector>

namespace Trace {

// Where samples come from: when they were taken, and in which lot.
struct Source {
  QDateTime time;  // invalid where it is not known
  QString lot;

  bool operator==(const Source&) const = default;
};

// A lot as people write it, without blanks around; an InputError where it is no name of one line.
QString LotIn(const QString& text);

// Samples that were taken together. Where others came between them later, one run has several stretches; they
// have its number.
struct Run {
  qsizetype first = 0;
  qsizetype count = 0;
  QDateTime time;  // invalid where it is not known
  QString lot;
  qint64 number = 0;  // one run's own

  qsizetype End() const { return first + count; }
  bool operator==(const Run&) const = default;
};

struct Note {
  qsizetype sample = 0;
  QString text;
  QString author;  // login name
  QDateTime time;  // when it was written
  QString value;   // of the sample, as it was when the note last had one
  qint64 number = 0;

  bool operator==(const Note&) const = default;
};

// Of one data set. Runs and notes stand in the order of the samples, and no sample has two of either.
struct Record {
  std::vector<Run> runs;
  std::vector<Note> notes;
  // What has lost its samples: kept, and never moved to others. `count` is then how many samples there were;
  // `first` and `sample` mean nothing.
  std::vector<Run> unplacedRuns;
  std::vector<Note> unplacedNotes;

  bool IsEmpty() const;
  const Run* RunAt(qsizetype sample) const;    // null where none is known
  const Note* NoteAt(qsizetype sample) const;  // null where there is none
  // Lists as unplaced those of the runs that have no stretch left.
  void Unplace(const std::vector<Run>& gone);
  // The first note on one of the samples [first, first + count), and behind the last one.
  std::pair<const Note*, const Note*> NotesOn(qsizetype first, qsizetype count) const;
};

// For each sample, in order, the one before the change that it is, or that it stands for; `isNew` for none.
using Origins = std::vector<qint32>;
inline constexpr qint32 isNew = -1;

Origins Unchanged(qsizetype count);

// The samples of a stored text, without the blanks around them.
QStringList SamplesIn(const QString& values);

// What the shortest difference makes of them: as many samples as can be stay; where, between those that stay,
// as many came as went, each stands for the one in whose place it came. Among very many equal values only
// those that are there once may stay.
Origins ByDifference(const QStringList& before, const QStringList& after);

// The same, with every new sample that is equal to one that went from its place: somebody has made it anew,
// or parted from what he had joined it with.
Origins WithReturned(const Origins& origins, const QStringList& before, const QStringList& after);

// First `second`, then `first`: origins of the result of two changes, in what was there before both.
Origins Through(const Origins& first, const Origins& second);

// The change back: for each of the `count` samples from before it, what it has become; `isNew` for nothing.
Origins Back(const Origins& origins, qsizetype count);

// What becomes of it when the samples change. A run is unplaced when none of its samples is left.
Record Moved(const Record& record, const Origins& origins, const QStringList& after);

}  // namespace Trace
