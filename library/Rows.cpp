#include "library/Rows.h"

#include "data/Statistics.h"
#include "library/Tables.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace Rows {

QString NameOf(const QVariantList& row) {
  const Table& table = Tables::StatData();
  return Words::Library::dataSet(row[table.IndexOf(u"Description")].toString(),
                                 row[table.IndexOf(u"ID")].toString());
}

Library::Row Make(const QVariantList& row, const ExtraTables::LimitsBases& bases) {
  Library::Row made;
  made.id = Tables::IdOf(row);
  made.description = row[Tables::StatData().IndexOf(u"Description")].toString();
  try {
    made.data = std::make_shared<CData>();
    made.data->SetFollowsItsDecimals(true);
    Tables::Fill(*made.data, row);
    if (const auto base = bases.find(made.id); base != bases.end()) made.data->SetLimitsBase(base->second);
  } catch (const Error& error) {
    made.data.reset();
    const QString name = NameOf(row);
    made.failure = Error(name + u": "_s + error.Text(), Error::Kind::Unavailable, name);
  }
  return made;
}

void Calculate(Library::Row& row) {
  if (row.failure || QCGlobalFunctions::CalculateStatistics(*row.data)) return;
  const QString name = NameOf(row.data->RowAsKnown());
  row.failure = InputError(name + u": "_s + row.data->ErrorMessage(), name);
}

}  // namespace Rows
