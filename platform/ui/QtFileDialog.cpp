#include "platform/ui/QtFileDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

using namespace Qt::StringLiterals;

QString QtFileDialog::Ask(const FileDialog::Request& request) {
  QFileDialog dialog(QApplication::activeWindow(), request.title, {}, request.filter);
  dialog.setObjectName(u"FileDialog"_s);
  const bool save = request.kind == FileDialog::Kind::Save;
  dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
  dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, request.keepsExisting);
  dialog.setDefaultSuffix(request.defaultSuffix);
  const QFileInfo start(request.folder);
  if (start.isDir()) {
    dialog.setDirectory(start.filePath());
  } else if (!request.folder.isEmpty()) {
    if (start.dir().exists()) dialog.setDirectory(start.dir());
    dialog.selectFile(start.fileName());
  }
  return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
