#include "cli/TraceTexts.h"

#include <QJsonArray>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QJsonValue OrNull(const QString& text) { return text.isEmpty() ? QJsonValue() : QJsonValue(text); }

// Samples are counted from 1 where others read it; what is unplaced has none.
QJsonValue Sample(qsizetype sample, bool isPlaced) {
  return isPlaced ? QJsonValue(sample + 1) : QJsonValue();
}

QJsonArray RunsOf(const std::vector<Trace::Run>& runs, bool arePlaced) {
  QJsonArray array;
  for (const Trace::Run& run : runs)
    array.append(QJsonObject{{u"FirstSample"_s, Sample(run.first, arePlaced)},
                             {u"Samples"_s, run.count},
                             {u"Time"_s, OrNull(TraceTexts::Moment(run.time))},
                             {u"Lot"_s, OrNull(run.lot)}});
  return array;
}

QJsonArray NotesOf(const std::vector<Trace::Note>& notes, bool arePlaced) {
  QJsonArray array;
  for (const Trace::Note& note : notes)
    array.append(QJsonObject{{u"Sample"_s, Sample(note.sample, arePlaced)},
                             {u"Value"_s, note.value},
                             {u"Text"_s, note.text},
                             {u"Author"_s, OrNull(note.author)},
                             {u"Time"_s, OrNull(TraceTexts::Moment(note.time))}});
  return array;
}

QString Line(const QStringList& fields) {
  QStringList written;
  for (QString field : fields) {
    const bool isPlain = std::ranges::none_of(field, [](QChar c) { return u",\"\r\n"_s.contains(c); });
    written << (isPlain ? field : u'"' + field.replace(u'"', u"\"\""_s) + u'"');
  }
  return written.join(u',') + u"\r\n"_s;
}

}  // namespace

QString TraceTexts::Moment(const QDateTime& time) {
  if (!time.isValid()) return {};
  const QDateTime local = time.toLocalTime();
  return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
}

void TraceTexts::AddTo(QJsonObject& object, const Trace::Record& record) {
  object[u"Runs"_s] = RunsOf(record.runs, true);
  object[u"Notes"_s] = NotesOf(record.notes, true);
  object[u"UnplacedRuns"_s] = RunsOf(record.unplacedRuns, false);
  object[u"UnplacedNotes"_s] = NotesOf(record.unplacedNotes, false);
}

QString TraceTexts::Csv(const CData& data, const Trace::Record& record) {
  QString text = Line({u"Sample"_s, u"Value"_s, u"Time"_s, u"Lot"_s, u"Point"_s, u"Note"_s});
  const QStringList samples = Trace::SamplesIn(data.DelimitedInputString());
  for (qsizetype at = 0; at < samples.size(); ++at) {
    const Trace::Run* run = record.RunAt(at);
    const Trace::Note* note = record.NoteAt(at);
    const bool isInPoint = at < data.SampleQty();
    text += Line({QString::number(at + 1), samples[at], run ? Moment(run->time) : QString(),
                  run ? run->lot : QString(),
                  isInPoint ? QString::number(at / data.SubGroupSize() + 1) : QString(),
                  note ? note->text : QString()});
  }
  return text;
}
