// What a library does with data sets that are deleted.
#include <algorithm>

#include "data/Names.h"
#include "library/DeletedRows.h"
#include "library/ExtraTables.h"
#include "library/Library.h"
#include "library/Rows.h"
#include "library/TraceTables.h"
#include "texts/LibraryWords.h"

using Change = Connection::Change;

void Library::RequireThere(qint64 id) {
  if (SelectId(id).empty())
    throw Error(Words::Library::deletedAlready(place_, QString::number(id)), Error::Kind::Conflict, place_);
}

void Library::Delete(qint64 id, const QDateTime& now) {
  RequireThere(id);  // before a backup is made for nothing
  Transaction transaction(connection_, Change::Replaces);
  RequireThere(id);
  if (backup_) backup_->BeforeDeletion();
  RequireThere(id);  // telling that there is no backup lets others write
  DeletedRows::Keep(connection_, id, now);
  transaction.Commit();
}

std::vector<Library::Deleted> Library::DeletedDataSets() {
  std::vector<Deleted> deleted;
  for (const DeletedRows::Entry& entry : DeletedRows::All(connection_)) {
    Row row = Rows::Make(entry.row);
    Rows::Calculate(row);
    deleted.push_back({entry.number, entry.deletedAt, row});
  }
  return deleted;
}

void Library::RequireKept(const Deleted& deleted) {
  if (!DeletedRows::Contains(connection_, deleted.number))
    throw Error(Words::Library::noLongerKept(place_, deleted.row.description), Error::Kind::Conflict,
                deleted.row.description);
}

void Library::Restore(const Deleted& deleted, const QString& description) {
  const QString name = description.isEmpty() ? deleted.row.description : description;
  const auto require = [&] {
    RequireKept(deleted);
    RequireFree(name);
    if (!SelectId(deleted.row.id).empty())
      throw Error(Words::Library::idTaken(place_, QString::number(deleted.row.id)), Error::Kind::Conflict,
                  name);
  };
  require();
  Transaction transaction(connection_, Change::Adds);
  require();
  ExtraTables::Make(connection_);
  DeletedRows::PutBack(connection_, deleted.number, name);
  KeepName(deleted.row.id, name);
  NoteFormerName(deleted.row.id, deleted.row.description, name);
  if (SelectId(deleted.row.id).empty())  // whatever the file's own triggers do
    throw Error(Words::Library::noLongerKept(place_, name), Error::Kind::Conflict, name);
  transaction.Commit();
}

void Library::Purge(const Deleted& deleted) {
  RequireKept(deleted);
  Transaction transaction(connection_, Change::Replaces);
  RequireKept(deleted);
  DeletedRows::Purge(connection_, deleted.number);
  const auto isSame = [&](const DeletedRows::Entry& entry) {
    return Tables::IdOf(entry.row) == deleted.row.id;
  };
  const bool isKept =
      !SelectId(deleted.row.id).empty() || std::ranges::any_of(DeletedRows::All(connection_), isSame);
  if (!isKept) TraceTables::Remove(connection_, deleted.row.id);
  transaction.Commit();
}
