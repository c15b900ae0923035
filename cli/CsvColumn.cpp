#include "cli/CsvColumn.h"

#include <QFile>
#include <algorithm>
#include <vector>

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace {

struct Row {
  int line = 0;  // where it starts in the file, from 1
  QStringList fields;
};

QChar SeparatorOf(const QString& text) {
  const QString firstLine = text.section(u'\n', 0, 0);
  QChar separator = u',';
  for (const QChar candidate : {QChar(u';'), QChar(u'\t')}) {
    if (firstLine.count(candidate) > firstLine.count(separator)) separator = candidate;
  }
  return separator;
}

// RFC 4180: fields in quotes may hold separators, line ends and doubled quotes. Text behind a closing quote
// stays with its quotes, so that it is no number.
class RowParser {
 public:
  RowParser(const QString& text, QChar separator) : text_(text), separator_(separator) {}

  std::vector<Row> Parse() {
    for (at_ = 0; at_ < text_.size(); ++at_) {
      const QChar c = text_[at_];
      if (c == separator_) {
        EndField();
      } else if (c == u'\n') {
        EndField();
        EndRow();
      } else if (c == u'"' && field_.trimmed().isEmpty()) {
        ReadQuoted();
      } else {
        field_ += c;
      }
    }
    EndField();
    EndRow();
    return std::move(rows_);
  }

 private:
  // From the opening quote to the closing one.
  void ReadQuoted() {
    const qsizetype start = at_;
    QString quoted;
    for (++at_; at_ < text_.size(); ++at_) {
      const QChar c = text_[at_];
      if (c == u'\n') ++line_;
      if (c != u'"') {
        quoted += c;
      } else if (at_ + 1 < text_.size() && text_[at_ + 1] == u'"') {
        quoted += text_[++at_];
      } else {
        break;
      }
    }
    qsizetype next = at_ + 1;
    while (next < text_.size() && text_[next] == u' ') ++next;
    const bool ends = next >= text_.size() || text_[next] == separator_ || text_[next] == u'\n';
    field_ = ends ? quoted : text_.mid(start, at_ - start + 1);
  }

  void EndField() {
    row_.fields << field_.trimmed();
    field_.clear();
  }

  void EndRow() {
    const bool blank = row_.fields.size() == 1 && row_.fields[0].isEmpty();
    if (!blank) rows_.push_back(row_);
    row_ = {++line_, {}};
  }

  const QString& text_;
  const QChar separator_;
  qsizetype at_ = 0;
  int line_ = 1;
  QString field_;
  Row row_{1, {}};
  std::vector<Row> rows_;
};

class Column {
 public:
  Column(const QString& name, const QString& text, const QString& column)
      : name_(name), separator_(SeparatorOf(text)), rows_(RowParser(text, separator_).Parse()) {
    if (rows_.empty()) return;
    for (const Row& row : rows_) RequireFields(row);
    index_ = Find(column);
    TakeHeading();
  }

  QStringList Values() const {
    QStringList values;
    int emptyLine = 0;  // of the first empty field since the last number
    for (const Row& row : rows_) {
      const QString field = row.fields.value(index_);
      if (field.isEmpty()) {
        if (emptyLine == 0) emptyLine = row.line;
        continue;
      }
      if (emptyLine != 0) throw InputError(Place(emptyLine) + u": there is no number"_s);
      const QString number = Number(field);
      if (!Conversions::IsNumeric(number)) {
        throw InputError(Place(row.line) + u": \"%1\" is not a number"_s.arg(field));
      }
      values << number;
    }
    return values;
  }

 private:
  const QStringList& First() const { return rows_.front().fields; }

  // A row with more fields than the first is a wrong separator, or decimal commas between commas.
  void RequireFields(const Row& row) const {
    if (row.fields.size() <= First().size()) return;
    throw InputError(
        u"%1 line %2 has %3 columns, the first line has %4; write decimals with a point"_s.arg(name_)
            .arg(row.line)
            .arg(row.fields.size())
            .arg(First().size()));
  }

  qsizetype Find(const QString& column) const {
    const QString columns = First().join(u", "_s);
    if (column.isEmpty()) {
      if (First().size() == 1) return 0;
      throw InputError(
          u"%1 has %2 columns (%3); name one with --column"_s.arg(name_).arg(First().size()).arg(columns));
    }
    const auto isHeading = [&](const QString& field) {
      return field.compare(column, Qt::CaseInsensitive) == 0;
    };
    const qsizetype heading = std::find_if(First().begin(), First().end(), isHeading) - First().begin();
    if (heading < First().size()) return heading;
    bool isNumber = false;
    const int number = column.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= First().size()) return number - 1;
    throw InputError(u"%1 has no column \"%2\" (its first line is: %3)"_s.arg(name_, column, columns));
  }

  // A mistyped number in the first line is none: it would be lost as a heading.
  void TakeHeading() {
    const QString first = First()[index_];
    const bool beginsLikeNumber = !first.isEmpty() && (first[0].isDigit() || u"+-.,"_s.contains(first[0]));
    if (first.isEmpty() || beginsLikeNumber) return;
    heading_ = first;
    rows_.erase(rows_.begin());
  }

  QString Number(const QString& field) const {
    const bool decimalComma = separator_ != u',' && field.count(u',') == 1 && !field.contains(u'.');
    return decimalComma ? QString(field).replace(u',', u'.') : field;
  }

  QString Place(int line) const {
    const QString heading = heading_.isEmpty() ? QString() : u" (%1)"_s.arg(heading_);
    return u"%1 line %2, column %3%4"_s.arg(name_).arg(line).arg(index_ + 1).arg(heading);
  }

  QString name_;
  QChar separator_;
  std::vector<Row> rows_;
  qsizetype index_ = 0;
  QString heading_;
};

}  // namespace

QStringList ReadCsvColumn(const QString& path, const QString& column) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw Error(u"%1: %2"_s.arg(path, file.errorString()));
  const QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) throw Error(u"%1: %2"_s.arg(path, file.errorString()));
  return ParseCsvColumn(bytes, path, column);
}

QStringList ParseCsvColumn(QByteArray bytes, const QString& name, const QString& column) {
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
  bytes.replace("\r\n", "\n").replace('\r', '\n');
  return Column(name, QString::fromUtf8(bytes), column).Values();
}
