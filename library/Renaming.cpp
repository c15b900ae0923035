// What a library does with the names of its data sets: giving another one, and knowing the former ones.
#include "library/ExtraTables.h"
#include "library/Library.h"
#include "library/Tables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;
using Change = Connection::Change;

// A former name is nobody's any more: only where no data set has it, is it told who had it last.
InputError Library::NotThere(const QString& description) {
  if (ExtraTables::HasFormerNames(connection_)) {
    const auto id =
        FindId(u"SELECT ID, Description FROM FormerDescription ORDER BY Entry DESC"_s, description);
    const RawRows rows = id ? SelectId(*id) : RawRows();
    if (!rows.empty())
      return InputError(Words::Library::wasRenamed(place_, description, NameIn(rows.front())), description);
  }
  return InputError(Words::Library::notThere(place_, description), description);
}

bool Library::WasNamed(qint64 id, const QString& description) {
  if (!ExtraTables::HasFormerNames(connection_)) return false;
  const Query query = connection_.Run(
      u"select"_s, u"SELECT 1 FROM FormerDescription WHERE ID = ? AND Description = ?"_s, {id, description});
  return connection_.NextRow(query);
}

// In the transaction that is open.
void Library::NoteFormerName(qint64 id, const QString& before, const QString& name) {
  if (before == name) return;
  connection_.Execute(u"INSERT INTO FormerDescription (ID, Description) VALUES (?, ?)"_s, {id, before});
}

QString Library::NameIn(const QVariantList& row) {
  return row[Tables::StatData().IndexOf(u"Description")].toString();
}

qint64 Library::Rename(const QString& description, const QString& name, const QDateTime& now) {
  const auto id = FindDataSet(description);
  if (!id) throw NotThere(description);
  Rename(*id, name, now);
  return *id;
}

void Library::TryRename(qint64 id, const QString& name, const QDateTime& now) {
  const auto others = u"SELECT ID, Description FROM StatData WHERE ID <> %1 ORDER BY ID"_s.arg(id);
  const auto require = [&] {
    RequireThere(id);
    if (name.trimmed().isEmpty()) throw InputError(Words::Library::noName(place_), place_);
    if (FindId(others, name)) throw InputError(Words::Library::alreadyThere(place_, name), name);
  };
  require();  // before a backup is made for nothing
  if (NameIn(WrittenRow(id)) == name) return;
  Transaction transaction(connection_, Change::Replaces);
  require();
  ExtraTables::Make(connection_);
  const QString before = NameIn(WrittenRow(id));
  NoteFormerName(id, before, name);
  connection_.Execute(u"UPDATE StatData SET Description = ?, LastModified = ? WHERE ID = ?"_s,
                      {name, Tables::DateText(now), id});
  KeepName(id, name);
  if (NameIn(WrittenRow(id)) != name)  // whatever the file's own triggers do
    throw Error(Words::Library::notKept(place_, QString::number(id)));
  transaction.Commit();
}
