// The raw-data box's text: what a pasted text means, what is handed over to the checks, and what the live
// line says of it.
#pragma once

#include <QString>

namespace RawDataText {

inline constexpr qsizetype mostValues = 32767;  // the data set counts its samples in 16 bits

// One value on each line. Values end at line ends of every kind, tabs and semicolons. A comma is a decimal
// comma where each number has at most one and none has a point; else it ends a value too. What is no number
// in the end stays as it is, and so does a number with thousands separators.
QString FromPasted(const QString& pasted);

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
  qsizetype values = 0;  // numbers
  Line notANumber;       // the first; its text is the element that is none
  Line comma;            // the first line that a comma makes more than one value
};

Examination Examine(const QString& text);

// Values, subgroups and what is left over; the first fault. The subgroup size counts where it is valid.
QString Describe(const Examination& examination, const QString& subGroupSize);

// The size, from 1 to 20; 0 where the text is no such number.
qint16 SubGroupSize(const QString& text);

}  // namespace RawDataText
