// What the tests of Access files share: the sample files with what they hold, and reading a file from memory.
#pragma once

#include <QBuffer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>
#include <cmath>
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
  for (const char* name : {"shrunk", "fullrow", "lastdeleted"}) {
    const QString base = QString::fromLatin1(name);
    files.emplace_back(base + QStringLiteral(".mdb.z"), base);
  }
  return files;
}

// What files hold: an array of rows for each table.
inline std::string Dump(const QJsonObject& contents) {
  return QJsonDocument(contents).toJson().toStdString();
}

inline QJsonObject Expected(const QString& name) {
  return QJsonDocument::fromJson(Bytes(name + QStringLiteral(".json"))).object();
}

// As the JSON of a file writes it: every digit, a Null unlike an empty text, a negative zero as a text.
inline QJsonValue ToJson(const QVariant& value) {
  if (value.isNull()) return {};
  const bool isReal = value.typeId() == QMetaType::Double;
  if (isReal && value.toDouble() == 0 && std::signbit(value.toDouble())) return QStringLiteral("-0.0");
  return QJsonValue::fromVariant(value);
}

inline std::unique_ptr<JetFile> Open(const QByteArray& bytes) {
  auto buffer = std::make_unique<QBuffer>();
  buffer->setData(bytes);
  buffer->open(QIODevice::ReadOnly);
  return std::make_unique<JetFile>(std::move(buffer));
}

inline QJsonArray ReadTable(JetFile& file, const QString& name) {
  const JetTable table = file.Table(name);
  QStringList columns;
  for (const JetColumn& column : table.columns) columns += column.name;
  QJsonArray rows;
  for (JetRows reader = file.Rows(table, columns); reader.Next();) {
    QJsonObject row;
    for (qsizetype i = 0; i < columns.size(); ++i)
      row[columns[i]] = ToJson(reader.Values()[static_cast<size_t>(i)]);
    rows.append(row);
  }
  return rows;
}

inline QJsonObject ReadAll(const QByteArray& bytes) {
  const auto file = Open(bytes);
  QJsonObject contents;
  for (const char* table : {"StatData", "Units", "DBRevision"})
    contents[QLatin1String(table)] = ReadTable(*file, QString::fromLatin1(table));
  return contents;
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

// The first data set of plant.mdb, and its page.
inline constexpr quint32 firstPageOfPlant = 28;
inline constexpr quint32 firstRowOfPlant = firstPageOfPlant << 8;

inline qsizetype PageAt(quint32 page) { return qsizetype{page} * JetPages::pageSize; }

inline qsizetype RecordAt(const QByteArray& bytes, quint32 pointer) {
  const qsizetype page = PageAt(pointer >> 8);
  return page + (Get<quint16>(bytes, page + 14 + 2 * static_cast<qsizetype>(pointer & 0xFF)) & 0x1FFF);
}

// Where the row's field for its long text is: length and flags, then the pointer.
inline qsizetype LongFieldAt(const QByteArray& bytes, const QString& text) {
  const auto size = static_cast<quint32>(2 * text.size());
  for (const quint32 flags : {0u, 0x40000000u}) {
    QByteArray head(4, '\0');
    Put(head, 0, size | flags);
    if (const qsizetype at = bytes.indexOf(head, PageAt(3)); at > 0) return at;
  }
  throw std::runtime_error("no such long text");
}

}  // namespace AccessFiles
