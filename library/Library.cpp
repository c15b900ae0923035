#include "library/Library.h"

#include <limits>

#include "data/Names.h"
#include "data/Statistics.h"
#include "library/ExtraTables.h"
#include "library/LibraryServer.h"
#include "library/Merge.h"
#include "library/Rows.h"
#include "library/Tables.h"
#include "library/TraceTables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;
using Change = Connection::Change;

namespace {

// Puts the data set's control limits into its row.
void RenewLimits(const CData& data, QVariantList& row) {
  const std::vector<Column>& columns = Tables::StatData().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].IsControlLimit()) row[static_cast<qsizetype>(i)] = columns[i].write(data);
}

void RequireStatistics(CData& data, const QString& place) {
  if (QCGlobalFunctions::CalculateStatistics(data)) return;
  throw InputError(Words::Library::refusedValues(place, data.Description(), data.ErrorMessage()), place);
}

void RequireCount(qsizetype count) {
  constexpr qsizetype most = std::numeric_limits<qint16>::max();
  if (count > most)
    throw InputError(Words::Library::tooManySamples(QString::number(count), QString::number(most)));
}

// One line on what others had changed before a save.
QString TakenIn(const Merge::Result& merged, const QString& newName) {
  QStringList lines;
  if (!newName.isEmpty()) lines << Words::Merge::renamed(newName);
  QStringList changed;
  for (const Column::Unit unit : merged.takenIn) {
    if (unit != Column::Unit::Values || merged.valuesAdded == 0) changed << Merge::NameOf(unit);
  }
  if (merged.valuesAdded == 1) lines << Words::Merge::oneValueAdded();
  if (merged.valuesAdded > 1) lines << Words::Merge::valuesAdded(QString::number(merged.valuesAdded));
  if (!changed.isEmpty()) lines << Words::Merge::othersChanged(changed.join(u", "_s));
  return lines.join(u' ');
}

// The points that the written limits were calculated from. None where they are open, or stood there before
// and no part of the points was chosen.
std::optional<std::pair<qint16, qint16>> BaseOf(const CData& data, const QVariantList& before,
                                                const QVariantList& written) {
  if (Tables::LeavesLimitsOpen(written)) return std::nullopt;
  const Table& table = Tables::StatData();
  const qsizetype samples = written[table.IndexOf(u"Values")].toString().count(u',');
  const int count = static_cast<int>(samples) / std::max(1, written[table.IndexOf(u"SubGroupSize")].toInt());
  const int first = std::max<int>(1, data.DataStartPoint());
  const int last = data.DataStopPoint() == 0 ? count : std::min<int>(data.DataStopPoint(), count);
  const auto isNew = [&](const Column& column) {
    const qsizetype at = table.IndexOf(column.name);
    return column.IsControlLimit() && (before.isEmpty() || before[at] != written[at]);
  };
  const bool isPart = first != 1 || last != count;
  if (first > last || (!isPart && std::ranges::none_of(table.columns, isNew))) return std::nullopt;
  return std::pair(static_cast<qint16>(first), static_cast<qint16>(last));
}

// The data set as loading its present row makes it; what belongs to the user's work with it stays.
void TakeRow(CData& data, const QVariantList& row) {
  CData loaded = Merge::AsLoaded(row, data);
  const QVariantList look = Tables::RowOf(loaded);
  const QVariantList before = Tables::RowOf(data);
  bool same = true;
  for (qsizetype i = 0; i < look.size(); ++i) {
    const Column& column = Tables::StatData().columns[static_cast<std::size_t>(i)];
    if (column.unit != Column::Unit::None && look[i] != before[i]) same = false;
  }
  if (!same) {
    loaded.SetID(data.ID());
    loaded.SetDataStartPoint(data.DataStartPoint());
    loaded.SetDataStopPoint(data.DataStopPoint());
    data = loaded;
  }
  data.SetDescription(loaded.Description());
  data.SetLastModified(loaded.LastModified());
  data.SetLimitsRenewed(false);
  data.SetRowAsKnown(row);
  data.SetSampleOrigins({});
}

}  // namespace

// Writing

// What a statement before in the same transaction has left there.
QVariantList Library::WrittenRow(qint64 id) {
  const RawRows rows = SelectId(id);
  if (rows.empty()) throw Error(Words::Library::notKept(place_, QString::number(id)));
  return rows.front();
}

QVariantList Library::Insert(const CData& data, const QDateTime& now) {
  QStringList names{u"Description"_s, u"LastModified"_s};
  QVariantList values{data.Description(), Tables::DateText(now)};
  const QVariantList row = Merge::WithLimitsThatCanBeKept(Tables::RowOf(data), data);
  const std::vector<Column>& columns = Tables::StatData().columns;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].unit == Column::Unit::None) continue;
    names << columns[i].Quoted();
    values << row[static_cast<qsizetype>(i)];
  }
  const QStringList places(names.size(), u"?"_s);
  const QVariant id = connection_.Insert(
      u"INSERT INTO StatData (%1) VALUES (%2)"_s.arg(names.join(u", "_s), places.join(u", "_s)), values);
  KeepName(id.toLongLong(), data.Description());
  return WrittenRow(id.toLongLong());
}

// Writes what differs between the two.
QVariantList Library::Update(const QVariantList& before, const QVariantList& after, const QDateTime& now) {
  const qint64 id = Tables::IdOf(before);
  QStringList assignments{u"LastModified = ?"_s};
  QVariantList values{Tables::DateText(now)};
  const auto& columns = Tables::StatData().columns;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const auto at = static_cast<qsizetype>(i);
    if (columns[i].unit == Column::Unit::None || after[at] == before[at]) continue;
    assignments << columns[i].Quoted() + u" = ?"_s;
    values << after[at];
  }
  connection_.Run(u"update"_s, u"UPDATE StatData SET %1 WHERE ID = ?"_s.arg(assignments.join(u", "_s)),
                  values << id);
  return WrittenRow(id);
}

void Library::NoteLimitsBase(CData& data, const QVariantList& before, const QVariantList& written) {
  const auto base = BaseOf(data, before, written);
  if (!base) return;
  ExtraTables::NoteLimitsBase(connection_, Tables::IdOf(written), *base);
  data.SetLimitsBase(*base);
}

// The data set's row as it stands now. Under a name that it was not given it is another data set, of a file
// that was put in the library's place.
std::optional<QVariantList> Library::PresentRow(const CData& data) {
  const QVariantList& known = data.RowAsKnown();
  const RawRows rows = SelectId(Tables::IdOf(known));
  const auto isIt = [&] {
    return NameIn(rows.front()) == NameIn(known) || WasNamed(Tables::IdOf(known), NameIn(known));
  };
  return rows.empty() || !isIt() ? std::nullopt : std::optional(rows.front());
}

Library::Saved Library::TrySave(CData& data, const QDateTime& now, const CData* over) {
  const QVariantList known = data.RowAsKnown();
  Transaction transaction(connection_, known.isEmpty() ? Change::Adds : Change::Replaces);
  Saved saved;
  saved.isNew = known.isEmpty();
  QVariantList before, written;
  if (saved.isNew) {
    RequireFree(data.Description());  // whoever has looked before may have been overtaken
    ExtraTables::Make(connection_);
    written = Insert(data, now);
  } else {
    const auto present = PresentRow(data);
    if (!present) {
      saved.outcome = Saved::Outcome::Gone;
      return saved;
    }
    const bool mineDecides = over && over->RowAsKnown() == *present;
    const Merge::Result merged = Merge::Of(data, *present, mineDecides);
    if (!merged.conflicts.empty()) {
      saved.outcome = Saved::Outcome::Conflict;
      for (const Column::Unit unit : merged.conflicts) saved.conflicts << Merge::NameOf(unit);
      saved.theirs = std::make_shared<CData>(Merge::AsLoaded(*present, data));
      return saved;
    }
    const QString name = NameIn(*present);
    saved.takenIn = TakenIn(merged, name != NameIn(known) ? name : QString());
    ExtraTables::Make(connection_);
    before = *present;
    written = Update(before, merged.row, now);
    MoveTrace(data, before, written);
  }
  NoteLimitsBase(data, before, written);
  transaction.Commit();
  TakeRow(data, written);
  return saved;
}

void Library::KeepName(qint64 id, const QString& description) {
  if (connection_.IsServer() && !LibraryServer::KeepName(connection_, id, description))
    throw InputError(Words::Library::alreadyThere(place_, description), description);
}

void Library::RequireFree(const QString& description) {
  if (Contains(description)) throw InputError(Words::Library::alreadyThere(place_, description), description);
}

void Library::TryAdd(CData& data, const QDateTime& now, std::vector<Trace::Run> runs) {
  RequireCount(data.DelimitedInputString().count(u','));
  RequireStatistics(data, place_);
  RequireFree(data.Description());  // before a backup is made for nothing
  Transaction transaction(connection_, Change::Adds);
  const bool kept = QCGlobalFunctions::LimitsCanBeKept(data);
  if (!kept) QCGlobalFunctions::ClearControlLimits(data);
  Save(data, now);
  if (!kept) RequireStatistics(data, place_);
  if (!runs.empty()) {
    Trace::Record record;
    for (Trace::Run& run : runs) run.number = &run - runs.data() + 1;
    record.runs = std::move(runs);
    TraceTables::Write(connection_, Tables::IdOf(data.RowAsKnown()), record,
                       Trace::SamplesIn(data.DelimitedInputString()));
  }
  AddUnit(data.UnitOfMeasurement());
  transaction.Commit();
}

// The data set with the values behind its own, and with its statistics.
CDataPtr Library::Extended(const QString& description, const QStringList& values, Limits limits) {
  const RawRows rows = SelectNamed(description);
  if (rows.empty()) throw NotThere(description);
  const QString its = u"WHERE ID = %1"_s.arg(Tables::IdOf(rows.front()));
  const Row row = Rows::Make(rows.front(), ExtraTables::ReadLimitsBases(connection_, its));
  if (row.failure) throw Error(place_ + u": "_s + row.failure->Text(), row.failure->GetKind(), place_);
  QString text = row.data->DelimitedInputString();
  if (!text.trimmed().isEmpty() && !text.endsWith(u',')) text += u',';
  for (const QString& value : values) text += value + u',';
  RequireCount(text.count(u','));
  row.data->SetDelimitedInputString(text);
  if (limits == Limits::AreRenewed) QCGlobalFunctions::ClearControlLimits(*row.data);
  RequireStatistics(*row.data, place_);
  return row.data;
}

Library::Appended Library::TryAppend(const QString& description, const QStringList& values,
                                     const QDateTime& now, Limits limits, const Trace::Source& source) {
  // What is refused is refused before a backup is made, which a server has none of.
  if (!connection_.IsServer()) Extended(description, values, limits);
  // One transaction from reading to writing: of two programs that append at once, neither loses the other's
  // values.
  Transaction transaction(connection_, limits == Limits::Stay ? Change::Adds : Change::Replaces);
  const CDataPtr data = Extended(description, values, limits);
  ExtraTables::Make(connection_);
  QVariantList after = data->RowAsKnown();
  after[Tables::StatData().IndexOf(u"Values")] = data->DelimitedInputString();
  const bool wereOpen = Tables::LeavesLimitsOpen(after) && QCGlobalFunctions::LimitsCanBeKept(*data);
  if (limits == Limits::AreRenewed || wereOpen) {
    RenewLimits(*data, after);
    after = Merge::WithLimitsThatCanBeKept(after, *data);
  }
  const QVariantList written = Update(data->RowAsKnown(), after, now);
  NoteLimitsBase(*data, data->RowAsKnown(), written);
  if (!values.isEmpty())
    TraceTables::AddRun(connection_, Tables::IdOf(written),
                        {source.time.isValid() ? source.time : now, source.lot}, data->DelimitedInputString(),
                        values.size());
  transaction.Commit();
  TakeRow(*data, written);
  return {data, wereOpen};
}

bool Library::OffersUnit(const QString& name) {
  return FindId(u"SELECT ID, Name FROM Units WHERE Deleted = 0 ORDER BY ID"_s, name).has_value();
}

// Who writes to a file is alone there.
void Library::LockUnits() {
  if (connection_.IsServer()) LibraryServer::LockUnits(connection_);
}

void Library::AddUnit(const QString& name) {
  if (name.isEmpty()) return;
  Transaction transaction(connection_, Change::Adds);
  LockUnits();
  if (!OffersUnit(name)) connection_.Execute(u"INSERT INTO Units (Name) VALUES (?)"_s, {name});
  transaction.Commit();
}
