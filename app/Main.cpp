// The program's entry: the command line or the desktop.
#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <cstdio>
#include <optional>

#include "app/Desktop.h"
#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "platform/system/Memory.h"
#include "screens/frmMain.h"
#include "texts/CommandWords.h"
#include "texts/Version.h"

using namespace Qt::StringLiterals;

namespace {

// None where one is no text: it would name another file than the user means.
std::optional<QStringList> WordsOf(int argc, char** argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i) {
    words << QString::fromLocal8Bit(argv[i]);
    if (words.last().toLocal8Bit() != argv[i]) return std::nullopt;
  }
  return words;
}

// The library's own remarks (a missing runtime folder and the like) are nothing that a script could act on.
void KeepQuiet(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

int RunCommandLine(int argc, char** argv, const QStringList& words) {
  qInstallMessageHandler(KeepQuiet);
  if (!CommandLine::NeedsGraphics(words)) {
    QCoreApplication application(argc, argv);
    return CommandLine::Run(words);
  }
  // Drawing needs no display.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  return CommandLine::Run(words);
}

// Without one the windows' library ends the program without a word that helps.
bool HasDisplay() {
#ifdef Q_OS_LINUX
  return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
#else
  return true;
#endif
}

// A library's icon or place in a menu outlives the library, and nobody reads what is printed then.
bool IsLostLibrary(const QStringList& words) {
  const bool isChosen = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");  // by who runs it without a desktop
  if (words.size() != 1 || isChosen || Console::IsTerminal() || !HasDisplay()) return false;
  const QFileInfo file(words.first());
  return !file.exists() && (file.isAbsolute() || file.suffix() == "kestrel"_L1 || file.suffix() == "mdb"_L1);
}

}  // namespace

int main(int argc, char** argv) {
  TakeMemoryInLargeSteps();
  QCoreApplication::setApplicationName(u"Kestrel"_s);
  QCoreApplication::setApplicationVersion(Version::text);
  const std::optional<QStringList> given = WordsOf(argc, argv);
  if (!given) {
    Console::Complain(Words::Usage::notUtf8());
    return CommandLine::BadInput;
  }
  const QStringList& words = *given;
  const bool isRequest = words.size() == 1 && frmMain::IsRequest(words.first());
  if (!isRequest && !IsLostLibrary(words) && CommandLine::IsCommand(words))
    return RunCommandLine(argc, argv, words);
  if (!HasDisplay()) {
    Console::Complain(Words::Usage::noDisplay());
    return CommandLine::FileTrouble;
  }
  return RunDesktop(argc, argv, words.value(0));
}
