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

using namespace Qt::StringLiterals;

namespace {

const auto allFiles = u"All Files (*)"_s;

QString CurrentFolder() {
  const ProgramState& state = Globals();
  const QString& current =
      state.gDatabaseForThisRun.isEmpty() ? state.gSetup.DatabaseName : state.gDatabaseForThisRun;
  return current.isEmpty() ? QDir::homePath() : QFileInfo(current).path();
}

bool Agrees(const QString& question) {
  return ShowSystemMessage(question, MessageBox::Icon::Question, MessageBox::Buttons::YesNo) ==
         MessageBox::Answer::Yes;
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

// Throws Error; false where the user cancelled, and then nothing is left behind.
bool Convert(const QString& accessPath, const QString& copy, QWidget* parent) {
  struct Cancelled {};
  QProgressDialog progress(u"Copying %1 ..."_s.arg(QFileInfo(accessPath).fileName()), u"&Cancel"_s, 0, 100,
                           parent);
  progress.setObjectName(u"CopyProgress"_s);
  progress.setWindowTitle(LoadResText(u"Kestrel;108"));
  progress.setWindowModality(Qt::ApplicationModal);
  progress.setMinimumDuration(0);
  progress.setValue(0);
  try {
    AccessImport::Convert(accessPath, copy, [&progress](qint64 done, qint64 total) {
      const int percent = total > 0 ? int(done * 100 / total) : 0;
      // Setting the value also processes events, which is too dear for every row.
      if (percent != progress.value()) progress.setValue(percent);
      if (progress.wasCanceled()) throw Cancelled();
    });
  } catch (const Cancelled&) {
    return false;
  }
  return true;
}

}  // namespace

QString DatabaseChoice::ChooseExisting() {
  return FileDialog::Ask(
      {.kind = FileDialog::Kind::Open,
       .title = LoadResText(u"Database Connection;255"),
       .filter = u"Access Database Files(*.mdb);;Kestrel Libraries (*.kestrel *.db);;"_s + allFiles,
       .folder = CurrentFolder(),
       .defaultSuffix = {}});
}

QString DatabaseChoice::CreateNew() {
  const QString path = FileDialog::Ask({.kind = FileDialog::Kind::Save,
                                        .title = u"New Database"_s,
                                        .filter = u"Kestrel Libraries (*.mdb *.kestrel *.db);;"_s + allFiles,
                                        .folder = QDir(CurrentFolder()).filePath(u"StatData.mdb"_s),
                                        .defaultSuffix = u"mdb"_s,
                                        .keepsExisting = true});
  if (path.isEmpty()) return {};
  try {
    Library::Create(path);
    return path;
  } catch (const std::exception& error) {
    ShowErrorMessage(false, u"The new database could not be made"_s, ErrorText(error));
    return {};
  }
}

QString DatabaseChoice::LibraryFor(const QString& path, QWidget* parent) {
  if (!JetFile::IsAccessFile(path)) return path;
  const QString copy = CopyBeside(path);
  const auto question = [&](const QString& text) {
    return text.arg(QDir::toNativeSeparators(path), QDir::toNativeSeparators(copy));
  };
  if (QFileInfo::exists(copy)) {
    const bool opens = Agrees(question(
        u"%1 is a Microsoft Access file, and a copy of it for Kestrel exists already:\r\n\r\n%2\r\n\r\n"
        u"The Access file stays as it is.\r\n\r\nDo you wish to open the copy?"_s));
    return opens ? copy : QString();
  }
  try {
    if (!HasAcceptedRevision(path)) {
      Refuse(path, {});
      return {};
    }
    const bool agreed =
        Agrees(question(u"%1 is a Microsoft Access file. Kestrel works with a copy of it, which will be made "
                        u"beside it:\r\n\r\n%2\r\n\r\nThe Access file stays as it is.\r\n\r\nDo you wish to "
                        u"make the copy and open it?"_s));
    return agreed && Convert(path, copy, parent) ? copy : QString();
  } catch (const std::exception& error) {
    Refuse(path, ErrorText(error).remove(path + u": "_s));
    return {};
  }
}
