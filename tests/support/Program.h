// Runs the command line in a temporary folder with a library of its own: as a process, or as a test decides.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include "tests/support/TestProgram.h"

struct ProgramRun {
  int status = -1;
  QString output;
  QString error;
  QJsonDocument Json() const { return QJsonDocument::fromJson(output.toUtf8()); }
};

class ProgramTest : public testing::Test {
 protected:
  QString Path(const QString& name) const { return folder_.filePath(name); }
  QStringList Files() const { return QDir(folder_.path()).entryList(QDir::Files); }

  virtual ProgramRun Run(const QStringList& words, const QByteArray& input = {}) const {
    QProcess process;
    if (prepare_) prepare_(process);
    process.start(QStringLiteral(KESTREL_PROGRAM), words);
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
  }
  // Words in which LIB stands for the library and @ for this test's folder.
  QStringList Placed(QStringList words) const {
    return words.replaceInStrings(u"@"_s, folder_.path() + u'/').replaceInStrings(u"LIB"_s, library);
  }
  QStringList Placed(QStringView words) const { return Placed(QProcess::splitCommand(words)); }
  ProgramRun RunIn(QStringView words, const QByteArray& input = {}) const {
    return Run(Placed(words), input);
  }

  // A failure is one line on standard error that holds all the given words, and nothing on standard output.
  static void ExpectFailure(const ProgramRun& run, int status, const QStringList& named) {
    EXPECT_EQ(run.status, status) << run.error.toStdString();
    EXPECT_EQ(run.output, QString());
    EXPECT_EQ(run.error.count(u'\n'), 1) << run.error.toStdString();
    for (const QString& word : named) EXPECT_TRUE(run.error.contains(word)) << run.error.toStdString();
  }
  void Fails(int status, QStringView words, const QStringList& named, const QByteArray& input = {}) const {
    SCOPED_TRACE(words.toString().toStdString());
    ExpectFailure(RunIn(words, input), status, named);
  }

  // The command that imports the values, with the options that it needs where the words give none of their
  // own.
  QString Importing(QString words, const QByteArray& values) const {
    Write(u"v.csv"_s, values);
    for (const QString& option : {u"--usl 11"_s, u"--lsl 9"_s, u"--nominal 10"_s, u"--description Shaft"_s})
      if (!words.contains(option.section(u' ', 0, 0))) words += u' ' + option;
    return u"import LIB @v.csv "_s + words;
  }
  ProgramRun Import(const QString& words, const QByteArray& values) const {
    return RunIn(Importing(words, values));
  }

  QString Write(const QString& name, const QByteArray& bytes) const { return WriteFile(Path(name), bytes); }
  static QByteArray Read(const QString& path) { return ReadFile(path); }

  static std::vector<QVariantList> DataRows(const QString& path) {
    return RowsOf(path, u"SELECT * FROM StatData"_s);
  }
  // The stored values of the first data set in a library that is whole.
  static QString Values(const QString& path) {
    EXPECT_EQ(RowsOf(path, u"PRAGMA integrity_check"_s), std::vector<QVariantList>{{u"ok"_s}});
    const auto rows = RowsOf(path, u"SELECT \"Values\" FROM StatData WHERE ID = 1"_s);
    return rows.empty() ? QString() : rows[0][0].toString();
  }

  QTemporaryDir folder_;
  QString library = Path(u"plant.kestrel"_s);
  std::function<void(QProcess&)> prepare_;  // what is special about the next runs
};
