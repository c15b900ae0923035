// What the tests of Access files share: the sample files with what they hold, and reading a file from memory.
#pragma once

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

#include "platform/access/JetFile.h"
#include "tests/support/Approved.h"
#include "tests/support/Files.h"
#include "tests/support/Refusal.h"

namespace AccessFiles {

inline QString Path(const QString& name) { return QStringLiteral(KESTREL_TEST_DATA "/access/") + name; }

inline QByteArray Bytes(const QString& name) {
  const QByteArray bytes = ReadFile(Path(name));
  return name.endsWith(u".z") ? qUncompress(bytes) : bytes;
}

// The valid files, with the name of the JSON that says what each holds.
inline std::vector<std::pair<QString, QString>> Valid() {
  std::vector<std::pair<QString, QString>> files;
  for (const QString& name : EntriesOf(Path({}))) {
    const QString json = name.section(u'.', 0, 0).remove(u"_encoded"_s);
    if (!name.endsWith(u".json") && QFile::exists(Path(json + u".json"_s))) files.emplace_back(name, json);
  }
  EXPECT_EQ(files.size(), 10U);
  return files;
}

// What files hold: an array of rows for each table.
inline std::string Dump(const QJsonObject& contents) {
  return QJsonDocument(contents).toJson().toStdString();
}

inline QJsonObject Expected(const QString& name) {
  return QJsonDocument::fromJson(Bytes(name + u".json"_s)).object();
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

// Why each of the files is refused, as approved.
using Damaged = std::vector<std::pair<QString, QByteArray>>;
inline void ExpectRefusals(const Damaged& files, const std::function<QString(const QByteArray&)>& refusal) {
  QStringList told;
  for (const auto& [what, bytes] : files) told << what + u": "_s + refusal(bytes);
  Approved::Expect(told);
}
inline QString ReadingRefused(const QByteArray& bytes) {
  return Refusal<JetError>([&] { ReadAll(bytes); });
}

// Changing a file's bytes: numbers at a place, and where records are.
template <class Number>
Number Get(const QByteArray& bytes, qsizetype at) {
  return JetBytes::Get<Number>(bytes, at);
}

template <class Number>
QByteArray& Put(QByteArray& bytes, qsizetype at, Number number) {
  qToLittleEndian(number, bytes.data() + at);
  return bytes;
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
