// Runs commands of the command line inside the test, against one library in a temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <vector>

#include "cli/CommandLine.h"
#include "tests/support/TestProgram.h"

struct CommandResult {
  int status = -1;
  QString output;
  QString error;

  // Refused with one line that holds the words.
  void ExpectRefusal(const QStringList& words) const {
    EXPECT_EQ(status, 3) << error.toStdString();
    EXPECT_EQ(output, QString());
    EXPECT_EQ(error.count(QLatin1Char('\n')), 1) << error.toStdString();
    for (const QString& word : words) EXPECT_TRUE(error.contains(word)) << error.toStdString();
  }
};

inline CommandResult RunCommand(const QStringList& words) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  CommandResult result;
  result.status = CommandLine::Run(words);
  result.output = QString::fromStdString(testing::internal::GetCapturedStdout());
  result.error = QString::fromStdString(testing::internal::GetCapturedStderr());
  return result;
}

class LibraryTest : public testing::Test {
 protected:
  LibraryTest() { EXPECT_EQ(RunCommand({QStringLiteral("new"), library}).status, 0); }

  QString Path(const QString& name) const { return folder.filePath(name); }
  QString BackupPath(const QString& end = {}) const { return library + QStringLiteral(".backup") + end; }

  QByteArray Read(const QString& path) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }

  void Write(const QString& path, const QByteArray& bytes) const {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << path.toStdString();
  }

  QStringList Files() const { return QDir(folder.path()).entryList(QDir::Files); }

  QStringList ImportWords(const QString& description, const QByteArray& values) const {
    Write(Path(QStringLiteral("v.csv")), values);
    return {QStringLiteral("import"),
            library,
            Path(QStringLiteral("v.csv")),
            QStringLiteral("--description"),
            description,
            QStringLiteral("--usl=12"),
            QStringLiteral("--lsl=8"),
            QStringLiteral("--nominal=10")};
  }
  QStringList AppendWords(const QString& description, const QString& values) const {
    return {QStringLiteral("append"), library, QStringLiteral("--description"), description, values};
  }

  static std::vector<QVariantList> DataRows(const QString& path) {
    return RowsOf(path, QStringLiteral("SELECT * FROM StatData"));
  }
  // The stored values of the data set with that ID.
  static QString Values(const QString& path, int id = 1) {
    const auto rows = RowsOf(path, QStringLiteral("SELECT \"Values\" FROM StatData WHERE ID = %1").arg(id));
    return rows.empty() ? QString() : rows[0][0].toString();
  }
  static bool IsWhole(const QString& path) {
    return RowsOf(path, QStringLiteral("PRAGMA integrity_check")) ==
           std::vector<QVariantList>{{QStringLiteral("ok")}};
  }

  QTemporaryDir folder;
  QString library = folder.filePath(QStringLiteral("plant.kestrel"));
};
