// The command line: finds the command, runs it and turns its failure into one line and an exit status.
#pragma once

#include <QStringList>
#include <exception>

namespace CommandLine {

// Exit statuses.
enum Status { Fine = 0, OutOfControl = 1, Differs = 1, BadInput = 2, FileTrouble = 3 };

// Whether the words behind the program's name are for the command line (else they are for the desktop,
// which takes one library at most).
bool IsCommand(const QStringList& words);

// Whether the command draws, and so needs a QGuiApplication.
bool NeedsGraphics(const QStringList& words);

// The status that a failure ends with.
int StatusOf(const std::exception& error);

int Run(const QStringList& words);

}  // namespace CommandLine
