// The options and operands that several commands declare.
#pragma once

#include "cli/Arguments.h"
#include "cli/Command.h"
#include "data/WrittenNumbers.h"
#include "texts/CommandWords.h"

namespace SharedOptions {

inline const Operand libraryFile = {QStringLiteral("LIBRARY"), Words::Command::libraryFile()};
inline const Operand descriptions = {QStringLiteral("DESCRIPTION"), QString(), true};

inline const Option description =
    Option::Text(QStringLiteral("description"), QStringLiteral("TEXT"), Words::Command::descriptionOption())
        .Required();
inline const Option out =
    Option::Text(QStringLiteral("out"), QStringLiteral("DIR"), Words::Command::outOption()).Required();

// How a data set is judged.
inline const Option usl = Option::Number(QStringLiteral("usl"), Words::Command::uslOption());
inline const Option lsl = Option::Number(QStringLiteral("lsl"), Words::Command::lslOption());
inline const Option subGroup =
    Option::Whole(QStringLiteral("subgroup"), Words::Command::subGroupOption(), 1, 20, 1);
inline const Option sensitivity = Option::Choice(
    QStringLiteral("sensitivity"), {QStringLiteral("low"), QStringLiteral("medium"), QStringLiteral("high")},
    Words::Command::sensitivityOption(), 1);
inline const Option period =
    Option::Choice(QStringLiteral("period"), {QStringLiteral("short"), QStringLiteral("long")},
                   Words::Command::periodOption(), 1);

// An InputError unless --lsl is below --usl; both are given.
void CheckSpecLimits(const Arguments& arguments);

// An InputError where that word of the command gives no description, or one that does not stand on one line.
void CheckName(const QString& word, const QString& name);

// How values are written.
inline const Option decimal =
    Option::Choice(QStringLiteral("decimal"), {QStringLiteral("point"), QStringLiteral("comma")},
                   Words::Command::decimalOption());
inline const Option separator =
    Option::Choice(QStringLiteral("separator"),
                   {QStringLiteral("comma"), QStringLiteral("semicolon"), QStringLiteral("tab")},
                   Words::Command::separatorOption());

WrittenNumbers::Notation Notation(const Arguments& arguments);

}  // namespace SharedOptions
