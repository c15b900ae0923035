// Sessions at a shell, as approved: each command as a user enters it, and below it what is printed.
#include <QFileInfo>
#include <QRegularExpression>

#include "library/Library.h"
#include "tests/support/Approved.h"
#include "tests/support/Program.h"
#include "tests/support/TestServer.h"

namespace {

// The session, and whether $LIB is on a server.
using Place = std::tuple<std::string, bool>;

class Session : public ProgramTest, public testing::WithParamInterface<Place> {
 protected:
  void SetUp() override {
    if (std::get<bool>(GetParam())) library = TestServer::NewDatabase();
    if (library.isEmpty()) GTEST_SKIP() << TestServer::missing;
  }

  // What a line of the session does, and what it prints.
  QStringList Enter(const QString& line) const {
    const QString words = line.section(u' ', 1);
    if (line.startsWith(u"sql> ")) RunSql(library, words);
    if (line.startsWith(u"delete> ")) Library(library).Delete(words.toInt(), QDateTime::currentDateTime());
    if (line.startsWith(u"note> "))
      Library(library).SetNote(*Library(library).Read(1)->data, words.section(u' ', 0, 0).toInt(), {},
                               words.section(u' ', 1), u"ann"_s, QDateTime({2026, 1, 23}, {12, 0}, Qt::UTC));
    return line.startsWith(u"$ ") ? Shell(words) : QStringList();
  }

 private:
  QStringList Shell(const QString& command) const {
    QProcess shell;
    shell.setWorkingDirectory(folder_.path());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString programs = QFileInfo(QStringLiteral(KESTREL_PROGRAM)).path();
    environment.insert(u"PATH"_s, programs + u':' + environment.value(u"PATH"_s));
    environment.insert(u"LIB"_s, library);
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    shell.setProcessEnvironment(environment);
    shell.setStandardInputFile(QProcess::nullDevice());
    shell.start(u"/bin/sh"_s, {u"-c"_s, command});
    EXPECT_TRUE(shell.waitForFinished(60'000));
    QStringList printed;
    for (const auto& [bytes, head] :
         {std::pair(shell.readAllStandardOutput(), u"    "_s), {shell.readAllStandardError(), u"  ! "_s}})
      for (const QString& line : QString::fromUtf8(bytes).split(u'\n', Qt::SkipEmptyParts))
        printed << head + Told(line);
    if (shell.exitCode() != 0) printed << u"    exit status %1"_s.arg(shell.exitCode());
    return printed;
  }
  // Without the places and the day of this run.
  QString Told(QString line) const {
    line.replace(u'\t', u'|').replace(u'\r', u"\\r"_s);
    line.replace(library, u"LIB"_s).replace(folder_.path(), u"@"_s);
    line.replace(QDate::currentDate().toString(Qt::ISODate), u"TODAY"_s);
    return line.replace(QRegularExpression(u"TODAY \\d\\d:\\d\\d(:\\d\\d)?"_s), u"NOW"_s);
  }
};

TEST_P(Session, GoesAsApproved) {
  const QString name = u"sessions/"_s + QString::fromStdString(std::get<std::string>(GetParam()));
  const QByteArray approved = Read(QStringLiteral(KESTREL_TEST_DATA "/approved/%1.txt").arg(name));
  QStringList lines;
  for (const QString& line : QString::fromUtf8(approved).split(u'\n', Qt::SkipEmptyParts))
    if (!line.startsWith(u' ')) lines << line << Enter(line);
  Approved::Expect(name, lines);
}

std::vector<std::string> Sessions(const QString& names) {
  std::vector<std::string> found;
  for (const QString& file : QDir(QStringLiteral(KESTREL_TEST_DATA "/approved/sessions")).entryList({names}))
    found.push_back(file.section(u'.', 0, 0).toStdString());
  return found;
}
std::string NameOf(const testing::TestParamInfo<Place>& info) { return std::get<std::string>(info.param); }

INSTANTIATE_TEST_SUITE_P(File, Session,
                         testing::Combine(testing::ValuesIn(Sessions(u"*.txt"_s)), testing::Values(false)),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Server, Session,
                         testing::Combine(testing::ValuesIn(Sessions(u"Any*.txt"_s)), testing::Values(true)),
                         NameOf);

}  // namespace
