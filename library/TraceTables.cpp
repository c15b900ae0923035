#include "library/TraceTables.h"

#include <algorithm>
#include <limits>

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

// How many samples a stored text holds, up to so many, and the fingerprint of these.
std::pair<qsizetype, qint64> CountAndPrint(const QString& values,
                                           qsizetype most = std::numeric_limits<qsizetype>::max()) {
  quint64 hash = basis;
  qsizetype count = 0;
  const QStringView text = QStringView(values).trimmed();
  for (const QStringView sample : (text.endsWith(u',') ? text.chopped(1) : text).tokenize(u',')) {
    if (count == most) break;
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

struct StoredRun {
  Trace::Run run;
  QVariant first, print;
};

struct StoredNote {
  Trace::Note note;
  QVariant first, print;
};

// What stands there for a data set, whatever its samples are.
struct Stored {
  std::vector<StoredRun> runs;
  std::vector<StoredNote> notes;
};

// Of the data sets of these IDs that have any.
std::map<qint64, Stored> StoredOf(Connection& connection, const QStringList& ids) {
  std::map<qint64, Stored> stored;
  const QString order = u"WHERE ID IN (%1) ORDER BY ID, Entry"_s.arg(ids.join(u','));
  const Query runs = connection.Run(
      u"select"_s,
      u"SELECT ID, Run, FirstSample, SampleCount, TakenAt, Lot, Fingerprint FROM SampleRun "_s + order);
  while (connection.NextRow(runs)) {
    const QVariant first = runs->value(2);
    stored[runs->value(0).toLongLong()].runs.push_back(
        {{first.toLongLong(), runs->value(3).toLongLong(), TimeIn(runs->value(4)), runs->value(5).toString(),
          runs->value(1).toLongLong()},
         first,
         runs->value(6)});
  }
  const Query notes = connection.Run(
      u"select"_s,
      u"SELECT ID, Entry, FirstSample, SampleValue, Note, Author, WrittenAt, Fingerprint FROM SampleNote "_s +
          order);
  while (connection.NextRow(notes)) {
    const QVariant first = notes->value(2);
    stored[notes->value(0).toLongLong()].notes.push_back(
        {{first.toLongLong(), notes->value(4).toString(), notes->value(5).toString(), TimeIn(notes->value(6)),
          notes->value(3).toString(), notes->value(1).toLongLong()},
         first,
         notes->value(7)});
  }
  return stored;
}

// Those that rest on these samples are placed, the others not.
TraceTables::Found Placed(const Stored& stored, const QStringList& samples) {
  TraceTables::Found found;
  Trace::Record& record = found.record;
  const Places places(samples);
  const auto fits = [&](const auto& entry, qint64 count) {
    const bool does = places.Fit(entry.first, count, entry.print);
    found.allFit = found.allFit && (does || entry.first.isNull());
    return does;
  };
  std::vector<Trace::Run> gone;
  for (const StoredRun& entry : stored.runs)
    (fits(entry, entry.run.count) ? record.runs : gone).push_back(entry.run);
  for (const StoredNote& entry : stored.notes)
    (fits(entry, 1) ? record.notes : record.unplacedNotes).push_back(entry.note);
  const auto runs =
      TakeOverlapping(record.runs, &Trace::Run::first, [](const Trace::Run& run) { return run.End(); });
  gone.insert(gone.end(), runs.begin(), runs.end());
  record.Unplace(gone);
  const auto notes = TakeOverlapping(record.notes, &Trace::Note::sample,
                                     [](const Trace::Note& note) { return note.sample + 1; });
  record.unplacedNotes.insert(record.unplacedNotes.end(), notes.begin(), notes.end());
  return found;
}

bool AreMade(Connection& connection) { return connection.Has(u"SampleNote"_s); }

// The largest number of the entries of a data set; 0 where there is none.
qint64 LargestNote(Connection& connection, qint64 id) {
  const Query query = connection.Run(u"select"_s, u"SELECT max(Entry) FROM SampleNote WHERE ID = ?"_s, {id});
  return connection.NextRow(query) ? query->value(0).toLongLong() : 0;
}

// What those of a data set end with.
struct Ends {
  qint64 entry = 0;  // the largest numbers; 0 where there is none
  qint64 run = 0;
  std::optional<qint64> behind;  // the last sample that an entry rests on
  qint64 print = 0;              // of all samples up to there

  // Whether that one rests on the first `count` of these samples; then all do, since the fingerprint of each
  // is of all samples before it.
  bool Fit(const QString& values, qsizetype count) const {
    return !behind || (*behind <= count && CountAndPrint(values, *behind).second == print);
  }
};
Ends EndsOf(Connection& connection, qint64 id) {
  const Query query = connection.Run(
      u"select"_s,
      u"SELECT MostEntry, MostRun, Behind, Fingerprint FROM "
      "(SELECT max(Entry) AS MostEntry, max(Run) AS MostRun FROM SampleRun WHERE ID = ?) AS Numbers "
      "LEFT JOIN (SELECT FirstSample + SampleCount AS Behind, Fingerprint FROM SampleRun "
      "WHERE ID = ? AND FirstSample IS NOT NULL "
      "UNION ALL SELECT FirstSample + 1, Fingerprint FROM SampleNote WHERE ID = ? AND FirstSample IS NOT "
      "NULL "
      "ORDER BY 1 DESC LIMIT 1) AS Last ON 1 = 1"_s,
      {id, id, id});
  if (!connection.NextRow(query)) return {};
  Ends ends{query->value(0).toLongLong(), query->value(1).toLongLong(), {}, query->value(3).toLongLong()};
  if (!query->isNull(2)) ends.behind = query->value(2).toLongLong();
  return ends;
}

}  // namespace

void TraceTables::Make(Connection& connection) {
  if (AreMade(connection)) return;
  for (const QString& statement : Statements()) connection.Execute(statement);
}

bool TraceTables::HasEntries(Connection& connection, qint64 id) {
  if (!AreMade(connection)) return false;
  const Query query = connection.Run(u"select"_s,
                                     u"SELECT 1 WHERE EXISTS (SELECT 1 FROM SampleRun WHERE ID = ?) "
                                     "OR EXISTS (SELECT 1 FROM SampleNote WHERE ID = ?)"_s,
                                     {id, id});
  return connection.NextRow(query);
}

TraceTables::Found TraceTables::Read(Connection& connection, qint64 id, const QStringList& samples) {
  if (!AreMade(connection)) return {};
  return Placed(StoredOf(connection, {QString::number(id)})[id], samples);
}

std::map<qint64, TraceTables::Found> TraceTables::ReadAll(Connection& connection,
                                                          const std::map<qint64, QStringList>& samples) {
  std::map<qint64, Found> all;
  if (samples.empty() || !AreMade(connection)) return all;
  QStringList ids;
  for (const auto& [id, texts] : samples) ids << QString::number(id);
  for (const auto& [id, stored] : StoredOf(connection, ids)) all[id] = Placed(stored, samples.at(id));
  return all;
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
  Ends ends = EndsOf(connection, id);
  if (!ends.Fit(values, first)) {
    // What somebody has cut off must not fit again since the same comes behind.
    const QStringList before = Trace::SamplesIn(values).first(first);
    Write(connection, id, Read(connection, id, before).record, before);
    ends = EndsOf(connection, id);
  }
  Runs runs(connection);
  runs.Put(id, ends.entry + 1, {first, count, source.time, source.lot, ends.run + 1}, print);
  runs.End();
}

void TraceTables::PutNote(Connection& connection, qint64 id, Trace::Note note, const QStringList& samples) {
  Make(connection);
  if (note.number == 0)
    note.number = LargestNote(connection, id) + 1;
  else
    RemoveNote(connection, id, note.number);
  Notes notes(connection);
  const Places places(samples);
  notes.Put(id, note, &places);
  notes.End();
}

void TraceTables::RemoveRun(Connection& connection, qint64 id, qint64 number) {
  connection.Execute(u"DELETE FROM SampleRun WHERE ID = ? AND Run = ?"_s, {id, number});
}

void TraceTables::RemoveNote(Connection& connection, qint64 id, qint64 number) {
  connection.Execute(u"DELETE FROM SampleNote WHERE ID = ? AND Entry = ?"_s, {id, number});
}

void TraceTables::Remove(Connection& connection, qint64 id) {
  if (!AreMade(connection)) return;
  for (const auto& table : {u"SampleRun"_s, u"SampleNote"_s})
    connection.Execute(u"DELETE FROM %1 WHERE ID = ?"_s.arg(table), {id});
}
