// How the program finds its words: the numbered texts by a reference, the others by their names in Words.h.
#pragma once

#include <QString>
#include <concepts>

// The text for a text reference: a default text, ";" and a number, such as "System Message;165". The default
// text is for the reader of the code and never shown: a reference without ";", with something that is no
// number behind it or with a number that is not in the table gives the empty string.
QString LoadResText(QStringView reference);

// What the user reads for a text of the program. Numbered or named, every text passes here: a translation
// would take its place in this function.
QString Translated(QStringView english);

// A text with a name. It is called with the values that stand for %1, %2 ... in it: `Words::Units::place(2,
// 7)`. The compiler counts the places and the values; a "%2" in a value stays as it is.
template <int places = 0>
class Text {
 public:
  // From a literal that has just the places %1 to %N, so N = 0 to 9.
  template <size_t size>
  consteval Text(const char16_t (&english)[size]) : english_(english, size - 1) {
    int seen = 0;
    for (size_t i = 0; i + 1 < size; ++i) {
      const int place = english[i] == u'%' ? english[i + 1] - u'0' : 0;
      if (place > places && place <= 9) throw "a place without a value";
      if (place > 0 && place <= 9) seen |= 1 << place;
    }
    if (seen != (2 << places) - 2) throw "a value without a place";
  }

  template <class... Values>
  requires(sizeof...(Values) == places) QString operator()(const Values&... values) const {
    if constexpr (places == 0)
      return Translated(english_);
    else
      return Translated(english_).arg(Shown(values)...);
  }

 private:
  static QString Shown(const QString& value) { return value; }
  static QString Shown(std::integral auto value) { return QString::number(value); }

  QStringView english_;
};
