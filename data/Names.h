// When two names are the same name: equal without regard to case, in Unicode's sense.
#pragma once

#include <QString>
#include <algorithm>

namespace Names {

// Equal for names that are the same. The folding at hand gives a letter for a letter; those that become
// several are told by their upper case, and stand as several when decomposed.
inline QString Key(const QString& name) {
  QString key;
  for (const QChar c : name.normalized(QString::NormalizationForm_D).toCaseFolded()) {
    const QString upper = c.unicode() < 0x80 ? QString() : QString(c).toUpper();
    if (upper.size() > 1)
      key += upper.toCaseFolded();
    else
      key += c;
  }
  return key.normalized(QString::NormalizationForm_C);
}

// The entry that a name means: the one of exactly that name, else the first one of the same.
template <class Iterator, class NameOf>
Iterator Find(Iterator begin, Iterator end, const QString& name, NameOf&& nameOf) {
  const auto exact = std::find_if(begin, end, [&](const auto& entry) { return nameOf(entry) == name; });
  if (exact != end) return exact;
  const QString key = Key(name);
  return std::find_if(begin, end, [&](const auto& entry) { return Key(nameOf(entry)) == key; });
}

}  // namespace Names
