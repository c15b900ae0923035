// The names of the files that are written for data sets.
#pragma once

#include <QSet>
#include <QString>

#include "data/CData.h"

// Made of descriptions alone, so that a data set keeps its name whichever others are written with it.
// Letters, digits and blanks give a name that no other description gives; what cannot stand in every file
// system's names brings a code of the whole description behind a point, which no name has otherwise.
class FileNames {
 public:
  FileNames(QString folder, QString ending) : folder_(std::move(folder)), ending_(std::move(ending)) {}

  QString Next(const CData& data);

 private:
  static QString NameOf(const QString& description);

  QString folder_;
  QString ending_;
  QSet<QString> used_;
};
