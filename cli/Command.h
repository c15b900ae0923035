// A command as it is declared, each option once beside its help: what may follow its name, what is refused,
// the usage line and the help text all come from here.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

class Arguments;

struct Option {
  enum class Kind { Flag, Text, Number, Whole, Choice };

  // `value` stands in the help for what is typed behind the name, which is given without its dashes.
  static Option Flag(const QString& name, const QString& help);
  static Option Text(const QString& name, const QString& value, const QString& help);
  static Option Number(const QString& name, const QString& help);
  static Option Whole(const QString& name, const QString& help, int low, int high,
                      std::optional<int> standard = {});
  static Option Choice(const QString& name, const QStringList& choices, const QString& help,
                       std::optional<int> standard = {});

  Option Required() const;

  // An InputError that names the option where the text is no value of it.
  void Check(const QString& text) const;

  QString name;
  Kind kind = Kind::Flag;
  QString value;
  QString help;
  int low = 0;
  int high = 0;
  QStringList choices;          // written without case
  std::optional<int> standard;  // of a whole number or, by place, of a choice, where the option is not given
  bool required = false;
};

// A word that is no option.
struct Operand {
  QString name;          // in the usage line
  QString what;          // in the message that it is missing
  bool repeats = false;  // any number of them, also none; the last one only
};

struct Command {
  QString name;
  QString purpose;  // begins small, without a full stop
  std::vector<Operand> operands;
  std::vector<Option> options;
  QString details;  // whole sentences
  int (*run)(const Arguments& arguments);
  bool needsGraphics = false;

  QString Usage() const;  // "kestrel NAME ...", wrapped
  QString Help() const;
};
