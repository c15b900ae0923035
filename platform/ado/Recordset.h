// An ADO-like recordset: keyset, optimistic, client cursor over one SELECT.
//
// Open reads the rows once (they stay as read until Requery). Positions are 1-based; BOF and EOF are both
// true for no rows. A change is made to the current row with SetField and written by Update, in one
// transaction; it finds the row by its ID and fails (DatabaseError) when another program has changed or
// deleted that row meanwhile. Moving away from a row with changes not yet written writes them first, as ADO
// does. Only a plain "SELECT * FROM table ..." can be written to.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>
#include <vector>

#include "platform/ado/Connection.h"

class Recordset {
 public:
  enum State { Closed = 0, Opened = 1 };

  Recordset() = default;
  ~Recordset();  // closes; changes not written are dropped
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  void Open(const QString& sql, Connection& connection, const QVariantList& values = {});
  void Close();
  // Where Requery and Update go from now on; the rows stay as read.
  void SetActiveConnection(Connection& connection) { connection_ = &connection; }
  State GetState() const { return state_; }
  void Requery();  // the position stays where it was, as far as there still are rows

  qint64 RecordCount() const;
  bool BOF() const;
  bool EndOfFile() const;           // ADO's EOF, which is a macro of the C library
  qint64 AbsolutePosition() const;  // 1-based; -2 at BOF, -3 at EOF, -1 without rows

  void MoveFirst();
  void MoveLast();
  void MoveNext();      // an error when already at EOF
  void MovePrevious();  // an error when already at BOF

  // The current row's value (a null QVariant for Null), valid until the next move, change or closing. Names
  // compare without case; an unknown name, or no current row, is an error.
  const QVariant& Field(const QString& name) const;
  void SetField(const QString& name, const QVariant& value);

  void AddNew();  // a new, empty current row; Update inserts it and gives it its ID
  void Update();
  void CancelUpdate();  // drops AddNew or the changes since the last Update

 private:
  int Find(const QString& name) const;  // -1 when unknown
  size_t Column(const QString& name) const;
  std::vector<QVariant>& CurrentRow();
  void Fetch();
  void MoveTo(qint64 position);
  void RequireOpen() const;
  void RequireRow() const;

  QString Quoted(const QString& column) const;
  void Touched(QStringList& names, QVariantList& values) const;
  void RequireUnchanged(const QVariant& id);
  std::vector<QVariant> Insert();  // both: the row as it now stands in the table
  std::vector<QVariant> Change();

  Connection* connection_ = nullptr;
  QString sql_;
  QVariantList values_;  // of its "?"
  QString table_;
  QStringList columns_;
  std::vector<std::vector<QVariant>> rows_;
  std::vector<QVariant> edited_;  // the current row as changed; empty when there is nothing to write
  std::vector<bool> touched_;
  bool adding_ = false;
  qint64 position_ = 0;  // 0 before the first, 1..n, n + 1 behind the last
  State state_ = Closed;
};
