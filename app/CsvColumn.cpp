#include "app/CsvColumn.h"

#include <QFile>
#include <algorithm>
#include <vector>

#include "app/Failures.h"
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

// RFC 4180: fields in quotes may hold separators, line ends and doubled quotes.
std::vector<Row> ParseRows(const QString& text, QChar separator) {
  std::vector<Row> rows;
  Row row{1, {}};
  QString field;
  bool quoted = false;
  int line = 1;
  auto endRow = [&] {
    row.fields << field.trimmed();
    field.clear();
    const bool blank = row.fields.size() == 1 && row.fields[0].isEmpty();
    if (!blank) rows.push_back(row);
    row = {line, {}};
  };
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (c == u'\n') ++line;
    if (quoted) {
      if (c != u'"') {
        field += c;
      } else if (i + 1 < text.size() && text[i + 1] == u'"') {
        field += text[++i];
      } else {
        quoted = false;
      }
    } else if (c == u'"' && field.trimmed().isEmpty()) {
      quoted = true;
      field.clear();
    } else if (c == separator) {
      row.fields << field.trimmed();
      field.clear();
    } else if (c == u'\n') {
      endRow();
    } else if (c != u'\r') {
      field += c;
    }
  }
  endRow();
  return rows;
}

class Column {
 public:
  Column(const QString& path, const QString& text, const QString& column)
      : path_(path), separator_(SeparatorOf(text)), rows_(ParseRows(text, separator_)) {
    if (rows_.empty()) return;
    const QStringList& first = rows_.front().fields;
    bool isNumber = false;
    const int number = column.toInt(&isNumber);
    const auto isHeading = [&](const QString& field) {
      return field.compare(column, Qt::CaseInsensitive) == 0;
    };
    const qsizetype heading = std::find_if(first.begin(), first.end(), isHeading) - first.begin();
    if (!column.isEmpty() && heading < first.size()) {
      index_ = heading;
    } else if (column.isEmpty() && first.size() > 1) {
      throw UsageError(u"%1 has %2 columns (%3); name one with --column"_s.arg(path_)
                           .arg(first.size())
                           .arg(first.join(u", "_s)));
    } else if (!column.isEmpty() && (!isNumber || number < 1 || number > first.size())) {
      throw UsageError(
          u"%1 has no column \"%2\" (its first line is: %3)"_s.arg(path_, column, first.join(u", "_s)));
    } else {
      index_ = isNumber ? number - 1 : 0;
    }
    heading_ = Conversions::IsNumeric(Number(first[index_])) ? QString() : first[index_];
    if (!heading_.isEmpty()) rows_.erase(rows_.begin());
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
      if (emptyLine != 0) throw UsageError(Place(emptyLine) + u": there is no number"_s);
      const QString number = Number(field);
      if (!Conversions::IsNumeric(number)) {
        throw UsageError(Place(row.line) + u": \"%1\" is not a number"_s.arg(field));
      }
      values << number;
    }
    return values;
  }

 private:
  QString Number(const QString& field) const {
    const bool decimalComma = separator_ != u',' && field.count(u',') == 1 && !field.contains(u'.');
    return decimalComma ? QString(field).replace(u',', u'.') : field;
  }

  QString Place(int line) const {
    const QString name = heading_.isEmpty() ? QString() : u" (%1)"_s.arg(heading_);
    return u"%1 line %2, column %3%4"_s.arg(path_).arg(line).arg(index_ + 1).arg(name);
  }

  QString path_;
  QChar separator_;
  std::vector<Row> rows_;
  qsizetype index_ = 0;
  QString heading_;
};

}  // namespace

QStringList ReadCsvColumn(const QString& path, const QString& column) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw FileError(u"%1: %2"_s.arg(path, file.errorString()));
  QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) throw FileError(u"%1: %2"_s.arg(path, file.errorString()));
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
  return Column(path, QString::fromUtf8(bytes), column).Values();
}
