#include "library/TraceTables.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

const QStringList& Statements() {
  static const QStringList statements{
      u"CREATE TABLE IF NOT EXISTS SampleRun (ID BIGINT NOT NULL, Entry BIGINT NOT NULL, Run BIGINT NOT "
      u"NULL, "
      "FirstSample INTEGER, SampleCount INTEGER NOT NULL, TakenAt TEXT, Lot TEXT, Fingerprint BIGINT, "
      "PRIMARY KEY (ID, Entry))"_s,
      u"CREATE TABLE IF NOT EXISTS SampleNote (ID BIGINT NOT NULL, Entry BIGINT NOT NULL, FirstSample "
      u"INTEGER, "
      "SampleValue TEXT, Note TEXT NOT NULL, Author TEXT, WrittenAt TEXT, Fingerprint BIGINT, "
      "PRIMARY KEY (ID, Entry))"_s};
  return statements;
}

constexpr quint64 basis = 0xcbf29ce484222325;

quint64 WithSample(quint64 hash, QStringView sample) {
  constexpr quint64 prime = 0x100000001b3;
  for (const QChar character : sample) hash = (hash ^ character.unicode()) * prime;
  return (hash ^ u',') * prime;
}

// At n: of the first n samples, each followed by a comma (FNV-1a of 64 bits).
std::vector<qint64> Fingerprints(const QStringList& samples) {
  std::vector<qint64> prints;
  prints.reserve(static_cast<std::size_t>(samples.size()) + 1);
  quint64 hash = basis;
  prints.push_back(static_cast<qint64>(hash));
  for (const QString& sample : samples) {
    hash = WithSample(hash, sample);
    prints.push_back(static_cast<qint64>(hash));
  }
  return prints;
}

// How many samples a stored text holds, and the fingerprint of all of them.
std::pair<qsizetype, qint64> CountAndPrint(const QString& values) {
  quint64 hash = basis;
  qsizetype count = 0;
  const QStringView text = QStringView(values).trimmed();
  for (const QStringView sample : (text.endsWith(u',') ? text.chopped(1) : text).tokenize(u',')) {
    hash = WithSample(hash, sample.trimmed());
    ++count;
  }
  return {count, static_cast<qint64>(hash)};
}

// Where entries are: whether one rests on these samples, and what to write for one that does.
class Places {
 public:
  explicit Places(const QStringList& samples) : prints_(Fingerprints(samples)) {}

  bool Fit(const QVariant& first, qint64 count, const QVariant& print) const {
    const qint64 begin = first.toLongLong();
    return !first.isNull() && !print.isNull() && begin >= 0 && count > 0 &&
           count < std::ssize(prints_) - begin && PrintBehind(begin + count) == print.toLongLong();
  }
  qint64 PrintBehind(qsizetype end) const { return prints_[static_cast<std::size_t>(end)]; }

 private:
  std::vector<qint64> prints_;
};

QVariant Written(const QDateTime& time) {
  if (!time.isValid()) return {};
  const QDateTime utc = time.toUTC();
  return utc.toString(utc.time().msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs);
}

QDateTime TimeIn(const QVariant& text) { return QDateTime::fromString(text.toString(), Qt::ISODate).toUTC(); }

// Rows of one table, some in each statement.
class Rows {
 public:
  Rows(Connection& connection, const QString& columns, const QString& table)
      : connection_(connection), insert_(u"INSERT INTO %1 (%2) VALUES "_s.arg(table, columns)) {}

  void Put(const QVariantList& row) {
    constexpr qsizetype mostValues = 800;
    places_ << u'(' + QStringList(row.size(), u"?"_s).join(u", "_s) + u')';
    values_ << row;
    if (values_.size() + row.size() > mostValues) End();
  }
  void End() {
    if (!places_.isEmpty()) connection_.Run(u"insert"_s, insert_ + places_.join(u", "_s), values_);
    places_.clear();
    values_.clear();
  }

 private:
  Connection& connection_;
  const QString insert_;
  QStringList places_;
  QVariantList values_;
};

class Runs : public Rows {
 public:
  explicit Runs(Connection& connection)
      : Rows(connection, u"ID, Entry, Run, FirstSample, SampleCount, TakenAt, Lot, Fingerprint"_s,
             u"SampleRun"_s) {}
  // Without a fingerprint it has no place.
  void Put(qint64 id, qint64 entry, const Trace::Run& run, std::optional<qint64> print) {
    Rows::Put({id, entry, run.number, print ? run.first : QVariant(), run.count, Written(run.time), run.lot,
               print ? *print : QVariant()});
  }
};

class Notes : public Rows {
 public:
  explicit Notes(Connection& connection)
      : Rows(connection, u"ID, Entry, FirstSample, SampleValue, Note, Author, WrittenAt, Fingerprint"_s,
             u"SampleNote"_s) {}
  void Put(qint64 id, const Trace::Note& note, const Places* places) {
    Rows::Put({id, note.number, places ? note.sample : QVariant(), note.value, note.text, note.author,
               Written(note.time), places ? places->PrintBehind(note.sample + 1) : QVariant()});
  }
};

// No sample has two: of what overlaps, the later one goes.
template <class Entry, class End>
std::vector<Entry> TakeOverlapping(std::vector<Entry>& entries, qsizetype Entry::*first, End&& end) {
  std::ranges::stable_sort(entries, {}, first);
  std::vector<Entry> kept, taken;
  for (const Entry& entry : entries)
    (kept.empty() || end(kept.back()) <= entry.*first ? kept : taken).push_back(entry);
  entries = kept;
  return taken;
}

void ReadRuns(Connection& connection, qint64 id, const Places& places, TraceTables::Found& found) {
  QSqlQuery query = connection.Run(
      u"select"_s,
      u"SELECT Run, FirstSample, SampleCount, TakenAt, Lot, Fingerprint FROM SampleRun WHERE ID = ? "
      "ORDER BY Entry"_s,
      {id});
  std::vector<Trace::Run> gone;
  while (connection.NextRow(query)) {
    const QVariant first = query.value(1);
    const Trace::Run run{first.toLongLong(), query.value(2).toLongLong(), TimeIn(query.value(3)),
                         query.value(4).toString(), query.value(0).toLongLong()};
    const bool fits = places.Fit(first, run.count, query.value(5));
    found.allFit = found.allFit && (fits || first.isNull());
    (fits ? found.record.runs : gone).push_back(run);
  }
  const auto overlapping =
      TakeOverlapping(found.record.runs, &Trace::Run::first, [](const Trace::Run& run) { return run.End(); });
  gone.insert(gone.end(), overlapping.begin(), overlapping.end());
  found.record.Unplace(gone);
}

void ReadNotes(Connection& connection, qint64 id, const Places& places, TraceTables::Found& found) {
  QSqlQuery query = connection.Run(
      u"select"_s,
      u"SELECT Entry, FirstSample, SampleValue, Note, Author, WrittenAt, Fingerprint FROM SampleNote "
      "WHERE ID = ? ORDER BY Entry"_s,
      {id});
  Trace::Record& record = found.record;
  while (connection.NextRow(query)) {
    const QVariant first = query.value(1);
    const Trace::Note note{first.toLongLong(),     query.value(3).toString(), query.value(4).toString(),
                           TimeIn(query.value(5)), query.value(2).toString(), query.value(0).toLongLong()};
    const bool fits = places.Fit(first, 1, query.value(6));
    found.allFit = found.allFit && (fits || first.isNull());
    (fits ? record.notes : record.unplacedNotes).push_back(note);
  }
  const auto overlapping = TakeOverlapping(record.notes, &Trace::Note::sample,
                                           [](const Trace::Note& note) { return note.sample + 1; });
  record.unplacedNotes.insert(record.unplacedNotes.end(), overlapping.begin(), overlapping.end());
}

bool AreMade(Connection& connection) { return connection.Has(u"SampleNote"_s); }

// The largest number in a column; 0 where there is none.
qint64 Largest(Connection& connection, const QString& column, const QString& table, qint64 id) {
  QSqlQuery query =
      connection.Run(u"select"_s, u"SELECT max(%1) FROM %2 WHERE ID = ?"_s.arg(column, table), {id});
  return connection.NextRow(query) ? query.value(0).toLongLong() : 0;
}

}  // namespace

void TraceTables::Make(Connection& connection) {
  if (AreMade(connection)) return;
  for (const QString& statement : Statements()) connection.Execute(statement);
}

bool TraceTables::HasEntries(Connection& connection, qint64 id) {
  if (!AreMade(connection)) return false;
  QSqlQuery query = connection.Run(u"select"_s,
                                   u"SELECT 1 WHERE EXISTS (SELECT 1 FROM SampleRun WHERE ID = ?) "
                                   "OR EXISTS (SELECT 1 FROM SampleNote WHERE ID = ?)"_s,
                                   {id, id});
  return connection.NextRow(query);
}

TraceTables::Found TraceTables::Read(Connection& connection, qint64 id, const QStringList& samples) {
  Found found;
  if (!AreMade(connection)) return found;
  const Places places(samples);
  ReadRuns(connection, id, places, found);
  ReadNotes(connection, id, places, found);
  return found;
}

void TraceTables::Write(Connection& connection, qint64 id, const Trace::Record& record,
                        const QStringList& samples) {
  Make(connection);
  Remove(connection, id);
  const Places places(samples);
  qint64 entry = 0;
  Runs runs(connection);
  for (const Trace::Run& run : record.runs) runs.Put(id, ++entry, run, places.PrintBehind(run.End()));
  for (const Trace::Run& run : record.unplacedRuns) runs.Put(id, ++entry, run, std::nullopt);
  runs.End();
  Notes notes(connection);
  for (const Trace::Note& note : record.notes) notes.Put(id, note, &places);
  for (const Trace::Note& note : record.unplacedNotes) notes.Put(id, note, nullptr);
  notes.End();
}

void TraceTables::AddRun(Connection& connection, qint64 id, const Trace::Source& source,
                         const QString& values, qsizetype count) {
  Make(connection);
  const auto [samples, print] = CountAndPrint(values);
  const qsizetype first = samples - count;
  // What somebody has cut off must not fit again since the same comes behind.
  const QVariantList behind{id, first};
  connection.Execute(
      u"UPDATE SampleRun SET FirstSample = NULL, Fingerprint = NULL "
      "WHERE ID = ? AND FirstSample + SampleCount > ?"_s,
      behind);
  connection.Execute(
      u"UPDATE SampleNote SET FirstSample = NULL, Fingerprint = NULL WHERE ID = ? AND FirstSample >= ?"_s,
      behind);
  Runs runs(connection);
  runs.Put(id, Largest(connection, u"Entry"_s, u"SampleRun"_s, id) + 1,
           {first, count, source.time, source.lot, Largest(connection, u"Run"_s, u"SampleRun"_s, id) + 1},
           print);
  runs.End();
}

void TraceTables::PutNote(Connection& connection, qint64 id, Trace::Note note, const QStringList& samples) {
  Make(connection);
  if (note.number == 0)
    note.number = Largest(connection, u"Entry"_s, u"SampleNote"_s, id) + 1;
  else
    RemoveNote(connection, id, note.number);
  Notes notes(connection);
  const Places places(samples);
  notes.Put(id, note, &places);
  notes.End();
}

void TraceTables::RemoveNote(Connection& connection, qint64 id, qint64 number) {
  connection.Execute(u"DELETE FROM SampleNote WHERE ID = ? AND Entry = ?"_s, {id, number});
}

void TraceTables::Remove(Connection& connection, qint64 id) {
  if (!AreMade(connection)) return;
  for (const auto& table : {u"SampleRun"_s, u"SampleNote"_s})
    connection.Execute(u"DELETE FROM %1 WHERE ID = ?"_s.arg(table), {id});
}
