#include "library/LibraryFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QUuid>

#include "library/Revision.h"
#include "library/Tables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

// The limits have no declared type: in a column of type DOUBLE the database would make a zero of a negative
// zero.
QString DeclarationOf(Column::Kind kind) {
  switch (kind) {
    case Column::Kind::Id:
      return u" INTEGER PRIMARY KEY AUTOINCREMENT"_s;
    case Column::Kind::Whole:
      return u" INTEGER"_s;
    case Column::Kind::Name:
      return u" TEXT COLLATE NOCASE"_s;
    case Column::Kind::Text:
      return u" TEXT"_s;
    case Column::Kind::YesNo:
      return u" INTEGER NOT NULL DEFAULT 0"_s;
    case Column::Kind::Real:
      break;
  }
  return {};
}

void CreateTables(Connection& connection) {
  connection.Execute(u"PRAGMA application_id = %1"_s.arg(LibraryFile::applicationId));
  for (const Table& table : Tables::All()) {
    QStringList columns;
    for (const Column& column : table.columns) columns << column.Quoted() + DeclarationOf(column.kind);
    connection.Execute(u"CREATE TABLE %1 (%2)"_s.arg(table.name, columns.join(u", "_s)));
  }
}

void Fill(const QString& path, const std::function<void(Connection&)>& fill) {
  Connection connection;
  connection.OpenWith(path);
  Transaction transaction(connection);
  CreateTables(connection);
  if (fill)
    fill(connection);
  else
    connection.Execute(u"INSERT INTO DBRevision (Revision) VALUES (?)"_s, {Revision::Required()});
  transaction.Commit();
}

}  // namespace

void LibraryFile::Create(const QString& path, const std::function<void(Connection&)>& fill) {
  const QFileInfo target(path);
  const auto refuse = [&](const QString& reason) {
    throw Error(u"%1: %2"_s.arg(path, reason), Error::Kind::Unavailable, path);
  };
  if (target.fileName().isEmpty() || target.isDir()) refuse(Words::Library::isFolder());
  if (target.exists() || target.isSymLink()) refuse(Words::Library::existsAlready());
  if (!target.dir().exists()) refuse(Words::Library::noSuchFolder());

  const QString temporary = target.absoluteFilePath() + u"."_s + QUuid::createUuid().toString(QUuid::Id128);
  const auto removal = qScopeGuard([&] { QFile::remove(temporary); });
  QFile file(temporary);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) refuse(file.errorString());
  file.close();
  try {
    Fill(temporary, fill);
  } catch (const DatabaseError& error) {
    refuse(error.Text().remove(temporary + u": "_s));
  }
  // Fails where another program has made the file meanwhile.
  if (!file.rename(path)) refuse(Words::Library::notMade(file.errorString()));
}
