// The desktop program: makes everything that lives as long as the program does, and shows the main window.
#pragma once

#include <QString>

// Returns the exit status. A library is attached for this run only; an empty name means the one of the
// settings.
int RunDesktop(int& argc, char** argv, const QString& libraryForThisRun);
