#include "cli/Console.h"

#include <QFile>
#include <cstdio>

#include "platform/error/Error.h"
#include "texts/CommandWords.h"

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace Console {

bool IsTerminal() {
#ifdef Q_OS_WIN
  return _isatty(2) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

namespace {

// What stands on the terminal's last line; what is printed takes its place.
qsizetype progressWidth = 0;

void ClearProgress() {
  if (progressWidth == 0) return;
  std::fprintf(stderr, "\r%*s\r", static_cast<int>(progressWidth), "");
  std::fflush(stderr);
  progressWidth = 0;
}

void PutLine(const QString& line) {
  ClearProgress();
  std::fprintf(stderr, "%s\n", line.toUtf8().constData());
}

}  // namespace

bool IsControl(QChar c) {
  return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
         c.category() == QChar::Separator_Paragraph;
}

QString OnOneLine(QString text) {
  text.replace(u"\r\n"_s, u" "_s);
  for (QChar& c : text)
    if (IsControl(c)) c = u' ';
  return text.trimmed();
}

void Print(const QString& text) {
  ClearProgress();
  const QByteArray bytes = text.toUtf8();
  const auto size = static_cast<std::size_t>(bytes.size());
  if (std::fwrite(bytes.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0) {
    throw Error(Words::Usage::outputUnwritten());
  }
}

void Tell(const QString& text) {
  try {
    Print(text);
  } catch (const Error&) {
    Warn(Words::Usage::writtenNotTold());
  }
}

void Complain(const QString& text) { PutLine(Words::Usage::complaint(OnOneLine(text))); }

void Warn(const QString& text) { PutLine(Words::Usage::warning(OnOneLine(text))); }

QByteArray ReadInput() {
  QFile input;
  if (!input.open(stdin, QIODevice::ReadOnly)) throw Error(Words::Usage::inputUnread());
  QByteArray bytes = input.readAll();
  if (input.error() != QFileDevice::NoError) throw Error(Words::Usage::inputUnread());
  return bytes;
}

Progress::~Progress() { ClearProgress(); }

void Progress::Show(qint64 done, qint64 total) {
  if (total <= 0) return;
  const qint64 percent = done * 100 / total;
  if (!IsTerminal()) return;
  const QString line = u"%1 %2 %"_s.arg(what_).arg(percent);
  if (line == line_ && progressWidth > 0) return;
  ClearProgress();
  line_ = line;
  progressWidth = line.size();
  std::fputs(line.toUtf8().constData(), stderr);
}

}  // namespace Console
