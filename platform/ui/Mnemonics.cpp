#include "platform/ui/Mnemonics.h"

QString Mnemonics::Mark(const QString& caption) {
  const QChar marker = u'&';
  for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
    if (caption[i] != marker) continue;
    if (caption[i + 1] != marker) {
      taken_ += caption[i + 1].toUpper();
      return caption;
    }
    ++i;  // a doubled marker is a plain one
  }
  for (const bool wordStartsOnly : {true, false}) {
    for (qsizetype i = 0; i < caption.size(); ++i) {
      const bool wordStart = i == 0 || !caption[i - 1].isLetterOrNumber();
      const QChar letter = caption[i].toUpper();
      if (!letter.isLetterOrNumber() || (wordStartsOnly && !wordStart) || taken_.contains(letter)) continue;
      taken_ += letter;
      return caption.left(i) + marker + caption.mid(i);
    }
  }
  return caption;
}
