// The commands of the command line. Each gets the words behind its name and returns the exit status; failures
// are UsageErrors and FileErrors.
#pragma once

#include <QStringList>

namespace Commands {

int New(const QStringList& words);
int Import(const QStringList& words);
int Append(const QStringList& words);
int Convert(const QStringList& words);

int Status(const QStringList& words);
int Report(const QStringList& words);
int Export(const QStringList& words);

int Stats(const QStringList& words);
int Verify(const QStringList& words);

}  // namespace Commands
