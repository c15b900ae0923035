#include "cli/Arguments.h"

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace {

// "-", "-5", "-.5" and "-5,-6" are values, not options.
bool BeginsLikeNumber(const QString& word) { return word.size() < 2 || word[1].isDigit() || word[1] == u'.'; }

}  // namespace

Arguments::Arguments(const QStringList& words, const QStringList& valueOptions, const QStringList& flags) {
  bool optionsEnded = false;
  for (qsizetype i = 0; i < words.size(); ++i) {
    const QString& word = words[i];
    if (optionsEnded || !word.startsWith(u'-') || BeginsLikeNumber(word)) {
      positional_ << word;
      continue;
    }
    if (word == "--"_L1) {
      optionsEnded = true;
      continue;
    }
    const qsizetype equals = word.indexOf(u'=');
    const QString name = word.startsWith("--"_L1) ? word.mid(2, equals < 0 ? -1 : equals - 2) : QString();
    if (flags.contains(name) && equals < 0) {
      flags_ << name;
    } else if (valueOptions.contains(name)) {
      if (values_.contains(name)) throw InputError(u"the option --%1 is given twice"_s.arg(name));
      if (equals < 0 && i + 1 == words.size()) throw InputError(u"the option --%1 needs a value"_s.arg(name));
      values_[name] = equals < 0 ? words[++i] : word.mid(equals + 1);
    } else if (flags.contains(name)) {
      throw InputError(u"the option --%1 takes no value"_s.arg(name));
    } else {
      throw InputError(u"unknown option \"%1\""_s.arg(word));
    }
  }
}

QString Arguments::Required(const QString& name) const {
  if (!values_.contains(name)) throw InputError(u"the option --%1 is missing"_s.arg(name));
  return values_[name];
}

std::optional<double> Arguments::Number(const QString& name) const {
  if (!values_.contains(name)) return std::nullopt;
  const QString text = values_[name];
  if (!Conversions::IsNumeric(text)) throw InputError(u"--%1: \"%2\" is not a number"_s.arg(name, text));
  return Conversions::CDbl(text);
}

double Arguments::RequiredNumber(const QString& name) const {
  Required(name);
  return *Number(name);
}

int Arguments::Integer(const QString& name, int otherwise, int low, int high) const {
  if (!values_.contains(name)) return otherwise;
  bool isInteger = false;
  const int value = values_[name].toInt(&isInteger);
  if (!isInteger || value < low || value > high) {
    throw InputError(
        u"--%1: \"%2\" is not a whole number from %3 to %4"_s.arg(name, values_[name]).arg(low).arg(high));
  }
  return value;
}

int Arguments::Choice(const QString& name, const QStringList& choices, int otherwise) const {
  if (!values_.contains(name)) return otherwise;
  for (qsizetype i = 0; i < choices.size(); ++i) {
    if (choices[i].compare(values_[name], Qt::CaseInsensitive) == 0) return static_cast<int>(i);
  }
  throw InputError(u"--%1: \"%2\" is not one of %3"_s.arg(name, values_[name], choices.join(u", "_s)));
}

void Arguments::RequirePositional(int count, const QString& what, bool orMore) const {
  if (positional_.size() < count) throw InputError(u"%1 is missing"_s.arg(what));
  if (!orMore && positional_.size() > count) {
    throw InputError(u"unexpected word \"%1\""_s.arg(positional_[count]));
  }
}
