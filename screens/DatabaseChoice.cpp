#include "screens/DatabaseChoice.h"

#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>
#include <QStandardPaths>
#include <functional>

#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "library/AccessImport.h"
#include "library/Library.h"
#include "library/Revision.h"
#include "library/SampleLibrary.h"
#include "platform/access/JetFile.h"
#include "platform/ado/ServerAddress.h"
#include "platform/ui/FileDialog.h"
#include "texts/StartWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

QString DocumentsFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

QString CurrentFolder() {
  const ProgramState& state = Globals();
  const QString& current =
      state.gDatabaseForThisRun.isEmpty() ? state.gSetup.DatabaseName : state.gDatabaseForThisRun;
  return current.isEmpty() || ServerAddress::IsOne(current) ? DocumentsFolder() : QFileInfo(current).path();
}

// A name that no file has yet: with a number where it has to be.
QString FreeName(const QString& folder, const QString& name, const QString& suffix) {
  const auto path = [&](const QString& file) { return QDir(folder).filePath(file + u'.' + suffix); };
  QString free = path(name);
  for (int number = 2; QFileInfo::exists(free); ++number) free = path(Words::Start::numbered(name, number));
  return free;
}

// Asks for a file and makes it; gives its path.
QString Make(const QString& title, const QString& filter, const QString& proposed, const QString& failure,
             const std::function<void(const QString&)>& make) {
  const QString path = FileDialog::Ask({.kind = FileDialog::Kind::Save,
                                        .title = title,
                                        .filter = filter + u";;"_s + Words::Main::allFiles(),
                                        .folder = proposed,
                                        .defaultSuffix = QFileInfo(proposed).suffix(),
                                        .keepsExisting = true});
  if (path.isEmpty()) return {};
  try {
    make(path);
    return path;
  } catch (const std::exception& error) {
    ShowErrorMessage(false, failure, ErrorText(error));
    return {};
  }
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
  return Make(Words::Main::newDatabase(), Words::Main::newLibraries(),
              FreeName(CurrentFolder(), u"StatData"_s, u"mdb"_s), Words::Main::databaseNotMade(),
              Library::Create);
}

QString DatabaseChoice::CreateSamples() {
  return Make(Words::Start::sampleTitle(), Words::Main::libraries(),
              FreeName(DocumentsFolder(), Words::Start::sampleFile(), u"kestrel"_s),
              Words::Start::sampleNotMade(),
              [](const QString& path) { SampleLibrary::Create(path, Globals().clock->Now()); });
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
