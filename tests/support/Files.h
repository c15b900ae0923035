// Whole files of a test's folder.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

inline QByteArray ReadFile(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

inline QString WriteFile(const QString& path, const QByteArray& bytes = {}) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << path.toStdString();
  return path;
}

// The names of all that is in a folder.
inline QStringList EntriesOf(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}
