// A database on a server: which addresses are meant and taken, what is told of what is wrong, and what
// becomes of a connection that is lost.

#include <dlfcn.h>
#include <netdb.h>
#include <sys/types.h>

#include <QElapsedTimer>
#include <QJsonObject>
#include <cmath>
#include <csignal>
#include <future>

#include "platform/ado/ServerAddress.h"
#include "tests/support/Cases.h"
#include "tests/support/Refusal.h"
#include "tests/support/Rows.h"
#include "tests/support/TestServer.h"

using Cause = DatabaseError::Cause;

// In place of the system's: one domain is not known, of another one no name server tells anything.
extern "C" int getaddrinfo(const char* host, const char* service, const addrinfo* hints, addrinfo** found) {
  static const auto system = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
  if (QByteArrayView(host).endsWith(".invalid")) return EAI_NONAME;
  if (QByteArrayView(host).endsWith(".silent")) std::promise<void>().get_future().wait();
  return system(host, service, hints, found);
}

namespace {

TEST(ServerAddressTest, IsReadByTheRulesOfTheServersLibrary) {
  for (const auto& one : Cases(u"server_addresses.json"_s, u"parts"_s)) {
    std::map<QString, QString> parts;
    for (const QJsonObject expected = one[1].toObject(); const QString& name : expected.keys())
      parts[name] = expected[name].toString();
    const ServerAddress address = ServerAddress::Parse(one[0].toString());
    EXPECT_EQ(address.parts, parts) << one[0].toString().toStdString();
    EXPECT_EQ(ServerAddress::Parse(address.Text()).parts, parts) << address.Text().toStdString();
  }
  EXPECT_FALSE(ServerAddress::IsOne(u"postgresql.kestrel"_s));
  for (const auto& wrong : Cases(u"server_addresses.json"_s, u"no address"_s))
    EXPECT_THROW(ServerAddress::Parse(u"postgresql://"_s + wrong.toString()), InputError)
        << wrong.toString().toStdString();
}

TEST(ServerAddressTest, APasswordIsRefusedAndNotShown) {
  for (const auto& address : Cases(u"server_addresses.json"_s, u"with a password"_s)) {
    const QString text = u"postgresql://"_s + address.toString();
    const QString refusal = Refusal([&] { Connection().OpenWith(text); });
    EXPECT_TRUE(refusal.startsWith(u"postgresql://"_s)) << refusal.toStdString();
    EXPECT_FALSE(refusal.contains(u"sec"_s) || refusal.contains(u"ret"_s)) << refusal.toStdString();
  }
  EXPECT_TRUE(Refusal([] { ServerAddress::Parse(u"postgres://me:x@host"_s); }).contains(u"~/.pgpass"_s));
}

TEST(ServerAddressTest, ANameServerThatIsSilentKeepsNobodyWaiting) {
  Connection connection;
  connection.ConnectWait = 100;
  EXPECT_TRUE(Refusal([&] {
                connection.OpenWith(u"postgresql://plant.silent/quality"_s);
              }).contains(u"no name server tells where the host \"plant.silent\" is"_s));
}

class ServerTest : public testing::Test {
 protected:
  void SetUp() override {
    address = TestServer::NewDatabase();
    if (address.isEmpty()) GTEST_SKIP() << TestServer::missing;
    connection.OpenWith(address);
    other.OpenWith(address);
    connection.Execute(
        u"CREATE TABLE T (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT COLLATE NOCASE, \"Values\", "
        u"Deleted INTEGER NOT NULL DEFAULT 0)"_s);
    connection.Execute(u"INSERT INTO T (Name) VALUES ('one'), ('two')"_s);
  }

  QString Open(const QString& place) {
    return Refusal([&] { Connection().OpenWith(place); }).remove(place + u": "_s);
  }

  QString address;
  Connection connection, other;
};

TEST_F(ServerTest, SaysWhatIsWrong) {
  const auto with = [&](const QString& text, const QString& now) {
    return QString(address).replace(text, now);
  };
  EXPECT_EQ(Open(with(address.section(u'/', -1), u"none"_s)), u"the server has no database \"none\""_s);
  EXPECT_EQ(Open(TestServer::As(u"nobody"_s, address)),
            u"the server does not let the user \"nobody\" in (role \"nobody\" does not exist)"_s);
  EXPECT_TRUE(Open(TestServer::As(u"guarded"_s, address)).contains(u"needs a password"_s));
  qputenv("PGPASSWORD", "wrong");
  EXPECT_EQ(Open(TestServer::As(u"guarded"_s, address)), u"the user \"guarded\" or the password is wrong"_s);
  qputenv("PGPASSWORD", "let me in");
  EXPECT_EQ(Open(TestServer::As(u"guarded"_s, address)), u"taken"_s);
  qunsetenv("PGPASSWORD");
  EXPECT_TRUE(Open(address + u"?port=1"_s).contains(u"check the host"_s));
  EXPECT_EQ(Open(u"postgresql://none.invalid/plant"_s), u"the host \"none.invalid\" is not known"_s);
  EXPECT_TRUE(Open(address + u"?sslmood=on"_s).contains(u"sslmood"_s));
  Connection reader;
  reader.OpenWith(TestServer::As(u"reader"_s, address));
  EXPECT_TRUE(Refusal([&] { reader.Run(u"select"_s, u"SELECT * FROM T"_s); }).contains(u"no right"_s));
}

TEST_F(ServerTest, HostileTextsAreValuesAndASecondStatementIsRefused) {
  const QString hostile = u"o'ring\\'; DROP TABLE T; --"_s;
  const QVariant id = connection.Insert(u"INSERT INTO T (Name, \"Values\", Deleted) VALUES (?, ?, ?)"_s,
                                        {hostile, -0.0, true});
  const QVariantList row =
      RowsOf(connection, u"SELECT Name, \"Values\", Deleted FROM T WHERE ID = %1"_s.arg(id.toInt())).at(0);
  EXPECT_EQ(row[0], hostile);
  EXPECT_TRUE(std::signbit(row[1].toDouble()));
  EXPECT_EQ(row[2], 1);
  for (const char* text :
       {"SELECT 1; DROP TABLE T", "SELECT ';' ; DROP TABLE T", "SELECT E'\\''; DROP TABLE T --'",
        "SELECT $$'$$; DROP TABLE T --'", "SELECT 1 -- '\n; DROP TABLE T --'",
        "SELECT /* ' */ 1; DROP TABLE T --'", "SELECT 'open"})
    EXPECT_THROW(connection.Run(u"select"_s, QString::fromLatin1(text)), DatabaseError) << text;
  EXPECT_EQ(connection.Execute(u"DELETE * FROM T WHERE Name = 'two;';\n"_s), 0);
}

TEST_F(ServerTest, WaitsForALockedRowAndNotForEver) {
  other.BeginTransaction();
  const auto lock = [](Connection& from) {
    from.Run(u"select"_s, u"SELECT * FROM T WHERE ID = 1"_s + from.RowLock());
  };
  lock(other);
  EXPECT_EQ(connection.RowLock(), QString()) << "who only reads waits for nobody";
  lock(connection);
  connection.Execute(u"SET lock_timeout = 50"_s);
  Transaction transaction(connection);
  try {
    lock(connection);
    ADD_FAILURE() << "two have the row";
  } catch (const DatabaseError& error) {
    EXPECT_TRUE(error.IsBusy()) << error.what();
  }
}

TEST_F(ServerTest, AConnectionThatWasLostIsMadeAgain) {
  TestServer::Restart();
  EXPECT_EQ(ValueOf(connection, u"SELECT count(*) FROM T"_s), 2);
  TestServer::Restart();
  EXPECT_EQ(connection.Execute(u"UPDATE T SET Deleted = 1 WHERE ID = 1"_s), 1);
  connection.BeginTransaction();
  connection.Execute(u"DELETE FROM T"_s);
  TestServer::Restart();
  try {
    connection.CommitTransaction();
    ADD_FAILURE() << "written";
  } catch (const DatabaseError& error) {
    EXPECT_EQ(error.GetKind(), Error::Kind::Unknown) << error.what();
  }
  connection.RollbackTransaction();
  EXPECT_EQ(connection.Execute(u"DELETE FROM T"_s), 2) << "nothing of it was written";
}

TEST_F(ServerTest, AStatementThatIsKnownIsRunAgainAndForgottenWithItsConnection) {
  const auto from = [&](int id) {
    return connection.Run(u"select"_s, u"SELECT ID FROM T WHERE ID >= ? ORDER BY ID"_s, {id});
  };
  const auto known = [&] {
    const Query query = connection.Run(u"select"_s, u"SELECT count(*) FROM pg_prepared_statements"_s);
    return connection.NextRow(query) ? query->value(0).toInt() : 0;
  };
  const int before = known();
  QStringList pairs;
  for (int again = 0; again < 2; ++again)
    for (const Query one = from(1); connection.NextRow(one);)
      for (const Query two = from(2); connection.NextRow(two);)
        pairs << one->value(0).toString() + two->value(0).toString();
  EXPECT_EQ(pairs.join(u' '), u"12 22 12 22"_s);
  EXPECT_EQ(known(), before + 2) << "two at once";
  connection.BeginTransaction();
  connection.Execute(u"CREATE TABLE Made (ID INTEGER)"_s);
  EXPECT_TRUE(connection.Has(u"Made"_s));
  connection.RollbackTransaction();
  EXPECT_FALSE(connection.Has(u"Made"_s));
  TestServer::Restart();
  EXPECT_TRUE(connection.NextRow(from(2)));
}

TEST_F(ServerTest, AServerThatStopsKeepsNobodyWaiting) {
  const auto process = static_cast<pid_t>(ValueOf(other, u"SELECT pg_backend_pid()"_s).toInt());
  other.AnswerWait = 100;
  other.BeginTransaction();
  kill(process, SIGSTOP);
  QElapsedTimer since;
  since.start();
  EXPECT_TRUE(Refusal([&] { other.Run(u"select"_s, u"SELECT * FROM T"_s); }).contains(u"gives no answer"_s));
  EXPECT_TRUE(other.HasEnded());
  other.RollbackTransaction();
  EXPECT_EQ(other.Execute(u"UPDATE T SET Deleted = 1"_s), 2) << "over another connection";
  EXPECT_LT(since.elapsed(), 2000);
  kill(process, SIGCONT);
}

}  // namespace
