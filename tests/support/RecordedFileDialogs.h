// Answers file dialogs by script and records them: a dialog without an answer and an answer left over fail
// the test.
#pragma once

#include <gtest/gtest.h>

#include <QStringList>

#include "platform/ui/FileDialog.h"

class RecordedFileDialogs : public FileDialog::Presenter {
 public:
  RecordedFileDialogs() : previous_(FileDialog::Install(this)) {}
  ~RecordedFileDialogs() override {
    FileDialog::Install(previous_);
    if (!answers_.empty()) ADD_FAILURE() << answers_.size() << " expected file dialog(s) never came";
  }
  RecordedFileDialogs(const RecordedFileDialogs&) = delete;
  RecordedFileDialogs& operator=(const RecordedFileDialogs&) = delete;

  // Queues the answer to the next dialog that has none yet; empty: cancelled.
  void Expect(const QString& path) { answers_.append(path); }

  FileDialog::Request last;

  QString Ask(const FileDialog::Request& request) override {
    last = request;
    if (answers_.empty()) {
      ADD_FAILURE() << "unexpected file dialog \"" << request.title.toStdString() << '"';
      return {};
    }
    return answers_.takeFirst();
  }

 private:
  FileDialog::Presenter* previous_;
  QStringList answers_;
};
