// How a library is made, opened, checked and copied: a file or a server.
#include <QFileInfo>

#include "library/ExtraTables.h"
#include "library/Library.h"
#include "library/LibraryCopy.h"
#include "library/LibraryFile.h"
#include "library/LibraryServer.h"
#include "library/Revision.h"
#include "library/Tables.h"
#include "platform/access/JetFile.h"
#include "platform/ado/ServerAddress.h"
#include "platform/language/Conversions.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

void Library::Create(const QString& place) {
  ServerAddress::IsOne(place) ? LibraryServer::Create(place) : LibraryFile::Create(place);
}

void Library::CopyTo(const QString& place) {
  if (ServerAddress::IsOne(place))
    LibraryServer::Create(place, [this](Connection& to) { LibraryCopy::CopyRows(connection_, to); });
  else if (connection_.IsServer())
    LibraryFile::Create(place, [this](Connection& to) { LibraryCopy::CopyRows(connection_, to); });
  else
    LibraryFile::Copy(connection_, place_, place);
}

QString Library::NameOf(const QString& place) {
  if (!ServerAddress::IsOne(place)) return QFileInfo(place).fileName();
  const ServerAddress address = ServerAddress::Parse(place);
  const QString host = address.Part(u"host"_s), database = address.Part(u"dbname"_s);
  return host.isEmpty() ? database : Words::Library::nameOnServer(database, host);
}

Library::Library(const QString& place, const QString& provider) : place_(place) {
  connection_.CommandTimeout = 30000;
  connection_.Provider = provider;
  Backup::NamedWhereDamaged(place, [&] { connection_.OpenWith(place); });
}

std::unique_ptr<Library> Library::Open(const QString& place, const News& news) {
  const auto refuse = [&](const QString& reason) {
    throw Error(u"%1: %2"_s.arg(place, reason), Error::Kind::Unavailable, place);
  };
  // A pipe would keep who looks into it waiting.
  if (QFileInfo(place).isFile() && JetFile::IsAccessFile(place))
    throw Error(Words::Library::isAccessFile(place), Error::Kind::Unavailable, place);
  auto library = std::make_unique<Library>(place);
  if (library->connection_.IsServer() && !library->connection_.Has(Tables::Revisions().name))
    refuse(Words::Library::noLibraryInDatabase());
  const QString revision = library->Revision();
  if (revision.isNull()) refuse(Words::Library::noLibrary());
  bool accepted = false;
  try {
    accepted = Revision::IsAccepted(revision);
  } catch (const Conversions::Failure&) {
    refuse(Words::Library::noLibrary());
  } catch (const Error& error) {
    refuse(error.Text());
  }
  if (!accepted) refuse(Revision::RefusalOnOneLine(revision));
  library->Guard(news);
  return library;
}

QString Library::Revision() {
  QVariant revision;
  Backup::NamedWhereDamaged(place_, [&] {
    const Query query = connection_.Run(u"select"_s, u"SELECT Revision FROM DBRevision"_s);
    while (connection_.NextRow(query)) revision = query->value(0);
  });
  return revision.isNull() || revision.toString().size() < 3 ? QString() : revision.toString();
}

bool Library::CanWrite() {
  if (!canWrite_)
    canWrite_ = IsOnServer() ? LibraryServer::CanWrite(connection_) : LibraryFile::CanWrite(place_);
  return *canWrite_;
}

void Library::Guard(const News& news) {
  ExtraTables::RequireKnownLayout(connection_, place_);
  if (connection_.IsServer())
    LibraryServer::KeepTokens(connection_);
  else
    backup_ = std::make_unique<Backup>(connection_, place_, news);
}
