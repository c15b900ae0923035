// A table of an Access file as its definition describes it: the columns, the number of rows, where its pages
// are.
#pragma once

#include <QString>
#include <vector>

#include "platform/access/JetPages.h"
#include "platform/access/JetValues.h"

struct JetColumn {
  QString name;
  JetType type = JetType::Binary;
  bool fixed = false;
  int number = 0;         // the value's place in a row's null mask
  int variableIndex = 0;  // among the variable columns, where it is one
  int fixedOffset = 0;    // among the fixed data, where it is one
  int size = 0;           // bytes, at most

  bool IsLong() const { return type == JetType::Memo || type == JetType::Ole; }
};

struct JetTable {
  QString name;
  quint32 page = 0;  // of the definition; the table's data pages name it as their owner
  quint32 rowCount = 0;
  quint32 lastNumber = 0;  // the last that its autonumber column gave, to a row that may be deleted since
  int columnsEver = 0;     // the columns there are and those deleted since
  int variablesEver = 0;
  quint32 ownedPages = 0;  // pointer to the map of the data pages
  std::vector<JetColumn> columns;

  const JetColumn* Column(
      const QString& columnName) const;  // names compare without case; null where there is none
};

// Reads and checks the definition that starts on the page.
JetTable ReadTableDefinition(JetPages& pages, quint32 page, const QString& name);
