// Runs the program as a process in a temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <functional>

struct ProgramRun {
  int status = -1;
  QString output;
  QString error;
  QJsonDocument Json() const { return QJsonDocument::fromJson(output.toUtf8()); }
};

class ProgramTest : public testing::Test {
 protected:
  QString Path(const QString& name) const { return folder_.filePath(name); }

  ProgramRun Run(const QStringList& words, const QByteArray& input = {}) const {
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

  // A failure is one line on standard error that holds all the given words, and nothing on standard output.
  void ExpectFailure(const ProgramRun& run, int status, const QStringList& words) const {
    EXPECT_EQ(run.status, status) << run.error.toStdString();
    EXPECT_EQ(run.output, QString());
    EXPECT_EQ(run.error.count(QLatin1Char('\n')), 1) << run.error.toStdString();
    for (const QString& word : words) EXPECT_TRUE(run.error.contains(word)) << run.error.toStdString();
  }

  QString Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return Path(name);
  }

  QByteArray Read(const QString& path) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  QTemporaryDir folder_;
  std::function<void(QProcess&)> prepare_;  // what is special about the next runs
};
