// Fuzzes the reading of a CSV file's column: the first line names the column, the rest is the file.
#include "cli/CsvColumn.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "tests/fuzz/Require.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto input =
      QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const qsizetype end = input.indexOf('\n');
  try {
    const auto samples =
        ParseCsvColumn(input.mid(end + 1), u"data.csv"_s, {QString::fromUtf8(input.left(end)), {}, {}});
    for (const CsvSample& sample : samples) Require(Conversions::IsNumeric(sample.value));
  } catch (const InputError& error) {
    Require(ErrorText(error).startsWith(u"data.csv"_s));
  }
  return 0;
}
