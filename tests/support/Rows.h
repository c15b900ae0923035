// What stands in a database, and statements as another program would run them on its file.
#pragma once

#include <QSqlQuery>
#include <QSqlRecord>
#include <vector>

#include "platform/ado/Connection.h"

inline std::vector<QVariantList> RowsOf(Connection& connection, const QString& sql) {
  const Query query = connection.Run(QStringLiteral("select"), sql);
  std::vector<QVariantList> rows;
  while (connection.NextRow(query)) {
    rows.emplace_back();
    for (int column = 0; column < query->record().count(); ++column) rows.back() << query->value(column);
  }
  return rows;
}

// The first column of the first row; Null without any.
inline QVariant ValueOf(Connection& connection, const QString& sql) {
  const auto rows = RowsOf(connection, sql);
  return rows.empty() ? QVariant() : rows[0][0];
}

inline std::vector<QVariantList> RowsOf(const QString& path, const QString& sql) {
  Connection connection;
  connection.OpenWith(path);
  return RowsOf(connection, sql);
}

inline void RunSql(const QString& path, const QString& sql, const QVariantList& values = {}) {
  Connection connection;
  connection.OpenWith(path);
  connection.Execute(sql, values);
}
