#include "library/Revision.h"

#include <QStringList>

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/LibraryWords.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int requiredMajor = 2;
constexpr int requiredMinor = 0;
}  // namespace

namespace Revision {

QString Required() { return u"%1.%2"_s.arg(requiredMajor).arg(requiredMinor); }

bool IsAccepted(const QString& revision) {
  const QStringList parts = revision.split(u'.');
  const qint32 major = Conversions::CLng(parts[0]);
  if (major != requiredMajor) return major > requiredMajor;
  if (parts.size() < 2) throw Error(Words::Library::noMinorRevision(revision));
  return Conversions::CLng(parts[1]) >= requiredMinor;
}

QString Refusal(const QString& revision) {
  return LoadResText(u"Invalid Database Version;296") + u"\r\n"_s +
         LoadResText(u"Current Database Version:;297") + u'\t' + revision + u"\r\n"_s +
         LoadResText(u"Required Database Version:;298") + u'\t' + Required() + u"\r\n"_s;
}

QString RefusalOnOneLine(const QString& revision) {
  return Refusal(revision).replace(u"\r\n"_s, u". "_s).replace(u'\t', u' ').trimmed();
}

}  // namespace Revision
