// The raw-data box's text: what is handed over to the checks, and what the live line says of it. A line is
// one value.
#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace RawDataText {

inline constexpr qsizetype mostValues = 32767;  // the data set counts its samples in 16 bits

// The text with every line ended by CR LF, the last one too, without blanks around the values and without
// blank lines. A comma still separates two values, but not within a number with thousands separators: that
// one then is no number to the check, instead of two wrong ones.
QString WithEndedLines(const QString& text);

// A line of the box, counted from 1; 0 for none.
struct Line {
  qsizetype number = 0;
  QString text;
};

struct Examination {
  qsizetype values = 0;           // numbers
  Line notANumber;                // the first; its text is the element that is none
  Line cells;                     // the first line of several cells
  Line unclear;                   // the first that is a number only in some reading
  Line comma;                     // the first line that a comma makes more than one value
  QList<qsizetype> unclearLines;  // the numbers of all of these four kinds, ascending
  Line tooFine;                   // the first number with more than mostDecimals decimals
  Line beyondFliers;              // the first number that does not lie between the flier limits
  Line tenfold;                   // the first number ten times as large as its neighbours

  // Something is no number as it stands, or several.
  bool IsUnclear() const;
  // The line that the live line names; 0 for none.
  qsizetype NamedLine() const;
  // What is wrong with it; empty where nothing is.
  QString Fault() const;
};

inline constexpr int mostDecimals = 8;  // more are not shown

// Behind the point, trailing zeros not counted, exponents resolved; 0 where the text is no number.
int DecimalsOf(QStringView text);

struct FlierLimits {
  double low = 0, high = 0;
};

// Those that stand where none are given: as far outside the specification limits as these lie apart. Not
// finite where that is too far.
FlierLimits FliersBeyond(double lower, double upper);

// `before` is the value that stands before the text's first one.
Examination Examine(const QString& text, const std::optional<FlierLimits>& fliers = {},
                    const std::optional<double>& before = {});

// Values, subgroups and what is left over; the first fault. The subgroup size counts where it is valid.
QString Describe(const Examination& examination, const QString& subGroupSize);

// The same of values that come behind `before` others.
QString DescribeAdded(const Examination& examination, qsizetype before, qint16 subGroupSize);

// How many samples are missing for the points that a chart needs; empty where there are enough, or none yet.
inline constexpr int fewestPoints = 8;
QString PointsMissing(qsizetype samples, qint16 subGroupSize);

// The lines, counted from 1, on which a further subgroup begins; `before` values stand before the text.
QList<qsizetype> SubgroupStarts(const QString& text, qint16 size, qsizetype before = 0);

// A text in quotes, cut where it is long, kept from turning the sentence around it where it is written from
// right to left.
QString Quoted(const QString& text);

// The size, from 1 to 20; 0 where the text is no such number.
qint16 SubGroupSize(const QString& text);

}  // namespace RawDataText
