// Reads the rows of one table of an Access file, one after the other, and proves that none is missing.
#include "platform/access/JetRows.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using JetBytes::Get;
using JetBytes::Slice;

namespace {

constexpr quint32 longValueOwner = 0x4C41564C;  // "LVAL" where other data pages have their table

quint32 Owner(const QByteArray& dataPage) { return Get<quint32>(dataPage, 4); }

// The i-th offset of a row's variable columns; they are stored backwards.
qsizetype VariableOffset(QByteArrayView row, qsizetype maskStart, qsizetype i) {
  return Get<quint16>(row, maskStart - 4 - 2 * i);
}

// Access shortens a row where it stands: between its data and their offsets zero bytes stay behind.
bool IsSlack(QByteArrayView row, qsizetype from, qsizetype to) {
  if (from > to) return false;
  return std::ranges::all_of(Slice(row, from, to - from), [](char byte) { return byte == 0; });
}

bool HasValue(QByteArrayView row, qsizetype maskStart, int columnNumber) {
  return (Get<quint8>(row, maskStart + columnNumber / 8) >> (columnNumber % 8) & 1) != 0;
}

}  // namespace

JetRows::JetRows(JetPages& pages, JetTable table, const QStringList& columnNames)
    : pages_(pages), table_(std::move(table)) {
  QStringList missing;
  for (const QString& name : columnNames) {
    if (const JetColumn* column = table_.Column(name)) {
      wanted_.push_back(column);
    } else {
      missing += u'"' + name + u'"';
    }
  }
  if (!missing.isEmpty()) {
    throw JetError(u"The table \"%1\" lacks the column %2."_s.arg(table_.name, missing.join(u", ")));
  }
}

bool JetRows::Next() try { return Advance(); } catch (const JetError& error) {
  throw JetError(
      u"The table \"%1\" is damaged at row %2: %3."_s.arg(table_.name).arg(rowsRead_ + 1).arg(error.Text()));
}

bool JetRows::Advance() {
  while (slot_ < slotCount_ || NextPage()) {
    if (slot_ == slotCount_) {
      continue;  // a page without records
    }
    const JetRecord record = JetPages::Record(page_, slot_++);
    if (record.deleted) {
      continue;
    }
    if (rowsRead_ == table_.rowCount) {
      throw JetError(u"there are more rows than the %1 that the table counts"_s.arg(table_.rowCount));
    }
    const JetRecord target = record.moved ? FollowMoved(record) : record;
    ReadRow(target.Bytes());
    ++rowsRead_;
    return true;
  }
  if (rowsRead_ != table_.rowCount) {
    throw JetError(u"the table counts %1 rows, but only %2 are there"_s.arg(table_.rowCount).arg(rowsRead_));
  }
  return false;
}

bool JetRows::NextPage() {
  if (!map_) {
    map_.emplace(pages_, table_.ownedPages);
  }
  const std::optional<quint32> number = map_->Next();
  if (!number) {
    return false;
  }
  page_ = pages_.Page(*number, JetPages::DataPage);
  if (Owner(page_) != table_.page) {
    throw JetError(u"page %1 of the file belongs to something else"_s.arg(*number));
  }
  slot_ = 0;
  slotCount_ = JetPages::RecordCount(page_);
  return true;
}

// A row that outgrew its page lies elsewhere, marked as deleted so that a scan does not see it twice.
JetRecord JetRows::FollowMoved(const JetRecord& record) {
  const auto pointer = Get<quint32>(record.Bytes(), 0);
  UseOnce(pointer);
  JetRecord target = pages_.Record(pointer);
  if (Owner(target.page) != table_.page || !target.deleted || target.moved) {
    throw JetError(u"the row was moved, and is not where it should be"_s);
  }
  return target;
}

void JetRows::ReadRow(QByteArrayView row) {
  const Layout layout = ReadLayout(row);
  values_.clear();
  for (const JetColumn* column : wanted_) {
    try {
      values_.push_back(Value(row, layout, *column));
    } catch (const JetError& error) {
      throw JetError(u"column \"%1\": %2"_s.arg(column->name, error.Text()));
    }
  }
}

// A row is its column count, the fixed data, the variable data, slack, the offsets of these data, their
// number, the null mask.
JetRows::Layout JetRows::ReadLayout(QByteArrayView row) const {
  Layout layout;
  layout.columns = Get<quint16>(row, 0);
  layout.maskStart = row.size() - (layout.columns + 7) / 8;
  layout.fixedEnd = layout.maskStart;
  bool sound = layout.columns <= table_.columnsEver;
  if (table_.variablesEver > 0) {
    layout.variables = Get<quint16>(row, layout.maskStart - 2);
    layout.fixedEnd = VariableOffset(row, layout.maskStart, 0);
    const qsizetype end = VariableOffset(row, layout.maskStart, layout.variables);
    sound = sound && IsSlack(row, end, layout.maskStart - 4 - 2 * layout.variables);
  }
  for (qsizetype i = 0; i < layout.variables; ++i) {
    sound = sound && VariableOffset(row, layout.maskStart, i) <= VariableOffset(row, layout.maskStart, i + 1);
  }
  if (!sound || !FitsColumns(layout)) {
    throw JetError(u"the parts of the row do not fit together"_s);
  }
  return layout;
}

// Whether the row has room for exactly the columns there were when it was written.
bool JetRows::FitsColumns(const Layout& layout) const {
  qsizetype fixedEnd = 2;
  int variables = 0;
  for (const JetColumn& column : table_.columns) {
    const bool there = column.number < layout.columns;
    if (!column.fixed) {
      if (there != (column.variableIndex < layout.variables)) {
        return false;
      }
      variables += there;
    } else if (there && column.type != JetType::YesNo) {
      fixedEnd = std::max<qsizetype>(fixedEnd, 2 + column.fixedOffset + column.size);
    } else if (!there && column.type != JetType::YesNo && 2 + column.fixedOffset < layout.fixedEnd) {
      return false;
    }
  }
  // Columns deleted since have left room that no definition tells of any more.
  const bool complete = std::ssize(table_.columns) == table_.columnsEver;
  return complete ? fixedEnd == layout.fixedEnd && variables == layout.variables
                  : fixedEnd <= layout.fixedEnd;
}

QVariant JetRows::Value(QByteArrayView row, const Layout& layout, const JetColumn& column) {
  const bool there = column.number < layout.columns;
  const bool hasValue = there && HasValue(row, layout.maskStart, column.number);
  if (column.type == JetType::YesNo) {
    return hasValue;
  }
  if (!there || (column.fixed && !hasValue)) {
    return {};
  }
  if (column.fixed) {
    return JetValues::Value(column.type, Slice(row, 2 + column.fixedOffset, column.size));
  }
  const qsizetype start = VariableOffset(row, layout.maskStart, column.variableIndex);
  const qsizetype end = VariableOffset(row, layout.maskStart, column.variableIndex + 1);
  const QByteArrayView field = Slice(row, start, end - start);
  if (!hasValue) {
    if (!field.isEmpty()) {
      throw JetError(u"a Null has data"_s);
    }
    return {};
  }
  return JetValues::Value(column.type, column.IsLong() ? LongValue(field) : field.toByteArray());
}

// The value's length and flags, a pointer to where it is, four bytes of no interest; a short one follows in
// place.
QByteArray JetRows::LongValue(QByteArrayView field) {
  constexpr quint32 inPlace = 0x80000000;
  constexpr quint32 oneRecord = 0x40000000;
  const auto head = Get<quint32>(field, 0);
  auto pointer = Get<quint32>(field, 4);
  const QByteArrayView rest = Slice(field, 12, field.size() - 12);
  const qsizetype size = head & 0x3FFFFFFF;
  QByteArray value;
  if ((head & inPlace) == 0 && !rest.isEmpty()) {
    throw JetError(u"its pointer is damaged"_s);
  }
  if ((head & inPlace) != 0) {
    value = rest.toByteArray();
  } else if (size > pages_.FileSize()) {
    throw JetError(u"its length of %1 bytes is more than the whole file has"_s.arg(size));
  } else if ((head & oneRecord) != 0) {
    value = LongRecord(pointer).Bytes().toByteArray();
  } else {
    value.reserve(size);
    while (pointer != 0 && value.size() <= size) {
      const JetRecord record = LongRecord(pointer);
      if (record.size <= 4) throw JetError(u"a piece of its text is empty"_s);
      value += Slice(record.Bytes(), 4, record.size - 4);
      pointer = Get<quint32>(record.Bytes(), 0);
    }
  }
  if (value.size() != size) {
    throw JetError(u"its length is given as %1 bytes, but %2 are there"_s.arg(size).arg(value.size()));
  }
  return value;
}

JetRecord JetRows::LongRecord(quint32 pointer) {
  UseOnce(pointer);
  JetRecord record = pages_.Record(pointer);
  if (Owner(record.page) != longValueOwner || record.deleted || record.moved) {
    throw JetError(u"a piece of its text is not where it should be"_s);
  }
  return record;
}

// A record belongs to one row only: one that is met again is a loop, or one row's data in another's place.
void JetRows::UseOnce(quint32 pointer) {
  if (!used_.insert(pointer).second) {
    throw JetError(u"a record of the file is used twice"_s);
  }
}
