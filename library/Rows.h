// What becomes of the raw rows of StatData: data sets with their statistics, or why there are none.
#pragma once

#include <QVariantList>

#include "library/ExtraTables.h"
#include "library/Library.h"

namespace Rows {

// "Data set "SHAFT" (ID 7)"
QString NameOf(const QVariantList& row);

Library::Row Make(const QVariantList& row, const ExtraTables::LimitsBases& bases = {});  // without statistics

void Calculate(Library::Row& row);  // leaves a row that has failed alone

}  // namespace Rows
