// The options and operands that several commands declare.
#pragma once

#include "cli/Arguments.h"
#include "cli/Command.h"
#include "data/WrittenNumbers.h"

namespace SharedOptions {

inline const Operand libraryFile = {QStringLiteral("LIBRARY"), QStringLiteral("the library's file")};
inline const Operand descriptions = {QStringLiteral("DESCRIPTION"), QString(), true};

inline const Option description =
    Option::Text(QStringLiteral("description"), QStringLiteral("TEXT"), QStringLiteral("the data set's name"))
        .Required();
inline const Option out = Option::Text(QStringLiteral("out"), QStringLiteral("DIR"),
                                       QStringLiteral("the folder; it is made where it does not exist"))
                              .Required();

// How a data set is judged.
inline const Option usl =
    Option::Number(QStringLiteral("usl"), QStringLiteral("the upper specification limit"));
inline const Option lsl =
    Option::Number(QStringLiteral("lsl"), QStringLiteral("the lower specification limit"));
inline const Option subGroup =
    Option::Whole(QStringLiteral("subgroup"), QStringLiteral("samples per subgroup"), 1, 20, 1);
inline const Option sensitivity = Option::Choice(
    QStringLiteral("sensitivity"), {QStringLiteral("low"), QStringLiteral("medium"), QStringLiteral("high")},
    QStringLiteral("low: detection rules 1 and 4; medium: 1, 2 and 4; high: all four"), 1);
inline const Option period =
    Option::Choice(QStringLiteral("period"), {QStringLiteral("short"), QStringLiteral("long")},
                   QStringLiteral("long: every point is judged; short: the last eight"), 1);

// An InputError unless --lsl is below --usl; both are given.
void CheckSpecLimits(const Arguments& arguments);

// How values are written.
inline const Option decimal =
    Option::Choice(QStringLiteral("decimal"), {QStringLiteral("point"), QStringLiteral("comma")},
                   QStringLiteral("the decimal mark of the values, where they leave it open"));
inline const Option separator =
    Option::Choice(QStringLiteral("separator"),
                   {QStringLiteral("comma"), QStringLiteral("semicolon"), QStringLiteral("tab")},
                   QStringLiteral("what stands between values or columns"));

WrittenNumbers::Notation Notation(const Arguments& arguments);

}  // namespace SharedOptions
