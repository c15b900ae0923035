// The words behind a command's name, sorted by what the command declares.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <optional>

#include "cli/Command.h"

class Arguments {
 public:
  // Options are written "--name value", "--name=value" or "--name"; "-5" and the like are values, and behind
  // "--" everything is. An InputError names the word that the command does not know, the option that is
  // missing, given twice, without its value or with a wrong one, and the operand that is missing or too many.
  Arguments(const QStringList& words, const Command& command);

  const QStringList& Operands() const { return operands_; }

  bool Has(const Option& option) const { return values_.contains(option.name); }
  QString Text(const Option& option) const {
    return values_.value(option.name);
  }  // as typed; empty where not given
  std::optional<double> Number(const Option& option) const;
  int Whole(const Option& option) const;  // the option's standard where it is not given
  int Choice(
      const Option& option) const;  // the place among its choices; the standard, or -1, where not given

 private:
  void TakeOption(const QString& word, QStringList& rest, const Command& command);
  void CheckOperands(const Command& command) const;

  QMap<QString, QString> values_;
  QStringList operands_;
};
