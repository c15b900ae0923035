// Fuzzes the reader of Access files: any file is refused, or read with every row that its tables count.
#include <QBuffer>
#include <random>

#include "platform/access/JetFile.h"
#include "tests/fuzz/Require.h"

namespace {

void ReadTable(JetFile& file, const QString& name) try {
  const JetTable table = file.Table(name);
  QStringList columns;
  for (const JetColumn& column : table.columns) columns += column.name;
  quint32 rows = 0;
  for (JetRows reader = file.Rows(table, columns); reader.Next(); ++rows)
    Require(std::ssize(reader.Values()) == columns.size());
  Require(rows == table.rowCount);
} catch (const JetError&) {
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  auto buffer = std::make_unique<QBuffer>();
  buffer->setData(QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  buffer->open(QIODevice::ReadOnly);
  try {
    JetFile file(std::move(buffer));
    for (const char* name :
         {"StatData", "Units", "DBRevision", "MSysObjects", "MSysACEs", "MSysAccessStorage"})
      ReadTable(file, QString::fromLatin1(name));
  } catch (const JetError&) {
  }
  return 0;
}

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

// Most of a file is texts and free space. This changes what the pages are made of instead: numbers at their
// starts and ends and at places anywhere, to small ones, extreme ones, and ones that stand elsewhere in the
// file.
extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
  constexpr size_t pageSize = JetPages::pageSize;
  std::minstd_rand random(seed);
  const auto draw = [&](size_t below) { return random() % below; };
  if (size < 2 * pageSize || draw(8) == 0) return LLVMFuzzerMutate(data, size, maxSize);
  for (size_t changes = 1 + draw(4); changes > 0; --changes) {
    const size_t offsets[] = {draw(80), pageSize - 4 - draw(300), draw(pageSize - 4)};
    uint8_t* const place = data + pageSize * draw(size / pageSize) + offsets[draw(3)];
    const quint32 old = qFromLittleEndian<quint32>(place);
    const quint32 elsewhere = qFromLittleEndian<quint32>(data + draw(size - 4));
    const auto page = static_cast<quint32>(draw(size / pageSize));
    const quint32 values[] = {old + 1, old - 1,   old ^ 1U << draw(32), elsewhere, page, page << 8,
                              0,       0xFFFFFFFF};
    const quint32 value = values[draw(8)];
    for (size_t bytes = size_t{1} << draw(3), i = 0; i < bytes; ++i)
      place[i] = static_cast<uint8_t>(value >> (8 * i));
  }
  return draw(200) == 0 ? draw(size) : size;
}
