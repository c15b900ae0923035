#include "library/Merge.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "data/Statistics.h"
#include "platform/error/Error.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

using Unit = Column::Unit;

constexpr qint16 mostDecimals = 8;  // in which a limit is read

bool SameValue(const QVariant& a, const QVariant& b) {
  return a.isNull() || b.isNull() ? a.isNull() == b.isNull() : a == b;
}

QStringList SamplesOf(const QVariant& values) { return Trace::SamplesIn(values.toString()); }

bool BeginsWith(const QStringList& samples, const QStringList& beginning) {
  return samples.size() >= beginning.size() &&
         std::equal(beginning.begin(), beginning.end(), samples.begin());
}

// Null where the two cannot both be kept.
std::optional<QStringList> MergedSamples(const QStringList& base, const QStringList& mine,
                                         const QStringList& theirs) {
  if (mine == base) return theirs;
  if (theirs == base) return mine;
  // Who adds what the other has added has measured as well.
  if (BeginsWith(mine, base)) return theirs + mine.mid(base.size());
  if (mine == theirs) return theirs;
  if (BeginsWith(theirs, base)) return mine + theirs.mid(base.size());
  return std::nullopt;
}

QString StoredForm(const QStringList& samples) {
  return samples.isEmpty() ? QString() : samples.join(u',') + u',';
}

// Of a data set's samples in those of the row that it knows.
Trace::Origins OriginsInBase(const CData& mine, const QStringList& base, const QStringList& samples) {
  const Trace::Origins& known = mine.SampleOrigins();
  const auto isThere = [&](qint32 origin) { return origin >= Trace::isNew && origin < base.size(); };
  const bool fits = std::ssize(known) == samples.size() && std::ranges::all_of(known, isThere);
  return fits ? known : Trace::ByDifference(base, samples);
}

// Whether the limits are those that all points give.
bool LimitsAreOfAllPoints(const CData& data) {
  CData all = data;
  all.SetDataStartPoint(0);
  all.SetDataStopPoint(0);
  QCGlobalFunctions::ClearControlLimits(all);
  return QCGlobalFunctions::CalculateStatistics(all) && all.ControlLimits() == data.ControlLimits();
}

// Each side has passed the checks of its own units; what is left is whether they go together.
bool PassesChecks(CData data) {
  return data.SubGroupSize() >= 1 && QCGlobalFunctions::CalculateStatistics(data);
}

// One merge of one row, unit by unit.
class Merging {
 public:
  Merging(const CData& mine, const QVariantList& theirs, bool mineDecides)
      : mineData_(mine),
        base_(mine.RowAsKnown()),
        mine_(Tables::RowOf(mine)),
        isMine_(ColumnsChanged(Merge::AsLoaded(base_, mine), mine)),
        theirs_(theirs),
        mineDecides_(mineDecides) {
    result_.row = theirs;
    if (mine.LimitsRenewed()) ClaimOpenLimits();
  }

  Merge::Result Run() {
    for (const Unit unit : {Unit::Values, Unit::SpecLimits, Unit::Fliers, Unit::Sensitivity,
                            Unit::DetectionPeriod, Unit::UnitOfMeasurement})
      unit == Unit::Values ? MergeValues() : MergeFields(unit);
    MergeControlLimits();
    if (LimitsAreMine()) result_.row = Merge::WithLimitsThatCanBeKept(result_.row, mineData_);
    const bool isOfTwo = !result_.takenIn.empty() && !mineChanged_.empty() && result_.conflicts.empty();
    if (isOfTwo && !mineDecides_ && !PassesChecks(Merge::AsLoaded(result_.row, mineData_)))
      result_.conflicts = mineChanged_;
    return result_;
  }

 private:
  // What the user has changed, and not merely the decimals in which limits are read.
  static std::vector<bool> ColumnsChanged(const CData& loaded, const CData& mine) {
    const auto inFull = [](CData data) {
      data.SetPrecisionValue(mostDecimals);
      return Tables::RowOf(data);
    };
    const QVariantList before = Tables::RowOf(loaded);
    const QVariantList beforeInFull = inFull(loaded);
    const QVariantList after = Tables::RowOf(mine);
    const QVariantList afterInFull = inFull(mine);
    std::vector<bool> changed;
    for (qsizetype i = 0; i < after.size(); ++i)
      changed.push_back(!SameValue(after[i], before[i]) && !SameValue(afterInFull[i], beforeInFull[i]) &&
                        !SameValue(afterInFull[i], before[i]));
    return changed;
  }

  bool IsLeftOpen(qsizetype column) const {
    const bool isLimit = Tables::StatData().columns[static_cast<std::size_t>(column)].IsControlLimit();
    return isLimit && (base_[column].toDouble() == 0 || Tables::LeavesLimitsOpen(base_));
  }

  bool LimitsAreMine() const {
    const std::vector<Column>& columns = Tables::StatData().columns;
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (columns[i].IsControlLimit() && isMine_[i]) return true;
    return false;
  }

  // Limits that were asked for are this save's, although loading calculates the same for a row without.
  void ClaimOpenLimits() {
    for (qsizetype at = 0; at < mine_.size(); ++at)
      if (IsLeftOpen(at) && mine_[at].toDouble() != 0) isMine_[static_cast<std::size_t>(at)] = true;
  }

  bool IsMine(qsizetype column) const { return isMine_[static_cast<std::size_t>(column)]; }

  bool IsMine(Unit unit) const {
    const auto& columns = Tables::StatData().columns;
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (columns[i].unit == unit && isMine_[i]) return true;
    return false;
  }

  // Whether one of the unit's columns differs between two rows.
  static bool Differs(Unit unit, const QVariantList& a, const QVariantList& b) {
    const auto& columns = Tables::StatData().columns;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const auto at = static_cast<qsizetype>(i);
      if (columns[i].unit == unit && !SameValue(a[at], b[at])) return true;
    }
    return false;
  }

  // What this save puts into the unit's columns; the others stay, digits and all. A limit that the row left
  // to be calculated is kept with the others as soon as one of them is.
  void TakeMine(Unit unit) {
    const auto& columns = Tables::StatData().columns;
    const bool keepsLimits = LimitsAreMine();
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const auto at = static_cast<qsizetype>(i);
      if (columns[i].unit != unit) continue;
      result_.row[at] = IsMine(at) || (keepsLimits && IsLeftOpen(at)) ? mine_[at] : base_[at];
    }
  }

  void Note(Unit unit, bool mine, bool theirs) {
    if (mine) mineChanged_.push_back(unit);
    if (theirs) result_.takenIn.push_back(unit);
  }

  void MergeFields(Unit unit) {
    const bool mine = IsMine(unit);
    const bool theirs = Differs(unit, theirs_, base_);
    Note(unit, mine, theirs && !mine);
    if (!mine) return;
    TakeMine(unit);
    if (theirs && !mineDecides_ && Differs(unit, result_.row, theirs_)) result_.conflicts.push_back(unit);
  }

  void MergeValues() {
    const qsizetype at = Tables::StatData().IndexOf(u"Values");
    const QStringList base = SamplesOf(base_[at]);
    const QStringList mine = SamplesOf(mine_[at]);
    const QStringList theirs = SamplesOf(theirs_[at]);
    const bool isSameEdit = mine == theirs && !BeginsWith(mine, base);
    Note(Unit::Values, mine != base, theirs != base && !isSameEdit);
    if (mine == base || isSameEdit) {
      if (theirs != base && BeginsWith(theirs, base)) result_.valuesAdded = theirs.size() - base.size();
      return;
    }
    const auto merged = MergedSamples(base, mine, theirs);
    if (!merged && !mineDecides_) return result_.conflicts.push_back(Unit::Values);
    const QStringList samples = merged.value_or(mine);
    if (samples.size() > std::numeric_limits<qint16>::max())
      throw InputError(Words::Library::tooManySamples(QString::number(samples.size()),
                                                      QString::number(std::numeric_limits<qint16>::max())));
    if (BeginsWith(theirs, base)) result_.valuesAdded = theirs.size() - base.size();
    result_.row[at] = StoredForm(samples);
  }

  // Limits that were kept may come out as they were when they are calculated anew: that is wanted all the
  // same.
  bool RenewsLimits() const { return IsMine(Unit::ControlLimits) || mineData_.LimitsRenewed(); }

  void MergeControlLimits() {
    const bool othersMatter = !result_.takenIn.empty() || Differs(Unit::ControlLimits, theirs_, base_);
    const bool recalculated = othersMatter && RenewsLimits() && LimitsAreOfAllPoints(mineData_);
    if (!recalculated) return MergeFields(Unit::ControlLimits);
    Note(Unit::ControlLimits, true, false);
    if (!MergeSubGroupSize()) return result_.conflicts.push_back(Unit::ControlLimits);
    CData merged = Merge::AsLoaded(result_.row, mineData_);
    QCGlobalFunctions::ClearControlLimits(merged);
    merged.SetDataStartPoint(0);
    merged.SetDataStopPoint(0);
    if (!QCGlobalFunctions::CalculateStatistics(merged))
      return result_.conflicts.push_back(Unit::ControlLimits);
    const QVariantList calculated = Tables::RowOf(merged);
    const auto& columns = Tables::StatData().columns;
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (columns[i].IsControlLimit())
        result_.row[static_cast<qsizetype>(i)] = calculated[static_cast<qsizetype>(i)];
  }

  // The one field of the limits' unit that is not calculated. False for a conflict.
  bool MergeSubGroupSize() {
    const qsizetype at = Tables::StatData().IndexOf(u"SubGroupSize");
    if (!IsMine(at)) return true;
    const bool theirs = !SameValue(theirs_[at], base_[at]) && !SameValue(theirs_[at], mine_[at]);
    result_.row[at] = mine_[at];
    return !theirs || mineDecides_;
  }

  const CData& mineData_;
  const QVariantList base_;
  const QVariantList mine_;
  std::vector<bool> isMine_;
  const QVariantList theirs_;
  const bool mineDecides_;
  std::vector<Unit> mineChanged_;
  Merge::Result result_;
};

}  // namespace

Merge::Result Merge::Of(const CData& mine, const QVariantList& theirs, bool mineDecides) {
  return Merging(mine, theirs, mineDecides).Run();
}

Trace::Origins Merge::OriginsOf(const CData& data, const QVariantList& present, const QVariantList& merged) {
  const qsizetype at = Tables::StatData().IndexOf(u"Values");
  const QStringList base = SamplesOf(data.RowAsKnown()[at]);
  const QStringList mine = SamplesOf(Tables::RowOf(data)[at]);
  const QStringList theirs = SamplesOf(present[at]);
  const auto count = static_cast<std::size_t>(SamplesOf(merged[at]).size());
  Trace::Origins origins = Trace::Unchanged(theirs.size());
  const bool growthIsMine = theirs != base && BeginsWith(mine, base);
  if (!growthIsMine && mine != theirs) {
    const Trace::Origins inTheirs = Trace::Back(Trace::ByDifference(base, theirs), base.size());
    origins = Trace::Through(inTheirs, OriginsInBase(data, base, mine));
    // Their growth came behind mine.
    for (qsizetype sample = base.size(); origins.size() < count; ++sample)
      origins.push_back(static_cast<qint32>(sample));
  }
  origins.resize(count, Trace::isNew);
  return origins;
}

CData Merge::AsLoaded(const QVariantList& row, const CData& like) {
  CData data = like;
  Tables::Fill(data, row);
  data.SetDataStartPoint(0);
  data.SetDataStopPoint(0);
  data.SetLimitsRenewed(false);
  data.SetSampleOrigins({});
  QCGlobalFunctions::CalculateStatistics(data);
  return data;
}

QVariantList Merge::WithLimitsThatCanBeKept(QVariantList row, const CData& mine) {
  constexpr int fewestPoints = 2;
  const bool restOnPoints = !mine.LimitsRenewed() || AsLoaded(row, mine).NumberOfPlotPoints() >= fewestPoints;
  if (restOnPoints && !Tables::LeavesLimitsOpen(row)) return row;
  const std::vector<Column>& columns = Tables::StatData().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (columns[i].IsControlLimit()) row[static_cast<qsizetype>(i)] = 0.0;
  return row;
}

QString Merge::NameOf(Column::Unit unit) {
  switch (unit) {
    case Unit::Values:
      return Words::Merge::values();
    case Unit::ControlLimits:
      return Words::Merge::controlLimits();
    case Unit::SpecLimits:
      return Words::Merge::specLimits();
    case Unit::Fliers:
      return Words::Merge::fliers();
    case Unit::Sensitivity:
      return Words::Merge::sensitivity();
    case Unit::DetectionPeriod:
      return Words::Merge::detectionPeriod();
    case Unit::UnitOfMeasurement:
      return Words::Merge::unit();
    case Unit::None:
      break;
  }
  return {};
}
