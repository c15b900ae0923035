// The one rule by which a save and what others have written meanwhile become one row.
//
// What this save changes is what differs from the data set as it looked when its row was read. A unit (see
// Column::Unit) that one side changed is that side's; one that both changed to the same is fine; one that
// both changed differently is a conflict. Two exceptions:
//   - values are compared as samples: what either side has put behind the common ones is kept, theirs first;
//   - limits that this save calculates from all points are calculated again from the merged values; those
//     that the row left open are kept then, if they can be.
// What comes of two sides has to pass the checks that a save makes, else it is a conflict as well.
#pragma once

#include <QVariantList>
#include <vector>

#include "data/CData.h"
#include "library/Tables.h"

namespace Merge {

struct Result {
  QVariantList row;                     // what is to stand in the table
  std::vector<Column::Unit> conflicts;  // empty where the row may be written
  std::vector<Column::Unit> takenIn;    // what the others changed and the save keeps
  qsizetype valuesAdded = 0;            // by the others, behind those that were there
};

// `mine` knows the row that it was read from; `theirs` is the row as it stands now. Where mine decides there
// is no conflict: its changes stand. Throws InputError for more values than a data set can hold.
Result Of(const CData& mine, const QVariantList& theirs, bool mineDecides = false);

// Which of the samples in the row as it stood each sample of the merged one is.
Trace::Origins OriginsOf(const CData& mine, const QVariantList& theirs, const QVariantList& merged);

// The data set as loading the row would make it; what no row holds is as in `like`.
CData AsLoaded(const QVariantList& row, const CData& like);

// The row with its control limits left to be calculated where they have no width, or where `mine` had them
// calculated from less than two points.
QVariantList WithLimitsThatCanBeKept(QVariantList row, const CData& mine);

QString NameOf(Column::Unit unit);

}  // namespace Merge
