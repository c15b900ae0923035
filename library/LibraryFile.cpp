#include "library/LibraryFile.h"

#include <QFile>
#include <QFileInfo>
#include <optional>

#include "library/Revision.h"
#include "library/Tables.h"
#include "platform/ado/ServerAddress.h"
#include "platform/system/NewFile.h"
#include "texts/LibraryWords.h"

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

void Make(const QString& path, const LibraryFile::Fill& fill) {
  Connection connection;
  connection.OpenWith(path);
  Transaction transaction(connection);
  connection.Execute(u"PRAGMA application_id = %1"_s.arg(LibraryFile::applicationId));
  LibraryFile::MakeTables(connection);
  fill(connection);
  transaction.Commit();
}

// Has `make` write the file, and gives it its name. The Error names that.
void Place(const QString& path, const std::function<void(const QString& unfinished)>& make) {
  const auto refuse = [&](const QString& reason) {
    throw Error(u"%1: %2"_s.arg(path, reason), Error::Kind::Unavailable, path);
  };
  if (ServerAddress::IsOne(path)) {
    const QString shown = ServerAddress::WithoutPassword(path);
    throw InputError(Words::Library::isOnServer(shown), shown);
  }
  constexpr auto longestBeside = ".backup.new-journal"_L1;
  constexpr qsizetype mostBytes = 255;
  if (QFile::encodeName(QFileInfo(path).fileName()).size() + longestBeside.size() > mostBytes)
    refuse(Words::Library::nameTooLong());
  std::optional<NewFile> file;
  try {
    file.emplace(path);
    make(file->Path());
    file->Finish();
  } catch (const DatabaseError& error) {
    refuse(error.Text().remove(file->Path() + u": "_s));
  } catch (const Error& error) {
    if (error.Text().startsWith(path) || error.About() != path) throw;
    refuse(error.Text());
  }
}

}  // namespace

// The limits have no declared type: in a column of type DOUBLE the database would make a zero of a negative
// zero.
QString LibraryFile::DeclarationOf(Column::Kind kind) {
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

void LibraryFile::MakeTables(Connection& connection) {
  for (const Table& table : Tables::All()) {
    QStringList columns;
    for (const Column& column : table.columns) columns << column.Quoted() + DeclarationOf(column.kind);
    connection.Execute(u"CREATE TABLE %1 (%2)"_s.arg(table.name, columns.join(u", "_s)));
  }
}

void LibraryFile::KeepRevision(Connection& connection) {
  connection.Execute(u"INSERT INTO DBRevision (Revision) VALUES (?)"_s, {Revision::Required()});
}

void LibraryFile::Create(const QString& path, const Fill& fill) {
  Place(path, [&](const QString& unfinished) { Make(unfinished, fill); });
}

void LibraryFile::ShareRights(const QString& library, const QString& file) {
  QFile::Permissions rights = QFile::permissions(library);
#ifdef Q_OS_UNIX
  const auto group = static_cast<gid_t>(QFileInfo(library).groupId());
  constexpr auto sameOwner = static_cast<uid_t>(-1);
  if (group != static_cast<gid_t>(QFileInfo(file).groupId()) &&
      chown(QFile::encodeName(file).constData(), sameOwner, group) != 0)
    rights &= ~(QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup);
#endif
  QFile target(file);
  if (!target.setPermissions(rights)) throw Error(u"%1: %2"_s.arg(file, target.errorString()));
}

bool LibraryFile::CanWrite(const QString& path) {
  const QFileInfo file(QFileInfo(path).canonicalFilePath());
  return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

void LibraryFile::Copy(Connection& from, const QString& library, const QString& path) {
  Place(path, [&](const QString& unfinished) {
    QFile::setPermissions(unfinished, QFile::ReadOwner | QFile::WriteOwner);
    from.Run(u"copy"_s, u"VACUUM INTO ?"_s, {unfinished});
    ShareRights(library, unfinished);
  });
}
