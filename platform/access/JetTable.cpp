// A table of an Access file as its definition describes it: the columns, the number of rows, where its pages
// are.
#include "platform/access/JetTable.h"

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;
using JetBytes::Get;
using JetBytes::Slice;

namespace {

// More than the 255 columns and 32 indexes of the largest table need; a longer chain is a loop or nonsense.
constexpr int maxDefinitionPages = 64;
constexpr int maxColumns = 255;

constexpr qsizetype headSize = 63;
constexpr qsizetype indexSize = 12;
constexpr qsizetype columnSize = 25;

// The bytes of all pages of the definition, each page after the first without its head.
QByteArray ReadDefinition(JetPages& pages, quint32 page) {
  QByteArray definition;
  std::set<quint32> seen;
  for (quint32 next = page; next != 0;) {
    if (!seen.insert(next).second || seen.size() > maxDefinitionPages) {
      throw JetError(u"the pages of its definition do not end"_s);
    }
    const QByteArray bytes = pages.Page(next, JetPages::DefinitionPage);
    definition += next == page ? bytes : bytes.sliced(8);
    next = Get<quint32>(bytes, 4);
  }
  return definition;
}

JetColumn ReadColumn(QByteArrayView bytes) {
  JetColumn column;
  column.type = static_cast<JetType>(Get<quint8>(bytes, 0));
  column.number = Get<quint16>(bytes, 5);
  column.variableIndex = Get<quint16>(bytes, 7);
  column.fixed = (Get<quint8>(bytes, 15) & 1) != 0;
  column.fixedOffset = Get<quint16>(bytes, 21);
  column.size = Get<quint16>(bytes, 23);
  return column;
}

// Two columns in one place would give one column's values for the other's.
void CheckPlaces(const JetTable& table) {
  std::set<int> numbers;
  std::set<int> variables;
  std::vector<const JetColumn*> fixedColumns;
  for (const JetColumn& column : table.columns) {
    const bool placed = column.fixed ? !column.IsLong()
                                     : column.variableIndex < table.variablesEver &&
                                           variables.insert(column.variableIndex).second;
    if (!placed || column.number >= table.columnsEver || !numbers.insert(column.number).second) {
      throw JetError(u"the definition of the column \"%1\" is damaged"_s.arg(column.name));
    }
    if (column.fixed && column.type != JetType::YesNo) {
      fixedColumns.push_back(&column);
    }
  }
  std::ranges::sort(fixedColumns, {}, &JetColumn::fixedOffset);
  int end = 0;
  for (const JetColumn* column : fixedColumns) {
    const int size = JetValues::FixedSize(column->type);
    if (column->fixedOffset < end || (size != 0 && size != column->size)) {
      throw JetError(u"the definition of the column \"%1\" is damaged"_s.arg(column->name));
    }
    end = column->fixedOffset + column->size;
  }
}

void ReadColumns(QByteArrayView definition, JetTable& table) {
  const int count = Get<quint16>(definition, 45);
  const qsizetype columnsAt = headSize + indexSize * qsizetype{Get<quint32>(definition, 51)};
  if (count > maxColumns || count > table.columnsEver) {
    throw JetError(u"its definition counts %1 columns"_s.arg(count));
  }
  qsizetype nameAt = columnsAt + columnSize * count;
  for (int i = 0; i < count; ++i) {
    JetColumn column = ReadColumn(Slice(definition, columnsAt + columnSize * i, columnSize));
    const auto nameSize = Get<quint16>(definition, nameAt);
    column.name = JetValues::Text(Slice(definition, nameAt + 2, nameSize));
    nameAt += 2 + nameSize;
    if (table.Column(column.name) != nullptr) {
      throw JetError(u"it has the column \"%1\" twice"_s.arg(column.name));
    }
    table.columns.push_back(std::move(column));
  }
}

}  // namespace

const JetColumn* JetTable::Column(const QString& columnName) const {
  const auto found = std::ranges::find_if(columns, [&](const JetColumn& column) {
    return column.name.compare(columnName, Qt::CaseInsensitive) == 0;
  });
  return found == columns.end() ? nullptr : &*found;
}

JetTable ReadTableDefinition(JetPages& pages, quint32 page, const QString& name) try {
  const QByteArray definition = ReadDefinition(pages, page);
  JetTable table;
  table.name = name;
  table.page = page;
  table.rowCount = Get<quint32>(definition, 16);
  table.lastNumber = Get<quint32>(definition, 20);
  table.columnsEver = Get<quint16>(definition, 41);
  table.variablesEver = Get<quint16>(definition, 43);
  table.ownedPages = Get<quint32>(definition, 55);
  ReadColumns(definition, table);
  CheckPlaces(table);
  return table;
} catch (const JetError& error) {
  throw JetError(u"The table \"%1\" is damaged: %2."_s.arg(name, error.Text()));
}
