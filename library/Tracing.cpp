// What a library does with the runs and notes of its data sets.
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

// They go with their samples where a save has changed these.
void Library::MoveTrace(const CData& data, const QVariantList& before, const QVariantList& after) {
  const qint64 id = Tables::IdOf(before);
  if (ValuesIn(before) == ValuesIn(after) || !TraceTables::HasEntries(connection_, id)) return;
  const Trace::Record record = TraceTables::Read(connection_, id, Trace::SamplesIn(ValuesIn(before))).record;
  const QStringList samples = Trace::SamplesIn(ValuesIn(after));
  TraceTables::Write(connection_, id, Trace::Moved(record, Merge::OriginsOf(data, before, after), samples),
                     samples);
}

Library::Noted Library::SetNote(const CData& data, qsizetype sample, const QString& seen, const QString& text,
                                const QString& author, const QDateTime& now) {
  using Outcome = Noted::Outcome;
  const QString noted = text.trimmed();
  Transaction transaction(connection_, seen.isEmpty() ? Change::Adds : Change::Replaces);
  const auto present = PresentRow(data);
  if (!present) return {Outcome::Gone, {}};
  const QStringList samples = Trace::SamplesIn(ValuesIn(*present));
  const QStringList known = Trace::SamplesIn(data.DelimitedInputString());
  const Trace::Origins places = Trace::Back(Trace::ByDifference(known, samples), known.size());
  const qint32 place = sample < known.size() ? places[static_cast<std::size_t>(sample)] : Trace::isNew;
  if (place == Trace::isNew) return {Outcome::Gone, {}};
  const qint64 id = Tables::IdOf(*present);
  const Trace::Record record = TraceTables::Read(connection_, id, samples).record;
  const Trace::Note* standing = record.NoteAt(place);
  Trace::Note note;
  if (standing) note = *standing;
  note.sample = place;
  if (note.text == noted) return {};
  if (note.text != seen) return {Outcome::Conflict, note};
  ExtraTables::Make(connection_);
  note.text = noted;
  note.author = author;
  note.time = now;
  note.value = samples[place];
  if (noted.isEmpty())
    TraceTables::RemoveNote(connection_, id, note.number);
  else
    TraceTables::PutNote(connection_, id, note, samples);
  // Nothing of the row changes but its version, by which others see that there is something new.
  connection_.Execute(u"UPDATE StatData SET Description = Description WHERE ID = ?"_s, {id});
  transaction.Commit();
  return {};
}
