// The words of one command: options with and without values, and what stands besides.
#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <optional>

class Arguments {
 public:
  // Options are written "--name value", "--name=value" or "--name"; "-5" and the like are values, and behind
  // "--" everything is. A word that is neither a listed option nor a value, an option without its value, or
  // one given twice is a InputError that names it.
  Arguments(const QStringList& words, const QStringList& valueOptions, const QStringList& flags);

  const QStringList& Positional() const { return positional_; }
  bool Has(const QString& name) const { return values_.contains(name) || flags_.contains(name); }
  QString Value(const QString& name, const QString& otherwise = {}) const {
    return values_.value(name, otherwise);
  }

  // UsageErrors where the option is missing, is no number or lies outside the range.
  QString Required(const QString& name) const;
  double RequiredNumber(const QString& name) const;
  std::optional<double> Number(const QString& name) const;
  int Integer(const QString& name, int otherwise, int low, int high) const;

  // The value's position in `choices` (a word each, without case); `otherwise` where the option is not given.
  int Choice(const QString& name, const QStringList& choices, int otherwise) const;

  // Exactly `count` words besides the options, or at least that many; `what` names them for the message.
  void RequirePositional(int count, const QString& what, bool orMore = false) const;

 private:
  QMap<QString, QString> values_;
  QSet<QString> flags_;
  QStringList positional_;
};
