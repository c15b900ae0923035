#include "platform/ui/QtFileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// "PNG Pictures (*.png)" gives "png".
QString SuffixOf(const QString& filter) {
  return QRegularExpression(uR"(\*\.(\w+))"_s).match(filter).captured(1);
}

// A name without an ending gets that of the kind of file that is chosen.
void FollowFilter(QFileDialog& dialog) {
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                   [&dialog](const QString& filter) { dialog.setDefaultSuffix(SuffixOf(filter)); });
}

// Whether the folder holds a file of that kind.
bool Fits(const QString& filter, const QDir& folder) {
  static const QRegularExpression inBrackets(uR"(\(([^()]*)\)$)"_s);
  const QStringList patterns = inBrackets.match(filter).captured(1).split(u' ');
  return !folder.entryList(patterns, QDir::Files).isEmpty();
}

// Where the folder has no file of the chosen kind, the first kind is chosen that it has; not all files, which
// the user may choose.
void ShowWhatIsThere(QFileDialog& dialog) {
  const QDir folder = dialog.directory();
  if (Fits(dialog.selectedNameFilter(), folder)) return;
  for (const QString& filter : dialog.nameFilters()) {
    if (!filter.contains(u"(*)") && Fits(filter, folder)) return dialog.selectNameFilter(filter);
  }
}

}  // namespace

QString QtFileDialog::Ask(const FileDialog::Request& request) {
  QFileDialog dialog(QApplication::activeWindow(), request.title, {}, request.filter);
  dialog.setObjectName(u"FileDialog"_s);
  const bool save = request.kind == FileDialog::Kind::Save;
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, request.keepsExisting);
  dialog.setDefaultSuffix(request.defaultSuffix);
  if (save && !request.defaultSuffix.isEmpty()) FollowFilter(dialog);
  const QFileInfo start(request.folder);
  if (start.isDir()) {
    dialog.setDirectory(start.filePath());
  } else if (!request.folder.isEmpty()) {
    if (start.dir().exists()) dialog.setDirectory(start.dir());
    dialog.selectFile(start.fileName());
  }
  if (!save) {
    ShowWhatIsThere(dialog);
    const auto follow = [&dialog] { ShowWhatIsThere(dialog); };
    QObject::connect(&dialog, &QFileDialog::directoryEntered, &dialog, follow);
    // The dialog does not tell of a folder whose name was typed.
    if (const auto* folders = dialog.findChild<QFileSystemModel*>())
      QObject::connect(folders, &QFileSystemModel::rootPathChanged, &dialog, follow);
  }
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
