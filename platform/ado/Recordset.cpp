#include "platform/ado/Recordset.h"

#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlRecord>
#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// The table of a plain "SELECT * FROM table ..."; empty for anything else.
QString TableOf(const QString& sql) {
  static const QRegularExpression plain(
      u"^\\s*SELECT\\s+\\*\\s+FROM\\s+[\\[\"`]?(\\w+)[\\]\"`]?(?:\\s+WHERE\\b|\\s+ORDER\\b|\\s*;?\\s*$)"_s,
      QRegularExpression::CaseInsensitiveOption);
  return plain.match(sql).captured(1);
}

std::vector<QVariant> ReadRow(const Query& query, int columnCount) {
  std::vector<QVariant> row;
  row.reserve(static_cast<size_t>(columnCount));
  for (int column = 0; column < columnCount; ++column) row.push_back(query->value(column));
  return row;
}

bool SameValue(const QVariant& a, const QVariant& b) {
  return a.isNull() || b.isNull() ? a.isNull() == b.isNull() : a == b;
}

}  // namespace

Recordset::~Recordset() { Close(); }

void Recordset::Open(const QString& sql, Connection& connection, const QVariantList& values) {
  if (state_ == Opened) throw DatabaseError(u"The recordset is open already."_s);
  connection_ = &connection;
  sql_ = sql;
  values_ = values;
  table_ = TableOf(sql);
  Fetch();
  position_ = rows_.empty() ? 0 : 1;
  state_ = Opened;
}

void Recordset::Close() {
  CancelUpdate();
  rows_.clear();
  columns_.clear();
  position_ = 0;
  state_ = Closed;
}

void Recordset::Requery() {
  RequireOpen();
  CancelUpdate();
  Fetch();
  position_ = std::clamp<qint64>(position_, rows_.empty() ? 0 : 1, RecordCount());
}

void Recordset::Fetch() {
  const Query query = connection_->Run(u"select"_s, sql_, values_);
  const QSqlRecord record = query->record();
  QStringList columns;
  for (int column = 0; column < record.count(); ++column) columns.append(record.fieldName(column));
  std::vector<std::vector<QVariant>> rows;
  while (connection_->NextRow(query)) rows.push_back(ReadRow(query, record.count()));
  columns_ = columns;
  rows_ = std::move(rows);
}

void Recordset::RequireOpen() const {
  if (state_ != Opened) throw DatabaseError(u"The recordset is not open."_s);
}

void Recordset::RequireRow() const {
  RequireOpen();
  if (!adding_ && (BOF() || EndOfFile())) throw DatabaseError(u"There is no current record."_s);
}

qint64 Recordset::RecordCount() const {
  RequireOpen();
  return static_cast<qint64>(rows_.size());
}

bool Recordset::BOF() const {
  RequireOpen();
  return position_ == 0;
}

bool Recordset::EndOfFile() const { return rows_.empty() || position_ > RecordCount(); }

qint64 Recordset::AbsolutePosition() const {
  if (RecordCount() == 0) return -1;
  if (BOF()) return -2;
  return EndOfFile() ? -3 : position_;
}

void Recordset::MoveTo(qint64 position) {
  if (RecordCount() == 0 || position < 0 || position > RecordCount() + 1)
    throw DatabaseError(u"There is no record to move to."_s);
  position_ = position;
}

void Recordset::MoveFirst() {
  Update();
  MoveTo(1);
}

void Recordset::MoveLast() {
  Update();
  MoveTo(RecordCount());
}

void Recordset::MoveNext() {
  Update();
  MoveTo(position_ + 1);
}

void Recordset::MovePrevious() {
  Update();
  MoveTo(position_ - 1);
}

int Recordset::Find(const QString& name) const {
  // Names are mostly written as the table has them; the look-up runs for each field of each row.
  if (const qsizetype column = columns_.indexOf(name); column >= 0) return static_cast<int>(column);
  for (qsizetype column = 0; column < columns_.size(); ++column)
    if (columns_[column].compare(name, Qt::CaseInsensitive) == 0) return static_cast<int>(column);
  return -1;
}

size_t Recordset::Column(const QString& name) const {
  RequireOpen();
  const int column = Find(name);
  if (column < 0) throw DatabaseError(u"There is no column %1."_s.arg(name));
  return static_cast<size_t>(column);
}

std::vector<QVariant>& Recordset::CurrentRow() { return rows_[static_cast<size_t>(position_ - 1)]; }

const QVariant& Recordset::Field(const QString& name) const {
  const size_t column = Column(name);
  RequireRow();
  return edited_.empty() ? rows_[static_cast<size_t>(position_ - 1)][column] : edited_[column];
}

void Recordset::SetField(const QString& name, const QVariant& value) {
  const size_t column = Column(name);
  RequireRow();
  if (table_.isEmpty()) throw DatabaseError(u"The recordset cannot be changed."_s);
  if (edited_.empty()) {
    edited_ = CurrentRow();
    touched_.assign(edited_.size(), false);
  }
  edited_[column] = value;
  touched_[column] = true;
}

void Recordset::AddNew() {
  RequireOpen();
  if (table_.isEmpty()) throw DatabaseError(u"The recordset cannot be changed."_s);
  Update();
  adding_ = true;
  edited_.assign(static_cast<size_t>(columns_.size()), QVariant());
  touched_.assign(edited_.size(), false);
}

void Recordset::CancelUpdate() {
  adding_ = false;
  edited_.clear();
  touched_.clear();
}

void Recordset::Update() {
  RequireOpen();
  if (edited_.empty()) return;
  std::optional<Transaction> transaction;
  if (!connection_->InTransaction()) transaction.emplace(*connection_);
  std::vector<QVariant> written = adding_ ? Insert() : Change();
  if (transaction) transaction->Commit();
  if (adding_) {
    rows_.push_back(std::move(written));
    position_ = RecordCount();
  } else {
    CurrentRow() = std::move(written);
  }
  CancelUpdate();
}

QString Recordset::Quoted(const QString& column) const {
  return connection_->Database().driver()->escapeIdentifier(column, QSqlDriver::FieldName);
}

// The names and the new values of the columns that were set.
void Recordset::Touched(QStringList& names, QVariantList& values) const {
  for (size_t column = 0; column < touched_.size(); ++column)
    if (touched_[column]) {
      names.append(Quoted(columns_[static_cast<qsizetype>(column)]));
      values.append(edited_[column]);
    }
}

std::vector<QVariant> Recordset::Insert() {
  QStringList names;
  QVariantList values;
  Touched(names, values);
  QString sql = u"INSERT INTO %1 DEFAULT VALUES"_s.arg(Quoted(table_));
  if (!names.isEmpty()) {
    const QStringList marks(names.size(), u"?"_s);
    sql = u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(Quoted(table_), names.join(u", "_s), marks.join(u", "_s));
  }
  const QVariant id = connection_->Insert(sql, values);
  // Read back, for the columns that the database itself filled.
  const Query query =
      connection_->Run(u"select"_s, u"SELECT * FROM %1 WHERE ID = ?"_s.arg(Quoted(table_)), {id});
  if (!connection_->NextRow(query)) throw DatabaseError(u"The new record cannot be read back."_s);
  return ReadRow(query, static_cast<int>(columns_.size()));
}

std::vector<QVariant> Recordset::Change() {
  QStringList names;
  QVariantList values;
  Touched(names, values);
  const QVariant id = CurrentRow()[Column(u"ID"_s)];
  RequireUnchanged(id);
  const QString sql = u"UPDATE %1 SET %2 = ? WHERE ID = ?"_s.arg(Quoted(table_), names.join(u" = ?, "_s));
  connection_->Run(u"update"_s, sql, values << id);
  return edited_;
}

void Recordset::RequireUnchanged(const QVariant& id) {
  const Query query =
      connection_->Run(u"select"_s, u"SELECT * FROM %1 WHERE ID = ?"_s.arg(Quoted(table_)), {id});
  if (!connection_->NextRow(query))
    throw DatabaseError(u"The record was deleted by another program in the meantime."_s);
  const std::vector<QVariant> stored = ReadRow(query, static_cast<int>(columns_.size()));
  for (size_t column = 0; column < touched_.size(); ++column)
    if (touched_[column] && !SameValue(stored[column], CurrentRow()[column]))
      throw DatabaseError(u"The record was changed by another program in the meantime."_s);
}
