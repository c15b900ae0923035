// What a raw-data text means where it is clear, and the readings that it has where it is not. What could be
// read in two ways stays as it was written until the user has chosen.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

namespace RawDataReadings {

struct Pasted {
  QString text;                 // one value on each line where the text leaves no doubt, else as it stands
  qsizetype decimalCommas = 0;  // that became points
};

// Values end at line ends of every kind, and at the tabs and semicolons of a single line of numbers. Commas
// end values in a single line of several, and are decimal commas in a column that has no other reading.
Pasted FromPasted(const QString& pasted);

// A reading of what is unclear in a text, for the user to choose.
struct Offer {
  enum Kind {
    DecimalCommas,      // commas are decimal points
    CommasAndPoints,    // and points set thousands apart
    Thousands,          // commas set thousands apart
    PlainNumbers,       // numbers behind which units stand, or with a typographic minus
    SeparateAtCommas,   // a value on each side of a comma
    SeparateAtBlanks,   // and of a blank
    Column,             // one column of cells
    AllCells,           // the numbers of all cells, row by row
    LeaveOutNoNumbers,  // without the lines that are no numbers in any reading
  };
  Kind kind;
  int column;  // from 0
  QString caption;
  QString unit = {};  // where the lines have several: only those with this one are read
};

// The fewest clicks first; none where nothing is unclear.
QList<Offer> Offers(const QString& text);

// The text in that reading, one value on each line.
QString Apply(const Offer& offer, const QString& text);

// A line whose comma makes one number of it, or several.
struct Doubt {
  QString line;
  qsizetype number = 0;
  QString oneValue;
  QStringList severalValues;
  qsizetype more = 0;      // lines like it
  QString thousands = {};  // the one value with thousands, where it may be that as well
};

// The first such line; nothing where there is none.
std::optional<Doubt> DoubtfulComma(const QString& text);

// Each such line as one value, or as several.
QString Settled(const QString& text, bool asOneValue);

}  // namespace RawDataReadings
