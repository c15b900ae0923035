// Asks the user which database file to work with: an existing one, a new one, or the copy of an Access file.
#pragma once

#include <QString>

class QWidget;

// Each gives the path to attach, or the empty string where the user changed his mind or was told what failed.
namespace DatabaseChoice {

QString ChooseExisting();

// Asks for a name and makes an empty library there, or a copy of the sample library; an existing file is
// refused.
QString CreateNew();
QString CreateSamples();

// The path itself, unless it is that of an Access file: the user is then offered its copy beside it, which is
// made, with a progress window over `parent`, where it does not exist yet.
QString LibraryFor(const QString& path, QWidget* parent);

}  // namespace DatabaseChoice
