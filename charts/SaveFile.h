// Writes a file completely or not at all.
#pragma once

#include <QByteArray>
#include <QString>

// Overwrites an older file. Error naming the file when it cannot be written; the older file is then as it
// was.
void SaveFile(const QString& path, const QByteArray& bytes);
