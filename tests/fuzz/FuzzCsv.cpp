// Fuzzes the reading of a CSV file's column: the first line names the column, the rest is the file.
#include <cstdlib>

#include "app/CsvColumn.h"
#include "app/Failures.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto input =
      QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const qsizetype end = input.indexOf('\n');
  try {
    const QStringList values =
        ParseCsvColumn(input.mid(end + 1), u"data.csv"_s, QString::fromUtf8(input.left(end)));
    for (const QString& value : values)
      if (!Conversions::IsNumeric(value)) std::abort();
  } catch (const UsageError& error) {
    if (!ErrorText(error).startsWith(u"data.csv"_s)) std::abort();
  }
  return 0;
}
