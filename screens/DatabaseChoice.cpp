#include "screens/DatabaseChoice.h"

#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>

#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "library/AccessImport.h"
#include "library/Library.h"
#include "library/Revision.h"
#include "platform/access/JetFile.h"
#include "platform/ui/FileDialog.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

QString CurrentFolder() {
  const ProgramState& state = Globals();
  const QString& current =
      state.gDatabaseForThisRun.isEmpty() ? state.gSetup.DatabaseName : state.gDatabaseForThisRun;
  return current.isEmpty() ? QDir::homePath() : QFileInfo(current).path();
}

// Files of one name and of other kinds keep copies of their own.
QString CopyBeside(const QString& accessPath) {
  const QFileInfo file(accessPath);
  const bool isMdb = file.suffix().compare(u"mdb"_s, Qt::CaseInsensitive) == 0;
  return file.dir().filePath((isMdb ? file.completeBaseName() : file.fileName()) + u".kestrel"_s);
}

void Refuse(const QString& path, const QString& reason) {
  ShowErrorMessage(true, LoadResText(u"Error opening database:;102") + u"\r\n"_s + path, reason);
}

// Throws Error where the file cannot be read; without a usable revision there is no message for it.
bool HasAcceptedRevision(const QString& accessPath) {
  const QString revision = AccessImport::Revision(accessPath);
  if (revision.size() < 3) return false;
  if (Revision::IsAccepted(revision)) return true;
  ShowErrorMessage(false, Revision::Refusal(revision), {});
  return false;
}

// Throws Error; none where the user cancelled, and then nothing is left behind.
std::optional<AccessImport::Counts> Convert(const QString& accessPath, const QString& copy, QWidget* parent) {
  struct Cancelled {};
  QProgressDialog progress(Words::Main::copying(QFileInfo(accessPath).fileName()), Words::cancel(), 0, 100,
                           parent);
  progress.setObjectName(u"CopyProgress"_s);
  progress.setWindowTitle(LoadResText(u"Kestrel;108"));
  progress.setWindowModality(Qt::ApplicationModal);
  progress.setMinimumDuration(0);
  progress.setValue(0);
  try {
    return AccessImport::Convert(accessPath, copy, [&progress](qint64 done, qint64 total) {
      const int percent = total > 0 ? int(done * 100 / total) : 0;
      // Setting the value also processes events, which is too dear for every row.
      if (percent != progress.value()) progress.setValue(percent);
      if (progress.wasCanceled()) throw Cancelled();
    });
  } catch (const Cancelled&) {
    return std::nullopt;
  }
}

}  // namespace

QString DatabaseChoice::ChooseExisting() {
  return FileDialog::Ask(
      {.kind = FileDialog::Kind::Open,
       .title = LoadResText(u"Database Connection;255"),
       .filter =
           QStringList{Words::Main::accessFiles(), Words::Main::libraries(), Words::Main::allFiles()}.join(
               u";;"_s),
       .folder = CurrentFolder(),
       .defaultSuffix = {}});
}

QString DatabaseChoice::CreateNew() {
  const QString path =
      FileDialog::Ask({.kind = FileDialog::Kind::Save,
                       .title = Words::Main::newDatabase(),
                       .filter = Words::Main::newLibraries() + u";;"_s + Words::Main::allFiles(),
                       .folder = QDir(CurrentFolder()).filePath(u"StatData.mdb"_s),
                       .defaultSuffix = u"mdb"_s,
                       .keepsExisting = true});
  if (path.isEmpty()) return {};
  try {
    Library::Create(path);
    return path;
  } catch (const std::exception& error) {
    ShowErrorMessage(false, Words::Main::databaseNotMade(), ErrorText(error));
    return {};
  }
}

QString DatabaseChoice::LibraryFor(const QString& path, QWidget* parent) {
  if (!JetFile::IsAccessFile(path)) return path;
  const QString copy = CopyBeside(path);
  const auto agrees = [&](const Text<2>& question) {
    return ShowSystemMessage(question(QDir::toNativeSeparators(path), QDir::toNativeSeparators(copy)),
                             MessageBox::Icon::Question,
                             MessageBox::Buttons::YesNo) == MessageBox::Answer::Yes;
  };
  if (QFileInfo::exists(copy)) {
    return agrees(Words::Main::openTheCopy) ? copy : QString();
  }
  try {
    if (!HasAcceptedRevision(path)) {
      Refuse(path, {});
      return {};
    }
    if (!agrees(Words::Main::makeACopy)) return {};
    const auto counts = Convert(path, copy, parent);
    if (!counts) return {};
    ShowInformationMessage(Words::Main::copied(QFileInfo(copy).fileName(), QFileInfo(path).fileName(),
                                               counts->dataSets, counts->samples, counts->units));
    return copy;
  } catch (const std::exception& error) {
    Refuse(path, ErrorText(error).remove(path + u": "_s));
    return {};
  }
}
