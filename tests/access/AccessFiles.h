// What the tests of Access files share: the sample files with what they hold, and reading a file from memory.
#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/access/JetFile.h"

namespace AccessFiles {

inline QString Path(const QString& name) {
  return QStringLiteral(KESTREL_TEST_DATA) + QStringLiteral("/access/") + name;
}

inline QByteArray Bytes(const QString& name) {
  QFile file(Path(name));
  if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no file " + name.toStdString());
  const QByteArray bytes = file.readAll();
  return name.endsWith(QStringLiteral(".z")) ? qUncompress(bytes) : bytes;
}

// The valid files, with the name of the JSON that says what each holds.
inline std::vector<std::pair<QString, QString>> Valid() {
  std::vector<std::pair<QString, QString>> files = {
      {QStringLiteral("plant_encoded.mdb"), QStringLiteral("plant")},
      {QStringLiteral("plant.accdb.z"), QStringLiteral("plant")}};
  for (const char* name : {"plant", "plant_text_dates", "null_limit", "unicode", "moved_rows"}) {
    const QString base = QString::fromLatin1(name);
    files.emplace_back(base + QStringLiteral(".mdb"), base);
  }
  return files;
}

using Row = std::map<QString, QVariant>;
using Contents = std::map<QString, std::vector<Row>>;  // by table

// One value, exactly: doubles by their bits, and a Null unlike anything else.
inline std::string Exact(const QVariant& value) {
  if (value.isNull()) return "Null";
  if (value.typeId() == QMetaType::Double) {
    const double number = value.toDouble();
    quint64 bits = 0;
    memcpy(&bits, &number, sizeof bits);
    return "double " + std::to_string(bits);
  }
  return value.toString().toStdString();
}

inline Contents Expected(const QString& name) {
  // Qt's reader of JSON makes a negative zero a zero, unless it is a text.
  const QByteArray json = Bytes(name + QStringLiteral(".json")).replace(": -0.0,", ": \"-0.0\",");
  const QJsonObject tables = QJsonDocument::fromJson(json)[QStringLiteral("tables")].toObject();
  Contents contents;
  for (auto table = tables.begin(); table != tables.end(); ++table) {
    std::map<QString, QString> types;
    for (const auto& column : (*table)[QStringLiteral("columns")].toArray())
      types[column[QStringLiteral("name")].toString()] = column[QStringLiteral("type")].toString();
    for (const auto& values : (*table)[QStringLiteral("rows")].toArray()) {
      Row row;
      for (const auto& [column, type] : types) {
        const QJsonValue value = values[column];
        if (value.isNull())
          row[column] = {};
        else if (type == QStringLiteral("DOUBLE"))
          row[column] = value.toVariant().toDouble();
        else if (type == QStringLiteral("SHORT_DATE_TIME"))
          row[column] = value.toString().replace(u'T', u' ');
        else
          row[column] = value.toVariant();
      }
      contents[table.key()].push_back(row);
    }
  }
  return contents;
}

inline std::unique_ptr<JetFile> Open(const QByteArray& bytes) {
  auto buffer = std::make_unique<QBuffer>();
  buffer->setData(bytes);
  buffer->open(QIODevice::ReadOnly);
  return std::make_unique<JetFile>(std::move(buffer));
}

inline std::vector<Row> ReadTable(JetFile& file, const QString& name) {
  const JetTable table = file.Table(name);
  QStringList columns;
  for (const JetColumn& column : table.columns) columns += column.name;
  std::vector<Row> rows;
  for (JetRows reader = file.Rows(table, columns); reader.Next();) {
    Row row;
    for (qsizetype i = 0; i < columns.size(); ++i) row[columns[i]] = reader.Values()[static_cast<size_t>(i)];
    rows.push_back(row);
  }
  return rows;
}

inline Contents ReadAll(const QByteArray& bytes) {
  const auto file = Open(bytes);
  Contents contents;
  for (const QString& name : file->UserTables()) contents[name] = ReadTable(*file, name);
  return contents;
}

inline std::string Dump(const Contents& contents) {
  std::string text;
  for (const auto& [table, rows] : contents) {
    text += table.toStdString() + "\n";
    for (const Row& row : rows) {
      for (const auto& [column, value] : row) text += "  " + column.toStdString() + " = " + Exact(value);
      text += "\n";
    }
  }
  return text;
}

// The text of the refusal to read the file, or "" where it can be read.
inline std::string Refusal(const QByteArray& bytes) {
  try {
    ReadAll(bytes);
    return {};
  } catch (const JetError& error) {
    return error.what();
  }
}

// Changing a file's bytes: numbers at a place, and where records are.
template <class Number>
Number Get(const QByteArray& bytes, qsizetype at) {
  return JetBytes::Get<Number>(bytes, at);
}

template <class Number>
void Put(QByteArray& bytes, qsizetype at, Number number) {
  qToLittleEndian(number, bytes.data() + at);
}

inline qsizetype PageAt(quint32 page) { return qsizetype{page} * JetPages::pageSize; }

inline qsizetype RecordAt(const QByteArray& bytes, quint32 pointer) {
  const qsizetype page = PageAt(pointer >> 8);
  return page + (Get<quint16>(bytes, page + 14 + 2 * static_cast<qsizetype>(pointer & 0xFF)) & 0x1FFF);
}

// Where the row's field for its long text is: length and flags, then the pointer.
inline qsizetype LongFieldAt(const QByteArray& bytes, const QVariant& text) {
  const auto size = static_cast<quint32>(2 * text.toString().size());
  for (const quint32 flags : {0u, 0x40000000u}) {
    QByteArray head(4, '\0');
    Put(head, 0, size | flags);
    if (const qsizetype at = bytes.indexOf(head, PageAt(3)); at > 0) return at;
  }
  throw std::runtime_error("no such long text");
}

}  // namespace AccessFiles
