// What a library does with the runs and notes of its data sets.
#include <algorithm>

#include "library/ExtraTables.h"
#include "library/Library.h"
#include "library/Merge.h"
#include "library/TraceTables.h"

using namespace Qt::StringLiterals;
using Change = Connection::Change;

namespace {

QString ValuesIn(const QVariantList& row) { return row[Tables::StatData().IndexOf(u"Values")].toString(); }

}  // namespace

Trace::Record Library::TraceOf(const CData& data) {
  const QVariantList& known = data.RowAsKnown();
  if (known.isEmpty() || !TraceTables::HasEntries(connection_, Tables::IdOf(known))) return {};
  const qint64 id = Tables::IdOf(known);
  QStringList samples = Trace::SamplesIn(ValuesIn(known));
  TraceTables::Found found = TraceTables::Read(connection_, id, samples);
  if (!found.allFit) {
    // Others may have changed the samples; or do so just now.
    const auto present = [&] {
      const auto row = PresentRow(data);
      return row ? ValuesIn(*row) : ValuesIn(known);
    };
    QString values, again = present();
    do {
      values = again;
      found = TraceTables::Read(connection_, id, Trace::SamplesIn(values));
      again = present();
    } while (again != values);
    samples = Trace::SamplesIn(values);
  }
  const QStringList shown = Trace::SamplesIn(data.DelimitedInputString());
  if (shown == samples) return found.record;
  return Trace::Moved(found.record, Trace::ByDifference(samples, shown), shown);
}

// One by one only where others have changed something meanwhile.
std::vector<Trace::Record> Library::TracesOf(const std::vector<Row>& rows) {
  std::map<qint64, QStringList> samples;
  for (const Row& row : rows)
    if (!row.data->RowAsKnown().isEmpty())
      samples[Tables::IdOf(row.data->RowAsKnown())] = Trace::SamplesIn(ValuesIn(row.data->RowAsKnown()));
  const auto all = TraceTables::ReadAll(connection_, samples);
  std::vector<Trace::Record> records;
  for (const Row& row : rows) {
    const auto found = all.find(row.id);
    const bool fits = found == all.end() || (found->second.allFit && ValuesIn(row.data->RowAsKnown()) ==
                                                                         row.data->DelimitedInputString());
    records.push_back(!fits                ? TraceOf(*row.data)
                      : found == all.end() ? Trace::Record()
                                           : found->second.record);
  }
  return records;
}

// They go with their samples where a save has changed these.
void Library::MoveTrace(const CData& data, const QVariantList& before, const QVariantList& after) {
  const qint64 id = Tables::IdOf(before);
  if (ValuesIn(before) == ValuesIn(after) || !TraceTables::HasEntries(connection_, id)) return;
  const Trace::Record record = TraceTables::Read(connection_, id, Trace::SamplesIn(ValuesIn(before))).record;
  const QStringList samples = Trace::SamplesIn(ValuesIn(after));
  TraceTables::Write(connection_, id, Trace::Moved(record, Merge::OriginsOf(data, before, after), samples),
                     samples);
}

// What the library now holds of a data set, in a transaction.
struct Library::Standing {
  qint64 id;
  QStringList samples;
  Trace::Record record;
  Trace::Origins places;  // of the samples of the one that the user sees

  qint32 PlaceOf(qsizetype sample) const {
    return sample < std::ssize(places) ? places[static_cast<std::size_t>(sample)] : Trace::isNew;
  }
};

std::optional<Library::Standing> Library::StandingOf(const CData& data) {
  const auto present = PresentRow(data);
  if (!present) return std::nullopt;
  const qint64 id = Tables::IdOf(*present);
  const QStringList samples = Trace::SamplesIn(ValuesIn(*present));
  const QStringList known = Trace::SamplesIn(data.DelimitedInputString());
  return Standing{id, samples, TraceTables::Read(connection_, id, samples).record,
                  Trace::Back(Trace::ByDifference(known, samples), known.size())};
}

// Nothing of the row changes but its version, by which others see that there is something new.
void Library::TellOthers(qint64 id) {
  ExtraTables::Make(connection_);
  connection_.Execute(u"UPDATE StatData SET Description = Description WHERE ID = ?"_s, {id});
}

Library::Noted Library::SetNote(const CData& data, qsizetype sample, const QString& seen, const QString& text,
                                const QString& author, const QDateTime& now) {
  using Outcome = Noted::Outcome;
  const QString noted = text.trimmed();
  Transaction transaction(connection_, seen.isEmpty() ? Change::Adds : Change::Replaces);
  const auto present = StandingOf(data);
  const qint32 place = present ? present->PlaceOf(sample) : Trace::isNew;
  if (place == Trace::isNew) return {Outcome::Gone, {}};
  const Trace::Note* standing = present->record.NoteAt(place);
  Trace::Note note;
  if (standing) note = *standing;
  note.sample = place;
  if (note.text == noted) return {};
  if (note.text != seen) return {Outcome::Conflict, note};
  note.text = noted;
  note.author = author;
  note.time = now;
  note.value = present->samples[place];
  if (noted.isEmpty())
    TraceTables::RemoveNote(connection_, present->id, note.number);
  else
    TraceTables::PutNote(connection_, present->id, note, present->samples);
  TellOthers(present->id);
  transaction.Commit();
  return {};
}

Library::Noted Library::PlaceNote(const CData& data, qint64 number, qsizetype sample) {
  using Outcome = Noted::Outcome;
  Transaction transaction(connection_);
  const auto present = StandingOf(data);
  const qint32 place = present ? present->PlaceOf(sample) : Trace::isNew;
  if (place == Trace::isNew) return {Outcome::Gone, {}};
  const auto& unplaced = present->record.unplacedNotes;
  const auto found = std::ranges::find(unplaced, number, &Trace::Note::number);
  if (found == unplaced.end()) return {Outcome::Gone, {}};
  if (const Trace::Note* standing = present->record.NoteAt(place)) return {Outcome::Conflict, *standing};
  Trace::Note note = *found;
  note.sample = place;
  note.value = present->samples[place];
  TraceTables::PutNote(connection_, present->id, note, present->samples);
  TellOthers(present->id);
  transaction.Commit();
  return {};
}

void Library::RemoveUnplaced(const CData& data, const std::vector<qint64>& runs,
                             const std::vector<qint64>& notes) {
  Transaction transaction(connection_);
  const auto present = StandingOf(data);
  if (!present) return;
  const auto has = [](const std::vector<qint64>& numbers, qint64 number) {
    return std::ranges::find(numbers, number) != numbers.end();
  };
  for (const Trace::Run& run : present->record.unplacedRuns)
    if (has(runs, run.number)) TraceTables::RemoveRun(connection_, present->id, run.number);
  for (const Trace::Note& note : present->record.unplacedNotes)
    if (has(notes, note.number)) TraceTables::RemoveNote(connection_, present->id, note.number);
  TellOthers(present->id);
  transaction.Commit();
}
