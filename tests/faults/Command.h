// Runs commands of the command line inside the test, against one library in a temporary folder.
#pragma once

#include "cli/CommandLine.h"
#include "tests/support/Program.h"

class CommandTest : public ProgramTest {
 protected:
  CommandTest() { EXPECT_EQ(RunIn(u"new LIB").status, 0); }

  ProgramRun Run(const QStringList& words, const QByteArray& = {}) const override {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    ProgramRun run;
    run.status = CommandLine::Run(words);
    run.output = QString::fromStdString(testing::internal::GetCapturedStdout());
    run.error = QString::fromStdString(testing::internal::GetCapturedStderr());
    return run;
  }
};
