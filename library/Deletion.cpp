// What a library does with data sets that are deleted.
#include "data/Names.h"
#include "library/DeletedRows.h"
#include "library/ExtraTables.h"
#include "library/Library.h"
#include "library/Rows.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

void Library::Delete(qint64 id, const QDateTime& now) {
  Expect(Backup::Change::Replaces);
  Transaction transaction(connection_);
  if (backup_) backup_->BeforeDeletion();
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

void Library::Restore(const Deleted& deleted, const QString& description) {
  const QString name = description.isEmpty() ? deleted.row.description : description;
  RequireFree(name);
  Expect(Backup::Change::Adds);
  Transaction transaction(connection_);
  RequireFree(name);
  if (!SelectId(deleted.row.id).empty())
    throw Error(Words::Library::idTaken(place_, QString::number(deleted.row.id)), Error::Kind::Conflict,
                name);
  ExtraTables::Make(connection_);
  DeletedRows::PutBack(connection_, deleted.number, name);
  transaction.Commit();
}

void Library::Purge(const Deleted& deleted) {
  Expect(Backup::Change::Replaces);
  Transaction transaction(connection_);
  DeletedRows::Purge(connection_, deleted.number);
  transaction.Commit();
}
