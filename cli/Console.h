// Standard input and output of the commands, and the progress that a terminal shows.
#pragma once

#include <QString>
#include <QStringList>

namespace Console {

// To standard output, as UTF-8; a Error where that cannot be written.
void Print(const QString& text);

// The answer of a command that has written something. Where it cannot be printed, standard error says so: a
// script that took it for a failure would do the same again.
void Tell(const QString& text);

// The text with a blank for each tab, line break and other control character: it neither ends a line or a
// column nor moves a terminal's cursor.
QString OnOneLine(QString text);
bool IsControl(QChar c);

// One line on standard error: what went wrong.
void Complain(const QString& text);

// One line on standard error that stops nothing.
void Warn(const QString& text);

// Whether a terminal shows what standard error is told.
bool IsTerminal();

// Standard input as a whole; a Error where it cannot be read.
QByteArray ReadInput();

// A line on standard error that is written over as work goes on, and by what else is printed; nothing where
// that is no terminal.
class Progress {
 public:
  explicit Progress(QString what) : what_(std::move(what)) {}
  ~Progress();
  void Show(qint64 done, qint64 total);

 private:
  QString what_;
  QString line_;
};

}  // namespace Console
